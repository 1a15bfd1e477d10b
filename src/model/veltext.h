// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "model/veldatetime.h"

#include <QLocale>
#include <QString>

/** Dates and times as the user's locale, or another one, writes them. */
namespace VelText
{
/** The full hour, for example "9:00" or "9:00 AM". */
[[nodiscard]] QString getHour(int hour);
/** The time of day without seconds. */
[[nodiscard]] QString getTime(QTime time, const QLocale &locale = QLocale());
/** The date in the locale's short form with a full year; empty for no date. */
[[nodiscard]] QString getDay(QDate date, const QLocale &locale = QLocale());
/** The weekday's full name. */
[[nodiscard]] QString getWeekDay(QDate date);
/** The full name of weekday 1 (Monday) to 7 (Sunday); empty for other numbers. */
[[nodiscard]] QString getWeekDay(int day);
/** The name of the date's month, long or short. */
[[nodiscard]] QString getMonth(QDate date, bool longForm);
/** getDay(), a blank and getTime(). */
[[nodiscard]] QString getDateTime(const VelDateTime &dateTime);
} // namespace VelText

/** The lead time of a reminder in the words of its input. */
namespace VelReminder
{
enum Unit { Minutes = 0, Hours = 1, Days = 2 };

/** The largest unit of which @p minutes is a whole multiple. */
[[nodiscard]] Unit reminderType(quint32 minutes);
/** @p minutes in that unit, rounded down. */
[[nodiscard]] quint32 valueForType(Unit unit, quint32 minutes);
/** For example "15 minutes"; the words stay plural for 1. Empty for 0. */
[[nodiscard]] QString toString(quint32 minutes);
} // namespace VelReminder
