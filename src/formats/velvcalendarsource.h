// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "formats/velvcalendarline.h"

#include <QByteArray>

#include <string>
#include <string_view>

/**
 * Puts the properties of vCalendar text together from the lines that they are spread over.
 *
 * Lines end in LF, CR or both. A line that begins with a blank continues the one before it: in a calendar of
 * version 2.0 without that blank (RFC 5545), else with it (RFC 822). Quoted-printable values go on after a
 * line that ends in "=". Takes time in proportion to the text, and no more memory than the longest property,
 * MaximumLength at most.
 *
 * What this system's own PRODID heads is read as it is written: no line is folded, nothing is encoded but the line feeds
 * of a description, which are "=0A=" before the end of a line.
 */
class VelVCalendarSource
{
public:
    /** A property of more bytes is passed over. */
    static constexpr std::size_t MaximumLength = 16U << 20;

    explicit VelVCalendarSource(const QByteArray &bytes);

    /** The next property, valid until the next call; false at the end. */
    bool next(VelVCalendarLine &line);

    /** How many bytes have been taken. */
    [[nodiscard]] std::size_t position() const;

private:
    struct Colon {
        std::size_t first = std::string_view::npos;
        std::size_t unquoted = std::string_view::npos;
        std::size_t seen = 0;
        bool inQuotes = false;

        void find(std::string_view text);
    };

    [[nodiscard]] std::string_view peekLine() const;
    std::string_view takeLine();
    [[nodiscard]] std::string_view afterLine(std::string_view line) const;
    [[nodiscard]] bool isContinued(std::string_view next) const;
    [[nodiscard]] bool isOwnContinued(std::string_view next) const;
    void append(std::string_view text);
    void appendTail(std::string_view text);
    void examineHead();
    void examineFrame(const VelVCalendarLine &line);

    const QByteArray m_bytes;
    std::string_view m_rest;
    std::string_view m_current; // what has been put together; in m_joined unless it is a single line
    std::string m_joined;
    Colon m_colon;
    bool m_quotedPrintable = false;
    bool m_base64 = false;
    bool m_tooLong = false;
    bool m_version2 = false;
    bool m_own = false; // written by this system
    bool m_endsInReturn = false; // the line that was taken last
    bool m_ownReturns = false; // somebody has put a carriage return before each line feed of ours
};
