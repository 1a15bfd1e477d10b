// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "hub/vellook.h"
#include "model/velentry.h"

#include <QWidget>

#include <array>

/** Some hours of a day as the views paint them, for the user to see what the colours and fonts come to. */
class VelLookSample : public QWidget
{
    Q_OBJECT
public:
    explicit VelLookSample(QWidget *parent = nullptr);

    void setLook(const VelLook &look);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    [[nodiscard]] int headerHeight() const;
    [[nodiscard]] int hourHeight() const;
    /** A place in the column of the day: parts of its width, and hours since the first that is shown. */
    [[nodiscard]] QRect place(qreal left, qreal right, qreal from, qreal to) const;
    void paintHeader(QPainter &painter) const;
    void paintRuler(QPainter &painter) const;
    void paintHours(QPainter &painter) const;
    void paintEntries(QPainter &painter) const;
    [[nodiscard]] QRect mirrored(const QRect &rect) const;

    VelLook m_look;
    std::array<VelEntry, 3> m_entries;
};
