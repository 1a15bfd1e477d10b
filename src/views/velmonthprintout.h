// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "hub/velprintout.h"
#include "views/velagendaprintout.h"
#include "views/velmonthlayout.h"
#include "views/velpaper.h"

#include <memory>

class VelDaySource;

/**
 * A month as a grid of weeks on one page. When any text is cut short or left out there, pages with a list of
 * all entries follow.
 */
class VelMonthPrintout : public VelPrintout
{
public:
    /** The month that @p month lies in, in weeks of the user's locale. */
    VelMonthPrintout(std::unique_ptr<const VelDaySource> source, QDate month);
    ~VelMonthPrintout() override;

    [[nodiscard]] QString title() const override;
    int layOut(const QSizeF &size, const QPaintDevice *device) override;
    void paintPage(QPainter &painter, int page) const override;

private:
    struct Cell {
        QRectF rect;
        QString number;
        bool isInMonth;
        QStringList lines;
    };

    void addCell(QDate day);
    [[nodiscard]] QStringList fittingLines(const QStringList &texts, qreal width, int room);
    void paintCell(QPainter &painter, const Cell &cell) const;

    std::unique_ptr<const VelDaySource> m_source;
    VelMonthLayout m_layout;
    VelAgendaPrintout m_agenda;

    VelPaper m_paper;
    QSizeF m_size;
    std::vector<Cell> m_cells;
    bool m_isComplete = true;
};
