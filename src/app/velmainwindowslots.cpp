// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "app/velactions.h"
#include "app/velalarm.h"
#include "app/velfilecommands.h"
#include "app/velmailer.h"
#include "app/velmainwindow.h"
#include "app/velrecovery.h"
#include "dialogs/velarchive.h"
#include "dialogs/velentryinfo.h"
#include "dialogs/velpreferences.h"
#include "document/velarchiver.h"
#include "document/veldoc.h"
#include "document/velmessages.h"
#include "document/velstep.h"
#include "hub/velprintout.h"
#include "model/velnettask.h"
#include "views/velmainview.h"
#include "widgets/wraised.h"

#include <KEditToolBar>
#include <KLocalizedString>
#include <KSharedConfig>
#include <KToggleAction>
#include <KToolBar>
#include <KXMLGUIFactory>

#include <QFile>
#include <QPointer>
#include <QStatusBar>

namespace
{
constexpr int NoticeTime = 8000; // milliseconds
}

void VelMainWindow::slotFileNewWindow()
{
    auto *window = new VelMainWindow;
    window->show();
}

void VelMainWindow::slotFileNew()
{
    m_view->finishInput();
    m_fileCommands->newDocument();
}

void VelMainWindow::slotFileOpen()
{
    m_view->finishInput();
    m_fileCommands->open();
}

void VelMainWindow::slotFileOpenRecent(const QUrl &url)
{
    m_view->finishInput();
    m_fileCommands->open(url);
}

void VelMainWindow::slotFileSave()
{
    m_view->finishInput();
    m_fileCommands->save();
}

void VelMainWindow::slotFileSaveAs()
{
    m_view->finishInput();
    m_fileCommands->saveAs();
}

void VelMainWindow::slotFileImport()
{
    m_fileCommands->importFile();
}

void VelMainWindow::slotFileExport()
{
    m_view->finishInput();
    m_fileCommands->exportFile();
}

void VelMainWindow::informChanges(const VelEntry &entry)
{
    const std::optional<VelInvitation> invitation = VelInvitation::of(entry, m_doc->getUserId());
    if (!invitation)
        return;
    const QPointer<VelMainWindow> alive(this);
    const VelMessages::Answer answer =
        m_messages->questionYesNo(i18n("Do you want to sent invitations via email?"), i18n("Invitations"));
    if (alive && answer == VelMessages::Answer::Yes)
        m_mailer->compose(*invitation);
}

void VelMainWindow::slotFileArchive()
{
    const QPointer<VelMainWindow> self(this);
    m_fileCommands->archive();
    if (!self)
        return;
    // Whichever window closes last writes it down.
    const QList<KMainWindow *> windows = memberList();
    for (KMainWindow *each : windows) {
        if (auto *window = qobject_cast<VelMainWindow *>(each))
            window->m_settings.archiveFile = m_settings.archiveFile;
    }
}

std::optional<VelArchiveChoice> VelMainWindow::chooseArchive(const VelArchiveChoice &usual)
{
    if (m_chooseArchive)
        return m_chooseArchive(usual);
    const auto count = [this](QDate limit) { return int(VelArchiver::findEntries(*m_doc, limit).size()); };
    // It goes with the window when that is closed meanwhile.
    const QPointer<VelArchive> dialog(new VelArchive(count, usual.date, usual.url, this));
    std::optional<VelArchiveChoice> choice;
    if (dialog->exec() == QDialog::Accepted && dialog)
        choice = VelArchiveChoice{dialog->getDate(), dialog->getURL()};
    delete dialog.data();
    return choice;
}

void VelMainWindow::slotFilePrint()
{
    m_view->finishInput();
    slotStatusMsg(i18n("Printing..."));
    const std::unique_ptr<VelPrintout> printout = m_view->getCurrentView()->makePrintout();
    const QPointer<VelMainWindow> alive(this);
    printOut(*printout);
    if (alive) // it may have been closed meanwhile
        slotStatusMsg(i18n("Ready."));
}

