// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogs/velpersonmodel.h"

#include "formats/velbinary.h"
#include "hub/velapp.h"
#include "widgets/wshowntext.h"

#include <KLocalizedString>

#include <QDataStream>
#include <QIODevice>
#include <QMimeData>

#include <algorithm>
#include <iterator>

namespace
{
const QLatin1String AccountsType("application/x-delmasttime-accounts");

bool isAscii(const QString &text)
{
    return std::all_of(text.cbegin(), text.cend(), [](QChar c) { return c.unicode() < 0x80; });
}

/** The text as a search compares it: without case and accents. */
QString toSearchKey(const QString &text)
{
    if (isAscii(text))
        return text.toLower();
    const QString plain = text.normalized(QString::NormalizationForm_KD).toCaseFolded();
    QString key;
    std::copy_if(plain.cbegin(), plain.cend(), std::back_inserter(key),
                 [](QChar c) { return c.category() != QChar::Mark_NonSpacing; });
    return key;
}
} // namespace

QString VelPersonDrag::toText(const VelAccount &account)
{
    if (account.email.isEmpty())
        return account.name;
    return account.name.isEmpty() ? account.email
                                  : QStringLiteral("%1 <%2>").arg(account.name, account.email);
}

std::unique_ptr<QMimeData> VelPersonDrag::encode(const VelAccountList &accounts)
{
    QByteArray bytes;
    QStringList lines;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_5_15);
    for (const VelAccount &account : accounts) {
        stream << VelBinary::asByteArray(account);
        lines.append(toText(account));
    }
    auto data = std::make_unique<QMimeData>();
    data->setData(AccountsType, bytes);
    data->setText(lines.join(QLatin1Char('\n')));
    return data;
}

bool VelPersonDrag::canDecode(const QMimeData *data)
{
    return data && data->hasFormat(AccountsType);
}

VelAccountList VelPersonDrag::decode(const QMimeData *data)
{
    VelAccountList accounts;
    if (!canDecode(data))
        return accounts;
    QDataStream stream(data->data(AccountsType));
    stream.setVersion(QDataStream::Qt_5_15);
    while (!stream.atEnd()) {
        QByteArray bytes;
        stream >> bytes;
        const std::unique_ptr<VelAccount> account = VelBinary::accountFromByteArray(bytes);
        if (stream.status() != QDataStream::Ok || !account)
            return {};
        accounts.append(*account);
    }
    return accounts;
}

VelPersonModel::VelPersonModel(QObject *parent)
    : QAbstractTableModel(parent)
{
}

void VelPersonModel::setAccounts(const VelAccountList &accounts)
{
    beginResetModel();
    m_people.clear();
    m_people.reserve(static_cast<size_t>(accounts.size()));
    for (const VelAccount &account : accounts) {
        // What cannot be typed keeps a word from being found across the two.
        const QString key = account.name + QLatin1Char('\n') + account.email;
        m_people.push_back({account, toSearchKey(key)});
    }
    sortPeople();
    findRows();
    endResetModel();
}

void VelPersonModel::setFilter(const QString &text)
{
    const QStringList words = toSearchKey(text.simplified()).split(QLatin1Char(' '), Qt::SkipEmptyParts);
    if (words == m_words)
        return;
    // With thousands of rows, telling the view of each that comes or goes takes far longer than a new start.
    beginResetModel();
    m_words = words;
    findRows();
    endResetModel();
}

const VelAccount &VelPersonModel::account(int row) const
{
    return m_people[m_rows[static_cast<size_t>(row)]].account;
}

int VelPersonModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int VelPersonModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant VelPersonModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const VelAccount &person = account(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return WShownText::cut(index.column() == NameColumn ? person.name : person.email);
    case Qt::ToolTipRole:
        return WShownText::plain(WShownText::cut(VelPersonDrag::toText(person)));
    case Qt::DecorationRole:
        if (index.column() == NameColumn && !person.getTypePix().isEmpty())
            return VelApp::getIcon(person.getTypePix());
        return {};
    default:
        return {};
    }
}

QVariant VelPersonModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return section == NameColumn ? i18n("Name") : i18n("Email");
}

Qt::ItemFlags VelPersonModel::flags(const QModelIndex &index) const
{
    const Qt::ItemFlags flags = QAbstractTableModel::flags(index) | Qt::ItemNeverHasChildren;
    return index.isValid() ? flags | Qt::ItemIsDragEnabled : flags;
}

QStringList VelPersonModel::mimeTypes() const
{
    return {AccountsType};
}

QMimeData *VelPersonModel::mimeData(const QModelIndexList &indexes) const
{
    VelAccountList dragged;
    for (const QModelIndex &index : indexes) {
        if (index.column() == NameColumn)
            dragged.append(account(index.row()));
    }
    return VelPersonDrag::encode(dragged).release();
}

void VelPersonModel::sort(int column, Qt::SortOrder order)
{
    beginResetModel();
    m_column = column;
    m_order = order;
    sortPeople();
    findRows();
    endResetModel();
}

void VelPersonModel::sortPeople()
{
    // A key for each costs one pass; comparing texts by the locale's rules costs many.
    struct Place {
        QCollatorSortKey key;
        size_t index;
    };
    std::vector<Place> places;
    places.reserve(m_people.size());
    for (const Person &person : m_people) {
        const QString &text = m_column == EmailColumn ? person.account.email : person.account.name;
        // Keys for the plainest of locales know no case but that of the text.
        places.push_back({m_collator.sortKey(text.toCaseFolded()), places.size()});
    }
    const bool isDescending = m_order == Qt::DescendingOrder;
    std::stable_sort(places.begin(), places.end(), [isDescending](const Place &a, const Place &b) {
        return isDescending ? b.key < a.key : a.key < b.key;
    });
    std::vector<Person> sorted;
    sorted.reserve(m_people.size());
    for (const Place &place : places)
        sorted.push_back(std::move(m_people[place.index]));
    m_people = std::move(sorted);
}

void VelPersonModel::findRows()
{
    m_rows.clear();
    for (size_t i = 0; i < m_people.size(); ++i) {
        const QString &key = m_people[i].searchKey;
        const bool isFound = std::all_of(m_words.cbegin(), m_words.cend(),
                                         [&key](const QString &word) { return key.contains(word); });
        if (isFound)
            m_rows.push_back(i);
    }
}
