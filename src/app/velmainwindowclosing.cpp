// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "app/velmainwindow.h"
#include "app/velnetwork.h"
#include "app/veltray.h"
#include "app/velunsent.h"
#include "document/veldoc.h"
#include "document/veldrag.h"
#include "document/velmessages.h"
#include "document/velurl.h"
#include "views/velmainview.h"

#include <KLocalizedString>

#include <QClipboard>
#include <QGuiApplication>
#include <QPointer>

#include <algorithm>

namespace
{
/** What a program leaves on the clipboard ends with it anyway; without it others need not wait for an answer. */
void clearOwnClipboard()
{
    QClipboard *clipboard = QGuiApplication::clipboard();
    if (qobject_cast<const VelDrag *>(clipboard->mimeData()))
        clipboard->clear();
}
} // namespace

VelClosing::Situation VelMainWindow::closingSituation() const
{
    VelClosing::Situation situation;
    situation.isKeptByServer = isRemote();
    // The desktop's end does not wait, and the next start synchronises what is in a file.
    situation.mayWait = !qApp->isSavingSession() && !m_isDenied;
    situation.isUnderWay = m_network->isChanging();
    if (situation.isKeptByServer) {
        situation.hasUnsent = m_unsent->hasAny();
        situation.maySend = m_network->hasAccount();
    } else {
        situation.hasUnsent = !m_doc->isModsSynced();
        situation.maySend = m_settings.autoSync && m_settings.autoSave;
    }
    return situation;
}

bool VelMainWindow::queryClose()
{
    // The tray's menu and other windows reach past an open editor; what is typed there is in no calendar yet.
    if (m_lockHolders > 0 && !qApp->isSavingSession()) {
        bringUp();
        slotStatusMsg(i18n("Please finish the entry that is being edited first."));
        return false;
    }
    m_view->finishInput();
    // A colleague's calendar may become a file here, which is not what the next start is to open.
    const std::optional<VelWindowOptions> ofLook =
        isRemote() ? std::optional(currentOptions()) : std::nullopt;
    const QPointer<VelMainWindow> self(this);
    const bool isSaved = isRemote() || m_doc->saveModified();
    if (!self)
        return false;
    if (!isSaved) {
        stay();
        return false;
    }
    const bool mayGo = mayClose();
    if (!self || !mayGo)
        return false; // the server may have answered while it asked, and the window went by itself
    if (m_savesOptions)
        saveOptions(ofLook ? *ofLook : currentOptions());
    m_closing.stay(); // it has been asked, and goes once
    return true;
}

bool VelMainWindow::mayClose()
{
    const QPointer<VelMainWindow> self(this);
    switch (m_closing.next(closingSituation())) {
    case VelClosing::Step::Send:
        if (isRemote())
            m_network->sendChanges();
        else
            m_network->slotAutoSync();
        return self && mayClose(); // it may have asked what the calendar has to do with the account
    case VelClosing::Step::Wait:
        waitToClose();
        return false;
    case VelClosing::Step::AskToWait:
        return mayCloseNow();
    case VelClosing::Step::AskAboutLoss:
        return mayLose();
    case VelClosing::Step::Go:
        break;
    }
    return true;
}

void VelMainWindow::waitToClose()
{
    updateEditActions();
    slotStatusMsg(i18n("Waiting for network operations to finish..."));
}

/** Asked for again while it waits already. */
bool VelMainWindow::mayCloseNow()
{
    const QString fate = isRemote()
        ? i18n("The server has not answered yet. What it has not taken is lost.\nClose without waiting?")
        : i18n("The server has not answered yet. What it has not confirmed is sent again at the "
               "next synchronization.\nClose without waiting?");
    return m_messages->questionYesNo(fate, i18n("Waiting for the server"), i18n("Close now"), i18n("Wait"))
        == VelMessages::Answer::Yes;
}

/** Why what was changed in a calendar that only the server keeps has not got there. */
QString VelMainWindow::lossReason() const
{
    if (m_isDenied)
        return i18n("The server does not let you see this calendar any more.");
    if (!m_closing.hasSent())
        return i18n("This calendar has not been synchronized since it was changed.");
    const QString failure = m_network->lastFailure();
    return failure.isEmpty() ? i18n("The server did not take everything.")
                             : i18n("This calendar could not be synchronized: %1", failure);
}

/** True when nothing that only this window has is left, or nobody wants it. */
bool VelMainWindow::mayLose()
{
    const QPointer<VelMainWindow> self(this);
    const QString text = lossReason() + QLatin1String("\n\n") + m_unsent->lossText();
    const VelMessages::Answer answer = m_messages->warningYesNoCancel(
        text, i18n("Changes would be lost"), i18n("&Save as a File..."), i18n("&Lose the Changes"));
    if (!self)
        return false;
    if (answer == VelMessages::Answer::No)
        return true;
    const bool isSaved = answer == VelMessages::Answer::Yes && saveUnsent();
    if (self && !isSaved)
        stay();
    return self && isSaved;
}

