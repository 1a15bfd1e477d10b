// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "app/velactions.h"
#include "app/velinvitationasker.h"
#include "app/velmainwindow.h"
#include "app/velnetwork.h"
#include "app/velunsent.h"
#include "document/veldoc.h"
#include "document/velmessages.h"

#include <KLocalizedString>

#include <QAction>
#include <QStatusBar>
#include <QToolButton>

namespace
{
constexpr int NoticeTime = 8000; // milliseconds
}

void VelMainWindow::initInvitations()
{
    m_invitations = std::make_unique<VelInvitationAsker>(
        *m_doc, [this](const VelMerge::Question &question, bool isOpened) -> std::optional<int> {
            // A window that is about to go does not keep its user.
            return m_closing.isWaiting() ? VelAnswer::AllLater : askAbout(question, !isOpened);
        });
    connect(m_invitations.get(), &VelInvitationAsker::countChanged, this,
            &VelMainWindow::showOpenInvitations);
    connect(m_invitations.get(), &VelInvitationAsker::answered, this, &VelMainWindow::keepChanges);
    connect(m_doc, &VelDoc::contentsReplaced, this, [this] { m_notTaken.clear(); });
    m_openInvitations = new QToolButton(this);
    m_openInvitations->setObjectName(QStringLiteral("openInvitations"));
    m_openInvitations->setAutoRaise(true);
    m_openInvitations->setFocusPolicy(Qt::StrongFocus);
    m_openInvitations->setToolTip(i18n("Shows the invitations that wait for your answer"));
    m_openInvitations->setWhatsThis(
        i18n("These invitations, or changes of appointments, have no answer of yours yet. Press here to see "
             "and answer them one after the other."));
    connect(m_openInvitations, &QToolButton::clicked, this, &VelMainWindow::slotAnswerInvitations);
    statusBar()->addPermanentWidget(m_openInvitations);
    showOpenInvitations(0);
}

void VelMainWindow::showOpenInvitations(int count)
{
    m_openInvitations->setText(i18np("1 invitation waits", "%1 invitations wait", count));
    m_openInvitations->setVisible(count > 0);
    m_actions->answerInvitations->setEnabled(count > 0);
}

void VelMainWindow::slotAnswerInvitations()
{
    m_invitations->open();
}

/** What is another in the calendar without the user having changed it: seen at once, and safe. */
void VelMainWindow::keepChanges()
{
    m_doc->slotUpdateAllViews(nullptr);
    if (m_settings.autoSaveSync && !m_doc->isUntitled())
        saveByItself();
}

/** What came, and what was not taken: whoever asked for it, or leaves, is to have read that. */
void VelMainWindow::tellOutcome(const VelMerge::Report &report)
{
    const bool isSeen = m_network->isAskedFor() || m_closing.isWaiting();
    const QString notTaken = m_notTaken.tell(report.notTaken, isSeen);
    QStringList texts;
    if (report.received > 0)
        texts.append(
            i18np("One entry came from the server.", "%1 entries came from the server.", report.received));
    if (!notTaken.isEmpty() && !isSeen)
        texts.append(notTaken); // until something else is to be read: nobody may be there
    if (!texts.isEmpty())
        statusBar()->showMessage(texts.join(QLatin1Char(' ')), texts.last() == notTaken ? 0 : NoticeTime);
    // What a colleague's calendar loses is asked about when it closes.
    if (m_closing.isWaiting() && isRemote()) {
        for (const VelNotTaken::Item &item : report.notTaken) {
            if (item.fate != VelNotTaken::Fate::Unsent)
                m_unsent->noteOverruled(item.entry);
        }
    } else if (!notTaken.isEmpty() && isSeen) {
        m_messages->information(notTaken, i18n("Synchronization"));
    }
}
