// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QDateTime>
#include <QString>

#include <variant>

/** Puts @p fillChar before @p text until it is two characters long. */
[[nodiscard]] QString wPad(const QString &text, QChar fillChar = QLatin1Char('0'));

/** A cell that holds a moment and sorts by it. The moment is wall clock time, whatever zone it says it is in.
 */
class WDateTimeTableItem
{
public:
    explicit WDateTimeTableItem(const QDateTime &dateTime = QDateTime())
        : m_dateTime(dateTime)
    {
    }
    void setDateTime(const QDateTime &dateTime) { m_dateTime = dateTime; }
    [[nodiscard]] const QDateTime &dateTime() const { return m_dateTime; }
    /** Year, month, day, hour, minute, second, each but the year with two digits; empty for an invalid one.
     */
    [[nodiscard]] QString key() const;
    /** The digits of key() as one number; an invalid one comes before all others. */
    [[nodiscard]] qint64 sortKey() const;

private:
    QDateTime m_dateTime;
};

/** A cell that holds a day and sorts by it. */
class WDateTableItem
{
public:
    explicit WDateTableItem(const QDate &date = QDate())
        : m_date(date)
    {
    }
    void setDate(const QDate &date) { m_date = date; }
    [[nodiscard]] const QDate &date() const { return m_date; }
    /** Year, month and day, the latter two with two digits; empty for an invalid date. */
    [[nodiscard]] QString key() const;
    /** The digits of key() as one number; an invalid date comes before all others. */
    [[nodiscard]] qint64 sortKey() const;

private:
    QDate m_date;
};

/**
 * A cell that shows and sorts by a text and leads the owner from a row to its object.
 * The table never follows the pointer and does not own what it points to.
 */
class WKeyTableItem
{
public:
    explicit WKeyTableItem(const QString &text = QString(), void *item = nullptr)
        : m_text(text)
        , m_item(item)
    {
    }
    [[nodiscard]] const QString &text() const { return m_text; }
    void setItem(void *item) { m_item = item; }
    [[nodiscard]] void *item() const { return m_item; }
    [[nodiscard]] const QString &key() const { return m_text; }

private:
    QString m_text;
    void *m_item;
};

/** A cell with a check box. Unchecked sorts before checked. */
struct WCheckTableItem {
    bool checked = false;
};

/**
 * What a cell of a WTable can be: nothing, a plain text, one of the above, or a number that sorts by its
 * value.
 */
using WTableItem = std::variant<std::monostate, QString, WDateTimeTableItem, WDateTableItem, WKeyTableItem,
                                WCheckTableItem, int>;

/** True when the cell sorts by its text and not by a number. */
[[nodiscard]] bool wSortsByText(const WTableItem &item);

/** The number by which a cell sorts that does not sort by its text; the smallest one for an empty cell. */
[[nodiscard]] qint64 wSortNumber(const WTableItem &item);
