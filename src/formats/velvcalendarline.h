// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QString>

#include <string>
#include <string_view>

/**
 * One property of vCalendar text: its name, its parameters and its value, as they stand there. Owns none of
 * them.
 */
struct VelVCalendarLine {
    /** Cuts @p line at the colon at @p colon; without one (npos) the whole line is the value. */
    VelVCalendarLine(std::string_view line, std::size_t colon);
    VelVCalendarLine() = default;

    /** Compares the name, whatever the case; @p other is in capitals. */
    [[nodiscard]] bool is(std::string_view other) const { return equals(name, other); }

    /** The value of a parameter, without quotes; empty when there is none. */
    [[nodiscard]] std::string_view parameter(std::string_view wanted) const;
    /** How the value is encoded: "ENCODING=x", or the bare "x" of vCalendar 1.0. @p wanted is in capitals. */
    [[nodiscard]] bool hasEncoding(std::string_view wanted) const;
    [[nodiscard]] bool isQuotedPrintable() const { return hasEncoding("QUOTED-PRINTABLE"); }
    [[nodiscard]] bool isBase64() const { return hasEncoding("BASE64") || hasEncoding("B"); }

    /**
     * The decoded value as text. Without a known character set: UTF-8 when it is valid, else ISO-8859-15, or Latin-1 where
     * this system has written it.
     */
    [[nodiscard]] QString text() const;

    /** Compares two ASCII texts, whatever the case of @p text; @p capitals is in capitals. */
    [[nodiscard]] static bool equals(std::string_view text, std::string_view capitals);
    [[nodiscard]] static bool isUtf8(std::string_view bytes);
    /** @p text without blanks at its ends. */
    [[nodiscard]] static std::string_view trimmed(std::string_view text);

    /** RFC 2045, section 6.7, but for an "=" that begins no escape and ends no line, which stands for itself.
     */
    [[nodiscard]] static std::string decodeQuotedPrintable(std::string_view text);

    std::string_view name;
    std::string_view parameters;
    std::string_view value;
    bool isOwn = false; ///< this system has written it: nothing is encoded but line feeds
    bool hasBackslashes = false; ///< the value's special characters are escaped in the way of iCalendar
    bool isTooLong = false; ///< the value was not kept

private:
    [[nodiscard]] QString ownText() const;
};
