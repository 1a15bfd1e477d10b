// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QStringList>

class VelDoc;

/** What has been changed in a calendar and not yet been taken by the server, in words. */
namespace VelUnsent
{
[[nodiscard]] bool hasAny(const VelDoc &doc);
/** The titles of the entries that were changed, deleted ones too, in the order in which they were made. */
[[nodiscard]] QStringList titles(const VelDoc &doc);
/** That these changes would be lost; names but the first few. */
[[nodiscard]] QString lossText(const QStringList &titles);
} // namespace VelUnsent
