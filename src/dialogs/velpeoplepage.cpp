// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogs/velpeoplepage.h"

#include "dialogs/veladdressbook.h"
#include "dialogs/velnewaccount.h"
#include "dialogs/velpersonlist.h"
#include "dialogs/velpersonsource.h"
#include "hub/velapp.h"

#include <KLocalizedString>

#include <QAccessible>
#include <QEvent>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QToolButton>

#include <algorithm>

VelPeoplePage::VelPeoplePage(VelAddressBook &book, QWidget *parent)
    : QWidget(parent)
    , m_book(book)
    , m_source(new VelPersonSource(book, this))
    , m_newAttendee(new QPushButton(i18n("New &Attendee"), this))
    , m_planner(new QPushButton(i18n("&Meeting Planner"), this))
    , m_message(new QLabel(this))
{
    m_message->setTextFormat(Qt::PlainText);
    makeLayout();
    for (const Target &target : m_targets)
        connectTarget(target);
    connect(m_source, &VelPersonSource::selectionChanged, this, &VelPeoplePage::updateButtons);
    connect(m_source, &VelPersonSource::chosen, this, &VelPeoplePage::addChosen);
    connect(&m_book, &VelAddressBook::notStored, this, &VelPeoplePage::sayNotStored);
    connect(m_newAttendee, &QPushButton::clicked, this, &VelPeoplePage::slotNewAddress);
    connect(m_planner, &QPushButton::clicked, this, &VelPeoplePage::plannerWanted);
    updateArrows();
    updateButtons();
}

void VelPeoplePage::makeLayout()
{
    for (QPushButton *button : {m_newAttendee, m_planner})
        button->setAutoDefault(false);
    m_newAttendee->setToolTip(i18n("Create a new attendee."));
    m_newAttendee->setWhatsThis(m_newAttendee->toolTip());
    m_planner->setObjectName(QStringLiteral("planner"));
    m_planner->setToolTip(i18n("Locate a free meeting time with Meeting Planner"));
    m_planner->setWhatsThis(m_planner->toolTip());
    m_message->setWordWrap(true);
    // Room for a line, so that nothing jumps when there is something to say.
    m_message->setMinimumHeight(m_message->fontMetrics().height());

    auto *targets = new QGridLayout;
    for (const auto role :
         {VelAccount::RequiredAttendee, VelAccount::OptionalAttendee, VelAccount::ResourceAttendee})
        makeTarget(targets, role);
    setTabOrder(m_targets.back().list, m_newAttendee);
    setTabOrder(m_newAttendee, m_planner);
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(m_newAttendee);
    buttons->addStretch();
    buttons->addWidget(m_planner);
    auto *layout = new QGridLayout(this);
    layout->addWidget(m_source, 0, 0);
    layout->addLayout(targets, 0, 1);
    layout->addWidget(m_message, 1, 0, 1, 2);
    layout->addLayout(buttons, 2, 0, 1, 2);
    layout->setColumnStretch(0, 1);
    layout->setColumnStretch(1, 1);
}

void VelPeoplePage::makeTarget(QGridLayout *grid, VelAccount::Attendee role)
{
    Target &made = target(role);
    made.add = new QToolButton(this);
    made.remove = new QToolButton(this);
    made.list = new VelPersonList(role, this);
    made.add->setToolTip(i18n("Add to the list \"%1\"", made.list->heading()));
    made.add->setAccessibleName(made.add->toolTip());
    made.remove->setToolTip(i18n("Remove from the list \"%1\"", made.list->heading()));
    made.remove->setAccessibleName(made.remove->toolTip());
    for (QToolButton *button : {made.add, made.remove})
        button->setFocusPolicy(Qt::StrongFocus);
    made.list->setWhatsThis(i18n("Drag people here and between the lists. Delete removes those selected."));
    // Three lists shall fit a small screen.
    made.list->setMinimumHeight(made.list->fontMetrics().lineSpacing() * 4);

    const int row = role * 3;
    grid->addWidget(new QLabel(made.list->heading(), this), row, 1);
    auto *arrows = new QVBoxLayout;
    arrows->addStretch();
    arrows->addWidget(made.add);
    arrows->addWidget(made.remove);
    arrows->addStretch();
    grid->addLayout(arrows, row + 1, 0);
    grid->addWidget(made.list, row + 1, 1);
    grid->setRowStretch(row + 1, 1);
}

