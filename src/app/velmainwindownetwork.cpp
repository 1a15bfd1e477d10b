// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "app/velactions.h"
#include "app/velcertificates.h"
#include "app/velconnectiontest.h"
#include "app/velinvitationasker.h"
#include "app/velmainwindow.h"
#include "app/velnetwork.h"
#include "app/velonlinewidget.h"
#include "app/velsyncbar.h"
#include "app/velsyncguard.h"
#include "dialogs/velpassword.h"
#include "dialogs/velremotecalendardialog.h"
#include "document/veldoc.h"
#include "document/velmessages.h"
#include "views/velmainview.h"

#include <KLocalizedString>

#include <QApplication>
#include <QLabel>
#include <QPointer>
#include <QStatusBar>

namespace
{
constexpr int NoticeTime = 8000; // milliseconds
constexpr int PathNoticeTime = 60000; // the same, to be read to the end and perhaps noted down
} // namespace

void VelMainWindow::initNetwork()
{
    m_trust = std::make_unique<VelCertificates>(*m_messages);
    m_network = std::make_unique<VelNetwork>(VelNetwork::Context{
        *m_doc, m_settings, *m_messages, *m_trust, [this] { return isInUse(); },
        [this] { updateEditActions(); },
        [this](const QString &text) {
            if (!m_closing.isWaiting()) // what it waits for is what counts then
                slotStatusMsg(text);
        },
        [this] {
            if (!m_closing.isWaiting())
                m_statusText->setText(idleText());
        },
        [this](const VelMerge::Question &notice) { static_cast<void>(askAbout(notice, true)); }, m_now,
        [this](bool byHand) { return m_syncGuard->maySync(byHand); },
        [this] { return isRemote() || m_syncGuard->keepCopy(); }});
    m_syncBar = new VelSyncBar(m_actions->stopSynchronizing, statusBar());
    initSyncGuard();
    connectNetwork();
}

void VelMainWindow::initSyncGuard()
{
    m_syncGuard = std::make_unique<VelSyncGuard>(
        VelSyncGuard::Context{*m_doc, m_settings, *m_messages,
                              [this](const QString &text) { statusBar()->showMessage(text, NoticeTime); }});
    VelSyncGuard *guard = m_syncGuard.get();
    connect(m_doc, &VelDoc::urlChanged, guard,
            [guard] { QTimer::singleShot(0, guard, &VelSyncGuard::checkOpened); });
    // Before what it brought is saved.
    connect(m_network.get(), &VelNetwork::merged, this, &VelMainWindow::noteSynchronized);
    connect(m_network.get(), &VelNetwork::syncEnded, guard, [this, guard] {
        const QPointer<VelMainWindow> self(this);
        guard->noteEnded();
        const QString copy = self ? guard->takeCopyNotice() : QString();
        if (copy.isEmpty())
            return;
        const QString shown = statusBar()->currentMessage();
        statusBar()->showMessage(shown.isEmpty() ? copy : shown + QLatin1Char(' ') + copy, PathNoticeTime);
    });
}

void VelMainWindow::noteSynchronized(const VelMerge::Report &report)
{
    if (!m_syncGuard->noteSynchronized())
        return;
    m_doc->setModified(true);
    // Where something else has changed, too, the file is saved with that.
    if (!report.hasChanged && m_settings.autoSaveSync)
        m_doc->saveQuietly();
}

/** What an answer of the server would change under somebody's hands, or cover with what it asks. */
bool VelMainWindow::isInUse() const
{
    const QWidget *modal = QApplication::activeModalWidget();
    const bool isInAnother = modal && getApp(modal) != this;
    return m_lockHolders > 0 || m_view->hasInput() || m_doc->isInStep() || isInAnother;
}

