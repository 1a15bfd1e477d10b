// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "widgets/wtableitem.h"

#include <limits>

namespace
{
constexpr qint64 BeforeAll = std::numeric_limits<qint64>::min();

qint64 digitsOf(QDate date)
{
    int year = 0;
    int month = 0;
    int day = 0;
    date.getDate(&year, &month, &day);
    return (qint64(year) * 100 + month) * 100 + day;
}

struct SortNumber {
    qint64 operator()(std::monostate) const { return BeforeAll; }
    qint64 operator()(const QString &) const { return BeforeAll; }
    qint64 operator()(const WKeyTableItem &) const { return BeforeAll; }
    qint64 operator()(const WDateTimeTableItem &item) const { return item.sortKey(); }
    // As the moment at midnight, so that days and moments sort together where a column holds both.
    qint64 operator()(const WDateTableItem &item) const
    {
        return item.date().isValid() ? item.sortKey() * 1000000 : BeforeAll;
    }
    qint64 operator()(WCheckTableItem item) const { return item.checked ? 1 : 0; }
    qint64 operator()(int number) const { return number; }
};
} // namespace

QString wPad(const QString &text, QChar fillChar)
{
    return text.rightJustified(2, fillChar);
}

QString WDateTimeTableItem::key() const
{
    if (!m_dateTime.isValid()) {
        return {};
    }
    const QTime time = m_dateTime.time();
    return WDateTableItem(m_dateTime.date()).key() + wPad(QString::number(time.hour()))
        + wPad(QString::number(time.minute())) + wPad(QString::number(time.second()));
}

qint64 WDateTimeTableItem::sortKey() const
{
    if (!m_dateTime.isValid()) {
        return BeforeAll;
    }
    const QTime time = m_dateTime.time();
    return ((digitsOf(m_dateTime.date()) * 100 + time.hour()) * 100 + time.minute()) * 100 + time.second();
}

QString WDateTableItem::key() const
{
    if (!m_date.isValid()) {
        return {};
    }
    return QString::number(m_date.year()) + wPad(QString::number(m_date.month()))
        + wPad(QString::number(m_date.day()));
}

qint64 WDateTableItem::sortKey() const
{
    return m_date.isValid() ? digitsOf(m_date) : BeforeAll;
}

bool wSortsByText(const WTableItem &item)
{
    return std::holds_alternative<QString>(item) || std::holds_alternative<WKeyTableItem>(item);
}

qint64 wSortNumber(const WTableItem &item)
{
    return std::visit(SortNumber{}, item);
}
