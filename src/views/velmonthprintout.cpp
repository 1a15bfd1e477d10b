// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "views/velmonthprintout.h"

#include "model/veltext.h"
#include "views/veldaysource.h"
#include "views/velentrytext.h"
#include "views/velprinttext.h"

#include <KLocalizedString>

#include <QLocale>
#include <QPainter>

#include <cmath>

namespace
{
/** Millimetres between the frame of a cell and its texts. */
constexpr qreal Padding = 1;
} // namespace

VelMonthPrintout::VelMonthPrintout(std::unique_ptr<const VelDaySource> source, QDate month)
    : m_source(std::move(source))
    , m_layout(month)
    , m_agenda(*m_source, m_layout.startDate(), m_layout.dayCount())
{
}

VelMonthPrintout::~VelMonthPrintout() = default;

QString VelMonthPrintout::title() const
{
    return VelEntryText::monthName(m_layout.month());
}

/**
 * Whole texts when they have room, broken into lines if need be; else one line for each, and instead of those
 * beyond the room how many they are.
 */
QStringList VelMonthPrintout::fittingLines(const QStringList &texts, qreal width, int room)
{
    QStringList lines;
    for (const QString &text : texts) {
        lines += m_paper.wrapped(VelPaper::Small, text, width).lines;
        if (lines.size() > room)
            break;
    }
    if (lines.size() <= room)
        return lines;
    m_isComplete = false;
    lines.clear();
    const int count = int(texts.size());
    const int shown = count <= room ? count : qMax(0, room - 1);
    for (int i = 0; i < shown; ++i)
        lines.append(m_paper.elided(VelPaper::Small, texts.at(i), width));
    if (shown < count && room > 0)
        lines.append(i18nc("so many more entries", "+%1", count - shown));
    return lines;
}

void VelMonthPrintout::addCell(QDate day)
{
    const qreal pad = m_paper.mm(Padding);
    const qreal half = m_paper.pen().widthF() / 2;
    const QRectF rect = QRectF(m_layout.getRect(day)).translated(half, half);
    QStringList texts;
    for (const VelEntryRef &ref : m_source->getEntries(day)) {
        if (VelPrintText::isOver(ref, day))
            continue;
        const VelDateTime start = ref.getStart();
        QString time;
        if (!VelPrintText::isAllDay(ref, day))
            time = start.date() < day ? QStringLiteral("…") : VelText::getTime(start.time());
        texts.append(QString(time + QLatin1Char(' ') + VelPrintText::title(*ref.getOriginal())).trimmed());
    }
    const qreal room = rect.height() - m_paper.lineHeight(VelPaper::Strong) - 2 * pad;
    m_cells.push_back(
        {rect, QLocale().toString(day.day()), m_layout.isInMonth(day),
         fittingLines(texts, rect.width() - 2 * pad, int(room / m_paper.lineHeight(VelPaper::Small)))});
}

int VelMonthPrintout::layOut(const QSizeF &size, const QPaintDevice *device)
{
    m_paper = VelPaper(device);
    m_size = size;
    m_cells.clear();
    m_isComplete = true;
    const qreal heading = m_paper.lineHeight(VelPaper::Strong) + m_paper.mm(Padding);
    // The outermost lines lie within the page with all their width.
    const int pen = int(std::ceil(m_paper.pen().widthF()));
    m_layout.setSize({int(size.width()) - pen, int(size.height()) - pen}, int(std::ceil(heading)));
    for (int i = 0; i < m_layout.dayCount(); ++i)
        addCell(m_layout.startDate().addDays(i));
    return m_isComplete ? 1 : 1 + m_agenda.layOut(size, device);
}

void VelMonthPrintout::paintCell(QPainter &painter, const Cell &cell) const
{
    const qreal pad = m_paper.mm(Padding);
    const QRectF rect = VelPaper::mirrored(cell.rect, m_size.width());
    painter.setPen(m_paper.pen());
    painter.drawRect(rect);
    const QRectF inner = rect.adjusted(pad, pad, -pad, -pad);
    const qreal line = m_paper.lineHeight(VelPaper::Strong);
    // Days of the months around it are told by a number without weight.
    m_paper.drawText(painter, cell.isInMonth ? VelPaper::Strong : VelPaper::Small,
                     {inner.left(), inner.top(), inner.width(), line}, cell.number, Qt::AlignRight);
    m_paper.drawLines(painter, VelPaper::Small, inner.adjusted(0, line, 0, 0), cell.lines);
}

void VelMonthPrintout::paintPage(QPainter &painter, int page) const
{
    if (page > 0) {
        m_agenda.paintPage(painter, page - 1);
        return;
    }
    painter.setBrush(Qt::NoBrush);
    for (int column = 0; column < VelMonthLayout::DaysPerWeek; ++column) {
        const Cell &cell = m_cells[std::size_t(column)];
        const QRectF rect(cell.rect.left(), 0, cell.rect.width(), m_paper.lineHeight(VelPaper::Strong));
        const QString name = VelText::getWeekDay(m_layout.startDate().addDays(column));
        m_paper.drawText(painter, VelPaper::Strong, VelPaper::mirrored(rect, m_size.width()),
                         m_paper.elided(VelPaper::Strong, name, rect.width()), Qt::AlignHCenter);
    }
    for (const Cell &cell : m_cells)
        paintCell(painter, cell);
}
