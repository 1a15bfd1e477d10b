// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "views/velpaper.h"

/** Headings, paragraphs and labelled texts that flow over as many pages as they need. */
class VelFlow
{
public:
    void clear() { m_rows.clear(); }
    /** Stays on the page of what follows it. */
    void addHeading(const QString &text) { m_rows.push_back({Kind::Heading, {}, text}); }
    /** @p label stands in a column of its own before @p text. */
    void addRow(const QString &label, const QString &text) { m_rows.push_back({Kind::Row, label, text}); }
    /** Plain text of one or more lines over the full width. */
    void addText(const QString &text);

    /** Returns the number of pages, at least 1. */
    int layOut(const QSizeF &size, const VelPaper &paper);
    void paintPage(QPainter &painter, int page) const;

private:
    enum class Kind { Heading, Row, Text };
    struct Row {
        Kind kind;
        QString label;
        QString text;
    };
    struct Line {
        Kind kind;
        QString label;
        QString text;
        qreal top;
    };

    [[nodiscard]] static VelPaper::Face faceOf(Kind kind);
    [[nodiscard]] qreal labelWidth() const;
    [[nodiscard]] qreal needed(std::size_t row) const;
    void breakPageUnlessFits(qreal height);
    void place(const Row &row, qreal labelWidth);

    VelPaper m_paper;
    QSizeF m_size;
    qreal m_textLeft = 0; // of labelled texts
    qreal m_bottom = 0; // of what is placed on the last page
    std::vector<Row> m_rows;
    std::vector<Line> m_lines;
    std::vector<std::size_t> m_pages; // the first line of each
};