/** As a file. False when nobody chose one, or it could not be written. */
bool VelMainWindow::saveUnsent()
{
    const QPointer<VelMainWindow> self(this);
    const std::vector<quint32> added = m_unsent->addOverruled();
    slotFileSaveAs();
    if (!self)
        return false;
    const bool isSaved = !isRemote() && !m_doc->isModified();
    for (const quint32 localid : added) {
        if (!isSaved)
            m_doc->removeEntry(localid); // else the server would get it beside its own version
    }
    return isSaved;
}

bool VelMainWindow::mayReplaceCalendar()
{
    if (!isRemote())
        return m_doc->saveModified();
    return !m_unsent->hasAny() || mayLose();
}

void VelMainWindow::stay()
{
    const bool wasWaiting = m_closing.isWaiting();
    m_closing.stay();
    m_savesOptions = true;
    m_isDenied = false;
    updateEditActions();
    if (wasWaiting)
        slotStatusMsg(i18n("Ready."));
}

void VelMainWindow::closeWhenDone()
{
    if (m_closing.isWaiting() && !m_isDenied && !m_network->isChanging())
        close();
}

void VelMainWindow::slotFileClose()
{
    close();
}

/**
 * One window's options are what the next start finds: those of the window where the user is, or, as that may show but a
 * look at something, of another that has a calendar of its own.
 */
void VelMainWindow::slotFileQuit()
{
    slotStatusMsg(i18n("Exiting..."));
    clearOwnClipboard();
    QList<QPointer<VelMainWindow>> windows = openWindows();
    windows.removeAll(this);
    windows.prepend(this);
    const auto hasFile = [](const VelMainWindow *window) { return !window->document()->isUntitled(); };
    const auto found = std::find_if(windows.cbegin(), windows.cend(), hasFile);
    const VelMainWindow *keeper = found == windows.cend() ? this : found->data();
    for (VelMainWindow *window : std::as_const(windows))
        window->m_savesOptions = window == keeper;
    bool isCancelled = false;
    for (QPointer<VelMainWindow> &window : windows) {
        if (!window || isCancelled)
            continue;
        if (window->m_doc->isModified())
            window->raise(); // it may ask about what is there to be seen
        if (window->close())
            window.clear();
        else
            isCancelled = window && !window->m_closing.isWaiting();
    }
    for (VelMainWindow *window : std::as_const(windows)) {
        if (!isCancelled || !window)
            continue;
        window->stay();
        window->slotStatusMsg(i18n("Ready."));
    }
}

void VelMainWindow::slotDenied(bool quiet)
{
    m_network->stop();
    // An editor would go with the window, and what was typed there.
    m_isDenied = isRemote();
    const VelMessages::Unasked unasked(*m_messages);
    if (m_isDenied && m_lockHolders == 0)
        closeDenied();
    else if (!m_isDenied && !quiet)
        m_messages->error(i18n("Access denied."));
}

void VelMainWindow::closeDenied()
{
    const QPointer<VelMainWindow> self(this);
    // Nobody may have been at the screen when it was refused, and a window that is gone explains nothing.
    const VelMessages::Unasked unasked(*m_messages);
    if (!m_unsent->hasAny()) {
        m_messages->information(
            m_isUnfilled ? i18n("The server does not let you see this calendar. It is closed now.")
                         : i18n("The server does not let you see this calendar any more. It is closed now."),
            i18n("Access denied"));
    }
    if (self)
        close();
}

QList<QPointer<VelMainWindow>> VelMainWindow::openWindows()
{
    QList<QPointer<VelMainWindow>> windows;
    const QList<KMainWindow *> all = memberList();
    for (KMainWindow *each : all) {
        auto *window = qobject_cast<VelMainWindow *>(each);
        // One that has been closed may still be there for a moment.
        if (window && (window->isVisible() || window->m_tray->isShown()))
            windows.append(window);
    }
    return windows;
}

VelMainWindow *VelMainWindow::find(const std::function<bool(const VelMainWindow &)> &isMeant) const
{
    const QList<QPointer<VelMainWindow>> windows = openWindows();
    const auto found = std::find_if(windows.cbegin(), windows.cend(),
                                    [&isMeant](const auto &window) { return isMeant(*window); });
    return found == windows.cend() ? nullptr : found->data();
}

bool VelMainWindow::showElsewhere(const QUrl &url)
{
    VelMainWindow *window = find([this, &url](const VelMainWindow &each) {
        return &each != this && !each.m_doc->isUntitled() && VelUrl::isSameFile(each.m_doc->URL(), url);
    });
    if (window)
        window->bringUp();
    return window != nullptr;
}

void VelMainWindow::bringUp()
{
    if (m_closing.isWaiting())
        stay();
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
}
