// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "views/velaccessible.h"

#include <QDate>
#include <QFont>
#include <QWidget>

/** The heading over the column of a day: its name. A click asks for that day alone. */
class VelDayHeader : public QWidget, public VelAccessible
{
    Q_OBJECT
public:
    explicit VelDayHeader(QWidget *parent);

    [[nodiscard]] QDate date() const { return m_date; }
    /** True when the long names of weekday and month fit into @p width pixels. */
    [[nodiscard]] bool isLongFitting(int width) const;
    /** All headings of a range use the same form. */
    void setShort(bool isShort);
    /** Tall enough for its lines in the calendar's font. */
    [[nodiscard]] QSize sizeHint() const override;

    [[nodiscard]] QAccessible::Role accessibleRole() const override { return QAccessible::ColumnHeader; }
    [[nodiscard]] QString accessibleText() const override;

public Q_SLOTS:
    void updateData(QDate date);

Q_SIGNALS:
    /** The user wants to see that day alone. */
    void dayWanted(QDate date);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    [[nodiscard]] bool isToday() const;
    [[nodiscard]] QFont textFont() const;
    [[nodiscard]] QString text(bool isShort) const;

    QDate m_date;
    bool m_isShort = false;
};
