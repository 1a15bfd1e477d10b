// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QDate>
#include <QString>
#include <QVector>

/** How an entry repeats, as it is stored. */
struct VelRecurrenceRule {
    /** The kinds of rule; other values never repeat. */
    enum Type { None = 0, Daily = 1, Weekly = 2, Monthly = 3, Yearly = 4 };

    /** No rule any more. */
    void clear() { *this = {}; }

    bool operator==(const VelRecurrenceRule &other) const = default;

    /**
     * A translated sentence that describes the rule of an entry starting on @p start, and where it ends, if
     * it does; empty without a rule.
     */
    [[nodiscard]] QString getRecurrenceText(QDate start) const;

    /** "MO" 1 ... "SU" 7; anything else 0. */
    [[nodiscard]] static int getDayNumber(const QString &text);
    /** 1 "MO" ... 7 "SU"; anything else an empty text. */
    [[nodiscard]] static QString getDayString(int number);

    int recurringtype = None;
    int occurevery = 0; ///< every so many days, weeks, months or years
    /**
     * Weekly: the weekdays, 1 = Monday to 7 = Sunday, ascending. Monthly: one value, the day of the month
     * when occurdaynumber is 0, else the weekday.
     */
    QVector<int> occurdays;
    int occurdaynumber =
        0; ///< monthly: 0 by day of month, 1..4 first to fourth such weekday, negative the last
    QDate occurenddate; ///< exclusive: the first day on which there is no occurrence any more; null is open
    int occurendcount = 0; ///< instances in all, the entry itself included; 0 is no count
};
