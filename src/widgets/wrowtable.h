// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "widgets/wtablemodel.h"

#include <QPersistentModelIndex>
#include <QTableView>

/**
 * A table whose rows are the things that people choose, click on and tick: what WTable is apart from its
 * columns.
 *
 * Rows are those on the screen, counted from the top; a sort changes them, so an owner finds its objects by
 * WKeyTableItem. Columns of functions are logical ones, in the order in which the owner set them up.
 */
class WRowTable : public QTableView
{
    Q_OBJECT
public:
    explicit WRowTable(QWidget *parent = nullptr);

    /** Starts to fill the table anew, with room for @p rows rows. */
    void beginFill(int rows);
    /** Adds a row, one cell for each logical column. */
    void addRow(std::vector<WTableItem> &&cells);
    [[nodiscard]] int rowCount() const;
    /** The cell, valid until the table changes; nullptr when there is no such one. */
    [[nodiscard]] const WTableItem *item(int row, int column) const;
    void setItem(int row, int column, const WTableItem &item);
    /** Ticks or clears a check box without telling anybody; nothing happens when the cell has none. */
    void setChecked(int row, int column, bool checked);
    /** The pointer of the row's first key cell; nullptr when there is none. */
    [[nodiscard]] void *keyOfRow(int row) const;
    /** The row whose first key cell has this pointer; -1 when there is none. */
    [[nodiscard]] int rowOfKey(const void *key) const;
    /** The row that the keyboard is on; -1 when there is none. */
    [[nodiscard]] int currentRow() const;
    [[nodiscard]] WTableModel *tableModel() const { return m_model; }

    /** Whether the current row is highlighted. It is by default. */
    void setRowSelection(bool on);
    /** How days and moments are written in the cells; the short forms of the locale by default. */
    void setDateFormatter(const WTableModel::DateFormatter &formatter);
    void setDateTimeFormatter(const WTableModel::DateTimeFormatter &formatter);

    /** Lets the mouse drag rows, which sends rowDragged(). */
    void setRowsDraggable(bool draggable);

Q_SIGNALS:
    // Columns in these signals are display columns: places on the screen, counting the hidden ones.
    /** A row was clicked on with mouse button @p button (Qt::MouseButton), at @p pos in the viewport. */
    void rowClicked(int row, int column, int button, const QPoint &pos);
    /** As rowClicked, for a double click; one on a check box is two ticks and not reported here. */
    void rowDoubleClicked(int row, int column, int button, const QPoint &pos);
    /** Return was pressed on a row. */
    void rowActivated(int row);
    /** The keyboard or the mouse went to another row. */
    void currentRowChanged(int row);
    /** The user ticked or cleared a check box. */
    void valueChanged(int row, int column);
    /** The mouse drags a row away; what it drags is the owner's to say. */
    void rowDragged(int row);
    /** A menu is wanted, with the mouse or the keyboard. Row and column are -1 outside the rows. */
    void contextMenuRequested(int row, int column, const QPoint &globalPos);

protected:
    /** Shows the rows filled in; the row that was current stays so when a new one has the same pointer. */
    void finishFill(int sortColumn, Qt::SortOrder order);
    [[nodiscard]] bool isRowInView(int row) const;

    void changeEvent(QEvent *event) override;
    void startDrag(Qt::DropActions actions) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void currentChanged(const QModelIndex &current, const QModelIndex &previous) override;
    void focusInEvent(QFocusEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;

private:
    [[nodiscard]] int displayColumn(const QModelIndex &index) const;
    void slotCheckToggled(int row, int column);
    void updateRowHeight();
    void makeCurrent(int row, bool scroll);
    [[nodiscard]] bool isOnCheckBox(const QModelIndex &index, const QPoint &pos) const;
    [[nodiscard]] QModelIndex onlyCheckBox(int row) const;
    bool toggleOnlyCheckBox();
    void requestMenuAtRow();

    WTableModel *m_model;
    void *m_keptKey = nullptr;
    bool m_keptInView = false;
    QPersistentModelIndex m_pressed;
};
