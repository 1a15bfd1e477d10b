// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "widgets/wtablemodel.h"

#include "widgets/wshowntext.h"

#include <KLocalizedString>

#include <QLocale>

#include <utility>

namespace
{
/** No column: the rows must be sorted again whatever is asked for. */
constexpr int NotSorted = -2;

QString shortDate(const QDate &date)
{
    return QLocale().toString(date, QLocale::ShortFormat);
}

QString shortDateTime(const QDateTime &dateTime)
{
    return QLocale().toString(dateTime, QLocale::ShortFormat);
}
} // namespace

WTableModel::WTableModel(QObject *parent)
    : QAbstractTableModel(parent)
    , m_dateFormatter(shortDate)
    , m_dateTimeFormatter(shortDateTime)
{
}

void WTableModel::setHeaders(const QStringList &headers)
{
    if (headers.count() == m_headers.count()) {
        m_headers = headers;
        if (!headers.isEmpty()) {
            Q_EMIT headerDataChanged(Qt::Horizontal, 0, columnCount() - 1);
        }
        return;
    }
    beginResetModel();
    m_headers = headers;
    m_iconColumn = -1;
    m_cells.clear();
    m_newCells.clear();
    m_order.clear();
    m_sortColumn = NotSorted;
    endResetModel();
}

void WTableModel::setHeaderIcon(int column, const QIcon &icon)
{
    const int before = std::exchange(m_iconColumn, column);
    m_icon = icon;
    for (const int changed : {before, column}) {
        if (changed >= 0 && changed < columnCount()) {
            Q_EMIT headerDataChanged(Qt::Horizontal, changed, changed);
        }
    }
}

void WTableModel::setDateFormatter(const DateFormatter &formatter)
{
    m_dateFormatter = formatter ? formatter : DateFormatter(shortDate);
}

void WTableModel::setDateTimeFormatter(const DateTimeFormatter &formatter)
{
    m_dateTimeFormatter = formatter ? formatter : DateTimeFormatter(shortDateTime);
}

void WTableModel::beginFill(int rows)
{
    m_newCells.clear();
    m_newCells.reserve(std::size_t(qMax(0, rows)) * std::size_t(columnCount()));
}

void WTableModel::addRow(std::vector<WTableItem> &&cells)
{
    cells.resize(std::size_t(columnCount()));
    std::move(cells.begin(), cells.end(), std::back_inserter(m_newCells));
}

void WTableModel::endFill(int column, Qt::SortOrder order)
{
    beginResetModel();
    m_cells = std::exchange(m_newCells, {});
    m_order = wFillOrder(columnCount() == 0 ? 0 : int(m_cells.size() / m_headers.size()));
    m_order = orderOf(column, order);
    m_sortColumn = column;
    m_sortOrder = order;
    endResetModel();
}

const WTableItem *WTableModel::item(int row, int column) const
{
    if (row < 0 || row >= rowCount() || column < 0 || column >= columnCount()) {
        return nullptr;
    }
    return &m_cells[cellIndex(row, column)];
}

void WTableModel::setItem(int row, int column, const WTableItem &item)
{
    if (!this->item(row, column)) {
        return;
    }
    m_cells[cellIndex(row, column)] = item;
    if (column == m_sortColumn) {
        m_sortColumn = NotSorted;
    }
    const QModelIndex changed = index(row, column);
    Q_EMIT dataChanged(changed, changed);
}

QString WTableModel::text(const WTableItem &item) const
{
    if (const auto *text = std::get_if<QString>(&item)) {
        return *text;
    }
    if (const auto *key = std::get_if<WKeyTableItem>(&item)) {
        return key->text();
    }
    if (const auto *date = std::get_if<WDateTableItem>(&item)) {
        return date->date().isValid() ? m_dateFormatter(date->date()) : QString();
    }
    if (const auto *dateTime = std::get_if<WDateTimeTableItem>(&item)) {
        return dateTime->dateTime().isValid() ? m_dateTimeFormatter(dateTime->dateTime()) : QString();
    }
    if (const auto *number = std::get_if<int>(&item)) {
        return QLocale().toString(*number);
    }
    return {};
}

void *WTableModel::keyOfRow(int row) const
{
    for (int column = 0; column < columnCount(); ++column) {
        const WTableItem *cell = item(row, column);
        const auto *key = cell ? std::get_if<WKeyTableItem>(cell) : nullptr;
        if (key) {
            return key->item();
        }
    }
    return nullptr;
}

