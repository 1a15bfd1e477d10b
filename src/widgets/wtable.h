// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "widgets/wrowtable.h"

class KConfig;
class QMenu;
class WTableHeader;

/**
 * The table for lists: its columns are shown, hidden, moved and sized by the user, its rows are sorted by a
 * click on a header, and all that is kept in the configuration under a name.
 *
 * A logical column is the one that the owner set up, a display column is a place on the screen; getDispColumn
 * and getOrigColumn lead from one to the other. Functions take logical columns unless they say otherwise.
 */
class WTable : public WRowTable
{
    Q_OBJECT
public:
    explicit WTable(QWidget *parent = nullptr);
    /** A table of @p rows empty rows and @p columns columns without headers. */
    WTable(int rows, int columns, QWidget *parent = nullptr);
    ~WTable() override;

    /**
     * Sets up the columns. The lists go by logical column; without @p menuNames the column menu shows the
     * headers, without @p widths (pixels) the columns are fitted to their contents. Lists of another length
     * than @p headers are warned of and then made to fit. At least one column is always shown.
     */
    void setColumns(const QStringList &headers, const QList<bool> &actives, const QStringList &menuNames = {},
                    const QList<int> &widths = {});
    /** Sets up the columns as they were saved under @p name, or with the given defaults. */
    void readConfig(const KConfig *config, const QString &name, const QStringList &headers,
                    const QList<bool> &actives, const QStringList &menuNames);
    /**
     * Saves the arrangement of the columns and the sort order under @p name; no widths while they are not the
     * user's own, so that columns go on fitting their contents. The caller syncs @p config.
     */
    void writeConfig(KConfig *config, const QString &name) const;

    /** Shows the rows filled in instead of the old ones, in the current order when sorting is enabled. */
    void endFill();

    /** Sorting is off until the owner calls this. Not the toolkit's setSortingEnabled. */
    void setSorting(bool on) { m_sortingEnabled = on; }
    [[nodiscard]] bool sortingEnabled() const { return m_sortingEnabled; }
    /**
     * Sorts by @p column: by the same one as before in the other direction, by another one ascending. A
     * negative one sorts again as before. Does nothing while sorting is off.
     */
    void sortBy(int column);
    [[nodiscard]] int sortColumn() const { return m_sortColumn; }
    [[nodiscard]] bool ascending() const { return m_ascending; }
    /** The icons before the header of the sorted column: @p down for ascending, @p up for descending. */
    void setSortIcons(const QIcon &down, const QIcon &up);

    /** Hides the inactive columns and shows the active ones. */
    void setActives();
    [[nodiscard]] QList<bool> colActives() const { return m_colActives; }
    /** 1 for a shown, 0 for a hidden column, by logical column. */
    [[nodiscard]] QList<int> colActivesInt() const;
    /** Pixels by logical column; a hidden one has the width that it comes back with. */
    [[nodiscard]] QList<int> colWidths() const;
    /**
     * Fits every shown column to its header and to the rows on the screen and near them: some 200 rows at
     * most, and never wider than makes sense for reading.
     */
    void adjustAll();
    /**
     * Lets @p column take the room that the others leave, as long as the widths are not the user's own; -1 is
     * for none.
     */
    void setStretchColumn(int column) { m_stretchColumn = column; }
    /** Hides a column and remembers its width. The last shown column stays. Hides the toolkit's function. */
    void hideColumn(int column);
    /** Shows a column with the width that it had. Hides the toolkit's function. */
    void showColumn(int column);
    /** Swaps two display columns; without @p swapHeaders the header texts stay in their places. */
    void swapColumns(int display1, int display2, bool swapHeaders);
    /** The logical column at a place on the screen; -1 when there is none. */
    [[nodiscard]] int getOrigColumn(int display) const;
    /** The place on the screen of a logical column, counting the hidden ones; -1 when there is none. */
    [[nodiscard]] int getDispColumn(int column) const;
    /** The logical columns that are shown, as they stand on the screen. */
    [[nodiscard]] QList<int> shownColumns() const;
    /** Whether the widths are the user's own; the owner then does not fit them any more. */
    [[nodiscard]] bool userWidths() const { return m_userWidths; }
    /** The menu of the header; nullptr before setColumns. */
    [[nodiscard]] QMenu *columnMenu() const { return m_columnMenu; }
    /** Puts "0" before @p text until it is two characters long. */
    [[nodiscard]] QString pad(const QString &text) const;

public Q_SLOTS:
    /** Shows or hides the column of a menu item; @p id is its logical column. */
    void columnDisplayChange(int id);
    /** Sorts by the column of the header that was clicked on. */
    void columnClicked(int column) { sortBy(column); }

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void initHeader();
    void stretch();
    [[nodiscard]] int fittingWidth(int column) const;
    [[nodiscard]] int columns() const { return int(m_colActives.count()); }
    [[nodiscard]] bool isColumn(int column) const { return column >= 0 && column < columns(); }
    [[nodiscard]] bool isLastShown(int column) const;
    void setWidths(const QList<int> &widths);
    void setPositions(const QList<int> &positions);
    void fitColumn(int column);
    void rebuildMenu();
    void updateMenu();
    void openColumnMenu(const QPoint &globalPos);
    void slotSizeChange(int column, int oldSize, int newSize);
    void resort();
    void showSortIcon();
    [[nodiscard]] Qt::SortOrder sortOrder() const;

    WTableHeader *m_header;
    QMenu *m_columnMenu = nullptr;
    QStringList m_menuNames;
    QList<bool> m_colActives;
    QList<int> m_savedWidths;
    QIcon m_sortDown;
    QIcon m_sortUp;
    bool m_sortingEnabled = false;
    int m_stretchColumn = -1;
    int m_sortColumn = 0;
    bool m_ascending = true;
    bool m_userWidths = false;
    bool m_ownResize = false;
};
