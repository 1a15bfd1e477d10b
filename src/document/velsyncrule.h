// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "formats/velxmlwriter.h"
#include "model/velentry.h"

#include <QUrl>

#include <memory>
#include <vector>

class VelDoc;

/** Whether a calendar may be synchronised with an account, and what becomes of one that was another's. */
namespace VelSyncRule
{
enum class Verdict {
    Allowed,
    Archive, ///< never
    MaybeArchive, ///< not before somebody has said whether it is one
    OtherAccount ///< not before somebody has said what it has to do with this one
};

/**
 * @p archiveFile is where entries were archived last. A calendar that was synchronised before it was noted with whom counts
 * as the account's own.
 */
[[nodiscard]] Verdict judge(const VelDoc &doc, const VelServerAccount &account, const QUrl &archiveFile);

/**
 * Copies of the entries of the calendar's owner, as new ones that no server knows yet; invitations of others and notices of
 * deletions are left out. Whoever is invited stays named, but has no number any more, so that nobody is invited again.
 */
[[nodiscard]] std::vector<std::unique_ptr<VelEntry>> ownAsNew(const VelDoc &doc);
} // namespace VelSyncRule
