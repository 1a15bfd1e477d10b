// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogs/velrightsmodel.h"

#include <KLocalizedString>

#include <QSet>

#include <algorithm>
#include <numeric>
#include <utility>

namespace
{
QString toLine(quint32 id, int right)
{
    return QStringLiteral("<right id=\"%1\" right=\"%2\"/>\n").arg(id).arg(right);
}
} // namespace

QString VelRights::toText(int right)
{
    switch (right) {
    case NoneOfTheirOwn:
        return i18n("As everybody else");
    case NoAccess:
        return i18n("No access");
    case UpToTheServer:
        return i18n("As the server decides");
    case BusyTimes:
        return i18n("Busy times only");
    case Reading:
        return i18n("Read");
    case Changing:
        return i18n("Read and change");
    case FullAccess:
        return i18n("Full access");
    default:
        return i18n("Level %1", QString::number(right));
    }
}

QString VelRights::explain(int right)
{
    switch (right) {
    case NoneOfTheirOwn:
        return i18n("The right of everybody else counts, also when it is changed later.");
    case NoAccess:
        return i18n("The lowest right: no part of the calendar is granted.");
    case UpToTheServer:
        return i18n("The server has not told the right of everybody else.");
    case BusyTimes:
        return i18n("Only when you are busy is shown, and nothing of what it is. Nothing can be changed.");
    case Reading:
        return i18n("Entries can be read, but for the titles of private ones. Nothing can be changed.");
    case Changing:
        return i18n("Entries can be read, but for the titles of private ones, and be added and changed.");
    case FullAccess:
        return i18n("The same as you: private titles are shown, and invitations can be answered.");
    default:
        return right > Reading
            ? i18n("A right that this program has no word for. With it a calendar can be changed.")
            : i18n("A right that this program has no word for. With it a calendar can at most be read.");
    }
}

bool VelRights::isComplete(const Map &rights)
{
    return rights.find(EverybodyId) != rights.end();
}

QString VelRights::toArgument(const Map &rights)
{
    QString argument;
    for (const auto &[id, right] : rights) // everybody's has the lowest id
        argument += toLine(id, right);
    return argument;
}

VelRightsModel::VelRightsModel(QObject *parent)
    : QAbstractTableModel(parent)
{
}

void VelRightsModel::clear()
{
    beginResetModel();
    m_isLoaded = false;
    m_serverRights.clear();
    m_rights.clear();
    findPeople();
    endResetModel();
}

void VelRightsModel::setRights(const VelRights::Map &rights)
{
    beginResetModel();
    m_isLoaded = true;
    m_serverRights = rights;
    m_rights = rights;
    findPeople();
    endResetModel();
}

void VelRightsModel::setAccounts(const VelAccountList &accounts, quint32 ownId)
{
    beginResetModel();
    m_accounts = accounts;
    m_ownId = ownId;
    findPeople();
    endResetModel();
}

void VelRightsModel::setFilter(const QString &text)
{
    beginResetModel();
    m_people.setFilter(text);
    findRows();
    endResetModel();
}

void VelRightsModel::sort(int column, Qt::SortOrder order)
{
    beginResetModel();
    m_column = column;
    m_order = order;
    m_people.sort(VelPersonModel::NameColumn, column == NameColumn ? order : Qt::AscendingOrder);
    findRows();
    endResetModel();
}

void VelRightsModel::findPeople()
{
    VelAccountList people;
    QSet<quint32> known{VelRights::EverybodyId, m_ownId};
    for (const VelAccount &account : std::as_const(m_accounts)) {
        if (known.contains(account.id))
            continue;
        known.insert(account.id);
        people.append(account);
    }
    for (const auto &each : m_serverRights) {
        if (!known.contains(each.first))
            people.append(VelAccount(i18n("User number %1", QString::number(each.first)), {}, each.first));
    }
    m_people.setAccounts(people);
    findRows();
}

void VelRightsModel::findRows()
{
    m_rows.resize(m_isLoaded ? m_people.rowCount() : 0);
    std::iota(m_rows.begin(), m_rows.end(), 0);
    if (m_column != RightColumn)
        return;
    std::stable_sort(m_rows.begin(), m_rows.end(), [this](int a, int b) {
        const int rightOfA = rightOf(m_people.account(a).id);
        const int rightOfB = rightOf(m_people.account(b).id);
        return m_order == Qt::AscendingOrder ? rightOfA < rightOfB : rightOfB < rightOfA;
    });
}

quint32 VelRightsModel::idOf(int row) const
{
    return row == 0 ? VelRights::EverybodyId : m_people.account(m_rows[row - 1]).id;
}

QString VelRightsModel::nameOf(int row) const
{
    return row == 0 ? i18n("Everybody else") : m_people.account(m_rows[row - 1]).name;
}

int VelRightsModel::rightOf(quint32 id) const
{
    const auto found = m_rights.find(id);
    if (found != m_rights.end())
        return found->second;
    return id == VelRights::EverybodyId ? VelRights::UpToTheServer : VelRights::NoneOfTheirOwn;
}

QVector<int> VelRightsModel::choices(int row) const
{
    using namespace VelRights;
    QVector<int> choices{NoneOfTheirOwn, NoAccess, BusyTimes, Reading, Changing, FullAccess};
    const quint32 id = idOf(row);
    if (id == EverybodyId)
        choices.removeFirst();
    const auto stored = m_serverRights.find(id);
    for (const int right : {rightOf(id), stored == m_serverRights.end() ? rightOf(id) : stored->second}) {
        if (!choices.contains(right))
            choices.append(right);
    }
    return choices;
}

int VelRightsModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() || !m_isLoaded ? 0 : static_cast<int>(m_rows.size()) + 1;
}

int VelRightsModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant VelRightsModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const int right = rightOf(idOf(index.row()));
    if (role == Qt::AccessibleTextRole)
        return i18nc("somebody: the right", "%1: %2", nameOf(index.row()), VelRights::toText(right));
    if (index.column() == RightColumn) {
        switch (role) {
        case Qt::DisplayRole:
            return VelRights::toText(right);
        case Qt::EditRole:
            return right;
        case Qt::ToolTipRole:
            return VelRights::explain(right);
        default:
            return {};
        }
    }
    if (index.row() > 0)
        return m_people.data(m_people.index(m_rows[index.row() - 1], VelPersonModel::NameColumn), role);
    return role == Qt::DisplayRole ? nameOf(0) : QVariant();
}

bool VelRightsModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    bool isNumber = false;
    const int right = value.toInt(&isNumber);
    if (!checkIndex(index, CheckIndexOption::IndexIsValid) || index.column() != RightColumn
        || role != Qt::EditRole || !isNumber)
        return false;
    const quint32 id = idOf(index.row());
    if (right == rightOf(id))
        return true;
    if (right == VelRights::NoneOfTheirOwn || right == VelRights::UpToTheServer)
        m_rights.erase(id);
    else
        m_rights[id] = right;
    Q_EMIT dataChanged(index.siblingAtColumn(NameColumn), index);
    Q_EMIT rightChanged();
    return true;
}

QVariant VelRightsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return section == NameColumn ? i18n("Name") : i18n("Right");
}

Qt::ItemFlags VelRightsModel::flags(const QModelIndex &index) const
{
    const Qt::ItemFlags flags = QAbstractTableModel::flags(index) | Qt::ItemNeverHasChildren;
    return index.column() == RightColumn ? flags | Qt::ItemIsEditable : flags;
}
