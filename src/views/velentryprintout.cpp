// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "views/velentryprintout.h"

#include "model/veltext.h"
#include "views/velprinttext.h"

#include <KLocalizedString>

namespace
{
constexpr int MostPeople = 500; // of each role: some ten sheets of paper
}

VelEntryPrintout::VelEntryPrintout(const VelEntry &entry, const QString &owner)
    : m_entry(entry)
    , m_owner(owner)
{
}

QString VelEntryPrintout::title() const
{
    return VelPrintText::title(m_entry);
}

void VelEntryPrintout::addProperties()
{
    const bool isTask = m_entry.type == VelEntry::Todo;
    const auto add = [this](const QString &label, const QString &text) {
        if (!text.isEmpty())
            m_flow.addRow(label, text);
    };
    add(i18n("Start"), m_entry.getStartStr());
    add(isTask ? i18n("Due") : i18n("End"), m_entry.getEndStr());
    add(i18n("Recurrence"), m_entry.getRecurrenceText());
    add(i18n("Reminder"), VelReminder::toString(m_entry.reminder));
    add(i18n("Access"), m_entry.getAccessStr());
    add(i18n("Show time as"), m_entry.getDisplayStr());
    if (m_entry.priority != 0)
        add(i18n("Priority"), QString::number(m_entry.priority));
    if (isTask)
        add(i18n("Completed"), m_entry.complete ? i18n("Yes") : i18n("No"));
    add(i18n("Owner"), m_owner);
}

void VelEntryPrintout::addAccounts()
{
    for (const int role :
         {VelAccount::RequiredAttendee, VelAccount::OptionalAttendee, VelAccount::ResourceAttendee}) {
        int count = 0;
        for (const VelAccount &account : std::as_const(m_entry.accounts)) {
            if (account.attendee != role)
                continue;
            if (++count == 1)
                m_flow.addHeading(account.getAttendeeStr());
            if (count > MostPeople)
                continue;
            const QString email = account.email.isEmpty()
                ? QString()
                : QString(QLatin1String(" <") + account.email + QLatin1Char('>'));
            m_flow.addRow(account.getStatusStr(), QString(account.name + email).simplified());
        }
        if (count > MostPeople)
            m_flow.addRow({}, i18np("and one more", "and %1 more", count - MostPeople));
    }
}

int VelEntryPrintout::layOut(const QSizeF &size, const QPaintDevice *device)
{
    const VelPaper paper(device);
    m_flow.clear();
    // The head of the page has one line for it.
    if (paper.textWidth(VelPaper::Title, title()) > size.width())
        m_flow.addHeading(title());
    addProperties();
    addAccounts();
    if (!m_entry.getDescription().isEmpty()) {
        m_flow.addHeading(i18n("Description"));
        m_flow.addText(m_entry.getDescription());
    }
    return m_flow.layOut(size, paper);
}
