// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QIcon>
#include <QStyle>
#include <QWidget>

/** A picture in one of the sizes that the style has for icons, sharp on whatever screen it is. */
class WPixmapWidget : public QWidget
{
    Q_OBJECT
public:
    /** @p extent names the width and height, such as QStyle::PM_SmallIconSize. */
    explicit WPixmapWidget(QStyle::PixelMetric extent, QWidget *parent = nullptr);

    [[nodiscard]] QIcon getIcon() const { return m_icon; }
    void setIcon(const QIcon &icon);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QStyle::PixelMetric m_extent;
    QIcon m_icon;
};
