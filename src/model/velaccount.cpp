// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "model/velaccount.h"

#include <KLocalizedString>

#include <algorithm>

VelAccount::VelAccount(const QString &accountName, const QString &accountEmail, quint32 accountId)
    : id(accountId)
    , name(accountName)
    , email(accountEmail)
{
}

QString VelAccount::getStatusStr() const
{
    switch (status) {
    case Declined:
        return i18n("Declined");
    case Tentative:
        return i18n("Accepted tentatively");
    case Accepted:
        return i18n("Accepted");
    default:
        return i18n("Unanswered");
    }
}

QString VelAccount::getStatusPix() const
{
    switch (status) {
    case Declined:
        return QStringLiteral("no");
    case Tentative:
        return QStringLiteral("tentative");
    case Accepted:
        return QStringLiteral("yes");
    default:
        return {};
    }
}

QString VelAccount::getTypePix() const
{
    switch (type) {
    case Person:
        return QStringLiteral("person");
    case Resource:
        return QStringLiteral("resource");
    default:
        return {};
    }
}

QString VelAccount::getAttendeeStr() const
{
    switch (attendee) {
    case RequiredAttendee:
        return i18n("Attendees");
    case OptionalAttendee:
        return i18n("Optional attendees");
    case ResourceAttendee:
        return i18n("Resources");
    default:
        return {};
    }
}

const VelAccount *VelAccountList::get(quint32 id) const
{
    const auto found =
        std::find_if(cbegin(), cend(), [id](const VelAccount &account) { return account.id == id; });
    return found == cend() ? nullptr : &*found;
}

VelAccount *VelAccountList::get(quint32 id)
{
    const auto found =
        std::find_if(begin(), end(), [id](const VelAccount &account) { return account.id == id; });
    return found == end() ? nullptr : &*found;
}

int VelAccountList::compareItems(const VelAccount &a, const VelAccount &b)
{
    if (a == b)
        return 0;
    return a.name < b.name ? -1 : 1;
}

void VelAccountList::sort()
{
    std::stable_sort(begin(), end(),
                     [](const VelAccount &a, const VelAccount &b) { return a.name < b.name; });
}
