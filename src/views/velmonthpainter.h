// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "views/velmonthentry.h"

#include <QColor>
#include <QFont>

#include <vector>

class QPainter;
class VelDoc;
class VelSettings;
struct VelLook;

/** The cell of one day, in the view's coordinates. */
struct VelMonthCell {
    QDate date;
    QRect rect;
    int count = 0; ///< of all entries
    int hidden = 0; ///< of those that have no line
    QRect more; ///< where moreText stands; empty when there are none
    QString moreText;
    bool isInMonth = true;
    QColor background; ///< when it is not selected
};

/** What a drop would do, shown while something is dragged over a day. */
struct VelMonthPreview {
    QDate date; ///< invalid for no preview
    QRect cell; ///< of that day
    QRect rect; ///< the line for the text
    QString text; ///< empty when only the drop will tell
};

/** Everything that the picture of a month is made of. */
struct VelMonthScene {
    const VelLook &look;
    const VelSettings &settings;
    const VelDoc &doc;
    const std::vector<VelMonthCell> &cells;
    const std::vector<VelMonthEntry> &entries;
    const VelMonthPreview &preview;
    QRect bounds;
    Qt::LayoutDirection direction = Qt::LeftToRight;
    int headingHeight = 0;
    QDate month;
    QDate today;
    QDate selectedDay; ///< invalid for none
    const VelEntry *selectedEntry = nullptr;
    bool hasFocus = false;
};

/** Paints a month's heading, cells and entries. */
class VelMonthPainter
{
public:
    VelMonthPainter(QPainter &painter, const VelMonthScene &scene);

    /** Paints what lies in @p clip. */
    void paint(const QRect &clip);

    /** The height of the month's name and the weekdays' names together, in pixels. */
    [[nodiscard]] static int headingHeight(const VelLook &look);
    /** The height of an entry's line, and of the line with the day's number. */
    [[nodiscard]] static int lineHeight(const VelLook &look);
    /** Says in @p cell how many entries have no line ("+3"), beside the day's number; @p line is the line for both. */
    static void placeMore(VelMonthCell &cell, const QRect &line, const VelLook &look);

private:
    void paintHeading();
    void paintCell(const VelMonthCell &cell);
    void paintNumber(const VelMonthCell &cell);
    void paintEntry(const VelMonthEntry &entry);
    void paintPreview();
    void paintFrame(const QRect &rect, const QColor &color, int width);
    [[nodiscard]] QColor numberColor(const VelMonthCell &cell, const QColor &ground) const;

    QPainter &m_painter;
    const VelMonthScene &m_scene;
    int m_lineHeight;
    QFont m_numberFont;
};
