// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "model/velentry.h"
#include "views/veldayarea.h"
#include "views/veldaydrag.h"
#include "views/veldaylayout.h"
#include "views/veldayrows.h"

#include <memory>
#include <optional>

class VelStepScope;

/**
 * The column of one day: its hours, what is selected in them, and its entries that have times, all painted by itself.
 *
 * It reports what the mouse does to the view that it belongs to. In the meeting planner the same column shows
 * other persons' busy times, which can only be looked at.
 */
class VelDay : public VelDayArea
{
    Q_OBJECT
public:
    enum Mode { Calendar = 1, Planner = 2 };

    /** Keeps a reference to @p source and belongs to @p view, whichever widget is its parent. */
    VelDay(VelDayView *view, Mode mode, const VelDaySource &source);
    ~VelDay() override;

    /** Shows the entries of the day as they are now. */
    void updateData();
    /** The same for another day. */
    void updateData(QDate date);
    /** Lets go of the entries: nobody tells a hidden column when they are gone. */
    void release();
    /** All entries of the day, those without times too. */
    [[nodiscard]] const VelEntryList &list() const { return m_list; }
    [[nodiscard]] VelDayRows rows() const;
    /** The beginning of the row at @p point. */
    [[nodiscard]] QTime getTime(QPoint point) const { return rows().getTime(point.y()); }
    [[nodiscard]] QTime addInterval(QTime time) const { return rows().addInterval(time); }
    /** The whole row that begins at @p time. */
    [[nodiscard]] QRect rowRect(QTime time) const;

    /** The preview of what is being dragged over the column, or null. */
    [[nodiscard]] const VelEntry *dragEntry() const { return m_dragEntry.get(); }

    [[nodiscard]] bool isDragging() const
    {
        return m_press.has_value() && m_press->mode != VelDayDrag::NoMode;
    }
    /** Ends what the mouse is doing to an entry and puts the entry back as it was. */
    void abandonDrag();

protected:
    void layOut() override;
    [[nodiscard]] QString busyName(const VelEntry &entry) const override;
    void paintEvent(QPaintEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dragLeaveEvent(QDragLeaveEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    /** An entry that the left button holds. */
    struct Press {
        VelDayDrag::Mode mode = VelDayDrag::NoMode;
        VelEntry before; // as it was when pressed
        QPoint pos;
        int edge = 0; // pixels: where the edge for changing days was
        int offset = 0; // pixels from where the edge for changing times belongs to where it is drawn
        bool wasModified = false; // the document
        bool changed = false;
        std::shared_ptr<VelStepScope> step; // all that the mouse does is taken back at once
    };

    [[nodiscard]] QRect placed(QRect rect) const;
    [[nodiscard]] int visibleTop() const;

    void paintHours(QPainter &painter, const QRect &exposed) const;
    void paintSelection(QPainter &painter) const;
    void paintLines(QPainter &painter, const QRect &exposed) const;
    /** Shows the time, if this is today, in a line of @p length pixels. */
    void paintNow(QPainter &painter, int length) const;
    void paintDragEntry(QPainter &painter) const;

    void pressEntry(int index, QMouseEvent *event);
    [[nodiscard]] int edgeOffset(VelDayDrag::Mode mode, const VelDayEntry &item) const;
    void pressEmpty(QMouseEvent *event);
    void startSelection(QPoint pos);
    [[nodiscard]] VelDayDrag::Mode zoneAt(int index, QPoint pos) const;
    void showCursor(QPoint pos);
    void dragSelection(QPoint pos);
    void dragEdge(QPoint pos);
    void endDrag();
    void showTimes(const VelDayDrag::Times &times, QPoint globalPos);
    void moveEntry(QPoint pos, VelEntry *entry) const;
    [[nodiscard]] QRect dragRect() const;

    Mode m_mode;
    const VelDaySource &m_source;
    std::unique_ptr<VelDayLayout> m_layout;
    VelEntryList m_list;
    std::optional<Press> m_press;
    std::unique_ptr<VelEntry> m_dragEntry;
    QTime m_dragTime; // of the row that the preview stands in
    QTime m_lastTime; // of the row that the mouse was in last
    std::optional<QPoint> m_busyPress; // where the left button is held on a busy time, until the mouse moves
    bool m_isSelecting = false; // the left button is held on a range of time
    bool m_selecting = false; // result of the last toggle: which edge gives way
};
