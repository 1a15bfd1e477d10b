// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "model/velentry.h"

#include <QIODevice>

#include <optional>
#include <string>

/** An account on a server, as far as it tells whose calendars are kept there. */
struct VelServerAccount {
    QString server; ///< host; empty for none
    QString user; ///< name of the account

    [[nodiscard]] bool isNone() const { return server.isEmpty(); }
    /** True for the same user of the same host, whose name may be written in capitals or not. */
    [[nodiscard]] bool isSame(const VelServerAccount &other) const
    {
        return server.compare(other.server, Qt::CaseInsensitive) == 0 && user == other.user;
    }
};

/** What a calendar file says of its calendar as a whole. */
struct VelCalendarMeta {
    quint32 userid = 0; ///< account id of the calendar's owner, 0 for none
    int origright = 4; ///< the local user's right to it
    QString synctime = QStringLiteral("0"); ///< of the last synchronisation, the server's own text
    /**
     * True for what is kept aside and never synchronised, false for what was found to be none of that. Not set, and not
     * written, where nobody has asked.
     */
    std::optional<bool> archive;
    VelServerAccount account; ///< with which it was last synchronised; not written when there is none
};

/**
 * Writes the elements of calendar files and messages, in ISO-8859-15.
 *
 * Characters outside it become numeric references, and so does the carriage return, which readers of XML
 * would turn into a line feed. Characters that XML 1.0 does not allow are left out, above all the byte that
 * ends a message. The text goes to @p device in large pieces; without a device it stays in text().
 */
class VelXmlWriter
{
public:
    explicit VelXmlWriter(QIODevice *device = nullptr);

    /** The header line and the opening of the calendar. */
    void writeHead();
    void writeMeta(const VelCalendarMeta &meta);
    void writeAccount(const VelAccount &account);
    /** Nothing for an occurrence; for a deleted entry only what tells which it was. */
    void writeEntry(const VelEntry &entry);
    void writeTail();

    /** Hands the rest to the device. False when anything could not be written. */
    [[nodiscard]] bool flush();

    /** What has been written and not handed on. */
    [[nodiscard]] const std::string &text() const { return m_out; }

    /** Appends @p text with "&", "<" and ">" escaped. */
    static void appendEscaped(std::string &out, const QString &text);

private:
    void writeDetails(const VelEntry &entry);
    void writeRule(const VelRecurrenceRule &rule);
    void number(const char *open, qint64 value, const char *close);
    void textElement(const char *open, const QString &text, const char *close);
    void flushIfLarge();

    QIODevice *m_device;
    std::string m_out;
    bool m_failed = false;
};
