// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QDate>
#include <QFrame>

class QCalendarWidget;

/**
 * A calendar that pops up for a day to be chosen: by mouse, with Return, or as today by a button. Escape and a click
 * beside it choose none.
 *
 * It shows the numbers of the weeks, and the days off in a colour that can be read on the palette's.
 */
class WDatePickerFrame : public QFrame
{
    Q_OBJECT
public:
    explicit WDatePickerFrame(QWidget *parent);

    /** Shows @p date to begin with, and marks @p today, below @p input or, where the screen ends, above it. */
    void popup(const QWidget &input, QDate date, QDate today);

    /** Where a frame of that size goes for an input there: on the screen, and where reading begins at its edge. */
    [[nodiscard]] static QPoint placeFor(const QSize &frame, const QRect &input, const QRect &screen,
                                         Qt::LayoutDirection direction);
    /** The colour of days off among days written in @p text: redder, and as far from what it stands on. */
    [[nodiscard]] static QColor dayOffColor(const QColor &text);

Q_SIGNALS:
    void dateChosen(QDate date);

protected:
    void changeEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void choose(QDate date);
    void colorDays();
    void markToday(QDate today);

    QCalendarWidget *m_calendar;
    QDate m_today; // as it is marked
};
