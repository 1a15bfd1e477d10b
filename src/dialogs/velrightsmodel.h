// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "dialogs/velpersonmodel.h"

#include <QVector>

#include <limits>
#include <map>

/**
 * What somebody may do with a calendar: a number that the server keeps, the higher the more.
 *
 * The numbers are the server's; those without a word here are shown as they are and left alone.
 */
namespace VelRights
{
/** Account id to right; id 0 stands for everybody who has none of their own. */
using Map = std::map<quint32, int>;

enum Right { NoAccess = 0, BusyTimes = 1, Reading = 2, Changing = 3, FullAccess = 4 };
/** No right at all: that of everybody else counts. */
constexpr int NoneOfTheirOwn = std::numeric_limits<int>::min();
/** The same for everybody: the server has told none. */
constexpr int UpToTheServer = NoneOfTheirOwn + 1;
constexpr quint32 EverybodyId = 0;

[[nodiscard]] QString toText(int right);
/** What this program makes of a calendar with that right. */
[[nodiscard]] QString explain(int right);
/** False when everybody's right is missing: what the server makes of that, it must not be told by us. */
[[nodiscard]] bool isComplete(const Map &rights);
/** The argument of the request that stores complete rights: everybody's first, then by id. */
[[nodiscard]] QString toArgument(const Map &rights);
} // namespace VelRights

/**
 * A table of who has which right: everybody else first, then the people and resources of the server, and last those with
 * a right whom the list does not name, as a search leaves them.
 */
class VelRightsModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    enum Column { NameColumn = 0, RightColumn = 1, ColumnCount = 2 };

    explicit VelRightsModel(QObject *parent = nullptr);

    /** The table is empty until there are rights. */
    void clear();
    /** Takes the rights that the server has. */
    void setRights(const VelRights::Map &rights);
    /** Who can have a right: all of @p accounts but @p ownId, whose calendar it is. Rights stay as they are. */
    void setAccounts(const VelAccountList &accounts, quint32 ownId);
    /** As in VelPersonModel. Everybody else is always shown. */
    void setFilter(const QString &text);

    [[nodiscard]] const VelRights::Map &rights() const { return m_rights; }
    [[nodiscard]] bool isChanged() const { return m_rights != m_serverRights; }
    /** The rights that the row may be given: the known ones, and those that it has or had. */
    [[nodiscard]] QVector<int> choices(int row) const;

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    /** Takes a right under the edit role. */
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex &index) const override;
    void sort(int column, Qt::SortOrder order = Qt::AscendingOrder) override;

Q_SIGNALS:
    /** The user has given somebody another right. */
    void rightChanged();

private:
    [[nodiscard]] quint32 idOf(int row) const;
    [[nodiscard]] QString nameOf(int row) const;
    [[nodiscard]] int rightOf(quint32 id) const;
    void findPeople();
    void findRows();

    VelPersonModel m_people; ///< does the searching and the sorting by name
    VelAccountList m_accounts;
    quint32 m_ownId = 0;
    VelRights::Map m_serverRights;
    VelRights::Map m_rights;
    QVector<int> m_rows; ///< of m_people, as they follow on the first
    int m_column = NameColumn;
    Qt::SortOrder m_order = Qt::AscendingOrder;
    bool m_isLoaded = false;
};
