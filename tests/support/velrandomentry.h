// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "model/velentry.h"

#include <QRandomGenerator>
#include <QStringList>

#include <algorithm>

/** Makes entries of every kind that the program itself can make, the same ones for the same seed. */
class VelRandomEntry
{
public:
    explicit VelRandomEntry(quint32 seed)
        : m_random(seed)
    {
    }

    /** A number from @p lowest to @p highest. */
    int number(int lowest, int highest) { return m_random.bounded(lowest, highest + 1); }
    bool chance(int oneIn) { return number(1, oneIn) == 1; }

    /** Pieces that exchange formats give a meaning of their own, and ordinary ones. */
    QString text(int pieces)
    {
        static const QStringList parts =
            QStringLiteral("word| |=|=0A=|=3D|\n|=41|;|:|,|\\n|\"|<b>|&amp;|\u00E4|\u20AC|\t|\n\n|\\|"
                           "\U0001F600|-|\n ind|=\n|\nEND:VEVENT\n|D1|\nRRULE:|%|=4")
                .split(QLatin1Char('|'));
        QString result;
        for (int i = number(0, pieces); i > 0; --i)
            result += parts.at(number(0, static_cast<int>(parts.size()) - 1));
        return result;
    }

    VelDateTime dateTime()
    {
        const QDate date = QDate(1995, 1, 1).addDays(number(0, 20000));
        return {date, QTime(number(0, 23), number(0, 59), chance(10) ? number(0, 59) : 0)};
    }

    VelRecurrenceRule rule(QDate start)
    {
        VelRecurrenceRule rule;
        rule.recurringtype = number(VelRecurrenceRule::Daily, VelRecurrenceRule::Yearly);
        rule.occurevery = chance(2) ? 1 : number(1, 13);
        for (int day = 1; day <= 7 && rule.recurringtype == VelRecurrenceRule::Weekly; ++day) {
            if (chance(3) || (day == 7 && rule.occurdays.isEmpty()))
                rule.occurdays.append(day);
        }
        if (rule.recurringtype == VelRecurrenceRule::Monthly && chance(2)) {
            rule.occurdays = {chance(2) ? start.day() : chance(2) ? number(28, 31) : number(1, 31)};
        } else if (rule.recurringtype == VelRecurrenceRule::Monthly) {
            rule.occurdays = {chance(2) ? start.dayOfWeek() : number(1, 7)};
            rule.occurdaynumber = chance(4) ? -1 : number(1, 4);
        }
        if (chance(2))
            rule.occurendcount = number(1, 60);
        else if (chance(2))
            rule.occurenddate = start.addDays(number(-5, 1500));
        return rule;
    }

    VelAccount account()
    {
        const QString name = text(4).replace(QLatin1Char('\n'), QLatin1Char(' '));
        VelAccount account(name.isEmpty() ? QStringLiteral("Somebody") : name,
                           chance(5) ? QString() : QStringLiteral("user%1@example.org").arg(number(1, 99)),
                           static_cast<quint32>(number(0, 50)));
        account.status =
            chance(4) ? VelAccount::Unanswered : number(VelAccount::Declined, VelAccount::Accepted);
        account.attendee = number(VelAccount::RequiredAttendee, VelAccount::ResourceAttendee);
        account.type = number(VelAccount::NoType, VelAccount::Resource);
        return account;
    }

    VelEntry entry()
    {
        const VelDateTime start = chance(4) ? dateTime().withTime(QTime(0, 0)) : dateTime();
        VelDateTime end = start.addSecs(60LL * number(0, chance(5) ? 20000 : 300));
        if (chance(4))
            end = end.withTime(QTime(23, 59));
        VelEntry entry(0, number(VelEntry::Event, VelEntry::Todo), start, std::max(start, end));
        entry.setTitle(text(6).replace(QLatin1Char('\n'), QLatin1Char(' ')));
        entry.setDescription(text(20));
        entry.access = number(VelEntry::NoAccess, VelEntry::Private);
        entry.display = number(VelEntry::NoDisplay, VelEntry::TentativeTime);
        entry.priority = number(0, 9);
        entry.reminder = chance(2) ? static_cast<quint32>(number(0, 10000)) : 0;
        entry.notime = chance(3);
        entry.complete = chance(3);
        entry.user = static_cast<quint32>(number(0, 5));
        for (int i = number(0, 3); i > 0; --i)
            entry.accounts.append(account());
        if (chance(2))
            entry.rule = rule(start.date());
        return entry;
    }

private:
    QRandomGenerator m_random;
};
