// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QDate>
#include <QLocale>
#include <QTime>

/**
 * Reads the dates and times that people type, in whatever form is usual somewhere: they are shown again at once in the
 * locale's own form, so that everybody sees what has been understood.
 */
namespace VelTyped
{
/** What a date is counted from that does not say everything. */
struct Days {
    QDate today;
    QDate near; ///< the day that stands there to be changed
};

/**
 * A time to the minute; invalid when @p text says none. "9", "915", "9.15", "9h15", "2:30 pm", "230p" and "14:30:00" are
 * all read, everywhere: without "am" or "pm", in English or in the words of @p locale, hours go from 0 to 23.
 */
[[nodiscard]] QTime readTime(const QString &text, const QLocale &locale);

/**
 * A day that VelDateTime::isSupported(); invalid when @p text says none.
 *
 * Read are "24.12.", "12/24/26", "2026-12-24", "24 Dec", "December 24th, 2026", "Fri 24.12." and "24", "today", "tomorrow",
 * "yesterday", and the name of a weekday for the next such day after today; names in English or in the language of
 * @p locale, which also has the order of day and month, unless only the other order makes a day. Two digits are a year
 * from 1969 to 2068. Without a year a day that was up to 90 days before the one that stands there is that one, others
 * are to come; a day alone is of the month that stands there.
 */
[[nodiscard]] QDate readDate(const QString &text, const Days &days, const QLocale &locale);

/** What to tell the user, in two lines at most, about a text that readTime() does not read; empty for one that it does. */
[[nodiscard]] QString timeProblem(const QString &text, const QLocale &locale);
/** The same for readDate(). */
[[nodiscard]] QString dateProblem(const QString &text, const Days &days, const QLocale &locale);
} // namespace VelTyped
