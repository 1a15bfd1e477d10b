// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "views/vellistprintout.h"

#include <QPaintDevice>
#include <QPainter>

#include <algorithm>

namespace
{
/** Millimetres between columns, and above and below the texts of a row. */
constexpr qreal ColumnGap = 3;
constexpr qreal RowPadding = 0.5;
/** Of the width: what wide columns have left at least. */
constexpr qreal WideShare = 0.35;
/** So many rows, from all over the list, tell how wide the columns are: to measure texts takes long. */
constexpr int SampleSize = 1000;
} // namespace

VelListPrintout::VelListPrintout(const QString &title, std::vector<Column> columns, int rowCount, Rows rows)
    : m_title(title)
    , m_columns(std::move(columns))
    , m_rowCount(rowCount)
    , m_rows(std::move(rows))
{
}

std::vector<qreal> VelListPrintout::naturalWidths() const
{
    std::vector<qreal> widths;
    for (const Column &column : m_columns)
        widths.push_back(m_paper.textWidth(VelPaper::Strong, column.header));
    const int step = 1 + (m_rowCount - 1) / SampleSize;
    for (int row = 0; row < m_rowCount; row += step) {
        const QStringList texts = m_rows(row);
        for (std::size_t i = 0; i < widths.size(); ++i) {
            if (!m_columns[i].isWide)
                widths[i] = qMax(widths[i], m_paper.textWidth(VelPaper::Text, texts.value(int(i)).left(200)));
        }
    }
    return widths;
}

/** Columns as wide as their texts; when that is too much all shrink alike, and wide ones share what is left. */
void VelListPrintout::fitColumns()
{
    std::vector<qreal> widths = naturalWidths();
    const qreal gap = m_paper.mm(ColumnGap);
    const qreal room = m_size.width() - gap * qreal(qMax<std::size_t>(1, widths.size()) - 1);
    int wide = 0;
    qreal fixed = 0;
    for (std::size_t i = 0; i < widths.size(); ++i) {
        if (m_columns[i].isWide)
            ++wide;
        else
            fixed += widths[i];
    }
    const qreal most = wide > 0 ? room * (1 - WideShare) : room;
    const qreal scale = fixed > most ? most / fixed : 1;
    m_places.clear();
    qreal left = 0;
    for (std::size_t i = 0; i < widths.size(); ++i) {
        const qreal width = m_columns[i].isWide ? (room - fixed * scale) / wide : widths[i] * scale;
        m_places.push_back({left, width});
        left += width + gap;
    }
}

int VelListPrintout::lineCount(const QStringList &texts) const
{
    int lines = 1;
    for (std::size_t i = 0; i < m_columns.size(); ++i) {
        if (m_columns[i].isWide)
            lines =
                qMax(lines,
                     int(m_paper.wrapped(VelPaper::Text, texts.value(int(i)), m_places[i].width, MaximumLines)
                             .lines.size()));
    }
    return lines;
}

qreal VelListPrintout::rowHeight(int lines) const
{
    return lines * m_paper.lineHeight(VelPaper::Text) + 2 * m_paper.mm(RowPadding);
}

int VelListPrintout::layOut(const QSizeF &size, const QPaintDevice *device)
{
    // The preview asks first, and for the same paper once more when it is printed.
    const int dotsPerInch = device->logicalDpiY();
    if (size != m_size || dotsPerInch != m_dotsPerInch) {
        m_paper = VelPaper(device);
        m_size = size;
        m_dotsPerInch = dotsPerInch;
        fitColumns();
        breakPages();
    }
    return int(m_pages.size());
}

void VelListPrintout::breakPages()
{
    m_pages = {0};
    m_lineCounts.clear();
    m_lineCounts.reserve(std::size_t(m_rowCount));
    qreal bottom = rowHeight(1);
    for (int row = 0; row < m_rowCount; ++row) {
        const int lines = lineCount(m_rows(row));
        m_lineCounts.push_back(quint8(lines));
        if (bottom + rowHeight(lines) > m_size.height() && row > m_pages.back()) {
            m_pages.push_back(row);
            bottom = rowHeight(1);
        }
        bottom += rowHeight(lines);
    }
}

void VelListPrintout::paintRow(QPainter &painter, const QStringList &texts, qreal top, VelPaper::Face face,
                               int lines) const
{
    const qreal padding = m_paper.mm(RowPadding);
    for (std::size_t i = 0; i < m_columns.size(); ++i) {
        const QRectF rect(m_places[i].left, top + padding, m_places[i].width, rowHeight(lines) - 2 * padding);
        m_paper.drawLines(
            painter, face, VelPaper::mirrored(rect, m_size.width()),
            m_paper.wrapped(face, texts.value(int(i)), rect.width(), m_columns[i].isWide ? lines : 1).lines,
            m_columns[i].alignment);
    }
}

void VelListPrintout::paintPage(QPainter &painter, int page) const
{
    QStringList headers;
    for (const Column &column : m_columns)
        headers.append(column.header);
    paintRow(painter, headers, 0, VelPaper::Strong, 1);
    qreal y = rowHeight(1);
    painter.setPen(m_paper.pen());
    painter.drawLine(QPointF(0, y), QPointF(m_size.width(), y));

    const auto index = std::size_t(page);
    const int end = index + 1 < m_pages.size() ? m_pages[index + 1] : m_rowCount;
    for (int row = m_pages[index]; row < end; ++row) {
        const int lines = m_lineCounts[std::size_t(row)];
        paintRow(painter, m_rows(row), y, VelPaper::Text, lines);
        y += rowHeight(lines);
        painter.setPen(m_paper.faintPen());
        painter.drawLine(QPointF(0, y), QPointF(m_size.width(), y));
    }
}
