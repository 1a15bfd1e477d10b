// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "views/velmonthlayout.h"

#include <QLocale>

VelMonthLayout::VelMonthLayout(QDate month, bool isMondayFirst)
    : m_month(month)
{
    const QDate first(month.year(), month.month(), 1);
    // Days since the week began: a month that begins with the week begins in the first row.
    const int lead = isMondayFirst ? first.dayOfWeek() - 1 : first.dayOfWeek() % DaysPerWeek;
    m_start = first.addDays(-lead);
    m_weeks = (lead + first.daysInMonth() + DaysPerWeek - 1) / DaysPerWeek;
}

VelMonthLayout::VelMonthLayout(QDate month)
    : VelMonthLayout(month, QLocale().firstDayOfWeek() == Qt::Monday)
{
}

void VelMonthLayout::setSize(const QSize &size, int headingHeight)
{
    m_size = size;
    m_headingHeight = headingHeight;
}

QRect VelMonthLayout::getRect(int row, int column) const
{
    const int width = m_size.width() / DaysPerWeek;
    const int height = (m_size.height() - m_headingHeight) / m_weeks;
    return {column * width, m_headingHeight + row * height, width, height};
}

QRect VelMonthLayout::getRect(QDate date) const
{
    const int day = static_cast<int>(m_start.daysTo(date));
    return getRect(day / DaysPerWeek, day % DaysPerWeek);
}

QDate VelMonthLayout::getDate(const QPoint &point) const
{
    const QRect cell = getRect(0, 0);
    if (cell.isEmpty() || point.x() < 0 || point.y() < m_headingHeight)
        return {};
    const int row = (point.y() - m_headingHeight) / cell.height();
    const int column = point.x() / cell.width();
    return row < m_weeks && column < DaysPerWeek ? m_start.addDays(row * DaysPerWeek + column) : QDate();
}

int VelMonthLayout::linesPerCell(int lineHeight) const
{
    // Line n fits when it ends within the cell; line 0 holds the day's number.
    return lineHeight > 0 ? qMax(0, getRect(0, 0).height() / lineHeight - 1) : 0;
}

QRect VelMonthLayout::lineRect(QDate date, int line, int lineHeight) const
{
    const QRect cell = getRect(date);
    return {cell.left() + 1, cell.top() + line * lineHeight, cell.width() - 2, lineHeight};
}
