// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "document/velsyncrule.h"

#include "document/velarchiver.h"
#include "document/veldoc.h"

#include <algorithm>

namespace
{
/** Entries with numbers of a server that it never got any from: they were moved here from another calendar. */
bool hasStrangeNumbers(const VelDoc &doc)
{
    if (doc.getUserId() == 0 || doc.getSynctime() != VelCalendarMeta().synctime)
        return false;
    const VelEntryList all = doc.getEntries({}, 0, false, {});
    return std::any_of(all.begin(), all.end(),
                       [](const VelEntryRef &entry) { return entry.getOriginal()->globalid != 0; });
}

bool looksLikeArchive(const VelDoc &doc, const QUrl &archiveFile)
{
    if (doc.isUntitled())
        return false;
    const bool isNamed = !archiveFile.isEmpty() && VelArchiver::isSameFile(doc.URL(), archiveFile);
    return isNamed || (doc.getServerAccount().isNone() && hasStrangeNumbers(doc));
}

std::unique_ptr<VelEntry> asNew(const VelEntry &entry, quint32 owner)
{
    auto copy = std::make_unique<VelEntry>(entry);
    copy->globalid = 0;
    copy->user = 0;
    copy->dirty = 1;
    const auto isOwner = [owner](const VelAccount &account) { return owner != 0 && account.id == owner; };
    copy->accounts.erase(std::remove_if(copy->accounts.begin(), copy->accounts.end(), isOwner),
                         copy->accounts.end());
    for (VelAccount &account : copy->accounts) {
        account.id = 0;
        account.status = VelAccount::Unanswered;
    }
    return copy;
}
} // namespace

namespace VelSyncRule
{
Verdict judge(const VelDoc &doc, const VelServerAccount &account, const QUrl &archiveFile)
{
    if (doc.isArchive())
        return Verdict::Archive;
    if (!doc.getArchiveMark() && looksLikeArchive(doc, archiveFile))
        return Verdict::MaybeArchive;
    const VelServerAccount &last = doc.getServerAccount();
    return last.isNone() || last.isSame(account) ? Verdict::Allowed : Verdict::OtherAccount;
}

std::vector<std::unique_ptr<VelEntry>> ownAsNew(const VelDoc &doc)
{
    std::vector<std::unique_ptr<VelEntry>> entries;
    const VelEntryList all = doc.getEntries({}, 0, false, {});
    for (const VelEntryRef &each : all) {
        const VelEntry &entry = *each.getOriginal();
        if (!entry.isDeleted() && doc.isOwner(&entry))
            entries.push_back(asNew(entry, doc.getUserId()));
    }
    return entries;
}
} // namespace VelSyncRule
