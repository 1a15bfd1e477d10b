// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "views/veldayheader.h"

#include "hub/velapp.h"
#include "hub/vellook.h"
#include "model/veltext.h"
#include "views/velentrytext.h"

#include <QFontMetrics>
#include <QLocale>
#include <QMouseEvent>
#include <QPainter>

namespace
{
constexpr int Margin = 3; // pixels around the text

QString weekDay(QDate date, const QFontMetrics &metrics, int width)
{
    const QString full = VelText::getWeekDay(date);
    return metrics.horizontalAdvance(full) <= width
        ? full
        : QLocale().standaloneDayName(date.dayOfWeek(), QLocale::ShortFormat);
}
} // namespace

VelDayHeader::VelDayHeader(QWidget *parent)
    : QWidget(parent)
{
    velInstallAccessibility();
    setAttribute(Qt::WA_OpaquePaintEvent);
    setCursor(Qt::PointingHandCursor);
}

QSize VelDayHeader::sizeHint() const
{
    const QFontMetrics metrics(VelApp::getApp(this)->look().calendarFont);
    return {metrics.averageCharWidth() * 8, 2 * metrics.lineSpacing() + 2 * Margin};
}

void VelDayHeader::updateData(QDate date)
{
    m_date = date;
    update();
}

QString VelDayHeader::accessibleText() const
{
    return VelEntryText::dayName(m_date);
}

void VelDayHeader::paintEvent(QPaintEvent *)
{
    const VelApp *app = VelApp::getApp(this);
    const VelLook &look = app->look();
    const bool isToday = m_date == app->now().date();
    const QColor background = isToday ? look.highlight() : look.ruler();
    QPainter painter(this);
    painter.fillRect(rect(), look.grid());
    painter.fillRect(rect().adjusted(1, 1, -1, -1), background);

    QFont font = look.calendarFont;
    font.setBold(isToday);
    painter.setFont(font);
    painter.setPen(VelLook::textOn(background));
    const QFontMetrics metrics(font);
    const QString text = weekDay(m_date, metrics, width() - 2 * Margin) + QLatin1Char('\n')
        + VelText::getMonth(m_date, true) + QLatin1Char(' ') + QString::number(m_date.day());
    const QString narrow = weekDay(m_date, metrics, width() - 2 * Margin) + QLatin1Char('\n')
        + VelText::getMonth(m_date, false) + QLatin1Char(' ') + QString::number(m_date.day());
    const bool isWide = metrics.horizontalAdvance(text.section(QLatin1Char('\n'), 1)) <= width() - 2 * Margin;
    painter.drawText(rect().adjusted(Margin, Margin, -Margin, -Margin), Qt::AlignCenter,
                     isWide ? text : narrow);
}

void VelDayHeader::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton && rect().contains(event->pos()))
        Q_EMIT dayWanted(m_date);
}
