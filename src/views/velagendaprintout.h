// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "hub/velprintout.h"
#include "views/velflow.h"

#include <QDate>

class VelDaySource;

/** All that happens on some days as a list: whatever its length, every text is printed whole. */
class VelAgendaPrintout : public VelPrintout
{
public:
    /** Keeps a reference to @p source and asks it anew for every layout. Days without entries are left out. */
    VelAgendaPrintout(const VelDaySource &source, QDate first, int days);

    [[nodiscard]] QString title() const override;
    int layOut(const QSizeF &size, const QPaintDevice *device) override;
    void paintPage(QPainter &painter, int page) const override { m_flow.paintPage(painter, page); }

    /** The heading of some days: one date in full, or the first and the last. */
    [[nodiscard]] static QString titleOf(QDate first, int days);

private:
    void addDay(QDate day);

    const VelDaySource &m_source;
    QDate m_first;
    int m_days;
    bool m_isEmpty = true;
    VelFlow m_flow;
};
