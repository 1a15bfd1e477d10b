// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "document/velanswer.h"

#include "document/veldoc.h"

namespace VelAnswer
{
Mode modeFor(const VelDoc &doc, const VelEntry &entry, Mode wanted)
{
    return wanted == Plain && !doc.isOwner(&entry) ? Invitation : wanted;
}

Offer offerFor(const VelDoc &doc, const VelEntry &entry, Mode mode, bool mayEdit)
{
    if (mode != Invitation || doc.getOrigRight() != VelDoc::FullRight)
        return {};
    const int current = entry.getAccountStatus(doc.getUserId());
    Offer offer;
    offer.isOffered = true;
    offer.mayAccept = mayEdit && current != VelAccount::Accepted;
    offer.mayAcceptTentatively = mayEdit && current != VelAccount::Tentative;
    offer.mayDecline = mayEdit;
    offer.mayLeaveOpen = !mayEdit || current != VelAccount::Unanswered;
    return offer;
}

bool apply(VelDoc &doc, quint32 localid, int answer)
{
    const quint32 userid = doc.getUserId();
    const VelEntry *entry = doc.getEntry(localid);
    // Id 0 is that of guests whom the server does not know: never the user.
    if (answer == VelAccount::Unanswered || userid == 0 || !entry || !entry->accounts.get(userid))
        return false;
    doc.changeEntry(localid, [userid, answer](VelEntry &changed) {
        changed.accounts.get(userid)->status = answer;
        changed.uDirty(1);
    });
    if (answer == VelAccount::Declined)
        doc.deleteEntry(doc.getEntry(localid), false);
    return true;
}
} // namespace VelAnswer
