// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogs/velfindtimepersonlist.h"

#include "hub/velapp.h"
#include "widgets/wshowntext.h"

#include <KLocalizedString>

#include <QKeyEvent>
#include <QSignalBlocker>

VelFindTimePersonListItem::VelFindTimePersonListItem(QTreeWidgetItem *group, const VelAccount &account)
    : QTreeWidgetItem(group)
    , m_account(account)
{
    const bool isKnown = account.id != 0;
    setText(0, WShownText::cut(account.name));
    setCheckState(0, isKnown ? Qt::Checked : Qt::Unchecked);
    if (!account.getTypePix().isEmpty())
        setIcon(0, VelApp::getIcon(account.getTypePix()));
    setToolTip(0,
               isKnown ? WShownText::plain(WShownText::cut(account.name)) : i18n("No busy times are known"));
    if (!isKnown) {
        setFlags(flags() & ~Qt::ItemIsEnabled);
        setData(0, Qt::AccessibleDescriptionRole, toolTip(0));
    }
}

VelFindTimePersonList::VelFindTimePersonList(QWidget *parent)
    : QTreeWidget(parent)
{
    setColumnCount(1);
    setHeaderLabel(QString());
    setRootIsDecorated(true);
    setAccessibleName(i18n("Attendees"));
    const std::array<QString, 3> titles{i18n("Attendees"), i18n("Optional"), i18n("Resources")};
    for (std::size_t role = 0; role < m_groups.size(); ++role)
        m_groups[role] = new QTreeWidgetItem(this, {titles[role]});
    expandAll();
    connect(this, &QTreeWidget::itemChanged, this, &VelFindTimePersonList::personToggled);
}

void VelFindTimePersonList::setAccounts(const VelAccountList &accounts)
{
    const QSignalBlocker blocker(this);
    for (QTreeWidgetItem *group : m_groups)
        qDeleteAll(group->takeChildren());
    for (const VelAccount &account : accounts) {
        const bool hasRole = account.attendee >= 0 && account.attendee < static_cast<int>(m_groups.size());
        new VelFindTimePersonListItem(m_groups[hasRole ? static_cast<std::size_t>(account.attendee) : 0],
                                      account);
    }
    expandAll();
}

VelAccountList VelFindTimePersonList::getSelected() const
{
    VelAccountList selected;
    for (const QTreeWidgetItem *group : m_groups) {
        for (int i = 0; i < group->childCount(); ++i) {
            const auto *item = static_cast<const VelFindTimePersonListItem *>(group->child(i));
            if (item->getAccount().id != 0 && item->isChecked())
                selected.append(item->getAccount());
        }
    }
    return selected;
}

/** Return does what Space and the arrows do: it would else press the planner's default button. */
void VelFindTimePersonList::keyPressEvent(QKeyEvent *event)
{
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) {
        QTreeWidget::keyPressEvent(event);
        return;
    }
    event->accept();
    QTreeWidgetItem *item = currentItem();
    if (!item)
        return;
    if (!item->parent())
        item->setExpanded(!item->isExpanded());
    else if (!item->isDisabled())
        item->setCheckState(0, item->checkState(0) == Qt::Checked ? Qt::Unchecked : Qt::Checked);
}
