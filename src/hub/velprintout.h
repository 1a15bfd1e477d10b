// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QSizeF>
#include <QString>

class QPaintDevice;
class QPainter;

/**
 * Something that can be put on paper: pages of equal size that can be laid out once and painted in any order.
 *
 * Pages are painted in dark ink on white, whatever colours the screen has. Lengths are in the painter's units,
 * which are the dots of the device.
 */
class VelPrintout
{
public:
    VelPrintout() = default;
    virtual ~VelPrintout() = default;
    Q_DISABLE_COPY_MOVE(VelPrintout)

    /** What stands at the head of every page and names the job in the printer's queue. */
    [[nodiscard]] virtual QString title() const = 0;

    /**
     * Lays everything out for pages with @p size of room between head and foot, with fonts measured on @p device.
     * Returns the number of pages, at least 1.
     */
    virtual int layOut(const QSizeF &size, const QPaintDevice *device) = 0;

    /** Paints page @p page (from 0). The origin is the top left corner of its room; nothing leaves the room. */
    virtual void paintPage(QPainter &painter, int page) const = 0;
};
