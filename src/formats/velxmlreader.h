// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "formats/velxmlwriter.h"
#include "model/compat.h"
#include "model/velentry.h"

#include <map>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

/** What was read from a calendar file or message. What it did not mention is not set. */
struct VelXmlContent {
    std::optional<QString> synctime;
    std::optional<quint32> userid;
    std::optional<int> origright;
    std::optional<quint32> origuserid;
    /** @name Only what a file says of itself: never from an answer's "action" */
    /// @{
    std::optional<bool> archive; ///< see VelCalendarMeta
    VelServerAccount account;
    /// @}
    std::optional<int> error; ///< code of an answer that failed; nothing after it was read
    bool hasAction = false; ///< it has the element that heads an answer
    bool totalsync = false; ///< the answer replaces the whole calendar
    std::optional<VelAccountList> accounts;
    std::optional<std::map<quint32, int>> rights; ///< account id to right
    std::vector<std::unique_ptr<VelEntry>> entries;

    /** Accounts and entries together. */
    [[nodiscard]] std::size_t count() const
    {
        return entries.size() + (accounts ? static_cast<std::size_t>(accounts->size()) : 0);
    }
};

/**
 * Reads calendar files and messages piece by piece, as they arrive.
 *
 * Elements and values that are not known are skipped; an entry without a valid start and end and an account
 * without a name are dropped. ISO-8859-15, ISO-8859-1, US-ASCII and UTF-8 are read, as the declaration says;
 * without one UTF-8.
 *
 * The input may be hostile: a document type, deep nesting, a long tag or text or very many names make reading fail
 * before it costs more memory than a few of MaximumToken and MaximumText. What is read takes memory in proportion
 * to the input; how much input is too much is for the caller to say.
 */
class VelXmlReader
{
public:
    static constexpr int MaximumDepth = 64; ///< elements inside each other
    static constexpr std::size_t MaximumToken = 1 << 20; ///< bytes of one tag, comment or the like
    static constexpr std::size_t MaximumText = 64 << 20; ///< bytes of the text of one element

    VelXmlReader();
    ~VelXmlReader();
    Q_DISABLE_COPY_MOVE(VelXmlReader)

    /**
     * Takes the next bytes. False as soon as the input has turned out to be unreadable; then nothing more is
     * taken.
     */
    bool feed(const char *bytes, std::size_t size);
    /** Ends the input. False when it was unreadable or incomplete. */
    bool finish();

    /** What went wrong, in the parser's English words, for a log. */
    [[nodiscard]] QString errorMessage() const;
    [[nodiscard]] qint64 errorLine() const;
    [[nodiscard]] qint64 errorColumn() const;

    /** How many entries, accounts and rights have been read so far. */
    [[nodiscard]] std::size_t recordCount() const;

    /** What was read. Only whole documents count: call it after finish() succeeded. */
    [[nodiscard]] VelXmlContent takeContent();

private:
    class Parser;
    std::unique_ptr<Parser> m_parser;
};
