// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogs/velrightspage.h"

#include "dialogs/velrightsdelegate.h"
#include "dialogs/velrightsmodel.h"
#include "dialogs/velsearchline.h"
#include "document/veldoc.h"
#include "hub/velapp.h"
#include "model/velnettask.h"
#include "model/velsettings.h"

#include <KLocalizedString>

#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeView>
#include <QVBoxLayout>

namespace
{
/** What the widest of the rights takes. */
int rightWidth(QWidget *parent)
{
    QComboBox box(parent);
    for (const int right : {VelRights::NoneOfTheirOwn, VelRights::UpToTheServer, int(VelRights::NoAccess),
                            int(VelRights::BusyTimes), int(VelRights::Reading), int(VelRights::Changing),
                            int(VelRights::FullAccess)})
        box.addItem(VelRights::toText(right));
    return box.sizeHint().width();
}
} // namespace

VelRightsPage::VelRightsPage(QWidget *parent)
    : VelPreferencesPage(parent)
    , m_app(VelApp::getApp(parent))
    , m_model(new VelRightsModel(this))
    , m_message(new QLabel(this))
    , m_view(new QTreeView(this))
    , m_search(new VelSearchLine(m_view, this))
    , m_fetchAgain(new QPushButton(i18n("&Fetch again"), this))
{
    m_message->setTextFormat(Qt::PlainText);
    makeControls();
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_message);
    layout->addWidget(m_fetchAgain, 0, Qt::AlignLeading);
    layout->addWidget(m_search);
    layout->addWidget(m_view, 1);
    setTabOrder(m_fetchAgain, m_search);
    setTabOrder(m_search, m_view);

    connect(m_model, &VelRightsModel::rightChanged, this, &VelPreferencesPage::changed);
    connect(m_search, &QLineEdit::textChanged, m_model, &VelRightsModel::setFilter);
    connect(m_fetchAgain, &QPushButton::clicked, this, &VelRightsPage::fetchAgain);
    if (m_app) {
        connect(m_app, &VelApp::accountsReady, this, &VelRightsPage::slotAccounts);
        connect(m_app, &VelApp::rightsReady, this, &VelRightsPage::slotRights);
        connect(m_app, &VelApp::netTaskFailed, this, &VelRightsPage::slotFailed);
    }
    updateControls();
}

void VelRightsPage::makeControls()
{
    m_message->setWordWrap(true);
    m_fetchAgain->setAutoDefault(false);
    m_view->setModel(m_model);
    m_view->setItemDelegate(new VelRightsDelegate(m_view));
    m_view->setRootIsDecorated(false);
    m_view->setUniformRowHeights(true);
    m_view->setAllColumnsShowFocus(true);
    m_view->setEditTriggers(QAbstractItemView::EditKeyPressed | QAbstractItemView::AnyKeyPressed);
    m_view->setSortingEnabled(true);
    m_view->sortByColumn(VelRightsModel::NameColumn, Qt::AscendingOrder);
    QHeaderView *header = m_view->header();
    header->setStretchLastSection(false);
    header->setSectionResizeMode(VelRightsModel::NameColumn, QHeaderView::Stretch);
    header->resizeSection(VelRightsModel::RightColumn, rightWidth(this));
    m_view->setAccessibleName(title());
    m_view->setWhatsThis(
        i18n("Choose a right with a click, or with the space bar. Whoever has no right of their own "
             "has that of everybody else."));
    // Wherever in the row, there is one thing to change in it.
    connect(m_view, &QTreeView::clicked, this, [this](const QModelIndex &index) {
        m_view->edit(index.siblingAtColumn(VelRightsModel::RightColumn));
    });
    connect(m_view->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex &index) {
                if (index.isValid() && index.column() != VelRightsModel::RightColumn)
                    m_view->setCurrentIndex(index.siblingAtColumn(VelRightsModel::RightColumn));
            });
}

QString VelRightsPage::title() const
{
    return i18n("Rights to my calendar");
}

QIcon VelRightsPage::icon() const
{
    return VelApp::getIcon(QStringLiteral("private"));
}

