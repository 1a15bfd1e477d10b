// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "model/veldatetime.h"
#include "views/velpaper.h"

#include <QPrinter>

#include <functional>

class VelPrintout;

/** The pages of a printout with what stands around it: the title at the head, date and page number at the foot. */
class VelPrintPages
{
public:
    /** Told how many of all pages are done; false puts an end to it. */
    using Progress = std::function<bool(int done, int total)>;
    enum class Result { Done, Cancelled, Failed };

    /** Keeps a reference to @p printout. @p printed is when it is printed. */
    VelPrintPages(VelPrintout &printout, const VelDateTime &printed);

    /** Lays the printout out for pages of @p size, in dots of @p device. Returns their number, at least 1. */
    int layOut(const QSizeF &size, const QPaintDevice *device);
    [[nodiscard]] int pageCount() const { return m_count; }
    /** Where on the page the printout itself stands. */
    [[nodiscard]] QRectF room() const { return m_room; }

    /** Paints page @p page (from 0) with its corner at @p topLeft. */
    void paint(QPainter &painter, int page, const QPointF &topLeft = {}) const;

    /**
     * Lays out for the device's paper and paints all pages, or those that the range and order of a printer ask for.
     * When it was put to an end or the device failed the pages until then are painted.
     */
    Result print(QPainter &painter, QPagedPaintDevice &device, const Progress &progress = {});

private:
    void paintHead(QPainter &painter) const;
    void paintFoot(QPainter &painter, int page) const;

    VelPrintout &m_printout;
    QString m_printed;
    VelPaper m_paper;
    QSizeF m_size;
    QRectF m_room;
    int m_count = 1;
};
