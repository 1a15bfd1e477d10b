// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QDate>
#include <QRect>

/** The grid of whole weeks that covers one month: seven columns, four to six rows. Pure arithmetic. */
class VelMonthLayout
{
public:
    static constexpr int DaysPerWeek = 7;

    /** Every day of the grid that covers the month of @p month stands in its cell in weeks from @p isMondayFirst. */
    VelMonthLayout(QDate month, bool isMondayFirst);
    /** The same with the weeks of the user's locale. */
    explicit VelMonthLayout(QDate month);

    /** The day in the first cell: on or before the first of the month. */
    [[nodiscard]] QDate startDate() const { return m_start; }
    [[nodiscard]] QDate endDate() const { return m_start.addDays(dayCount() - 1); }
    [[nodiscard]] int weeks() const { return m_weeks; }
    [[nodiscard]] int dayCount() const { return m_weeks * DaysPerWeek; }
    [[nodiscard]] QDate month() const { return m_month; }
    [[nodiscard]] bool isInMonth(QDate date) const
    {
        return date.month() == m_month.month() && date.year() == m_month.year();
    }
    [[nodiscard]] bool contains(QDate date) const { return date >= m_start && date <= endDate(); }

    /** The size of the whole view in pixels, and of that the height of the heading above the cells. */
    void setSize(const QSize &size, int headingHeight);
    /** The cell of a row and column; in a right-to-left view the caller mirrors it. */
    [[nodiscard]] QRect getRect(int row, int column) const;
    /** The cell of a day of the grid. */
    [[nodiscard]] QRect getRect(QDate date) const;
    /** The day whose cell @p point is in; invalid above, below and beside the cells. */
    [[nodiscard]] QDate getDate(const QPoint &point) const;
    /** How many lines for entries fit below the line that holds the day's number. */
    [[nodiscard]] int linesPerCell(int lineHeight) const;
    /** Line @p line (from 1, below the day's number) in the cell of @p date. */
    [[nodiscard]] QRect lineRect(QDate date, int line, int lineHeight) const;

private:
    QDate m_month;
    QDate m_start;
    int m_weeks = 0;
    QSize m_size;
    int m_headingHeight = 0;
};
