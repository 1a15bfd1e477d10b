// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "views/velaccessible.h"

#include <QDate>
#include <QWidget>

#include <array>

class QGridLayout;
class QLabel;
class QToolButton;
class VelDayPickerItem;
class VelDayPickerWeek;
class WPopupMenu;
struct VelDayPickerDay;

/**
 * A small calendar of one month in six weeks, with which the user goes to a day.
 *
 * It tells apart the current date, which was set or chosen last, and the month that it shows: choosing a day
 * of a neighbouring month leaves the month where it is. The keyboard has a cursor of its own that walks about
 * without changing the date until Return or Space chooses. Stands in a window (VelApp), of which it takes
 * the clock, the colours and the days off. Dates outside VelDateTime::isSupported() are never taken.
 */
class VelDayPicker : public QWidget, public VelAccessible
{
    Q_OBJECT
public:
    static constexpr int WeekCount = 6;
    static constexpr int DaysPerWeek = 7;

    explicit VelDayPicker(QWidget *parent);

    /** The date last set or chosen. */
    [[nodiscard]] QDate getDate() const { return m_current; }
    /** A date in the month that is shown. */
    [[nodiscard]] QDate getShown() const { return m_shown; }

    /** Makes @p date the current one and shows its month. Emits nothing. */
    void setDate(QDate date);
    /** Marks @p days days from @p start on; none for 0. */
    void setHighlight(QDate start, int days);
    /** Takes the colours of the window again, after they have changed. */
    void updateColors();
    /** Moves the mark of today, after midnight. */
    void updateToday();
    /** Makes @p date the current one and tells so. The month shown stays. */
    void emitDateSelected(QDate date);

    /**
     * The day in the first cell when the month of @p date is shown. With weeks from Monday a month that begins
     * with its week stands in the first row. With weeks from Sunday it stands in the second, below the whole
     * last week of the month before: there a month always has a row or part of a row above it.
     */
    [[nodiscard]] static QDate gridStart(QDate date, bool isMondayFirst);
    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QAccessible::Role accessibleRole() const override { return QAccessible::Grouping; }
    [[nodiscard]] QString accessibleText() const override;

public Q_SLOTS:
    /** @name Steps from the month shown, in the last day of which a later day ends up */
    /// @{
    void nextMonth();
    void prevMonth();
    void nextYear();
    void prevYear();
    /// @}
    /** Asks for a date and chooses it. Returns at once, with the dialog open. */
    void enterDate();

Q_SIGNALS:
    /** The user has moved to another date, by stepping or by choosing. */
    void dateChanged(QDate date);
    /** The user has chosen a day, a week or a typed date. */
    void dateSelected(QDate date);

protected:
    void changeEvent(QEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    /** The buttons from the previous to the next, in the order of reading. */
    enum Step { PrevYear, PrevMonth, NextMonth, NextYear };
    static constexpr int StepCount = 4;

    void addHeading(QGridLayout *layout);
    void addWeekdays(QGridLayout *layout);
    void addCells(QGridLayout *layout);
    void addLine(QGridLayout *layout, int row);
    void createLabel(QGridLayout *layout, const QString &letter, int column, int day);
    void createButton(Step step, const QString &toolTip, void (VelDayPicker::*slot)());
    void createMenu();
    void updateIcons();
    void updateLabelSize();
    void updateCalendar();
    void updateDays();
    [[nodiscard]] VelDayPickerDay dayOf(QDate date, QDate today) const;
    [[nodiscard]] QDate getToday() const;
    [[nodiscard]] VelDayPickerItem *itemOf(QDate date) const;
    void step(QDate date);
    void moveCursor(QDate date);
    [[nodiscard]] QDate cursorAfter(int key, Qt::KeyboardModifiers modifiers) const;
    void goToday();
    [[nodiscard]] QDate readDate(const QString &text) const;
    [[nodiscard]] QString readingOf(const QString &text) const;
    void takeTyped(const QString &text);

    QDate m_current;
    QDate m_shown;
    QDate m_cursor;
    QDate m_highlightStart;
    int m_highlightDays = 0;
    bool m_isMondayFirst;
    int m_wheelAngle = 0; // eighths of a degree that are no whole step yet
    QLabel *m_monthLabel;
    std::array<QToolButton *, StepCount> m_buttons{};
    std::array<VelDayPickerWeek *, WeekCount> m_weeks{};
    std::array<VelDayPickerItem *, WeekCount * DaysPerWeek> m_items{};
    WPopupMenu *m_menu = nullptr; // made when asked for
};
