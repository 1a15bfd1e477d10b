// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "views/veldaypickeritem.h"

#include "hub/velapp.h"
#include "model/veltext.h"

#include <KLocalizedString>

#include <QLocale>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>

#include <algorithm>

namespace
{
/** Pixels. The width of the frame around today, and the space for the cursor between it and the number. */
constexpr int FrameWidth = 2;
constexpr int FrameGap = 1;

/** What digits cover, from their base line: less than a line of text, which has room for lower letters. */
QRect inkOf(const QFontMetrics &metrics)
{
    QString digits;
    for (int digit = 0; digit <= 9; ++digit)
        digits += QLocale().toString(digit);
    return metrics.tightBoundingRect(digits);
}
} // namespace

QSize VelDayPickerCell::minimumSizeHint() const
{
    const QFontMetrics metrics(font());
    int width = 0;
    for (int digit = 0; digit <= 9; ++digit)
        width = std::max(width, metrics.horizontalAdvance(QLocale().toString(digit).repeated(2)));
    // Digits bring their gap at the sides along.
    return {width + 2 * FrameWidth, inkOf(metrics).height() + 2 * (FrameWidth + FrameGap)};
}

void VelDayPickerCell::drawNumber(QPainter &painter, int number) const
{
    const QRect place = numberRect(number);
    painter.drawText(place.left(), place.top() - inkOf(QFontMetrics(font())).top(),
                     QLocale().toString(number));
}

QRect VelDayPickerCell::numberRect(int number) const
{
    const QFontMetrics metrics(font());
    const QSize size(metrics.horizontalAdvance(QLocale().toString(number)), inkOf(metrics).height());
    return {QPoint((width() - size.width()) / 2, (height() - size.height()) / 2), size};
}

VelLook VelDayPickerCell::getLook() const
{
    const VelApp *app = VelApp::getApp(this);
    return app ? app->look() : VelLook::defaults(palette());
}

void VelDayPickerCell::tellNewName()
{
    QAccessibleEvent event(this, QAccessible::NameChanged);
    QAccessible::updateAccessibility(&event);
}

void VelDayPickerCell::mousePressEvent(QMouseEvent *event)
{
    event->setAccepted(event->button() == Qt::LeftButton);
}

void VelDayPickerCell::mouseReleaseEvent(QMouseEvent *event)
{
    const bool isLeft = event->button() == Qt::LeftButton;
    event->setAccepted(isLeft);
    if (isLeft && rect().contains(event->pos()))
        Q_EMIT chosen(getDate());
}

void VelDayPickerItem::setDay(const VelDayPickerDay &day)
{
    if (day == m_day)
        return;
    const bool hasNewName = day.date != m_day.date || day.isToday != m_day.isToday;
    m_day = day;
    update();
    if (hasNewName)
        tellNewName();
}

QString VelDayPickerItem::accessibleText() const
{
    const QString weekday = VelText::getWeekDay(m_day.date);
    const QString date = VelText::getDay(m_day.date);
    return m_day.isToday ? i18nc("weekday, date", "%1, %2, today", weekday, date)
                         : i18nc("weekday, date", "%1, %2", weekday, date);
}

QColor VelDayPickerItem::backgroundOf(const VelLook &look) const
{
    if (m_day.isHighlighted)
        return look.highlight();
    return m_day.isShownMonth ? look.dayHour : look.dayOffHour;
}

void VelDayPickerItem::paintEvent(QPaintEvent *)
{
    const VelLook look = getLook();
    const QColor background = backgroundOf(look);
    QPainter painter(this);
    painter.fillRect(rect(), background);
    if (m_day.isToday) {
        painter.setPen(QPen(look.red(), FrameWidth, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
        constexpr int middle = FrameWidth / 2; // of the line
        painter.drawRect(rect().adjusted(middle, middle, -middle, -middle));
    }
    // Red could not be read on the colour of the highlight: there it has a patch of the day's own.
    if (m_day.isRed && m_day.isHighlighted)
        painter.fillRect(numberRect(m_day.date.day()).adjusted(-2, -2, 2, 2), look.dayHour);
    painter.setPen(m_day.isRed ? look.red() : VelLook::textOn(background));
    drawNumber(painter, m_day.date.day());
    if (m_day.hasCursor) {
        painter.setPen(QPen(VelLook::textOn(background), 1, Qt::DotLine));
        painter.drawRect(rect().adjusted(FrameWidth, FrameWidth, -FrameWidth - 1, -FrameWidth - 1));
    }
}

void VelDayPickerWeek::setWeek(QDate date, int week)
{
    if (date == m_date && week == m_week)
        return;
    m_date = date;
    m_week = week;
    setToolTip(accessibleText());
    update();
    tellNewName();
}

QString VelDayPickerWeek::accessibleText() const
{
    return i18n("Week") + QLatin1Char(' ') + QLocale().toString(m_week);
}

void VelDayPickerWeek::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().window());
    const QRect edge(width() - 1, 0, 1, height());
    painter.fillRect(QStyle::visualRect(layoutDirection(), rect(), edge), getLook().grid());
    painter.setPen(palette().color(QPalette::WindowText));
    drawNumber(painter, m_week);
}
