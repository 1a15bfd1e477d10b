// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "views/velpaper.h"

#include <QGuiApplication>
#include <QPaintDevice>
#include <QPainter>
#include <QStyle>
#include <QTextLayout>

#include <cmath>

namespace
{
constexpr qreal PointsPerInch = 72;
constexpr qreal MmPerInch = 25.4;
/** Millimetres; thinner lines vanish on some printers. */
constexpr qreal PenWidth = 0.2;
/** Of a text that need not be measured whole to know that it is too wide for any sheet. */
constexpr int LongText = 2000;
/** Characters that are laid out at once: many lines of any sheet. */
constexpr int PieceLength = 10000;

QFont makeFont(qreal points, bool bold, qreal dotsPerInch)
{
    QFont font = QGuiApplication::font();
    font.setPixelSize(qMax(1, qRound(points * dotsPerInch / PointsPerInch)));
    font.setBold(bold);
    return font;
}
} // namespace

VelPaper::VelPaper(const QPaintDevice *device)
    : VelPaper(device->logicalDpiY())
{
}

VelPaper::VelPaper(qreal dotsPerInch)
    : m_dotsPerInch(dotsPerInch)
{
    struct Style {
        qreal points;
        bool bold;
    };
    constexpr Style styles[] = {{8, false}, {9.5, false}, {9.5, true}, {11, true}, {15, true}};
    for (const Style &style : styles) {
        const QFont font = makeFont(style.points, style.bold, dotsPerInch);
        const QFontMetricsF metrics(font);
        m_faces.push_back({font, metrics, std::ceil(metrics.height())});
    }
}

qreal VelPaper::mm(qreal millimetres) const
{
    return millimetres * m_dotsPerInch / MmPerInch;
}

qreal VelPaper::textWidth(Face face, const QString &text) const
{
    return m_faces[face].metrics.horizontalAdvance(text);
}

QString VelPaper::elided(Face face, const QString &text, qreal width) const
{
    return m_faces[face].metrics.elidedText(text.left(LongText), Qt::ElideRight, width);
}

VelWrapped VelPaper::wrapped(Face face, const QString &text, qreal width, int maxLines) const
{
    if (text.size() < LongText && textWidth(face, text) <= width)
        return {{text}, true};
    VelWrapped result;
    int begin = 0;
    do {
        begin = wrapPiece(face, text, begin, width, maxLines, result);
    } while (begin < text.size() && result.isComplete);
    return result;
}

/** A text is laid out piece by piece: as a whole a very long one would take as much memory as time. */
int VelPaper::wrapPiece(Face face, const QString &text, int begin, qreal width, int maxLines,
                        VelWrapped &result) const
{
    const QString piece = text.mid(begin, PieceLength);
    const bool isEnd = begin + piece.size() == text.size();
    QTextLayout layout(piece, font(face));
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        const bool isLastOfPiece = line.textStart() + line.textLength() >= piece.size();
        if (isLastOfPiece && !isEnd && line.textStart() > 0)
            return begin + line.textStart(); // it goes on in the next piece
        const bool isLast = isLastOfPiece && isEnd;
        if (maxLines > 0 && result.lines.size() == maxLines - 1 && !isLast) {
            result.lines.append(elided(face, text.mid(begin + line.textStart(), LongText), width));
            result.isComplete = false;
            break;
        }
        // The blank at which it was broken would stand in the way of alignment.
        QString part = piece.mid(line.textStart(), line.textLength());
        while (!isLast && part.endsWith(QLatin1Char(' ')))
            part.chop(1);
        result.lines.append(part);
    }
    layout.endLayout();
    return begin + int(piece.size());
}

QPen VelPaper::pen(Qt::PenStyle style) const
{
    return QPen(Qt::black, mm(PenWidth), style);
}

QPen VelPaper::faintPen() const
{
    return QPen(Qt::gray, mm(PenWidth));
}

void VelPaper::drawText(QPainter &painter, Face face, const QRectF &rect, const QString &text,
                        Qt::Alignment alignment) const
{
    const Qt::Alignment visual = QStyle::visualAlignment(QGuiApplication::layoutDirection(), alignment);
    painter.setFont(font(face));
    painter.setPen(Qt::black);
    painter.drawText(rect, int(visual | Qt::AlignAbsolute) | Qt::TextSingleLine, text);
}

void VelPaper::drawLines(QPainter &painter, Face face, const QRectF &rect, const QStringList &lines,
                         Qt::Alignment alignment) const
{
    const qreal height = lineHeight(face);
    for (int i = 0; i < lines.size(); ++i)
        drawText(painter, face, {rect.left(), rect.top() + i * height, rect.width(), height}, lines.at(i),
                 alignment);
}

QRectF VelPaper::mirrored(const QRectF &rect, qreal width)
{
    if (QGuiApplication::layoutDirection() == Qt::LeftToRight)
        return rect;
    return {width - rect.right(), rect.top(), rect.width(), rect.height()};
}
