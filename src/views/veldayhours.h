// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QWidget>

/** The ruler that labels the hours beside the columns of days, as tall as they are. */
class VelDayHours : public QWidget
{
    Q_OBJECT
public:
    explicit VelDayHours(QWidget *parent);

    /** Wide enough for every label in the calendar's font. */
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent *event) override;
};
