// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "widgets/wdatepickerframe.h"

#include <KLocalizedString>

#include <QCalendarWidget>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLocale>
#include <QPushButton>
#include <QScreen>
#include <QTextCharFormat>
#include <QVBoxLayout>

#include <algorithm>

WDatePickerFrame::WDatePickerFrame(QWidget *parent)
    : QFrame(parent, Qt::Popup)
    , m_calendar(new QCalendarWidget(this))
{
    setAttribute(Qt::WA_WindowPropagation); // the locale and the palette are those of the input
    // A click on the arrow of the input shall close it, not open it again.
    setAttribute(Qt::WA_NoMouseReplay);
    setFrameShape(QFrame::StyledPanel);
    setFrameShadow(QFrame::Raised);
    m_calendar->setVerticalHeaderFormat(QCalendarWidget::ISOWeekNumbers);
    auto *today = new QPushButton(i18n("&Today"), this);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(m_calendar);
    layout->addWidget(today, 0, Qt::AlignHCenter);
    connect(m_calendar, &QCalendarWidget::clicked, this, &WDatePickerFrame::choose);
    connect(m_calendar, &QCalendarWidget::activated, this, &WDatePickerFrame::choose);
    connect(today, &QPushButton::clicked, this, [this] { choose(m_today); });
    colorDays();
}

void WDatePickerFrame::popup(const QWidget &input, QDate date, QDate today)
{
    markToday(today);
    m_calendar->setSelectedDate(date);
    m_calendar->showSelectedDate();
    adjustSize();
    const QRect place(input.mapToGlobal(QPoint(0, 0)), input.size());
    // A window on two screens belongs to one, which need not be where the input is.
    const QScreen *screen = QGuiApplication::screenAt(place.center());
    if (!screen)
        screen = input.screen();
    move(placeFor(size(), place, screen->availableGeometry(), input.layoutDirection()));
    show();
    m_calendar->setFocus();
}

QPoint WDatePickerFrame::placeFor(const QSize &frame, const QRect &input, const QRect &screen,
                                  Qt::LayoutDirection direction)
{
    const int x = direction == Qt::RightToLeft ? input.right() + 1 - frame.width() : input.left();
    const bool fitsBelow = input.bottom() + frame.height() <= screen.bottom();
    const int y = fitsBelow ? input.bottom() + 1 : input.top() - frame.height();
    const auto within = [](int wanted, int first, int room) {
        return std::max(first, std::min(wanted, first + room));
    };
    return {within(x, screen.left(), screen.width() - frame.width()),
            within(y, screen.top(), screen.height() - frame.height())};
}

QColor WDatePickerFrame::dayOffColor(const QColor &text)
{
    // Halfway to red a dark text stays dark, and a light one light.
    return QColor((text.red() + 255) / 2, text.green() / 2, text.blue() / 2);
}

void WDatePickerFrame::choose(QDate date)
{
    hide();
    Q_EMIT dateChosen(date);
}

void WDatePickerFrame::colorDays()
{
    QTextCharFormat workday;
    workday.setForeground(palette().brush(QPalette::Text));
    QTextCharFormat dayOff;
    dayOff.setForeground(dayOffColor(palette().color(QPalette::Text)));
    const QList<Qt::DayOfWeek> workdays = locale().weekdays();
    for (int day = Qt::Monday; day <= Qt::Sunday; ++day) {
        const auto weekday = static_cast<Qt::DayOfWeek>(day);
        m_calendar->setWeekdayTextFormat(weekday, workdays.contains(weekday) ? workday : dayOff);
    }
}

void WDatePickerFrame::markToday(QDate today)
{
    m_calendar->setDateTextFormat(m_today, {});
    m_today = today;
    QTextCharFormat format;
    format.setFontWeight(QFont::Bold);
    format.setFontUnderline(true);
    m_calendar->setDateTextFormat(m_today, format);
}

void WDatePickerFrame::changeEvent(QEvent *event)
{
    QFrame::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::LocaleChange)
        colorDays();
}

void WDatePickerFrame::keyPressEvent(QKeyEvent *event)
{
    if (event->matches(QKeySequence::Cancel))
        hide();
    else
        QFrame::keyPressEvent(event);
}