void VelPeoplePage::connectTarget(const Target &target)
{
    VelPersonList *list = target.list;
    QVector<const VelPersonList *> buddies;
    for (const Target &other : m_targets) {
        if (other.list != list)
            buddies.append(other.list);
    }
    list->setBuddies(buddies);
    connect(list, &VelPersonList::listChanged, this, &VelPeoplePage::slotListChanged);
    connect(list, &VelPersonList::refused, this, &VelPeoplePage::say);
    connect(list, &VelPersonList::itemSelectionChanged, this, &VelPeoplePage::updateButtons);
    connect(target.add, &QToolButton::clicked, this, [this, list] { moveTo(list); });
    connect(target.remove, &QToolButton::clicked, this, [this, list] { moveFrom(list); });
}

VelPeoplePage::Target &VelPeoplePage::target(int role)
{
    return m_targets[static_cast<size_t>(role)];
}

void VelPeoplePage::setServerAccounts(const VelAccountList &accounts)
{
    m_source->setServerAccounts(accounts);
}

void VelPeoplePage::setAccounts(const VelAccountList &accounts)
{
    std::array<VelAccountList, 3> byRole;
    for (const VelAccount &account : accounts) {
        const bool isKnown = account.attendee >= 0 && account.attendee < static_cast<int>(byRole.size());
        byRole[isKnown ? static_cast<size_t>(account.attendee) : 0].append(account);
    }
    for (size_t role = 0; role < byRole.size(); ++role)
        m_targets[role].list->setAccounts(byRole[role]);
}

VelAccountList VelPeoplePage::getAccounts() const
{
    VelAccountList accounts;
    for (const Target &target : m_targets)
        accounts += target.list->accounts();
    return accounts;
}

void VelPeoplePage::moveTo(VelPersonList *list)
{
    list->addAccounts(m_source->selectedAccounts());
}

void VelPeoplePage::moveFrom(VelPersonList *list)
{
    list->removeSelected();
}

/** A double click or Return names no list: resources go to theirs, everybody else shall attend. */
void VelPeoplePage::addChosen()
{
    VelAccountList persons;
    VelAccountList resources;
    const VelAccountList chosen = m_source->selectedAccounts();
    for (const VelAccount &account : chosen)
        (account.type == VelAccount::Resource ? resources : persons).append(account);
    target(VelAccount::RequiredAttendee).list->addAccounts(persons);
    target(VelAccount::ResourceAttendee).list->addAccounts(resources);
}

void VelPeoplePage::slotNewAddress()
{
    auto *dialog = new VelNewAccount(this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QDialog::accepted, this, [this, dialog] { addNew(*dialog); });
    dialog->open();
}

void VelPeoplePage::addNew(const VelNewAccount &dialog)
{
    const VelAccount account = dialog.account();
    target(account.attendee).list->addAccounts({account});
    if (!dialog.isForAddressBook())
        return;
    if (!m_book.add(dialog.addressee()))
        sayNotStored(dialog.addressee());
    m_source->refreshAddressBook();
}

void VelPeoplePage::sayNotStored(const VelAddressee &addressee)
{
    const QString &name = addressee.name.isEmpty() ? addressee.email : addressee.name;
    say(i18n("%1 could not be added to the address book.", name));
}

void VelPeoplePage::slotListChanged()
{
    say({});
    updateButtons();
    Q_EMIT accountsChanged();
}

/** The arrows point at the list that they add to, which stands on the left where people read from the right. */
void VelPeoplePage::updateArrows()
{
    const QIcon right = VelApp::getIcon(QStringLiteral("1rightarrow"));
    const QIcon left = VelApp::getIcon(QStringLiteral("1leftarrow"));
    for (const Target &target : m_targets) {
        target.add->setIcon(isRightToLeft() ? left : right);
        target.remove->setIcon(isRightToLeft() ? right : left);
    }
}

void VelPeoplePage::updateButtons()
{
    for (const Target &target : m_targets) {
        target.add->setEnabled(m_source->hasSelection());
        target.remove->setEnabled(target.list->selectionModel()->hasSelection());
    }
    m_planner->setEnabled(std::any_of(m_targets.cbegin(), m_targets.cend(), [](const Target &target) {
        return target.list->topLevelItemCount() > 0;
    }));
}

void VelPeoplePage::say(const QString &text)
{
    m_message->setText(text);
    if (text.isEmpty())
        return;
    QAccessibleEvent event(m_message, QAccessible::Alert);
    QAccessible::updateAccessibility(&event);
}

void VelPeoplePage::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LayoutDirectionChange)
        updateArrows();
}
