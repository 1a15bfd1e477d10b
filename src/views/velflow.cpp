// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "views/velflow.h"

#include <QPainter>

#include <algorithm>

namespace
{
/** Millimetres above a heading and between rows. */
constexpr qreal HeadingGap = 3;
constexpr qreal RowGap = 0.6;
/** Millimetres between labels and texts. */
constexpr qreal ColumnGap = 3;
/** Of the width; longer labels are broken into lines. */
constexpr qreal LabelShare = 0.3;
} // namespace

void VelFlow::addText(const QString &text)
{
    QString plain = text;
    plain.replace(QLatin1Char('\t'), QLatin1String("    ")).remove(QLatin1Char('\r'));
    plain.replace(QChar::LineSeparator, QLatin1Char('\n'))
        .replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
    // Empty lines at the end would at worst make an empty page.
    while (plain.endsWith(QLatin1Char('\n')))
        plain.chop(1);
    const QStringList paragraphs = plain.split(QLatin1Char('\n'));
    for (const QString &paragraph : paragraphs)
        m_rows.push_back({Kind::Text, {}, paragraph});
}

VelPaper::Face VelFlow::faceOf(Kind kind)
{
    return kind == Kind::Heading ? VelPaper::Heading : VelPaper::Text;
}

qreal VelFlow::labelWidth() const
{
    const qreal most = m_size.width() * LabelShare;
    qreal width = 0;
    for (const Row &row : m_rows) {
        if (!row.label.isEmpty())
            width = qMax(width, m_paper.textWidth(VelPaper::Text, row.label));
    }
    return qMin(width, most);
}

/** A heading needs room for all of its lines and for one of what follows it, too. */
qreal VelFlow::needed(std::size_t row) const
{
    const auto heightOf = [this](const Row &part) {
        const bool isWhole = part.kind == Kind::Heading;
        const auto lines =
            isWhole ? m_paper.wrapped(faceOf(part.kind), part.text, m_size.width()).lines.size() : 1;
        return qreal(lines) * m_paper.lineHeight(faceOf(part.kind));
    };
    qreal height = heightOf(m_rows[row]);
    while (m_rows[row].kind == Kind::Heading && ++row < m_rows.size())
        height += m_paper.mm(RowGap) + heightOf(m_rows[row]);
    return height;
}

void VelFlow::breakPageUnlessFits(qreal height)
{
    if (m_bottom + height <= m_size.height() || m_pages.back() == m_lines.size())
        return;
    m_pages.push_back(m_lines.size());
    m_bottom = 0;
}

void VelFlow::place(const Row &row, qreal labelWidth)
{
    const VelPaper::Face face = faceOf(row.kind);
    const qreal width = m_size.width() - (row.kind == Kind::Row ? m_textLeft : 0);
    const QStringList labels = m_paper.wrapped(face, row.label, labelWidth).lines;
    const QStringList texts = m_paper.wrapped(face, row.text, width).lines;
    for (int i = 0; i < qMax(labels.size(), texts.size()); ++i) {
        breakPageUnlessFits(m_paper.lineHeight(face));
        m_lines.push_back({row.kind, labels.value(i), texts.value(i), m_bottom});
        m_bottom += m_paper.lineHeight(face);
    }
}

int VelFlow::layOut(const QSizeF &size, const VelPaper &paper)
{
    m_paper = paper;
    m_size = size;
    m_lines.clear();
    m_pages = {0};
    m_bottom = 0;
    const qreal labels = labelWidth();
    m_textLeft = labels + m_paper.mm(ColumnGap);
    for (std::size_t i = 0; i < m_rows.size(); ++i) {
        if (m_bottom > 0)
            m_bottom += m_paper.mm(m_rows[i].kind == Kind::Heading ? HeadingGap : RowGap);
        breakPageUnlessFits(needed(i));
        place(m_rows[i], labels);
    }
    return int(m_pages.size());
}

void VelFlow::paintPage(QPainter &painter, int page) const
{
    const std::size_t first = m_pages[std::size_t(page)];
    const std::size_t end =
        std::size_t(page) + 1 < m_pages.size() ? m_pages[std::size_t(page) + 1] : m_lines.size();
    for (std::size_t i = first; i < end; ++i) {
        const Line &line = m_lines[i];
        const VelPaper::Face face = faceOf(line.kind);
        const qreal left = line.kind == Kind::Row ? m_textLeft : 0;
        const qreal height = m_paper.lineHeight(face);
        m_paper.drawText(painter, face,
                         VelPaper::mirrored({left, line.top, m_size.width() - left, height}, m_size.width()),
                         line.text);
        if (!line.label.isEmpty())
            m_paper.drawText(painter, face,
                             VelPaper::mirrored({0, line.top, m_textLeft, height}, m_size.width()),
                             line.label);
    }
}