void VelMainWindow::connectNetwork()
{
    VelNetwork *network = m_network.get();
    connect(network, &VelNetwork::netStatusChanged, this, &VelMainWindow::setNetStatus);
    connect(network, &VelNetwork::accountsReady, this, &VelApp::accountsReady);
    connect(m_doc, &VelDoc::accountsChanged, this, &VelApp::accountsReady);
    connect(this, &VelApp::accountsReady, this, &VelMainWindow::updateCaption);
    connect(network, &VelNetwork::taskUserBusyReady, this, &VelApp::taskUserBusyReady);
    connect(network, &VelNetwork::rightsReady, this, &VelApp::rightsReady);
    connect(network, &VelNetwork::entriesReceived, this, &VelApp::entriesReceived);
    connect(network, &VelNetwork::netTaskFailed, this, &VelApp::netTaskFailed);
    connect(network, &VelNetwork::noticed, this,
            [this](const QString &text) { statusBar()->showMessage(text, NoticeTime); });
    connect(network, &VelNetwork::warningChanged, this, &VelMainWindow::showWarning);
    connect(network, &VelNetwork::merged, this, &VelMainWindow::finishMerge);
    connect(network, &VelNetwork::settingsChanged, this, &VelMainWindow::shareAccount);
    connect(network, &VelNetwork::passwordChanged, this,
            [this] { statusBar()->showMessage(i18n("The password has been changed."), NoticeTime); });
    connect(network, &VelNetwork::trialWanted, this, &VelMainWindow::tryEncryption);
    connect(network, &VelNetwork::accessDenied, this, &VelMainWindow::slotDenied);
    // Later: that the calendar was refused is told after the end of the last request.
    connect(network, &VelNetwork::taskEnded, this, &VelMainWindow::closeWhenDone, Qt::QueuedConnection);
    connect(network, &VelNetwork::syncEnded, this, &VelMainWindow::closeWhenDone, Qt::QueuedConnection);
    connect(network, &VelNetwork::syncEnded, this, [this] {
        m_hasFailedToFill = m_isUnfilled;
        if (m_isUnfilled)
            showWarning({});
    });
    connect(network, &VelNetwork::idle, this,
            [this] { m_onlineWidget->setFailure(m_network->lastFailure()); });
}

void VelMainWindow::netTask(int type, const QString &argument, bool quiet)
{
    m_network->netTask(type, argument, quiet);
}

const VelEntry *VelMainWindow::getReceivedEntry(quint32 globalid) const
{
    return m_network->getReceivedEntry(globalid);
}

void VelMainWindow::testConnection(const VelSettings &settings,
                                   const std::function<void(const VelConnectionResult &)> &done)
{
    const bool isNew =
        settings.server != m_settings.server || settings.user != m_settings.user || m_settings.isUntried;
    new VelConnectionTest(settings, isNew, *m_messages, *m_trust, done, this);
}

void VelMainWindow::setNetStatus(int status)
{
    m_onlineWidget->setNetStatus(static_cast<VelOnlineWidget::NetStatus>(status));
}

void VelMainWindow::slotSynchronize()
{
    m_view->finishInput();
    m_network->slotSynchronize();
}

void VelMainWindow::slotAutoSync()
{
    m_network->synchronizeAtStart();
}

void VelMainWindow::slotStopSynchronizing()
{
    m_network->stopSynchronizing();
}

void VelMainWindow::slotChangePass()
{
    if (!m_network->hasAccount()) {
        m_network->tellNoAccount();
        return;
    }
    std::optional<QString> digest;
    if (m_askPassword) {
        digest = m_askPassword(m_settings.pass);
    } else {
        const QPointer<VelPassword> dialog(new VelPassword(this, VelPassword::ChangeMode));
        dialog->setOldPass(m_settings.pass);
        if (dialog->exec() == QDialog::Accepted && dialog)
            digest = dialog->getPass();
        delete dialog.data();
    }
    if (digest)
        m_network->changePassword(*digest);
}

void VelMainWindow::slotFileRemote()
{
    if (!m_network->hasAccount()) {
        m_network->tellNoAccount();
        return;
    }
    if (!m_remoteDialog) {
        m_remoteDialog = new VelRemoteCalendarDialog(this);
        connect(m_remoteDialog, &VelRemoteCalendarDialog::calendarChosen, this, &VelMainWindow::openRemote);
    }
    m_remoteDialog->refresh();
    m_remoteDialog->show();
}

