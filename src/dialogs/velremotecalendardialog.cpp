// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogs/velremotecalendardialog.h"

#include "dialogs/veldialogsize.h"
#include "dialogs/velpersonmodel.h"
#include "dialogs/velsearchline.h"
#include "document/velmessages.h"
#include "hub/velapp.h"
#include "model/velnettask.h"
#include "model/velsettings.h"

#include <KLocalizedString>

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeView>
#include <QVBoxLayout>

namespace
{
QString sizeName()
{
    return QStringLiteral("RemoteCalendar");
}
} // namespace

VelRemoteCalendarDialog::VelRemoteCalendarDialog(QWidget *parent)
    : QDialog(parent)
    , m_app(VelApp::getApp(parent))
    , m_model(new VelPersonModel(this))
    , m_view(new QTreeView(this))
    , m_search(new VelSearchLine(m_view, this))
    , m_message(new QLabel(this))
{
    m_message->setTextFormat(Qt::PlainText);
    setWindowTitle(i18n("Open calendar from server"));
    makeControls();
    makeLayout();
    connect(m_search, &QLineEdit::textChanged, this, &VelRemoteCalendarDialog::search);
    connect(m_view, &QTreeView::doubleClicked, this, &VelRemoteCalendarDialog::slotOk);
    if (m_app) {
        connect(m_app, &VelApp::accountsReady, this, &VelRemoteCalendarDialog::slotAccountsReady);
        connect(m_app, &VelApp::netTaskFailed, this, &VelRemoteCalendarDialog::slotFailed);
    }
    refresh();
    constexpr int characters = 48;
    constexpr int lines = 24;
    VelDialogSize::restore(
        *this, sizeName(),
        {fontMetrics().averageCharWidth() * characters, fontMetrics().lineSpacing() * lines});
}

VelRemoteCalendarDialog::~VelRemoteCalendarDialog()
{
    VelDialogSize::save(*this, sizeName());
}

void VelRemoteCalendarDialog::makeControls()
{
    m_view->setModel(m_model);
    m_view->hideColumn(VelPersonModel::EmailColumn);
    m_view->setRootIsDecorated(false);
    m_view->setUniformRowHeights(true);
    m_view->setSelectionMode(QAbstractItemView::SingleSelection);
    m_view->setSortingEnabled(true);
    m_view->sortByColumn(VelPersonModel::NameColumn, Qt::AscendingOrder);
    m_view->setAccessibleName(i18n("Select calendar to open"));
    m_view->setWhatsThis(
        i18n("The people and resources of the server. What you may see and change in a calendar depends "
             "on the rights that its owner has granted you."));
    m_message->setWordWrap(true);
    m_message->hide();
}

void VelRemoteCalendarDialog::makeLayout()
{
    auto *label = new QLabel(i18n("Select calendar to open"), this);
    label->setBuddy(m_search);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Ok)->setDefault(true);
    connect(buttons, &QDialogButtonBox::accepted, this, &VelRemoteCalendarDialog::slotOk);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(label);
    layout->addWidget(m_search);
    layout->addWidget(m_view, 1);
    layout->addWidget(m_message);
    layout->addWidget(buttons);
    setTabOrder(m_search, m_view);
    setTabOrder(m_view, buttons);
    m_search->setFocus();
}

void VelRemoteCalendarDialog::update()
{
    const quint32 selected = selectedId();
    m_model->setAccounts(m_app ? m_app->getAccounts() : VelAccountList());
    select(selected);
    if (m_model->rowCount() > 0)
        m_message->hide();
}

void VelRemoteCalendarDialog::refresh()
{
    update();
    request();
}

void VelRemoteCalendarDialog::slotAccountsReady()
{
    update();
    m_message->setText(i18n("The server knows no users."));
    m_message->setVisible(m_app->getAccounts().isEmpty());
}

/** Once for each time that the dialog is opened: an answer without any account must not ask again for ever. */
void VelRemoteCalendarDialog::request()
{
    if (!m_app || !m_app->getAccounts().isEmpty())
        return;
    const VelSettings *settings = m_app->settings();
    const bool hasServer = !settings->server.isEmpty() && !settings->user.isEmpty();
    m_message->setText(hasServer ? i18n("Fetching the list of users...")
                                 : i18n("The preferences name no server, or no user."));
    m_message->show();
    m_app->requestAccounts();
}

void VelRemoteCalendarDialog::slotFailed(int type)
{
    if (type != VelNetTask::UserList || !m_app->getAccounts().isEmpty())
        return;
    m_message->setText(i18n("The list of users could not be fetched."));
    m_message->show();
}

void VelRemoteCalendarDialog::search(const QString &text)
{
    m_model->setFilter(text);
    // Return shall open the best match without another key.
    if (!text.trimmed().isEmpty())
        m_view->setCurrentIndex(m_model->index(0, VelPersonModel::NameColumn));
}

quint32 VelRemoteCalendarDialog::selectedId() const
{
    const QModelIndexList rows = m_view->selectionModel()->selectedRows();
    return rows.isEmpty() ? 0 : m_model->account(rows.first().row()).id;
}

void VelRemoteCalendarDialog::select(quint32 id)
{
    for (int row = 0; id != 0 && row < m_model->rowCount(); ++row) {
        if (m_model->account(row).id == id) {
            m_view->setCurrentIndex(m_model->index(row, VelPersonModel::NameColumn));
            return;
        }
    }
}

void VelRemoteCalendarDialog::slotOk()
{
    const quint32 id = selectedId();
    if (id == 0) {
        if (m_app)
            m_app->messages().error(i18n("Nothing is selected."));
        return;
    }
    accept();
    Q_EMIT calendarChosen(id);
}
