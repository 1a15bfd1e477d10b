// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogs/velpersonlist.h"

#include "dialogs/velpersonmodel.h"
#include "hub/velapp.h"
#include "widgets/wshowntext.h"

#include <KLocalizedString>

#include <QDrag>
#include <QDropEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMimeData>

#include <algorithm>

namespace
{
constexpr int MostName = 100; // characters, in a sentence

class Item : public QTreeWidgetItem
{
public:
    explicit Item(const VelAccount &theAccount)
        : account(theAccount)
    {
        // Plain items take drops of their own, between which nothing could be dropped.
        setFlags(Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemIsDragEnabled | Qt::ItemNeverHasChildren);
        setText(0, WShownText::cut(account.name));
        setText(1, WShownText::cut(account.email));
        const QString answer = account.getStatusPix();
        const QString icon = answer.isEmpty() ? account.getTypePix() : answer;
        if (!icon.isEmpty())
            setIcon(0, VelApp::getIcon(icon));
        // The icon alone tells nothing to those who do not see it.
        setData(0, Qt::AccessibleDescriptionRole, account.getStatusStr());
    }

    [[nodiscard]] QVariant data(int column, int role) const override
    {
        if (role != Qt::ToolTipRole)
            return QTreeWidgetItem::data(column, role);
        return WShownText::plain(WShownText::cut(VelPersonDrag::toText(account)) + QLatin1Char('\n')
                                 + account.getStatusStr());
    }

