// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "hub/vellook.h"
#include "views/velaccessible.h"

#include <QDate>
#include <QWidget>

/** A cell of the day picker: stands for a date, with a short number in it that the left button chooses. */
class VelDayPickerCell : public QWidget, public VelAccessible
{
    Q_OBJECT
public:
    using QWidget::QWidget;

    [[nodiscard]] QAccessible::Role accessibleRole() const override { return QAccessible::Cell; }
    /** Room for every number of two digits inside the frame that marks today. */
    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] QSize sizeHint() const override { return minimumSizeHint(); }

Q_SIGNALS:
    /** The left button was released on the cell. */
    void chosen(QDate date);

protected:
    /** The date that the cell hands out when it is chosen. */
    [[nodiscard]] virtual QDate getDate() const = 0;
    /** The colours of the window, or the defaults for a cell in none. */
    [[nodiscard]] VelLook getLook() const;
    /** A screen reader may have kept the old accessibleText(). */
    void tellNewName();
    /** Centred, by what the digits cover. */
    void drawNumber(QPainter &painter, int number) const;
    /** What drawNumber() covers. */
    [[nodiscard]] QRect numberRect(int number) const;

    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
};

/** What a day cell shows. */
struct VelDayPickerDay {
    QDate date;
    bool isShownMonth = true; ///< of the month that the picker shows, not a neighbouring one
    bool isHighlighted = false; ///< in the range that the picker marks
    bool isToday = false;
    bool isRed = false; ///< Sunday or another day off for all
    bool hasCursor = false; ///< the keyboard acts on it

    bool operator==(const VelDayPickerDay &other) const = default;
};

/** One day in the day picker. */
class VelDayPickerItem : public VelDayPickerCell
{
    Q_OBJECT
public:
    using VelDayPickerCell::VelDayPickerCell;

    /** Repaints only when something is other than before. */
    void setDay(const VelDayPickerDay &day);
    [[nodiscard]] const VelDayPickerDay &getDay() const { return m_day; }
    [[nodiscard]] QDate getDate() const override { return m_day.date; }
    /** The weekday, the date and whether it is today. */
    [[nodiscard]] QString accessibleText() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    [[nodiscard]] QColor backgroundOf(const VelLook &look) const;

    VelDayPickerDay m_day;
};

/** The number of one row's week in the day picker. Its background is the palette's window colour. */
class VelDayPickerWeek : public VelDayPickerCell
{
    Q_OBJECT
public:
    using VelDayPickerCell::VelDayPickerCell;

    /** @p date is the first day of the row, @p week the number shown. */
    void setWeek(QDate date, int week);
    [[nodiscard]] QDate getDate() const override { return m_date; }
    [[nodiscard]] int getWeek() const { return m_week; }
    [[nodiscard]] QString accessibleText() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QDate m_date;
    int m_week = 0;
};
