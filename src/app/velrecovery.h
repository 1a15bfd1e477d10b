// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QDir>
#include <QString>
#include <QUrl>

/** Copies of unsaved calendars, kept from the end of a desktop session to the beginning of the next. */
namespace VelRecovery
{
/** Where such copies stand; nobody but the user may look into it. Made when it is missing. */
[[nodiscard]] QDir folder();
/**
 * Where the copy of the calendar at @p url stands, if there is one; @p window tells apart windows that show the same
 * calendar, or have no file yet. The folder is made when it is missing.
 */
[[nodiscard]] QString fileName(const QUrl &url, const QString &window);
} // namespace VelRecovery
