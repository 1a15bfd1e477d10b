// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "formats/goldenrecords.h"

namespace
{
VelDateTime at(int year, int month, int day, int hour, int minute)
{
    return {QDate(year, month, day), QTime(hour, minute)};
}

VelAccount accountOf(const QString &name, const QString &email, quint32 id, int type, int status,
                     int attendee)
{
    VelAccount account(name, email, id);
    account.type = type;
    account.status = status;
    account.attendee = attendee;
    return account;
}

QString manyCharacters()
{
    return QStringLiteral("\tPrice: 5 € ŠšŽžŒœŸ\näöüÄÖÜß µ ¤¦¨´¸¼½¾\n\nПривет 😀\uFEFF\r\n]]> &amp; &#65; ");
}

VelRecurrenceRule lastWeekdayRule()
{
    VelRecurrenceRule rule;
    rule.recurringtype = VelRecurrenceRule::Monthly;
    rule.occurevery = 2;
    rule.occurdays = {1, 3, 5};
    rule.occurdaynumber = -1;
    rule.occurenddate = QDate(2003, 12, 31);
    rule.occurendcount = 10;
    return rule;
}

std::unique_ptr<VelEntry> fullEvent()
{
    auto entry = std::make_unique<VelEntry>(1, VelEntry::Event, VelDateTime(), VelDateTime());
    entry->setStored(QStringLiteral("A<B & C> \"and\" 'so on'"), manyCharacters(), at(2002, 3, 5, 9, 5),
                     at(2002, 3, 6, 10, 30));
    entry->globalid = 3000000000;
    entry->user = 4000000000;
    entry->access = VelEntry::Private;
    entry->display = VelEntry::TentativeTime;
    entry->priority = 9;
    entry->notime = true;
    entry->complete = true;
    entry->reminder = 4294967295;
    entry->reminderfired = true;
    entry->rule = lastWeekdayRule();
    entry->accounts.append(accountOf(QStringLiteral("Börje"), QStringLiteral("borje@example.org"), 7,
                                     VelAccount::Person, VelAccount::Accepted, VelAccount::OptionalAttendee));
    entry->accounts.append(accountOf(QStringLiteral("\uFEFFАнна"), QString(), 0, 0, 0, 0));
    return entry;
}

std::unique_ptr<VelEntry> bareTodo()
{
    auto entry =
        std::make_unique<VelEntry>(4294967295, VelEntry::Todo, at(1, 1, 1, 0, 0), at(9999, 12, 31, 23, 59));
    entry->dirty = 0;
    entry->notime = false;
    return entry;
}

std::unique_ptr<VelEntry> deletionNotice()
{
    auto entry =
        std::make_unique<VelEntry>(3, VelEntry::Deleted, at(2024, 2, 29, 12, 0), at(2024, 2, 29, 13, 0));
    entry->setTitle(QStringLiteral("Peruttu päivä"));
    entry->globalid = 77;
    entry->user = 5;
    entry->accounts.append(accountOf(QStringLiteral("Čeněk"), QString(), 9, 0, VelAccount::Declined, 0));
    return entry;
}
} // namespace

namespace GoldenRecords
{
VelXmlContent calendar()
{
    VelXmlContent content;
    content.userid = 3000000000;
    content.origright = 4;
    content.synctime = QStringLiteral("2002-03-05 <17> & on");
    content.accounts.emplace();
    content.accounts->append(accountOf(QStringLiteral("Åsa Öström"), QStringLiteral("asa@example.org"), 1,
                                       VelAccount::Person, 0, 0));
    content.accounts->append(accountOf(QStringLiteral("Jäähtymissali <2 & 3>"), QString(), 4294967295,
                                       VelAccount::Resource, 0, 0));
    content.entries.push_back(fullEvent());
    content.entries.push_back(bareTodo());
    content.entries.push_back(deletionNotice());
    return content;
}

VelEntry binaryEntry()
{
    VelEntry entry(1, VelEntry::Deleted, at(2002, 3, 5, 9, 5), at(2002, 3, 5, 0, 0));
    entry.setTitle(QStringLiteral("A€😀"));
    entry.setDescription(QStringLiteral("a\nb"));
    entry.globalid = 3000000000;
    entry.user = 4294967295;
    entry.access = VelEntry::Private;
    entry.display = VelEntry::TentativeTime;
    entry.priority = 9;
    entry.notime = true;
    entry.reminder = 3840;
    entry.reminderfired = true;
    entry.accounts.append(accountOf(QStringLiteral("B"), QStringLiteral("c"), 7, VelAccount::Person,
                                    VelAccount::Accepted, VelAccount::OptionalAttendee));
    entry.accounts.append(accountOf(QStringLiteral("D"), QString(), 0, 0, 0, VelAccount::ResourceAttendee));
    entry.rule = lastWeekdayRule();
    entry.rule.occurevery = 12;
    entry.rule.occurdays = {1, -3};
    entry.rule.occurenddate = QDate(2002, 12, 31);
    entry.originalid = 5;
    return entry;
}

VelAccount binaryAccount()
{
    return accountOf(QStringLiteral("Åsa"), QStringLiteral("a@b€"), 3000000000, VelAccount::Resource,
                     VelAccount::Tentative, -1);
}
} // namespace GoldenRecords
