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

bool VelDayHeader::isToday() const
{
    return m_date == VelApp::getApp(this)->now().date();
}

QFont VelDayHeader::textFont() const
{
    QFont font = VelApp::getApp(this)->look().calendarFont;
    font.setBold(isToday());
    return font;
}

QString VelDayHeader::text(bool isShort) const
{
    const QString weekDay = isShort ? QLocale().standaloneDayName(m_date.dayOfWeek(), QLocale::ShortFormat)
                                    : VelText::getWeekDay(m_date);
    return weekDay + QLatin1Char('\n') + VelText::getMonth(m_date, !isShort) + QLatin1Char(' ')
        + QString::number(m_date.day());
}

bool VelDayHeader::isLongFitting(int width) const
{
    return QFontMetrics(textFont()).size(0, text(false)).width() <= width - 2 * Margin;
}

void VelDayHeader::setShort(bool isShort)
{
    if (isShort == m_isShort)
        return;
    m_isShort = isShort;
    update();
}

void VelDayHeader::paintEvent(QPaintEvent *)
{
    const VelLook &look = VelApp::getApp(this)->look();
    const QColor background = isToday() ? look.highlight() : look.ruler();
    QPainter painter(this);
    painter.fillRect(rect(), look.grid());
    painter.fillRect(rect().adjusted(1, 1, -1, -1), background);
    painter.setFont(textFont());
    painter.setPen(VelLook::textOn(background));
    painter.drawText(rect().adjusted(Margin, Margin, -Margin, -Margin), Qt::AlignCenter, text(m_isShort));
}

void VelDayHeader::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton && rect().contains(event->pos()))
        Q_EMIT dayWanted(m_date);
}