void VelRightsPage::show(const VelSettings &settings, const VelLook &)
{
    m_server = settings.server;
    m_user = settings.user;
    m_ownId = settings.origUserid;
    m_state = State::Idle;
    m_isListMissing = false;
    m_search->clear();
    m_model->clear();
    if (isVisible())
        fetch();
    updateControls();
}

void VelRightsPage::store(VelSettings &settings, VelLook &) const
{
    const bool isSameAccount = settings.server == m_server && settings.user == m_user;
    if (m_app && m_state == State::Ready && m_model->isChanged() && isSameAccount
        && VelRights::isComplete(m_model->rights()))
        m_app->netTask(VelNetTask::SetUserRights, VelRights::toArgument(m_model->rights()), false);
}

QString VelRightsPage::problem() const
{
    if (m_state != State::Ready || !m_model->isChanged() || VelRights::isComplete(m_model->rights()))
        return {};
    return i18n(
        "The server has not told the right of everybody else. Choose it on the page \"%1\" before the "
        "rights are stored.",
        title());
}

void VelRightsPage::showEvent(QShowEvent *event)
{
    VelPreferencesPage::showEvent(event);
    if (m_state == State::Idle)
        fetch();
}

void VelRightsPage::fetch()
{
    if (obstacle().isEmpty()) {
        m_state = State::Waiting;
        m_isListMissing = false;
        m_app->netTask(VelNetTask::GetUserRights, {}, false);
        m_app->requestAccounts();
        slotAccounts();
    }
    updateControls();
}

void VelRightsPage::fetchAgain()
{
    if (m_state != State::Ready) {
        fetch();
        return;
    }
    // The rights are here, perhaps changed already.
    m_isListMissing = false;
    m_app->requestAccounts();
    updateControls();
}

void VelRightsPage::slotAccounts()
{
    if (m_state == State::Idle)
        return;
    const VelAccountList &accounts = m_app->getAccounts();
    m_isListMissing = m_isListMissing && accounts.isEmpty();
    m_model->setAccounts(accounts, m_ownId);
    updateControls();
}

void VelRightsPage::slotRights()
{
    const bool isAwaited = m_state == State::Waiting || (m_state == State::Ready && !m_model->isChanged());
    if (!isAwaited)
        return;
    m_state = State::Ready;
    m_model->setRights(m_app->document()->getRights());
    updateControls();
}

void VelRightsPage::slotFailed(int type)
{
    if (type == VelNetTask::GetUserRights && m_state == State::Waiting)
        m_state = State::Failed;
    else if (type == VelNetTask::UserList)
        m_isListMissing = m_app->getAccounts().isEmpty();
    updateControls();
}

QString VelRightsPage::obstacle() const
{
    if (!m_app || m_server.isEmpty() || m_user.isEmpty())
        return i18n("The server keeps the rights. Set a server and your user name on the page \"Server "
                    "Account\" first.");
    if (m_ownId != 0 && m_app->document()->getUserId() != m_ownId)
        return i18n("This window does not show your own calendar as the server knows it. Rights are set from "
                    "the window "
                    "of one's own calendar.");
    return {};
}

QString VelRightsPage::explanation() const
{
    switch (m_state) {
    case State::Idle:
        return obstacle();
    case State::Waiting:
        return i18n("Fetching the rights from the server...");
    case State::Failed:
        return i18n("The rights could not be fetched.");
    case State::Ready:
        break;
    }
    if (m_isListMissing)
        return i18n(
            "The list of users could not be fetched. Only those with a right of their own are shown.");
    return i18n("What others may do with your calendar. Whoever has no right of their own has that of "
                "everybody else.");
}

void VelRightsPage::updateControls()
{
    m_message->setText(explanation());
    for (QWidget *widget : {static_cast<QWidget *>(m_search), static_cast<QWidget *>(m_view)})
        widget->setEnabled(m_state == State::Ready);
    m_fetchAgain->setVisible(m_state == State::Failed || (m_state == State::Ready && m_isListMissing));
}