void VelMainWindow::slotEditCut()
{
    m_view->getCommandView()->cut();
}

void VelMainWindow::slotEditCopy()
{
    m_view->getCommandView()->copy();
}

void VelMainWindow::slotEditPaste()
{
    m_view->getCurrentView()->paste();
}

void VelMainWindow::slotEditDelete()
{
    m_view->getCommandView()->del();
}

void VelMainWindow::slotGoToday()
{
    m_view->setDate(today());
}

void VelMainWindow::slotViewToolBar()
{
    toolBar(QStringLiteral("mainToolBar"))->setVisible(m_actions->showToolBar->isChecked());
}

void VelMainWindow::slotViewStatusBar()
{
    statusBar()->setVisible(m_actions->showStatusBar->isChecked());
}

void VelMainWindow::slotView1Day()
{
    m_view->setMainView(VelMainView::DayView, 1);
}

void VelMainWindow::slotView5Day()
{
    m_view->setMainView(VelMainView::DayView, VelMainView::WorkWeek);
}

void VelMainWindow::slotView7Day()
{
    m_view->setMainView(VelMainView::DayView, 7);
}

void VelMainWindow::slotViewMonth()
{
    m_view->setMainView(VelMainView::MonthView);
}

void VelMainWindow::slotViewEntry()
{
    if (const VelEntry *entry = m_view->getCommandView()->getSelectedEntry())
        showEntryInfo(*entry, VelAnswer::Plain);
}

/** An entry that was only received may have the same id as one of the calendar. */
bool VelMainWindow::isStored(const VelEntry &entry) const
{
    if (!entry.isOccurrence())
        return m_doc->getEntry(entry.localid) == &entry;
    const VelEntry *original = m_doc->getEntry(entry.originalid);
    return original && original->getOccurrence(entry.localid) == &entry;
}

bool VelMainWindow::applyAnswer(quint32 localid, int answer)
{
    const VelStepScope scope(m_doc, i18nc("what was done", "Answer"));
    return VelAnswer::apply(*m_doc, localid, answer);
}

/** The answer, Unanswered for none; nothing when the viewer was closed without one. */
std::optional<int> VelMainWindow::runEntryInfo(const VelEntry &entry, VelAnswer::Mode mode,
                                               const QString &text, bool mayAnswer, bool isUnasked,
                                               int others)
{
    delete m_entryInfo;
    auto *info = new VelEntryInfo(entry, this, mode, text, mayAnswer);
    m_entryInfo = info;
    info->offerLater(others);
    connect(m_doc, &VelDoc::contentsReplaced, info, &QDialog::reject);
    const QPointer<VelEntryInfo> shown(info);
    const int result = isUnasked ? (new WRaised(info))->run() : info->exec();
    const bool isAccepted = result == QDialog::Accepted && shown;
    const bool hasAnswer = isAccepted || (shown && shown->getAnswer() == VelAnswer::AllLater);
    const std::optional<int> answer = hasAnswer ? std::optional(shown->getAnswer()) : std::nullopt;
    delete shown.data();
    return answer;
}

int VelMainWindow::showEntryInfo(const VelEntry &entry, VelAnswer::Mode mode, const QString &text)
{
    const quint32 localid = isStored(entry) ? m_doc->getOriginalEntry(&entry)->localid : 0;
    const QPointer<VelMainWindow> self(this);
    const int answer = runEntryInfo(entry, mode, text, m_doc->isWritable()).value_or(VelAccount::Unanswered);
    if (!self)
        return VelAccount::Unanswered;
    // A synchronisation that runs meanwhile does not know of the answer; the next one sends it.
    if (answer != VelAccount::Unanswered && m_doc->isWritable() && applyAnswer(localid, answer)) {
        if (answer == VelAccount::Declined)
            m_view->getCurrentView()->clearSelectedEntry(false);
        m_doc->slotUpdateAllViews(nullptr);
    }
    return answer;
}

void VelMainWindow::slotViewList()
{
    m_view->setMainView(VelMainView::ListView);
}

