// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QFont>
#include <QFontMetricsF>
#include <QPen>
#include <QRectF>
#include <QStringList>

#include <vector>

class QPainter;

/** A text broken into lines. */
struct VelWrapped {
    QStringList lines;
    bool isComplete = true; ///< false when the last line ends in an ellipsis
};

/** Measures, fonts and pens for pages on paper, in the dots of a device. */
class VelPaper
{
public:
    enum Face { Small, Text, Strong, Heading, Title };

    /** A sheet of @p dotsPerInch: by default one dot is a point. */
    explicit VelPaper(qreal dotsPerInch = 72);
    explicit VelPaper(const QPaintDevice *device);

    [[nodiscard]] qreal mm(qreal millimetres) const;
    [[nodiscard]] const QFont &font(Face face) const { return m_faces[face].font; }
    [[nodiscard]] qreal lineHeight(Face face) const { return m_faces[face].height; }
    [[nodiscard]] qreal textWidth(Face face, const QString &text) const;
    [[nodiscard]] QString elided(Face face, const QString &text, qreal width) const;
    /**
     * Breaks at the end of words, or within a word that is wider than @p width. With @p maxLines above 0 the
     * last of them is elided when there would be more.
     */
    [[nodiscard]] VelWrapped wrapped(Face face, const QString &text, qreal width, int maxLines = 0) const;

    /** The lines of frames and tables: black and thin. */
    [[nodiscard]] QPen pen(Qt::PenStyle style = Qt::SolidLine) const;
    /** Lines that only guide the eye. */
    [[nodiscard]] QPen faintPen() const;

    /** Draws one line of text in black; @p alignment is mirrored for languages that read from the right. */
    void drawText(QPainter &painter, Face face, const QRectF &rect, const QString &text,
                  Qt::Alignment alignment = Qt::AlignLeft) const;
    /** Draws lines below each other, from the top of @p rect on. */
    void drawLines(QPainter &painter, Face face, const QRectF &rect, const QStringList &lines,
                   Qt::Alignment alignment = Qt::AlignLeft) const;

    /** @p rect in a page @p width wide, or where it is in a language that reads from the right. */
    [[nodiscard]] static QRectF mirrored(const QRectF &rect, qreal width);

private:
    /** Adds the lines of the piece that begins at @p begin; where the next one begins. */
    int wrapPiece(Face face, const QString &text, int begin, qreal width, int maxLines,
                  VelWrapped &result) const;

    struct Measured {
        QFont font;
        QFontMetricsF metrics;
        qreal height; // of a line
    };

    qreal m_dotsPerInch;
    std::vector<Measured> m_faces;
};
