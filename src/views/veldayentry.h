// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "model/velentrylist.h"

#include <QColor>
#include <QFont>
#include <QPixmap>
#include <QRect>
#include <QStaticText>

class QPainter;
class QWidget;
struct VelLook;

/** What all entries of the days shown are painted with, worked out once. */
struct VelDayStyle {
    VelDayStyle() = default;
    /** For entries painted on @p widget. */
    VelDayStyle(const VelLook &look, const QWidget *widget);

    QColor entry;
    QColor tentative;
    QColor text;
    QFont font;
    Qt::LayoutDirection direction = Qt::LeftToRight;
    int lineHeight = 0; ///< pixels
    int lineSpacing = 1; ///< pixels from one line to the next
    int leastTextWidth = 0; ///< pixels; text in less would tell nothing
    QPixmap reminder;
    QPixmap reoccurring;
    QPixmap isPrivate;
};

/** One entry in the column of a day: painted, not a widget, as a busy week has thousands. */
class VelDayEntry
{
public:
    static constexpr int MinimumSize = 15; ///< pixels, in both directions
    static constexpr int IconRow = 22; ///< height of the row of icons, and from one icon to the next

    /**
     * @p editable tells an entry of one's own calendar, with texts and icons, from the busy times of others.
     */
    VelDayEntry(const VelEntryRef &entry, const QRect &rect, bool editable, bool isTentative);

    [[nodiscard]] const VelEntryRef &entry() const { return m_entry; }
    /** In the coordinates of the column; invalid for what has no place at the moment. */
    [[nodiscard]] const QRect &rect() const { return m_rect; }
    void setRect(const QRect &rect) { m_rect = rect; }
    [[nodiscard]] bool isEditable() const { return m_editable; }
    /** Background of what is not editable. */
    void setBackground(const QColor &color) { m_background = color; }

    /** The text stands at @p visibleTop or below, so that long entries can be read wherever they are scrolled to. */
    void paint(QPainter &painter, const VelDayStyle &style, bool isSelected, int visibleTop) const;
    /** The height of the row of icons: 0 when there is nothing to show or no room. */
    [[nodiscard]] int iconRowHeight() const;

private:
    [[nodiscard]] QColor background(const VelDayStyle &style) const;
    void paintFrame(QPainter &painter, const QColor &background, bool isSelected) const;
    void paintText(QPainter &painter, const VelDayStyle &style, int visibleTop) const;
    void layOutText(const VelDayStyle &style, const QSize &size, bool isSingleLine) const;
    void paintIcons(QPainter &painter, const VelDayStyle &style) const;

    VelEntryRef m_entry;
    QRect m_rect;
    bool m_editable;
    bool m_isTentative;
    QColor m_background;
    mutable QStaticText m_text; // laid out when first painted
    mutable QSize m_textSize;
};
