// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogs/velrightsdelegate.h"

#include "dialogs/velrightsmodel.h"

#include <QApplication>
#include <QComboBox>
#include <QPainter>
#include <QTimer>

namespace
{
const QStyle &styleOf(const QStyleOptionViewItem &option)
{
    return option.widget ? *option.widget->style() : *QApplication::style();
}
} // namespace

void VelRightsDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                              const QModelIndex &index) const
{
    if (index.column() != VelRightsModel::RightColumn) {
        QStyledItemDelegate::paint(painter, option, index);
        return;
    }
    QStyleOptionViewItem cell = option;
    initStyleOption(&cell, index);
    const QStyle &style = styleOf(cell);
    QStyleOptionComboBox box;
    box.rect = cell.rect;
    box.direction = cell.direction;
    box.palette = cell.palette;
    box.fontMetrics = cell.fontMetrics;
    box.state = cell.state & ~(QStyle::State_Selected | QStyle::State_HasFocus);
    box.currentText = cell.text;
    cell.text.clear();
    style.drawControl(QStyle::CE_ItemViewItem, &cell, painter, cell.widget);
    style.drawComplexControl(QStyle::CC_ComboBox, &box, painter, cell.widget);
    style.drawControl(QStyle::CE_ComboBoxLabel, &box, painter, cell.widget);
}

QSize VelRightsDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const QSize text = QStyledItemDelegate::sizeHint(option, index);
    if (index.column() != VelRightsModel::RightColumn)
        return text;
    QStyleOptionComboBox box;
    box.fontMetrics = option.fontMetrics;
    return styleOf(option).sizeFromContents(QStyle::CT_ComboBox, &box, text, option.widget);
}

QWidget *VelRightsDelegate::createEditor(QWidget *parent, const QStyleOptionViewItem &,
                                         const QModelIndex &index) const
{
    auto *box = new QComboBox(parent);
    const auto *model = qobject_cast<const VelRightsModel *>(index.model());
    const QVector<int> choices = model->choices(index.row());
    for (const int right : choices) {
        box->addItem(VelRights::toText(right), right);
        box->setItemData(box->count() - 1, VelRights::explain(right), Qt::ToolTipRole);
    }
    connect(box, QOverload<int>::of(&QComboBox::activated), this,
            [self = const_cast<VelRightsDelegate *>(this), box] { self->finish(box); });
    QTimer::singleShot(0, box, &QComboBox::showPopup); // when it is in its place
    return box;
}

void VelRightsDelegate::finish(QWidget *editor)
{
    Q_EMIT commitData(editor);
    Q_EMIT closeEditor(editor);
}

void VelRightsDelegate::setEditorData(QWidget *editor, const QModelIndex &index) const
{
    auto *box = static_cast<QComboBox *>(editor);
    box->setCurrentIndex(box->findData(index.data(Qt::EditRole)));
}

void VelRightsDelegate::setModelData(QWidget *editor, QAbstractItemModel *model,
                                     const QModelIndex &index) const
{
    model->setData(index, static_cast<QComboBox *>(editor)->currentData());
}