int WTableModel::rowOfKey(const void *key) const
{
    for (int row = 0; key && row < rowCount(); ++row) {
        if (keyOfRow(row) == key) {
            return row;
        }
    }
    return -1;
}

int WTableModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_order.size());
}

int WTableModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_headers.count());
}

QVariant WTableModel::data(const QModelIndex &index, int role) const
{
    const WTableItem *cell = item(index.row(), index.column());
    if (!cell) {
        return {};
    }
    const auto *check = std::get_if<WCheckTableItem>(cell);
    if (check && role == Qt::CheckStateRole) {
        return int(check->checked ? Qt::Checked : Qt::Unchecked);
    }
    if (check && role == Qt::AccessibleTextRole) {
        return check->checked ? i18nc("@item:intable for screen readers", "checked")
                              : i18nc("@item:intable for screen readers", "not checked");
    }
    if (!check && (role == Qt::DisplayRole || role == Qt::AccessibleTextRole)) {
        return WShownText::cut(text(*cell));
    }
    return {};
}

QVariant WTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) {
        return {};
    }
    if (role == Qt::DisplayRole) {
        return m_headers.at(section);
    }
    if (role == Qt::DecorationRole && section == m_iconColumn && !m_icon.isNull()) {
        return m_icon;
    }
    return {};
}

Qt::ItemFlags WTableModel::flags(const QModelIndex &index) const
{
    const WTableItem *cell = item(index.row(), index.column());
    if (!cell) {
        return Qt::NoItemFlags;
    }
    Qt::ItemFlags result = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
    result.setFlag(Qt::ItemIsDragEnabled, m_rowsDraggable);
    return std::holds_alternative<WCheckTableItem>(*cell) ? result | Qt::ItemIsUserCheckable : result;
}

bool WTableModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    const WTableItem *cell = item(index.row(), index.column());
    if (!cell || role != Qt::CheckStateRole || !std::holds_alternative<WCheckTableItem>(*cell)) {
        return false;
    }
    setItem(index.row(), index.column(), WCheckTableItem{value.toInt() == Qt::Checked});
    Q_EMIT checkToggled(index.row(), index.column());
    return true;
}

void WTableModel::sort(int column, Qt::SortOrder order)
{
    if (column >= columnCount() || (column == m_sortColumn && order == m_sortOrder)) {
        return;
    }
    Q_EMIT layoutAboutToBeChanged({}, QAbstractItemModel::VerticalSortHint);
    const WRowOrder before = std::exchange(m_order, orderOf(column, order));
    moveIndexes(before);
    m_sortColumn = column;
    m_sortOrder = order;
    Q_EMIT layoutChanged({}, QAbstractItemModel::VerticalSortHint);
}

std::size_t WTableModel::cellIndex(int row, int column) const
{
    return std::size_t(m_order[std::size_t(row)]) * std::size_t(columnCount()) + std::size_t(column);
}

WRowOrder WTableModel::orderOf(int column, Qt::SortOrder order) const
{
    const std::size_t rows = m_order.size();
    if (column < 0 || column >= columnCount()) {
        return wFillOrder(int(rows));
    }
    const auto cell = [this, column](std::size_t row) -> const WTableItem & {
        return m_cells[row * std::size_t(columnCount()) + std::size_t(column)];
    };
    std::vector<qint64> numbers;
    numbers.reserve(rows);
    while (numbers.size() < rows && !wSortsByText(cell(numbers.size()))) {
        numbers.push_back(wSortNumber(cell(numbers.size())));
    }
    if (numbers.size() == rows) {
        return wOrderByNumber(numbers, order);
    }
    std::vector<QString> texts;
    texts.reserve(rows);
    while (texts.size() < rows) {
        // The keys of a sort take many times the length.
        texts.push_back(WShownText::cut(text(cell(texts.size()))));
    }
    return wOrderByText(texts, order);
}

void WTableModel::moveIndexes(const WRowOrder &before)
{
    const QModelIndexList old = persistentIndexList();
    if (old.isEmpty()) {
        return;
    }
    std::vector<int> rowOf(m_order.size());
    for (std::size_t row = 0; row < m_order.size(); ++row) {
        rowOf[std::size_t(m_order[row])] = int(row);
    }
    QModelIndexList moved;
    moved.reserve(old.size());
    for (const QModelIndex &index : old) {
        moved.append(createIndex(rowOf[std::size_t(before[std::size_t(index.row())])], index.column()));
    }
    changePersistentIndexList(old, moved);
}
