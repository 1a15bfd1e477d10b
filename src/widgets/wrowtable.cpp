// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "widgets/wrowtable.h"

#include "widgets/wtabledelegate.h"

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QScopedValueRollback>
#include <QScrollBar>

WRowTable::WRowTable(QWidget *parent)
    : QTableView(parent)
    , m_model(new WTableModel(this))
{
    setModel(m_model);
    setItemDelegate(new WTableDelegate(this));
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setRowSelection(true);
    setTabKeyNavigation(false);
    setWordWrap(false);
    setShowGrid(false);
    setAlternatingRowColors(true);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->hide();
    updateRowHeight();
    connect(m_model, &WTableModel::checkToggled, this, &WRowTable::slotCheckToggled);
}

void WRowTable::beginFill(int rows)
{
    m_keptKey = m_model->keyOfRow(currentRow());
    m_keptInView = isRowInView(currentRow());
    m_model->beginFill(rows);
}

void WRowTable::addRow(std::vector<WTableItem> &&cells)
{
    m_model->addRow(std::move(cells));
}

void WRowTable::finishFill(int sortColumn, Qt::SortOrder order)
{
    m_model->endFill(sortColumn, order);
    const int row = m_model->rowOfKey(m_keptKey);
    if (row >= 0) {
        makeCurrent(row, m_keptInView);
    }
}

int WRowTable::rowCount() const
{
    return m_model->rowCount();
}

const WTableItem *WRowTable::item(int row, int column) const
{
    return m_model->item(row, column);
}

void WRowTable::setItem(int row, int column, const WTableItem &item)
{
    m_model->setItem(row, column, item);
}

void WRowTable::setChecked(int row, int column, bool checked)
{
    const WTableItem *cell = item(row, column);
    if (cell && std::holds_alternative<WCheckTableItem>(*cell)) {
        setItem(row, column, WCheckTableItem{checked});
    }
}

void *WRowTable::keyOfRow(int row) const
{
    return m_model->keyOfRow(row);
}

int WRowTable::rowOfKey(const void *key) const
{
    return m_model->rowOfKey(key);
}

int WRowTable::currentRow() const
{
    return currentIndex().row();
}

void WRowTable::setRowSelection(bool on)
{
    clearSelection();
    setSelectionMode(on ? QAbstractItemView::SingleSelection : QAbstractItemView::NoSelection);
}

void WRowTable::setDateFormatter(const WTableModel::DateFormatter &formatter)
{
    m_model->setDateFormatter(formatter);
    viewport()->update();
}

void WRowTable::setDateTimeFormatter(const WTableModel::DateTimeFormatter &formatter)
{
    m_model->setDateTimeFormatter(formatter);
    viewport()->update();
}

bool WRowTable::isRowInView(int row) const
{
    if (row < 0) {
        return false;
    }
    const int top = rowViewportPosition(row);
    return top + rowHeight(row) > 0 && top < viewport()->height();
}

void WRowTable::changeEvent(QEvent *event)
{
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        updateRowHeight();
    }
}

void WRowTable::contextMenuEvent(QContextMenuEvent *event)
{
    event->accept();
    if (event->reason() == QContextMenuEvent::Keyboard) {
        requestMenuAtRow();
        return;
    }
    const QModelIndex index = indexAt(viewport()->mapFromGlobal(event->globalPos()));
    Q_EMIT contextMenuRequested(index.row(), displayColumn(index), event->globalPos());
}

void WRowTable::currentChanged(const QModelIndex &current, const QModelIndex &previous)
{
    QTableView::currentChanged(current, previous);
    if (current.row() != previous.row()) {
        Q_EMIT currentRowChanged(current.row());
    }
}

void WRowTable::focusInEvent(QFocusEvent *event)
{
    QTableView::focusInEvent(event);
    const bool byKeyboard = event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason
        || event->reason() == Qt::ShortcutFocusReason;
    if (byKeyboard && currentIndex().isValid()) {
        // The toolkit makes a row current that nothing shows.
        selectionModel()->select(currentIndex(), selectionCommand(currentIndex()));
    }
}

void WRowTable::keyPressEvent(QKeyEvent *event)
{
    const bool plain = !(event->modifiers() & ~Qt::KeypadModifier);
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (plain && enter && currentRow() >= 0) {
        Q_EMIT rowActivated(currentRow());
    } else if (plain && event->key() == Qt::Key_Space && (event->isAutoRepeat() || toggleOnlyCheckBox())) {
        event->accept();
    } else if (plain && event->key() == Qt::Key_Left) {
        horizontalScrollBar()->triggerAction(QAbstractSlider::SliderSingleStepSub);
    } else if (plain && event->key() == Qt::Key_Right) {
        horizontalScrollBar()->triggerAction(QAbstractSlider::SliderSingleStepAdd);
    } else if (event->modifiers() == Qt::ShiftModifier && event->key() == Qt::Key_F10) {
        requestMenuAtRow();
    } else {
        QTableView::keyPressEvent(event);
    }
}

