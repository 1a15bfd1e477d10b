// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QString>
#include <QUrl>

namespace VelUrl
{
/** Gives the file name of @p url the suffix (with its dot) when it does not end with it. */
void setSuffix(QUrl &url, const QString &suffix);

/** True when both lead to the same file, by whatever links and detours. A URL without a scheme leads to none. */
[[nodiscard]] bool isSameFile(const QUrl &a, const QUrl &b);

/**
 * A calendar file in the user's folder for documents that is not there yet, called @p name or, where there is one, @p name
 * and a number. What no file name may hold is replaced.
 */
[[nodiscard]] QUrl inDocuments(const QString &name);
} // namespace VelUrl
