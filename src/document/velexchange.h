// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "formats/velforeigncontent.h"

#include <QString>
#include <QStringList>
#include <QUrl>

class VelDoc;

/** Files that other programs read and write too. */
namespace VelExchange
{
/** True when the desktop takes the file, by its name or content, for a vCalendar or iCalendar file. */
[[nodiscard]] bool isCalendarFile(const QUrl &url);

/**
 * Reads the local file @p path, whose content tells what it is: vCalendar, iCalendar or a calendar file.
 * False when it cannot be opened; a file that holds nothing of that kind has no entries. VelExchangeReader does the same
 * piece by piece.
 */
[[nodiscard]] bool read(const QString &path, VelForeignContent &content);

/**
 * @p url with one of the suffixes by which write() goes: its own, else that of the @p pattern that the user chose, such as
 * "*.ics", else ".vcs".
 */
[[nodiscard]] QUrl withSuffix(const QUrl &url, const QString &pattern);

struct Written {
    bool isWritten = false;
    QStringList leftOut; ///< titles of entries that the format cannot carry
};

/**
 * Writes all entries to @p url: as iCalendar when it ends in ".ics", as a copy of the calendar when it ends in ".xml", else
 * as vCalendar.
 */
[[nodiscard]] Written write(const VelDoc &doc, const QUrl &url);
} // namespace VelExchange
