// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogs/velentryrows.h"

#include "document/veldoc.h"
#include "model/veltext.h"
#include "widgets/wshowntext.h"

#include <KLocalizedString>

#include <algorithm>
#include <iterator>

namespace
{
using Rows = std::vector<VelEntryRow>;

QString orNone(const QString &text)
{
    return text.isEmpty() ? i18nc("nothing was entered", "None") : text;
}

void addInvitation(Rows &rows, const VelDoc &doc, const VelEntry &entry, const QString &organizer)
{
    rows.push_back(
        {i18n("Appointment organizer"), organizer.isEmpty() ? i18nc("a person", "Unknown") : organizer});
    const QString status = entry.getAccountStatusStr(doc.getUserId());
    if (!status.isEmpty())
        rows.push_back({i18n("Status"), status});
}

void addContent(Rows &rows, const VelDoc &doc, const VelEntry &entry)
{
    if (entry.access != VelEntry::Private || doc.getOrigRight() == VelDoc::FullRight)
        rows.push_back({i18n("Title"), orNone(WShownText::cut(entry.getTitle()))});
    rows.push_back({i18n("Start time"), entry.getStartStr()});
    rows.push_back({i18n("End time"), entry.getEndStr()});
    if (entry.rule.recurringtype != VelRecurrenceRule::None)
        rows.push_back({i18n("Recurrence"), entry.getRecurrenceText()});
    rows.push_back({i18n("Description"), orNone(entry.getDescription())});
}

void addPeople(Rows &rows, const VelEntry &entry)
{
    const QString headings[] = {i18n("Attendees"), i18n("Optional"), i18n("Resources")};
    for (const int role :
         {VelAccount::RequiredAttendee, VelAccount::OptionalAttendee, VelAccount::ResourceAttendee}) {
        VelAccountList people;
        std::copy_if(entry.accounts.begin(), entry.accounts.end(), std::back_inserter(people),
                     [role](const VelAccount &account) { return account.attendee == role; });
        if (!people.isEmpty())
            rows.push_back({headings[role], {}, people});
    }
}

void addProperties(Rows &rows, const VelEntry &entry)
{
    const QString access = entry.getAccessStr();
    rows.push_back({i18n("Access"), access.isEmpty() ? i18nc("who may see the entry", "Not set") : access});
    if (entry.display != VelEntry::NoDisplay)
        rows.push_back({i18n("Show time as"), entry.getDisplayStr()});
    rows.push_back(
        {i18n("Priority"), orNone(entry.priority == 0 ? QString() : QString::number(entry.priority))});
    rows.push_back({i18n("Reminder"), orNone(VelReminder::toString(entry.reminder))});
}
} // namespace

std::vector<VelEntryRow> velEntryRows(const VelDoc &doc, const VelEntry &entry, VelAnswer::Mode mode,
                                      const QString &organizer)
{
    Rows rows;
    if (mode == VelAnswer::Invitation || mode == VelAnswer::Notice)
        addInvitation(rows, doc, entry, organizer);
    addContent(rows, doc, entry);
    addPeople(rows, entry);
    addProperties(rows, entry);
    return rows;
}
