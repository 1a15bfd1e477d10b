// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "document/velinvitation.h"

#include "formats/velvcalendar.h"
#include "model/veltext.h"

#include <KLocalizedString>

std::optional<VelInvitation> VelInvitation::of(const VelEntry &entry, quint32 userid)
{
    VelInvitation invitation;
    for (const VelAccount &account : entry.accounts) {
        if (!account.email.isEmpty() && account.id == 0)
            invitation.recipients.append(account.email);
    }
    if (invitation.recipients.isEmpty())
        return std::nullopt;
    invitation.subject = entry.getTitle();
    invitation.body = i18n("Start:") + QLatin1Char(' ') + VelText::getDateTime(entry.getStart())
        + QLatin1Char('\n') + i18n("End:") + QLatin1Char(' ') + VelText::getDateTime(entry.getEnd())
        + QLatin1Char('\n');
    if (entry.rule.recurringtype > 0)
        invitation.body += entry.getRecurrenceText() + QLatin1Char('\n');
    invitation.body += QLatin1Char('\n');
    invitation.vCalendar = VelVCalendar::asvCalendar(entry, userid, true).toUtf8();
    return invitation;
}