void VelMainWindow::slotShowEntry(quint32 localid)
{
    if (const VelEntry *entry = m_doc->getEntry(localid)) {
        bringUp();
        m_view->setDate(entry->type == VelEntry::Event ? entry->getStart().date() : entry->getEnd().date());
    }
    // Later: what asked for it has its own end to come to.
    QTimer::singleShot(0, this, [this, localid] {
        const QPointer<VelMainWindow> self(this);
        const VelEntry *shown = m_doc->getEntry(localid);
        if (shown && shown->type == VelEntry::Event)
            showEntryInfo(*shown, VelAnswer::Plain);
        else if (shown)
            showEntryDialog(*shown, false);
        if (self)
            m_alarm->resume();
    });
}

void VelMainWindow::slotPurgeCompleted()
{
    if (!mayEdit())
        return;
    const int purged = m_doc->purgeCompleted();
    updateEditActions();
    statusBar()->showMessage(purged == 0 ? i18n("There are no completed to-do tasks.")
                                         : i18np("One completed to-do task was removed.",
                                                 "%1 completed to-do tasks were removed.", purged),
                             NoticeTime);
}

void VelMainWindow::slotPreferences()
{
    if (!m_preferences) {
        KConfig *config = KSharedConfig::openConfig().data();
        m_preferences = new VelPreferences(this, VelConfiguration::generalOptions(config));
        connect(m_preferences, &VelPreferences::settingsChanged, this, &VelMainWindow::applyPreferences);
    }
    m_shownPass = m_settings.pass;
    m_preferences->refresh(m_settings, m_look);
    m_preferences->show();
}

void VelMainWindow::slotAccels()
{
    guiFactory()->showConfigureShortcutsDialog();
}

void VelMainWindow::slotToolbar()
{
    KEditToolBar dialog(guiFactory(), this);
    connect(&dialog, &KEditToolBar::newToolBarConfig, this, &VelMainWindow::rebuildGui);
    dialog.exec();
}

/** The framework builds the bars anew and knows nothing of where the user has them. */
void VelMainWindow::rebuildGui()
{
    const Qt::ToolBarArea area = toolBarArea(toolBar(QStringLiteral("mainToolBar")));
    buildGui();
    addToolBar(area, toolBar(QStringLiteral("mainToolBar")));
    slotViewToolBar();
}

void VelMainWindow::saveProperties(KConfigGroup &group)
{
    m_view->finishInput();
    group.writeEntry("filename", m_doc->URL().toString(QUrl::RemovePassword));
    group.writeEntry("modified", m_doc->isModified());
    if (!m_doc->isModified())
        return;
    if (m_settings.autoSave && !m_doc->isUntitled() && !m_doc->hasDeclinedOverwrite()) {
        if (m_doc->saveDocument(m_doc->URL(), true)) {
            group.writeEntry("modified", false);
            return;
        }
    }
    if (!m_doc->writeCopy(VelRecovery::fileName(m_doc->URL(), group.name())))
        m_messages->error(i18n("Cannot write to the file."));
}

void VelMainWindow::readProperties(const KConfigGroup &group)
{
    const QUrl url(group.readEntry("filename", QString()));
    if (url.isEmpty())
        return;
    const bool hasFile = url.fileName() != VelDoc::untitledName();
    if (!group.readEntry("modified", false)) {
        if (hasFile && showElsewhere(url))
            QTimer::singleShot(0, this, &QWidget::close); // it would stay empty
        else if (hasFile)
            openDocumentFile(url);
        return;
    }
    const QString recovery = VelRecovery::fileName(url, group.name());
    const bool exists = QFile::exists(recovery);
    m_messages->information(QLatin1String("recover:") + QString::number(int(exists)) + QLatin1Char('-')
                            + recovery);
    if (exists && m_doc->recoverDocument(recovery, url))
        QFile::remove(recovery);
    else if (hasFile)
        openDocumentFile(url); // a copy that cannot be read is no use, and stays for whoever can
}

void VelMainWindow::printOut(VelPrintout &printout)
{
    m_print(printout);
}
