// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "views/velprintpages.h"

#include "hub/velprintout.h"
#include "model/veltext.h"

#include <KLocalizedString>

#include <QPageLayout>
#include <QPainter>

namespace
{
/** Millimetres between head or foot and what is between them. */
constexpr qreal Gap = 2;

struct Range {
    int first;
    int last;
    bool isBackwards;
};

/** The pages that are wanted, from 0. */
Range wantedPages(const QPagedPaintDevice &device, int count)
{
    const auto *printer = dynamic_cast<const QPrinter *>(&device);
    const bool isBackwards = printer && printer->pageOrder() == QPrinter::LastPageFirst;
    if (!printer || printer->printRange() != QPrinter::PageRange || printer->fromPage() < 1)
        return {0, count - 1, isBackwards};
    const int first = qMin(printer->fromPage(), count);
    return {first - 1, qBound(first, printer->toPage(), count) - 1, isBackwards};
}
} // namespace

VelPrintPages::VelPrintPages(VelPrintout &printout, const VelDateTime &printed)
    : m_printout(printout)
    , m_printed(i18n("Printed") + QLatin1Char(' ') + VelText::getDateTime(printed))
{
}

int VelPrintPages::layOut(const QSizeF &size, const QPaintDevice *device)
{
    m_paper = VelPaper(device);
    m_size = size;
    const qreal gap = m_paper.mm(Gap);
    const qreal head = m_paper.lineHeight(VelPaper::Title) + 2 * gap;
    const qreal foot = m_paper.lineHeight(VelPaper::Small) + 2 * gap;
    m_room = QRectF(0, head, size.width(), qMax(0.0, size.height() - head - foot));
    m_count = qMax(1, m_printout.layOut(m_room.size(), device));
    return m_count;
}

void VelPrintPages::paint(QPainter &painter, int page, const QPointF &topLeft) const
{
    painter.save();
    painter.translate(topLeft);
    paintHead(painter);
    paintFoot(painter, page);
    painter.setClipRect(m_room);
    painter.translate(m_room.topLeft());
    m_printout.paintPage(painter, page);
    painter.restore();
}

void VelPrintPages::paintHead(QPainter &painter) const
{
    const QString title = m_paper.elided(VelPaper::Title, m_printout.title().simplified(), m_size.width());
    m_paper.drawText(painter, VelPaper::Title, {0, 0, m_size.width(), m_paper.lineHeight(VelPaper::Title)},
                     title);
    const qreal y = m_room.top() - m_paper.mm(Gap);
    painter.setPen(m_paper.pen());
    painter.drawLine(QPointF(0, y), QPointF(m_size.width(), y));
}

void VelPrintPages::paintFoot(QPainter &painter, int page) const
{
    const qreal height = m_paper.lineHeight(VelPaper::Small);
    const QRectF rect(0, m_size.height() - height, m_size.width(), height);
    m_paper.drawText(painter, VelPaper::Small, rect, m_printed);
    m_paper.drawText(painter, VelPaper::Small, rect, i18n("Page %1 of %2", page + 1, m_count),
                     Qt::AlignRight);
}

VelPrintPages::Result VelPrintPages::print(QPainter &painter, QPagedPaintDevice &device,
                                           const Progress &progress)
{
    const QPageLayout paper = device.pageLayout();
    const int dotsPerInch = device.logicalDpiX();
    const QRectF page = paper.fullRectPixels(dotsPerInch).marginsRemoved(paper.marginsPixels(dotsPerInch));
    layOut(page.size(), &device);
    const QPointF topLeft = paper.mode() == QPageLayout::FullPageMode ? page.topLeft() : QPointF();
    const Range range = wantedPages(device, m_count);
    const int total = range.last - range.first + 1;
    for (int done = 0; done < total; ++done) {
        if (progress && !progress(done, total))
            return Result::Cancelled;
        if (done > 0 && !device.newPage())
            return Result::Failed;
        paint(painter, range.isBackwards ? range.last - done : range.first + done, topLeft);
    }
    return Result::Done;
}
