// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "model/velentry.h"

#include <QString>
#include <QUrl>

#include <memory>
#include <vector>

class VelDoc;

/** Files that other programs read and write too. */
namespace VelExchange
{
struct Content {
    std::vector<std::unique_ptr<VelEntry>> entries; ///< without ids
    int leftOut = 0; ///< entries that could not be read
    int simplified = 0; ///< entries whose repetition could not be kept as it was
    bool isReadable = true; ///< false when nothing could be made of the file as a whole
};

/** True when the desktop takes the file, by its name or content, for a vCalendar or iCalendar file. */
[[nodiscard]] bool isCalendarFile(const QUrl &url);

/**
 * Reads the local file @p path, whose content tells what it is: vCalendar, iCalendar or a calendar file.
 * False when it cannot be opened; a file that holds nothing of that kind has no entries.
 */
[[nodiscard]] bool read(const QString &path, Content &content);

/**
 * Writes all entries to @p url, as iCalendar when it ends in ".ics", else as vCalendar. False when that
 * failed.
 */
[[nodiscard]] bool write(const VelDoc &doc, const QUrl &url);
} // namespace VelExchange
