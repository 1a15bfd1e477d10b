// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "document/veldoc.h"
#include "hub/velapp.h"
#include "hub/vellook.h"
#include "model/velsettings.h"
#include "model/veltext.h"
#include "views/velday.h"
#include "views/veldayview.h"
#include "widgets/wshowntext.h"

#include <QPaintEvent>
#include <QPainter>
#include <QStyle>

namespace
{
constexpr int NowMarkWidth = 8; // pixels
}

void VelDay::paintEvent(QPaintEvent *event)
{
    QPainter painter(this);
    const QRect exposed = event->rect();
    paintHours(painter, exposed);
    paintSelection(painter);
    paintLines(painter, exposed);
    // The line lies below the entries, where it strikes no title through; its mark lies above them.
    paintNow(painter, width());
    paintEntries(painter, exposed, visibleTop());
    paintNow(painter, NowMarkWidth);
    paintDragEntry(painter);
}

void VelDay::paintHours(QPainter &painter, const QRect &exposed) const
{
    const VelSettings &settings = *VelApp::getSettings(m_view);
    const VelLook &look = VelApp::getApp(m_view)->look();
    const int pixels = rows().pixelsPerHour;
    bool isFirstColor = true;
    for (int hour = 0; hour < VelDayLayout::HoursPerDay; ++hour) {
        QColor color = look.dayOffHour;
        if (settings.isWorkingHour(m_date, QTime(hour, 0))) {
            color = isFirstColor ? look.dayHour : look.dayHour2();
            isFirstColor = !isFirstColor;
        } else {
            isFirstColor = true;
        }
        const QRect band(0, hour * pixels, width(), pixels);
        if (band.intersects(exposed))
            painter.fillRect(band, color);
    }
    painter.fillRect(0, VelDayLayout::HoursPerDay * pixels, width(), height(), look.dayOffHour);
}

void VelDay::paintSelection(QPainter &painter) const
{
    const VelDaySelection &selection = m_view->selection();
    if (selection.isEmpty() || selection.start().date() > m_date || selection.end().date() < m_date)
        return;
    const VelDayRows rows = this->rows();
    const QColor color = VelApp::getApp(m_view)->look().selection;
    for (int hour = 0; hour < VelDayLayout::HoursPerDay; ++hour) {
        for (int row = 0; row < rows.rowsPerHour(); ++row) {
            const QTime time(hour, row * rows.interval);
            if (selection.contains({m_date, time}))
                painter.fillRect(rowRect(time), color);
        }
    }
}

void VelDay::paintLines(QPainter &painter, const QRect &exposed) const
{
    const VelSettings &settings = *VelApp::getSettings(m_view);
    const VelLook &look = VelApp::getApp(m_view)->look();
    const int pixels = rows().pixelsPerHour;
    const QPen dashed(look.halfHour(), 1, Qt::DashLine);
    for (int hour = 0; hour < VelDayLayout::HoursPerDay; ++hour) {
        const int top = hour * pixels;
        if (!QRect(0, top, width(), pixels).intersects(exposed))
            continue;
        painter.fillRect(0, top, width(), 1, look.grid());
        if (!settings.isWorkingHour(m_date, QTime(hour, 0)))
            continue;
        painter.setPen(dashed);
        painter.drawLine(0, top + pixels / 2, width() - 1, top + pixels / 2);
    }
    for (int column = 1; column < m_source.getVisibleCount(); ++column) {
        const QRect line(column * (width() / m_source.getVisibleCount()) - 1, 0, 1, height());
        painter.fillRect(QStyle::visualRect(layoutDirection(), rect(), line), look.halfHour());
    }
    painter.fillRect(0, 0, 1, height(), look.grid());
    painter.fillRect(width() - 1, 0, 1, height(), look.grid());
    painter.fillRect(0, VelDayLayout::HoursPerDay * pixels - 1, width(), 1, look.grid());
}

void VelDay::paintNow(QPainter &painter, int length) const
{
    const VelApp *app = VelApp::getApp(m_view);
    const VelDateTime now = app->now();
    if (now.date() != m_date || m_mode != Calendar)
        return;
    const QRect line(0, rows().top(now.time()) - 1, length, length < width() ? 4 : 2);
    painter.fillRect(QStyle::visualRect(layoutDirection(), rect(), line), app->look().red());
}

QRect VelDay::dragRect() const
{
    if (m_dragEntry->notime) // it goes to the day, not to a row
        return {2, visibleTop() + 2, width() - 4, m_style.lineHeight + 4};
    const VelOl alone;
    const VelEntryRef shown(m_dragEntry.get());
    const QRect rect = VelDayLayout::calcGeometry(this->rect(), &alone, rows().pixelsPerHour, shown, m_date);
    return rect.adjusted(2, 0, -2, qMax(0, m_style.lineHeight + 4 - rect.height()));
}

void VelDay::paintDragEntry(QPainter &painter) const
{
    if (!m_dragEntry)
        return;
    const VelLook &look = VelApp::getApp(m_view)->look();
    const QRect rect = dragRect();
    painter.setOpacity(0.92);
    painter.fillRect(rect, look.highlight());
    painter.setOpacity(1);
    painter.setPen(VelLook::textOn(look.highlight()));
    QString text = WShownText::cut(m_dragEntry->getTitle());
    if (!m_dragEntry->notime)
        text.prepend(VelText::getTime(m_dragEntry->getStart().time()) + QChar(0x2013)
                     + VelText::getTime(m_dragEntry->getEnd().time()) + QLatin1Char('\n'));
    painter.drawText(rect.adjusted(4, 2, -4, -2), Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap, text);
}