    VelAccount account;
};

const VelAccount &accountOf(const QTreeWidgetItem *item)
{
    return static_cast<const Item *>(item)->account;
}

bool isEqual(const QString &a, const QString &b)
{
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

QString displayName(const VelAccount &account)
{
    return WShownText::cut(account.name.isEmpty() ? account.email : account.name, MostName);
}
/** The first reason, and how many more were refused: a line has no room for all. */
QString joinReasons(const QStringList &reasons)
{
    const auto more = static_cast<int>(reasons.size()) - 1;
    if (more == 0)
        return reasons.first();
    return reasons.first() + QLatin1Char(' ') + i18np("One more was refused.", "%1 more were refused.", more);
}
} // namespace

VelPersonList::VelPersonList(VelAccount::Attendee role, QWidget *parent)
    : QTreeWidget(parent)
    , m_role(role)
{
    setHeaderLabels({i18n("Name"), i18n("Email")});
    header()->setSectionResizeMode(QHeaderView::Stretch);
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setSelectionMode(ExtendedSelection);
    setDragDropMode(DragDrop);
    setDropIndicatorShown(false);
    setAccessibleName(heading());
}

QString VelPersonList::heading() const
{
    VelAccount account;
    account.attendee = m_role;
    return account.getAttendeeStr();
}

bool VelPersonList::isSame(const VelAccount &a, const VelAccount &b)
{
    if (a.id != 0 && b.id != 0)
        return a.id == b.id;
    if (!isEqual(a.email, b.email))
        return false;
    const bool isOneKnown = a.id != 0 || b.id != 0;
    return (isOneKnown && !a.email.isEmpty()) || isEqual(a.name, b.name);
}

bool VelPersonList::containsAccount(const VelAccount &account) const
{
    for (int i = 0; i < topLevelItemCount(); ++i) {
        if (isSame(accountOf(topLevelItem(i)), account))
            return true;
    }
    return false;
}

bool VelPersonList::checkType(const VelAccount &account) const
{
    return (account.type == VelAccount::Resource) == (m_role == VelAccount::ResourceAttendee);
}

const VelPersonList *VelPersonList::findBuddy(const VelAccount &account, const VelPersonList *except) const
{
    const auto found = std::find_if(m_buddies.cbegin(), m_buddies.cend(), [&](const VelPersonList *buddy) {
        return buddy != except && buddy->containsAccount(account);
    });
    return found == m_buddies.cend() ? nullptr : *found;
}

QString VelPersonList::whyRefused(const VelAccount &account, const VelPersonList *from) const
{
    if (containsAccount(account))
        return i18n("%1 is already in the list \"%2\".", displayName(account), heading());
    if (!checkType(account))
        return whyTypeRefused(account);
    if (const VelPersonList *buddy = findBuddy(account, from))
        return i18n("%1 is already in the list \"%2\". To change that, drag from there.",
                    displayName(account), buddy->heading());
    return {};
}

QString VelPersonList::whyTypeRefused(const VelAccount &account) const
{
    if (m_role == VelAccount::ResourceAttendee)
        return i18n("%1 is a person and can only attend.", displayName(account));
    return i18n("%1 is a resource and can only be booked under \"Resources\".", displayName(account));
}

VelAccountList VelPersonList::accounts() const
{
    VelAccountList accounts;
    for (int i = 0; i < topLevelItemCount(); ++i) {
        accounts.append(accountOf(topLevelItem(i)));
        accounts.last().attendee = m_role;
    }
    return accounts;
}

void VelPersonList::setAccounts(const VelAccountList &accounts)
{
    clear();
    QList<QTreeWidgetItem *> items;
    items.reserve(accounts.size());
    for (const VelAccount &account : accounts)
        items.append(new Item(account));
    addTopLevelItems(items);
    Q_EMIT listChanged();
}

void VelPersonList::append(const VelAccount &account)
{
    addTopLevelItem(new Item(account));
}

void VelPersonList::moveAccounts(const VelAccountList &accounts, VelPersonList *from)
{
    VelAccountList moved;
    QStringList reasons;
    for (const VelAccount &account : accounts) {
        const QString why = whyRefused(account, from);
        if (!why.isEmpty()) {
            reasons.append(why);
            continue;
        }
        append(account);
        moved.append(account);
    }
    if (!moved.isEmpty()) {
        if (from)
            from->removeAccounts(moved);
        selectLast(static_cast<int>(moved.size()));
        scrollToBottom();
        Q_EMIT listChanged();
    }
    if (!reasons.isEmpty())
        Q_EMIT refused(joinReasons(reasons));
}

/** At once: thousands of changes, each told, would take seconds. */
void VelPersonList::selectLast(int count)
{
    const QModelIndex first = model()->index(topLevelItemCount() - count, 0);
    const QModelIndex last = model()->index(topLevelItemCount() - 1, columnCount() - 1);
    selectionModel()->select(QItemSelection(first, last), QItemSelectionModel::ClearAndSelect);
}

VelAccountList VelPersonList::selectedAccounts() const
{
    VelAccountList selected;
    for (int i = 0; i < topLevelItemCount(); ++i) {
        if (topLevelItem(i)->isSelected())
            selected.append(accountOf(topLevelItem(i)));
    }
    return selected;
}

void VelPersonList::removeSelected()
{
    const QList<QTreeWidgetItem *> selected = selectedItems();
    qDeleteAll(selected);
    if (!selected.isEmpty())
        Q_EMIT listChanged();
}

void VelPersonList::removeAccounts(const VelAccountList &accounts)
{
    for (int i = topLevelItemCount() - 1; i >= 0; --i) {
        if (accounts.contains(accountOf(topLevelItem(i))))
            delete takeTopLevelItem(i);
    }
    Q_EMIT listChanged();
}

void VelPersonList::startDrag(Qt::DropActions)
{
    const VelAccountList dragged = selectedAccounts();
    if (dragged.isEmpty())
        return;
    auto *drag = new QDrag(this);
    drag->setMimeData(VelPersonDrag::encode(dragged).release());
    // The list that takes them removes them here: it alone knows which it took.
    drag->exec(Qt::CopyAction);
}

void VelPersonList::dragEnterEvent(QDragEnterEvent *event)
{
    dragMoveEvent(event);
}

void VelPersonList::dragMoveEvent(QDragMoveEvent *event)
{
    if (event->source() != this && VelPersonDrag::canDecode(event->mimeData()))
        event->acceptProposedAction();
    else
        event->ignore();
}

void VelPersonList::dropEvent(QDropEvent *event)
{
    if (event->source() == this || !VelPersonDrag::canDecode(event->mimeData())) {
        event->ignore();
        return;
    }
    auto *from = qobject_cast<VelPersonList *>(event->source());
    // A list of another dialog keeps its own.
    moveAccounts(VelPersonDrag::decode(event->mimeData()), m_buddies.contains(from) ? from : nullptr);
    event->acceptProposedAction();
}

void VelPersonList::keyPressEvent(QKeyEvent *event)
{
    if (event->matches(QKeySequence::Delete))
        removeSelected();
    else
        QTreeWidget::keyPressEvent(event);
}
