// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "model/velaccount.h"

#include <QAbstractTableModel>
#include <QCollator>

#include <memory>
#include <vector>

class QMimeData;

/** Accounts on their way by drag and drop: in the program's own form and, for all other programs, as text. */
namespace VelPersonDrag
{
/** "Anna <anna@example.org>", or what there is of the two. */
[[nodiscard]] QString toText(const VelAccount &account);
/** What a drag of these carries; the caller owns it. */
[[nodiscard]] std::unique_ptr<QMimeData> encode(const VelAccountList &accounts);
[[nodiscard]] bool canDecode(const QMimeData *data);
/** The accounts of the data; none of data that are damaged. */
[[nodiscard]] VelAccountList decode(const QMimeData *data);
} // namespace VelPersonDrag

/**
 * People and resources to choose from, by name and e-mail, as many as a server has: those that a search finds,
 * in the order of the locale.
 */
class VelPersonModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    enum Column { NameColumn = 0, EmailColumn = 1, ColumnCount = 2 };

    explicit VelPersonModel(QObject *parent = nullptr);

    void setAccounts(const VelAccountList &accounts);
    /**
     * Leaves those of whom every word of @p text is a part of the name or the e-mail address. Case and accents do
     * not count.
     */
    void setFilter(const QString &text);
    /** The account in that row, which must be there. */
    [[nodiscard]] const VelAccount &account(int row) const;

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex &index) const override;
    [[nodiscard]] QStringList mimeTypes() const override;
    [[nodiscard]] QMimeData *mimeData(const QModelIndexList &indexes) const override;
    [[nodiscard]] Qt::DropActions supportedDragActions() const override { return Qt::CopyAction; }
    void sort(int column, Qt::SortOrder order = Qt::AscendingOrder) override;

private:
    struct Person {
        VelAccount account;
        QString searchKey;
    };

    void sortPeople();
    void findRows();

    QCollator m_collator;
    std::vector<Person> m_people; ///< in the order that is shown
    std::vector<size_t> m_rows; ///< the places of those found, ascending
    QStringList m_words;
    int m_column = NameColumn;
    Qt::SortOrder m_order = Qt::AscendingOrder;
};
