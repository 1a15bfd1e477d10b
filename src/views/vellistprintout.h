// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "hub/velprintout.h"
#include "views/velpaper.h"

#include <functional>

/** A table of texts on as many pages as it needs, with its headers on each. */
class VelListPrintout : public VelPrintout
{
public:
    struct Column {
        QString header;
        Qt::Alignment alignment = Qt::AlignLeft;
        /** Takes the room that the others leave and breaks its texts into lines. */
        bool isWide = false;
    };
    /**
     * The texts of a row, one for each column. Asked for some rows and then for all in order, and again for every page
     * that is painted.
     */
    using Rows = std::function<QStringList(int row)>;

    /** No row has more lines; what does not fit is elided. */
    static constexpr int MaximumLines = 3;

    VelListPrintout(const QString &title, std::vector<Column> columns, int rowCount, Rows rows);

    [[nodiscard]] QString title() const override { return m_title; }
    int layOut(const QSizeF &size, const QPaintDevice *device) override;
    void paintPage(QPainter &painter, int page) const override;

private:
    struct Place {
        qreal left;
        qreal width;
    };

    [[nodiscard]] std::vector<qreal> naturalWidths() const;
    void fitColumns();
    void breakPages();
    [[nodiscard]] int lineCount(const QStringList &texts) const;
    [[nodiscard]] qreal rowHeight(int lines) const;
    void paintRow(QPainter &painter, const QStringList &texts, qreal top, VelPaper::Face face,
                  int lines) const;

    QString m_title;
    std::vector<Column> m_columns;
    int m_rowCount;
    Rows m_rows;

    VelPaper m_paper;
    QSizeF m_size;
    int m_dotsPerInch = 0; // for which it is laid out; 0 for not yet
    std::vector<Place> m_places;
    std::vector<quint8> m_lineCounts; // by row
    std::vector<int> m_pages; // the first row of each
};
