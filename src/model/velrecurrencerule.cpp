// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "model/velrecurrencerule.h"

#include "model/veltext.h"

#include <KLocalizedString>

#include <QStringList>

#include <array>

namespace
{
const std::array<QLatin1String, 7> DayCodes{QLatin1String("MO"), QLatin1String("TU"), QLatin1String("WE"),
                                            QLatin1String("TH"), QLatin1String("FR"), QLatin1String("SA"),
                                            QLatin1String("SU")};

QString ordinal(int dayNumber)
{
    switch (dayNumber) {
    case 1:
        return i18nc("such weekday of the month", "first");
    case 2:
        return i18nc("such weekday of the month", "second");
    case 3:
        return i18nc("such weekday of the month", "third");
    case 4:
        return i18nc("such weekday of the month", "fourth");
    default:
        return i18nc("such weekday of the month", "last");
    }
}

QString weekdayNames(const QVector<int> &days)
{
    QStringList names;
    for (const int day : days)
        names.append(VelText::getWeekDay(day));
    return names.join(QLatin1Char(','));
}

QString monthlyText(const VelRecurrenceRule &rule)
{
    if (rule.occurdays.isEmpty())
        return {};
    const int day = rule.occurdays.first();
    if (rule.occurdaynumber == 0)
        return i18n("Event will reoccur every %1 month(s) on %2 day of the month.", rule.occurevery, day);
    return i18n("Event will reoccur every %1 month(s) on %2 %3.", rule.occurevery,
                ordinal(rule.occurdaynumber), VelText::getWeekDay(day));
}

QString frequencyText(const VelRecurrenceRule &rule, QDate start)
{
    switch (rule.recurringtype) {
    case VelRecurrenceRule::Daily:
        return i18n("Event will reoccur every %1 day(s).", rule.occurevery);
    case VelRecurrenceRule::Weekly:
        return i18n("Event will reoccur every %1 week(s) on following day(s) %2.", rule.occurevery,
                    weekdayNames(rule.occurdays));
    case VelRecurrenceRule::Monthly:
        return monthlyText(rule);
    case VelRecurrenceRule::Yearly:
        return i18n("Event will reoccur every %1 year(s) on %2 %3.", rule.occurevery, start.day(),
                    VelText::getMonth(start, true));
    default:
        return {};
    }
}
} // namespace

QString VelRecurrenceRule::getRecurrenceText(QDate start) const
{
    QString text = frequencyText(*this, start);
    if (text.isEmpty())
        return text;
    if (occurendcount > 0)
        text += QLatin1Char(' ') + i18n("Recurrence will end after %1 occurences.", occurendcount);
    else if (occurenddate.isValid())
        text += QLatin1Char(' ') + i18n("Recurrence will end on %1.", VelText::getDay(occurenddate));
    return text;
}

int VelRecurrenceRule::getDayNumber(const QString &text)
{
    for (std::size_t i = 0; i < DayCodes.size(); ++i) {
        if (text == DayCodes[i])
            return static_cast<int>(i) + 1;
    }
    return 0;
}

QString VelRecurrenceRule::getDayString(int number)
{
    return number >= 1 && number <= 7 ? QString(DayCodes[static_cast<std::size_t>(number) - 1]) : QString();
}
