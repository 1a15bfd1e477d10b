// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "views/veldayentry.h"

#include "hub/velapp.h"
#include "hub/vellook.h"
#include "widgets/wshowntext.h"

#include <QFontMetrics>
#include <QPainter>
#include <QStyle>
#include <QTextOption>

namespace
{
constexpr int TextInset = 6; // pixels from the edge to the text, where there is room
constexpr int TightInset = 2;
constexpr int LeastIconHeight = 41; // pixels an entry is tall at least to have a row of icons
constexpr int LeastShadedWidth = 24; // pixels; below that a frame of five would be all there is

/** Four filled lines inside @p rect: much faster than an outline. */
void paintLines(QPainter &painter, const QRect &rect, int width, const QColor &topLeft,
                const QColor &bottomRight)
{
    painter.fillRect(rect.left(), rect.top(), rect.width(), width, topLeft);
    painter.fillRect(rect.left(), rect.top(), width, rect.height(), topLeft);
    painter.fillRect(rect.left(), rect.bottom() - width + 1, rect.width(), width, bottomRight);
    painter.fillRect(rect.right() - width + 1, rect.top(), width, rect.height(), bottomRight);
}
} // namespace

VelDayStyle::VelDayStyle(const VelLook &look, const QWidget *widget)
    : entry(look.entryBackground)
    , tentative(look.tentative)
    , text(look.entryText)
    , font(look.entryFont)
    , direction(widget->layoutDirection())
    , lineHeight(QFontMetrics(look.entryFont).height())
    , lineSpacing(qMax(1, QFontMetrics(look.entryFont).lineSpacing()))
    , leastTextWidth(QFontMetrics(look.entryFont).averageCharWidth() * 2)
    , reminder(VelApp::getPixmap(QStringLiteral("reminder"), widget))
    , reoccurring(VelApp::getPixmap(QStringLiteral("reoccurring"), widget))
    , isPrivate(VelApp::getPixmap(QStringLiteral("private"), widget))
{
}

VelDayEntry::VelDayEntry(const VelEntryRef &entry, const QRect &rect, bool editable, bool isTentative)
    : m_entry(entry)
    , m_rect(rect)
    , m_editable(editable)
    , m_isTentative(isTentative)
{
}

QColor VelDayEntry::background(const VelDayStyle &style) const
{
    if (!m_editable)
        return m_background;
    return m_isTentative ? style.tentative : style.entry;
}

int VelDayEntry::iconRowHeight() const
{
    const VelEntry &entry = *m_entry.getOriginal();
    const bool hasIcons = entry.reminder > 0 || entry.isRecurring() || entry.access == VelEntry::Private;
    return m_editable && hasIcons && m_rect.height() >= LeastIconHeight ? IconRow : 0;
}

void VelDayEntry::paint(QPainter &painter, const VelDayStyle &style, bool isSelected, int visibleTop) const
{
    const QColor color = background(style);
    painter.fillRect(m_rect, color);
    if (!m_editable) // a busy time may be as white as free hours are
        painter.fillRect(m_rect, QBrush(QColor(0x9aa4ae), Qt::BDiagPattern));
    paintFrame(painter, color, isSelected);
    if (!m_editable)
        return;
    paintText(painter, style, visibleTop);
    if (iconRowHeight() > 0)
        paintIcons(painter, style);
}

/** A sunken frame, in greys or, when selected, in reds; only as much of it as the width has room for. */
void VelDayEntry::paintFrame(QPainter &painter, const QColor &background, bool isSelected) const
{
    const bool isDark = VelLook::textOn(background) == Qt::white;
    const QColor shade =
        isSelected ? QColor(isDark ? 0xff7b72 : 0xc62020) : QColor(isDark ? 0x9aa4ae : 0x7c8894);
    if (!m_editable || m_rect.width() < LeastShadedWidth) {
        paintLines(painter, m_rect, isSelected ? 2 : 1, shade, shade);
        return;
    }
    const QColor light = VelLook::mixed(shade, background, 0.45);
    paintLines(painter, m_rect, 2, shade, light);
    const QRect middle = m_rect.adjusted(2, 2, -2, -2);
    paintLines(painter, middle, 1, VelLook::mixed(shade, background, isSelected ? 0.8 : 0.2),
               VelLook::mixed(shade, background, isSelected ? 0.8 : 0.1));
}

/** Whole lines only: as many as there is room for, and a single one with dots where the title goes on. */
void VelDayEntry::paintText(QPainter &painter, const VelDayStyle &style, int visibleTop) const
{
    QRect rect = m_rect;
    rect.setTop(
        qBound(rect.top(), visibleTop, qMax(rect.top(), rect.bottom() - style.lineHeight - TextInset)));
    rect.setBottom(rect.bottom() - iconRowHeight());
    const int sideInset = m_rect.width() < LeastShadedWidth * 2 ? TightInset + 1 : TextInset;
    const bool isTight = rect.height() < style.lineHeight + 2 * TextInset;
    const int inset = isTight ? TightInset : TextInset;
    rect.adjust(sideInset, inset, -sideInset, -inset);
    if (rect.width() < style.leastTextWidth)
        return;
    const int lines = 1 + qMax(0, rect.height() - style.lineHeight) / style.lineSpacing;
    if (m_textSize != rect.size())
        layOutText(style, rect.size(), lines == 1);
    const int slack = isTight ? (rect.height() - style.lineHeight) / 2 : 0;
    painter.setClipRect(QRect(rect.left(), rect.top() + slack, rect.width(),
                              style.lineHeight + (lines - 1) * style.lineSpacing));
    painter.setPen(style.text);
    painter.drawStaticText(rect.left(), rect.top() + slack, m_text);
    painter.setClipping(false);
}

void VelDayEntry::layOutText(const VelDayStyle &style, const QSize &size, bool isSingleLine) const
{
    const QString title = WShownText::cut(m_entry.getOriginal()->getTitle());
    QTextOption option;
    option.setWrapMode(isSingleLine ? QTextOption::NoWrap : QTextOption::WrapAtWordBoundaryOrAnywhere);
    m_text = QStaticText(
        isSingleLine ? QFontMetrics(style.font).elidedText(title, Qt::ElideRight, size.width()) : title);
    m_text.setTextFormat(Qt::PlainText);
    option.setTextDirection(style.direction);
    m_text.setTextOption(option);
    m_text.setTextWidth(size.width());
    m_textSize = size;
}

void VelDayEntry::paintIcons(QPainter &painter, const VelDayStyle &style) const
{
    const VelEntry &entry = *m_entry.getOriginal();
    int x = TextInset;
    const auto paintIcon = [&](bool isWanted, const QPixmap &pixmap) {
        if (!isWanted || x >= m_rect.width() - (TextInset - 1))
            return;
        painter.setClipRect(m_rect.adjusted(TightInset, TightInset, -TightInset, -TightInset));
        const QRect place(m_rect.left() + x, m_rect.bottom() + 1 - IconRow, IconRow, IconRow);
        painter.drawPixmap(QStyle::visualRect(style.direction, m_rect, place).topLeft(), pixmap);
        painter.setClipping(false);
        x += IconRow;
    };
    paintIcon(entry.reminder > 0, style.reminder);
    paintIcon(entry.isRecurring(), style.reoccurring);
    paintIcon(entry.access == VelEntry::Private, style.isPrivate);
}
