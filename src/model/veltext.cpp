// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "model/veltext.h"

#include <KLocalizedString>

namespace
{
/** The locale's short date format, but never with a two-digit year: 1.2.03 is no date to plan by. */
QString shortDateFormat(const QLocale &locale)
{
    QString format = locale.dateFormat(QLocale::ShortFormat);
    if (!format.contains(QLatin1String("yyyy")))
        format.replace(QLatin1String("yy"), QLatin1String("yyyy"));
    return format;
}

/** The locale's short time format without seconds, which no entry has. */
QString shortTimeFormat(const QLocale &locale)
{
    QString format = locale.timeFormat(QLocale::ShortFormat);
    for (const QLatin1String seconds : {QLatin1String(":ss"), QLatin1String(".ss")})
        format.remove(seconds);
    return format;
}
} // namespace

namespace VelText
{
QString getHour(int hour)
{
    return getTime(QTime(hour, 0));
}

QString getTime(QTime time, const QLocale &locale)
{
    return locale.toString(time, shortTimeFormat(locale));
}

QString getDay(QDate date, const QLocale &locale)
{
    return locale.toString(date, shortDateFormat(locale));
}

QString getWeekDay(QDate date)
{
    return getWeekDay(date.dayOfWeek());
}

QString getWeekDay(int day)
{
    return day >= 1 && day <= 7 ? QLocale().standaloneDayName(day, QLocale::LongFormat) : QString();
}

QString getMonth(QDate date, bool longForm)
{
    if (!date.isValid())
        return {};
    return QLocale().standaloneMonthName(date.month(), longForm ? QLocale::LongFormat : QLocale::ShortFormat);
}

QString getDateTime(const VelDateTime &dateTime)
{
    return getDay(dateTime.date()) + QLatin1Char(' ') + getTime(dateTime.time());
}
} // namespace VelText

namespace VelReminder
{
constexpr quint32 MinutesPerHour = 60;
constexpr quint32 MinutesPerDay = 24 * MinutesPerHour;

Unit reminderType(quint32 minutes)
{
    if (minutes % MinutesPerDay == 0)
        return Days;
    return minutes % MinutesPerHour == 0 ? Hours : Minutes;
}

quint32 valueForType(Unit unit, quint32 minutes)
{
    switch (unit) {
    case Hours:
        return minutes / MinutesPerHour;
    case Days:
        return minutes / MinutesPerDay;
    case Minutes:
        break;
    }
    return minutes;
}

QString toString(quint32 minutes)
{
    if (minutes < 1)
        return {};
    const Unit unit = reminderType(minutes);
    const QString words[] = {i18nc("unit of a lead time", "minutes"), i18nc("unit of a lead time", "hours"),
                             i18nc("unit of a lead time", "days")};
    return QString::number(valueForType(unit, minutes)) + QLatin1Char(' ') + words[unit];
}
} // namespace VelReminder
