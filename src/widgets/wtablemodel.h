// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "widgets/wtableitem.h"
#include "widgets/wtablesort.h"

#include <QAbstractTableModel>
#include <QIcon>
#include <QStringList>

#include <functional>
#include <vector>

/**
 * The rows of a WTable: cells are values, their texts are made when they are shown.
 *
 * The cells stay where they were filled in; what a sort changes is the order in which the rows are looked at.
 * All row numbers of the interface are numbers in that order, all columns are logical ones.
 */
class WTableModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    using DateFormatter = std::function<QString(const QDate &)>;
    using DateTimeFormatter = std::function<QString(const QDateTime &)>;

    explicit WTableModel(QObject *parent = nullptr);

    /** Sets the column headers. Another number of columns than before drops all rows. */
    void setHeaders(const QStringList &headers);
    [[nodiscard]] const QStringList &headers() const { return m_headers; }
    /** Puts @p icon before the header of @p column and takes it from all others; -1 is for none. */
    void setHeaderIcon(int column, const QIcon &icon);

    /**
     * How a day is written; the short form of the locale when none is given. An invalid one is an empty text.
     */
    void setDateFormatter(const DateFormatter &formatter);
    /** As setDateFormatter, for a date with a time. */
    void setDateTimeFormatter(const DateTimeFormatter &formatter);

    /** Starts anew with room for @p rows rows. What was there before stays visible until endFill. */
    void beginFill(int rows);
    /** Whether the view may begin a drag on a row. */
    void setRowsDraggable(bool draggable) { m_rowsDraggable = draggable; }
    /** Adds a row: cells that are missing stay empty, those beyond the last column are dropped. */
    void addRow(std::vector<WTableItem> &&cells);
    /** Shows the new rows, ordered by @p column or, when it is -1, as they were added. */
    void endFill(int column, Qt::SortOrder order);

    /** The cell, or nullptr when there is no such one; valid until the table changes. */
    [[nodiscard]] const WTableItem *item(int row, int column) const;
    /** Replaces a cell. The row stays where it is until the next sort. */
    void setItem(int row, int column, const WTableItem &item);
    /** The text that the cell shows. */
    [[nodiscard]] QString text(const WTableItem &item) const;
    /** The pointer of the first key cell in @p row; nullptr when there is none. */
    [[nodiscard]] void *keyOfRow(int row) const;
    /** The first row with a key cell that has this pointer; -1 when there is none. */
    [[nodiscard]] int rowOfKey(const void *key) const;

    [[nodiscard]] int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    [[nodiscard]] int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role = Qt::DisplayRole) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex &index) const override;
    /** The way in for the user's hand; it only takes Qt::CheckStateRole. Owners use setItem. */
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;
    /**
     * Orders the rows by @p column, or as they were added when it is -1. Does nothing when they are so
     * already.
     */
    void sort(int column, Qt::SortOrder order = Qt::AscendingOrder) override;

Q_SIGNALS:
    /** The user has ticked or cleared a check box. */
    void checkToggled(int row, int column);

private:
    [[nodiscard]] std::size_t cellIndex(int row, int column) const;
    [[nodiscard]] WRowOrder orderOf(int column, Qt::SortOrder order) const;
    void moveIndexes(const WRowOrder &before);

    QStringList m_headers;
    int m_iconColumn = -1;
    QIcon m_icon;
    DateFormatter m_dateFormatter;
    DateTimeFormatter m_dateTimeFormatter;
    std::vector<WTableItem> m_cells;
    std::vector<WTableItem> m_newCells;
    WRowOrder m_order;
    bool m_rowsDraggable = false;
    int m_sortColumn = -1;
    Qt::SortOrder m_sortOrder = Qt::AscendingOrder;
};