VelMainWindow *VelMainWindow::openRemote(quint32 userid)
{
    if (!m_network->hasAccount()) { // any more
        m_network->tellNoAccount();
        return nullptr;
    }
    VelMainWindow *shown =
        find([userid](const VelMainWindow &window) { return window.showsCalendarOf(userid); });
    if (shown) {
        shown->bringUp();
        return shown;
    }
    auto *window = new VelMainWindow;
    window->show();
    window->fetchCalendarOf(userid);
    return window;
}

void VelMainWindow::fetchCalendarOf(quint32 userid)
{
    m_doc->setUserId(userid);
    m_isUnfilled = isRemote();
    m_hasFailedToFill = false;
    updateCaption();
    updateEditActions();
    slotSynchronize();
}

/** What stands in the status bar until a synchronisation succeeds. */
void VelMainWindow::showWarning(const QString &text)
{
    const QString missing =
        i18n("This calendar could not be fetched. Nothing can be entered before \"Synchronize\" succeeds.");
    m_syncBar->setWarning(m_isUnfilled && m_hasFailedToFill ? missing : text);
}

/** As the server has it: of a copy in a file it is not known how old it is, or whether it is ever synchronised. */
bool VelMainWindow::showsCalendarOf(quint32 userid) const
{
    return m_doc->getUserId() == userid && !m_doc->isArchive()
        && (isRemote() || userid == m_settings.origUserid);
}

/** A calendar of somebody else that has no file here: the server keeps it. */
bool VelMainWindow::isRemote() const
{
    return m_doc->isUntitled() && m_doc->getUserId() != 0 && m_doc->getUserId() != m_settings.origUserid;
}

std::optional<int> VelMainWindow::askAbout(const VelMerge::Question &question, bool isUnasked)
{
    if (m_ask)
        return m_ask(question);
    return runEntryInfo(question.entry, question.mode(), question.text(), m_doc->isWritable(), isUnasked,
                        question.others);
}

void VelMainWindow::finishMerge(const VelMerge::Report &report)
{
    const QPointer<VelMainWindow> self(this);
    m_isUnfilled = false;
    m_network->resume(); // the calendar that it was stopped for is to be had again
    if (report.hasChanged) {
        keepChanges();
        if (!self)
            return;
        if (isRemote() && !report.hasUnsent)
            m_doc->setModified(false); // it is kept where it came from
    }
    m_doc->setModsSynced(!report.hasUnsent);
    m_invitations->take(report, m_network->isAskedFor());
    tellOutcome(report);
}

void VelMainWindow::saveByItself()
{
    // What it asks may stand for longer than the timer takes.
    if (m_isSavingByItself)
        return;
    m_isSavingByItself = true;
    const QPointer<VelMainWindow> self(this);
    // A failure is told once in a box and from then on in the status bar, until a save succeeds.
    // An editor that is being typed in is left in peace: what it could not save it asks about the next time.
    const bool hadFailed = m_autoSaveFailed;
    const bool mayAsk = !hadFailed && !m_doc->hasDeclinedOverwrite() && !isInUse();
    const VelMessages::Unasked unasked(*m_messages);
    if (mayAsk)
        m_doc->saveDocument(m_doc->URL(), true);
    else
        m_doc->saveQuietly();
    if (!self)
        return;
    m_isSavingByItself = false;
    m_autoSaveFailed = m_doc->isModified() && (mayAsk || hadFailed);
    if (m_autoSaveFailed || hadFailed)
        slotStatusMsg(idleText());
}

/** What the status bar says while nothing is going on. */
QString VelMainWindow::idleText() const
{
    return m_autoSaveFailed ? i18n("The calendar could not be saved automatically. Please save it yourself.")
                            : i18n("Ready.");
}

void VelMainWindow::slotAutoSave()
{
    setAutoSaveTimer();
    if (m_doc->isModified() && !m_doc->isUntitled())
        saveByItself();
    else
        keepRecoveryCopy();
}
