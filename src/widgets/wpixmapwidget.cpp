// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "widgets/wpixmapwidget.h"

#include <QPainter>

WPixmapWidget::WPixmapWidget(QStyle::PixelMetric extent, QWidget *parent)
    : QWidget(parent)
    , m_extent(extent)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void WPixmapWidget::setIcon(const QIcon &icon)
{
    m_icon = icon;
    update();
}

QSize WPixmapWidget::sizeHint() const
{
    const int size = style()->pixelMetric(m_extent, nullptr, this);
    return {size, size};
}

void WPixmapWidget::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    m_icon.paint(&painter, QStyle::alignedRect(layoutDirection(), Qt::AlignCenter, sizeHint(), rect()));
}