void WRowTable::mousePressEvent(QMouseEvent *event)
{
    m_pressed = indexAt(event->pos());
    QTableView::mousePressEvent(event);
}

void WRowTable::mouseReleaseEvent(QMouseEvent *event)
{
    const QPersistentModelIndex index = indexAt(event->pos());
    const bool clicked = index.isValid() && m_pressed.row() == index.row();
    m_pressed = QPersistentModelIndex();
    QTableView::mouseReleaseEvent(event);
    if (clicked && index.isValid()) {
        Q_EMIT rowClicked(index.row(), displayColumn(index), event->button(), event->pos());
    }
}

void WRowTable::mouseDoubleClickEvent(QMouseEvent *event)
{
    const QPersistentModelIndex index = indexAt(event->pos());
    m_pressed = QPersistentModelIndex();
    QTableView::mouseDoubleClickEvent(event);
    if (index.isValid() && !isOnCheckBox(index, event->pos())) {
        Q_EMIT rowDoubleClicked(index.row(), displayColumn(index), event->button(), event->pos());
    }
}

/** Rows are what the cursor goes through: Home and End lead to the first and the last one. */
QModelIndex WRowTable::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers)
{
    if (action == MoveHome) {
        return m_model->index(0, qMax(0, currentIndex().column()));
    }
    if (action == MoveEnd) {
        return m_model->index(rowCount() - 1, qMax(0, currentIndex().column()));
    }
    return QTableView::moveCursor(action, modifiers);
}

int WRowTable::displayColumn(const QModelIndex &index) const
{
    return index.isValid() ? horizontalHeader()->visualIndex(index.column()) : -1;
}

void WRowTable::slotCheckToggled(int row, int column)
{
    Q_EMIT valueChanged(row, horizontalHeader()->visualIndex(column));
}

void WRowTable::updateRowHeight()
{
    const int margin = style()->pixelMetric(QStyle::PM_FocusFrameVMargin, nullptr, this) + 1;
    const int box = style()->pixelMetric(QStyle::PM_IndicatorHeight, nullptr, this);
    const int height = qMax(fontMetrics().height(), box) + 2 * margin;
    verticalHeader()->setMinimumSectionSize(height);
    verticalHeader()->setDefaultSectionSize(height);
}

void WRowTable::setRowsDraggable(bool draggable)
{
    m_model->setRowsDraggable(draggable);
    setDragEnabled(draggable);
}

void WRowTable::startDrag(Qt::DropActions)
{
    if (currentRow() >= 0)
        Q_EMIT rowDragged(currentRow());
}

void WRowTable::makeCurrent(int row, bool scroll)
{
    const bool before = hasAutoScroll();
    setAutoScroll(before && scroll);
    setCurrentIndex(m_model->index(row, horizontalHeader()->logicalIndexAt(0)));
    setAutoScroll(before);
}

bool WRowTable::isOnCheckBox(const QModelIndex &index, const QPoint &pos) const
{
    if (!(index.flags() & Qt::ItemIsUserCheckable)) {
        return false;
    }
    QStyleOptionViewItem option;
    option.initFrom(this);
    option.rect = visualRect(index);
    option.features |= QStyleOptionViewItem::HasCheckIndicator;
    return style()->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &option, this).contains(pos);
}

/** The check box of the row when it has one that is shown and no other. */
QModelIndex WRowTable::onlyCheckBox(int row) const
{
    QModelIndex result;
    for (int column = 0; column < m_model->columnCount(); ++column) {
        const QModelIndex index = m_model->index(row, column);
        if (isColumnHidden(column) || !(index.flags() & Qt::ItemIsUserCheckable)) {
            continue;
        }
        if (result.isValid()) {
            return {};
        }
        result = index;
    }
    return result;
}

bool WRowTable::toggleOnlyCheckBox()
{
    const QModelIndex box = onlyCheckBox(currentRow());
    if (!box.isValid()) {
        return false;
    }
    const bool checked = box.data(Qt::CheckStateRole).toInt() == Qt::Checked;
    return m_model->setData(box, checked ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
}

void WRowTable::requestMenuAtRow()
{
    const int row = currentRow();
    if (row < 0) {
        Q_EMIT contextMenuRequested(-1, -1, viewport()->mapToGlobal(viewport()->rect().center()));
        return;
    }
    scrollTo(currentIndex());
    const int y = rowViewportPosition(row) + rowHeight(row) / 2;
    // In the middle of what the columns take up, which may be less than the viewport.
    const QPoint pos(qMin(viewport()->width(), horizontalHeader()->length()) / 2, y);
    Q_EMIT contextMenuRequested(row, displayColumn(indexAt(pos)), viewport()->mapToGlobal(pos));
}
