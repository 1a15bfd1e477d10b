// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "model/velsettings.h"

#include <QLocale>

#include <algorithm>

bool VelSettings::isWorkingHour(QDate date, QTime time) const
{
    return isWorkingDay(date) && workdayBegin.hour() <= time.hour() && time.hour() < workdayEnd.hour();
}

bool VelSettings::isWorkingHour(const QDateTime &dateTime) const
{
    return isWorkingHour(dateTime.date(), dateTime.time());
}

int VelSettings::weekOfYear(QDate date, bool isMondayFirst)
{
    const int firstWeekday = QDate(date.year(), 1, 1).dayOfWeek();
    // Negative early in a year that begins on Friday to Sunday; the divisions truncate towards 0 on purpose.
    const int days = date.dayOfYear() + (firstWeekday > 4 ? firstWeekday - 8 : firstWeekday - 1);
    const int week = date.dayOfWeek() == Qt::Sunday && isMondayFirst ? days / 7 : days / 7 + 1;
    if (week == 53 && QDate(date.year(), 12, 31).dayOfWeek() <= Qt::Wednesday)
        return 1;
    return week;
}

int VelSettings::weekOfYear(QDate date)
{
    return weekOfYear(date, QLocale().firstDayOfWeek() == Qt::Monday);
}

void VelSettings::takeAccount(const VelSettings &other)
{
    server = other.server;
    port = other.port;
    encrypt = other.encrypt;
    isUntried = other.isUntried;
    user = other.user;
    pass = other.pass;
    origUserid = other.origUserid;
}

void VelSettings::setWorkdays(const QVector<int> &days)
{
    QVector<int> kept;
    for (int day = Qt::Monday; day <= Qt::Sunday; ++day) {
        if (days.contains(day))
            kept.append(day);
    }
    m_workdays = kept.isEmpty() ? QVector<int>{1, 2, 3, 4, 5} : kept;
}
