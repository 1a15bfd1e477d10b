// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "views/velaccessible.h"
#include "views/velmonthentries.h"
#include "views/velmonthlayout.h"
#include "views/velmonthpainter.h"
#include "views/velview.h"

class QHelpEvent;
class QToolButton;

/**
 * One month in whole weeks: a cell per day, which lists the day's entries in a line each.
 *
 * The user selects a day, or an entry, by mouse or keyboard, and moves entries to other days. A single canvas paints
 * it all, so that a busy month turns as fast as an empty one; what it shows is fetched when it is next needed.
 */
class VelMonthView : public VelView, public VelAccessible
{
    Q_OBJECT
public:
    explicit VelMonthView(QWidget *parent);

    /** Shows the month of @p date, with no day selected. */
    void setMonth(QDate date);
    [[nodiscard]] QDate month() const { return m_layout.month(); }
    /** The day in the first cell. */
    [[nodiscard]] QDate startDate() const { return m_layout.startDate(); }
    [[nodiscard]] int weeks() const { return m_layout.weeks(); }

    [[nodiscard]] std::unique_ptr<VelPrintout> makePrintout() const override;
    void updateView() override;
    void updateAllEntries(const VelEntry *entry) override;

    void clearSelection() override;
    /** The selected day when work begins, and two hours later. */
    [[nodiscard]] VelDateTime getSelectionStart() const override;
    [[nodiscard]] VelDateTime getSelectionEnd() const override;
    [[nodiscard]] bool hasSelection() const override { return m_selectedDay.isValid(); }
    /** The selected day or that of the selected entry's line, on which the keyboard acts. */
    [[nodiscard]] QDate currentDay() const override;

    /** The background of the day's cell when it is not selected. */
    [[nodiscard]] QColor entryBackground(QDate date) const;
    /** The day under @p point; invalid outside the cells. */
    [[nodiscard]] QDate getDate(const QPoint &point) const;
    /** The cell of a row and column, in reading order. */
    [[nodiscard]] QRect getRect(int row, int column) const;
    /** The cell of a day of the grid. */
    [[nodiscard]] QRect getRect(QDate date) const;
    /** Moves @p entry to the day under @p point and keeps its time of day and its length. */
    void moveEntry(const QPoint &point, VelEntry &entry) const;

    /** The lines of the entries that fit, by day and from top to bottom. Valid until the view is updated. */
    [[nodiscard]] const std::vector<VelMonthEntry> &entries() const { return content().entries; }
    /** The cells in reading order. Valid until the view is updated. */
    [[nodiscard]] const std::vector<VelMonthCell> &cells() const { return content().cells; }

    [[nodiscard]] QAccessible::Role accessibleRole() const override { return QAccessible::Grouping; }
    [[nodiscard]] QString accessibleText() const override;
    [[nodiscard]] int accessibleCount() const override;
    [[nodiscard]] VelAccessibleItem accessibleItem(int index) const override;
    [[nodiscard]] int accessibleFocus() const override;

Q_SIGNALS:
    /** The month before or after is wanted. */
    void prevWanted();
    void nextWanted();
    /** All entries of that day are wanted: they do not fit here. */
    void dayWanted(QDate date);

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void changeEvent(QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    bool focusNextPrevChild(bool next) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dragLeaveEvent(QDragLeaveEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    /** What the grid holds, where. Rectangles are mirrored already in right-to-left layouts. */
    struct Content {
        VelMonthEntries lines;
        std::vector<VelMonthEntry> entries; // as the lines
        std::vector<VelMonthCell> cells;
    };

    QToolButton *addButton(const QString &toolTip, void (VelMonthView::*wanted)());
    void arrange();
    void dropContent();
    [[nodiscard]] const Content &content() const;
    [[nodiscard]] Content makeContent() const;
    [[nodiscard]] VelMonthCell cellOf(QDate date, const VelMonthEntries &lines) const;
    [[nodiscard]] QRect mirrored(const QRect &rect) const;
    /** The first line of a day without an entry, or the last one when there is none. */
    [[nodiscard]] QRect freeLine(QDate date) const;
    [[nodiscard]] int entryAt(const QPoint &point) const;
    /** The day whose number of entries without a line is at @p point; invalid for none. */
    [[nodiscard]] QDate moreAt(const QPoint &point) const;
    /** The line of the selected entry that the keyboard acts on, or -1. */
    [[nodiscard]] int currentLine() const;

    /** True while the title of a new event is being typed into a line over this view. */
    [[nodiscard]] bool isTyping() const;

    /** Asks for all entries of that day. */
    bool showCurrentDay();
    void tellFocus();
    /** Of the cells that have entries without a line the one of that number, from 0. */
    [[nodiscard]] const VelMonthCell &fullCell(std::size_t number) const;

    void selectDay(QDate date);
    void selectLine(int index);
    void goToDay(QDate date);
    void goToLine(int index);
    bool moveCurrent(int key);
    bool editCurrent();
    bool leaveCurrent();
    void showToolTip(const QHelpEvent *event);
    void showPreview(const QPoint &point);
    void endDrag();

    VelMonthLayout m_layout;
    int m_linesPerCell = 0;
    QToolButton *m_prevButton;
    QToolButton *m_nextButton;
    QDate m_selectedDay;
    QDate m_lineDay; // of the selected entry's line: one of several days has as many lines
    mutable Content m_content; // entries come and go with the document: to be used while m_isFilled only
    mutable bool m_isFilled = false;

    QPoint m_pressPos;
    bool m_mayDrag = false; // the left button went down on an entry
    QDate m_pressedMore;
    int m_wheelAngle = 0; // eighths of a degree, not yet a step
    std::unique_ptr<VelEntry> m_dragged; // over this view; null when only the drop will tell
    VelMonthPreview m_preview;
};
