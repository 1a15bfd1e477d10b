// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "views/velaccessible.h"

#include <QDate>
#include <QWidget>

class VelDaySource;

/**
 * The names of the persons whose columns stand side by side in the day below: written across where there is room, else
 * from bottom to top.
 */
class VelDayNames : public QWidget, public VelAccessible
{
    Q_OBJECT
public:
    /** Keeps a reference to @p source, which knows the names. */
    VelDayNames(const VelDaySource &source, QWidget *parent);

    /** The columns or the day are others now. */
    void updateData(QDate date);
    /** Pixels that the names need over a day of @p width pixels: 0 without any, or where none could be read. */
    [[nodiscard]] int heightFor(int width) const;

    [[nodiscard]] QAccessible::Role accessibleRole() const override { return QAccessible::Grouping; }
    [[nodiscard]] QString accessibleText() const override;
    [[nodiscard]] int accessibleCount() const override;
    [[nodiscard]] VelAccessibleItem accessibleItem(int index) const override;

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    [[nodiscard]] QFont textFont(int width) const;
    [[nodiscard]] int columnWidth(int width) const;
    [[nodiscard]] bool isAcross(int width) const;
    [[nodiscard]] QRect columnRect(int column) const;
    void paintName(QPainter &painter, const QRect &rect, const QString &name) const;

    const VelDaySource &m_source;
    QDate m_date;
};
