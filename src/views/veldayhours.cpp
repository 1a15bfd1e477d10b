// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "views/veldayhours.h"

#include "hub/velapp.h"
#include "hub/vellook.h"
#include "model/veltext.h"
#include "views/veldaylayout.h"

#include <QFontMetrics>
#include <QPainter>
#include <QStyle>

namespace
{
constexpr int TextMargin = 4; // pixels between a label and the edge
}

VelDayHours::VelDayHours(QWidget *parent)
    : QWidget(parent)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
}

QSize VelDayHours::sizeHint() const
{
    const QFontMetrics metrics(VelApp::getApp(this)->look().calendarFont);
    int width = 0;
    for (int hour = 0; hour < VelDayLayout::HoursPerDay; ++hour)
        width = qMax(width, metrics.horizontalAdvance(VelText::getHour(hour)));
    return {width + 3 * TextMargin, metrics.height()};
}

void VelDayHours::paintEvent(QPaintEvent *)
{
    const VelLook &look = VelApp::getApp(this)->look();
    QPainter painter(this);
    painter.fillRect(rect(), look.ruler());
    painter.setFont(look.calendarFont);
    const int band = height() / VelDayLayout::HoursPerDay;
    for (int hour = 0; hour < VelDayLayout::HoursPerDay; ++hour) {
        const QRect row(0, hour * band, width(), band);
        painter.fillRect(row.left(), row.top(), row.width(), 1, look.grid());
        painter.setPen(VelLook::textOn(look.ruler()));
        const QRect text(QPoint(0, row.top()), QPoint(width() - TextMargin, row.bottom()));
        painter.drawText(QStyle::visualRect(layoutDirection(), rect(), text),
                         int(QStyle::visualAlignment(layoutDirection(), Qt::AlignRight)) | Qt::AlignVCenter,
                         VelText::getHour(hour));
    }
}
