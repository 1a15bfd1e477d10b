// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "app/velmainwindow.h"

#include "app/velactions.h"
#include "app/velalarm.h"
#include "app/veldesktopalerts.h"
#include "app/velfilechooser.h"
#include "app/velfilecommands.h"
#include "app/velinvitationasker.h"
#include "app/velmailer.h"
#include "app/velnetwork.h"
#include "app/velonlinewidget.h"
#include "app/velprintdialogs.h"
#include "app/velrecoverycopy.h"
#include "app/velsyncguard.h"
#include "app/veltray.h"
#include "app/velundo.h"
#include "app/velunsent.h"
#include "document/veldoc.h"
#include "document/velurl.h"
#include "hub/velmessageboxes.h"
#include "net/veltrust.h"
#include "views/velmainview.h"
#include "widgets/wshowntext.h"

#include <KLocalizedString>
#include <KRecentFilesAction>
#include <KSharedConfig>
#include <KToggleAction>
#include <KToolBar>

#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QStatusBar>

namespace
{
constexpr int MostName = 100; // characters, in the title of the window
KConfig *applicationConfig()
{
    return KSharedConfig::openConfig().data();
}

constexpr int MsecsPerMinute = 60000;
} // namespace

VelMainWindow::VelMainWindow(VelSurroundings surroundings)
    : m_messages(std::move(surroundings.messages))
    , m_files(std::move(surroundings.files))
    , m_mailer(std::move(surroundings.mailer))
    , m_addressBook(std::move(surroundings.addressBook))
    , m_edit(std::move(surroundings.edit))
    , m_now(surroundings.now ? std::move(surroundings.now)
                             : [] { return VelDateTime::fromQDateTime(QDateTime::currentDateTime()); })
    , m_print(std::move(surroundings.print))
    , m_chooseArchive(std::move(surroundings.chooseArchive))
    , m_progress(std::move(surroundings.progress))
    , m_alerts(std::move(surroundings.alerts))
    , m_askPassword(std::move(surroundings.askPassword))
    , m_ask(std::move(surroundings.ask))
{
    setObjectName(QStringLiteral("VelMainWindow#"));
    setAttribute(Qt::WA_DeleteOnClose);
    if (!m_messages)
        m_messages = std::make_unique<VelMessageBoxes>(this);
    if (!m_files)
        m_files = std::make_unique<VelFileDialogs>(this);
    if (!m_print) {
        const VelPrintDialogs::Context context{this, *m_messages, *m_files, m_now};
        m_print = [dialogs = std::make_shared<VelPrintDialogs>(context)](VelPrintout &printout) {
            dialogs->printOut(printout);
        };
    }
    if (!m_mailer)
        m_mailer = std::make_unique<VelDesktopMailer>(this, *m_messages, *m_files);
    m_autoSaveTimer.setSingleShot(true);
    connect(&m_autoSaveTimer, &QTimer::timeout, this, &VelMainWindow::slotAutoSave);

    initStatusBar();
    m_actions = std::make_unique<VelActions>(this);
    buildGui();
    VelConfiguration::protect(*applicationConfig());
    VelConfiguration::readPreferences(VelConfiguration::preferences(applicationConfig()), m_settings, m_look,
                                      VelLook::defaults(palette()));
    initDocument();
    initRecovery();
    initNetwork();
    initInvitations();
    initUndo();
    initAlarm();
    const VelWindowOptions options =
        VelConfiguration::readOptions(VelConfiguration::generalOptions(applicationConfig()));
    initView(options);
    readOptions(options);
    setNetStatus(VelOnlineWidget::NoConnection);
    m_tray = std::make_unique<VelTray>(this, m_actions->quit);
    setCutCopy(nullptr, false);
    slotClipboardChanged();
    setAutoSaveTimer();
    netTask(VelNetTask::UserList, {}, true);
}

VelMainWindow::~VelMainWindow()
{
    m_undo.reset();
    dropRecoveryCopy(); // whoever closes the window has been asked
    // No reminder may be answered any more, and the views take their leave of the document, which goes last.
    m_alarm.reset();
    m_alerts.reset();
    delete m_view;
    m_invitations.reset();
    m_network.reset();
    m_syncGuard.reset();
    delete m_doc;
}

void VelMainWindow::buildGui()
{
    createGUI(QStringLiteral("delmasttimeui.rc"));
    // The frameworks offer what this program does not have: a handbook, and a fund to donate to.
    for (const char *name : {"help_contents", "help_donate"}) {
        if (QAction *action = getAction(QLatin1String(name)))
            action->setVisible(false);
    }
}

void VelMainWindow::initStatusBar()
{
    m_statusText = new QLabel(i18n("Ready."), this);
    m_statusText->setTextFormat(Qt::PlainText);
    m_statusText->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    m_onlineWidget = new VelOnlineWidget(this);
    statusBar()->addWidget(m_statusText, 10);
    statusBar()->addPermanentWidget(m_onlineWidget);
}

void VelMainWindow::initDocument()
{
    m_doc = new VelDoc(
        *m_messages, m_settings, nullptr, [this] { return today(); }, m_now);
    connect(m_doc, &VelDoc::modifiedChanged, this, [this](bool modified) {
        m_actions->save->setEnabled(modified);
        setCaption(captionText(), modified);
    });
    connect(m_doc, &VelDoc::urlChanged, this, &VelMainWindow::updateCaption);
    m_unsent = std::make_unique<VelUnsent>(*m_doc);
    connect(m_doc, &VelDoc::contentsReplaced, this, [this] {
        m_isUnfilled = false;
        m_unsent->clear();
    });
    connect(m_doc, &VelDoc::editLockWanted, this, &VelMainWindow::updateEditActions);
    connect(m_doc, &VelDoc::saveAsWanted, this, &VelMainWindow::slotFileSaveAs);
    m_actions->save->setEnabled(false);
    m_fileCommands = std::make_unique<VelFileCommands>(VelFileCommands::Context{
        *m_doc, *m_messages, *m_files, m_settings, [this](const QUrl &url) { addRecentFile(url); },
        [this](const QString &text) { slotStatusMsg(text); }, [this] { return isEditLocked(); },
        [this] { return mayReplaceCalendar(); }, [this](const QUrl &url) { return showElsewhere(url); },
        [this](bool locked) { setEditLock(locked); },
        [this](const QString &text) { return makeProgress(text); }, [this] { return proposeFile(); },
        [this](const VelArchiveChoice &usual) { return chooseArchive(usual); }});
    updateCaption();
}

std::unique_ptr<VelProgress> VelMainWindow::makeProgress(const QString &text)
{
    return m_progress ? m_progress(text) : std::make_unique<VelProgressDialog>(text, this);
}

void VelMainWindow::initAlarm()
{
    if (!m_alerts)
        m_alerts = std::make_unique<VelDesktopAlerts>(this);
    m_alarm = std::make_unique<VelAlarm>(
        *m_doc, m_settings, m_now, *m_alerts,
        VelGivenReminders(applicationConfig()->group(QStringLiteral("Given Reminders"))));
    connect(m_alarm.get(), &VelAlarm::showWanted, this, &VelMainWindow::slotShowEntry);
}

void VelMainWindow::initUndo()
{
    m_undo = std::make_unique<VelUndo>(*this, *m_doc, *m_actions->undo, *m_actions->redo);
    connect(m_undo.get(), &VelUndo::changed, this, &VelMainWindow::updateEditActions);
}

void VelMainWindow::initView(const VelWindowOptions &options)
{
    m_view = new VelMainView(this, applicationConfig(), options.splitterSizes1, options.splitterSizes2);
    setCentralWidget(m_view);
    connect(m_view, &VelMainView::commandViewChanged, this, &VelMainWindow::updateEditActions);
    connect(QGuiApplication::clipboard(), &QClipboard::dataChanged, this,
            &VelMainWindow::slotClipboardChanged);
}

void VelMainWindow::readOptions(const VelWindowOptions &options)
{
    resize(options.geometry);
    m_actions->showToolBar->setChecked(options.showToolbar);
    m_actions->showStatusBar->setChecked(options.showStatusbar);
    addToolBar(VelConfiguration::toolBarArea(options.toolBarPos), toolBar(QStringLiteral("mainToolBar")));
    slotViewToolBar();
    slotViewStatusBar();
    m_actions->openRecent->loadEntries(applicationConfig()->group(QStringLiteral("Recent Files")));
}

VelWindowOptions VelMainWindow::currentOptions() const
{
    VelWindowOptions options;
    auto *self = const_cast<VelMainWindow *>(this); // the toolbar's getter makes missing ones
    options.geometry = size();
    options.showToolbar = m_actions->showToolBar->isChecked();
    options.showStatusbar = m_actions->showStatusBar->isChecked();
    options.toolBarPos =
        VelConfiguration::toolBarPosition(toolBarArea(self->toolBar(QStringLiteral("mainToolBar"))));
    options.splitterSizes1 = m_view->getSplitter1Sizes();
    options.splitterSizes2 = m_view->getSplitter2Sizes();
    options.docked = m_tray->isShown();
    // A look at somebody else's calendar, or an empty one, is not what is wanted back at the next start.
    const KConfigGroup stored = VelConfiguration::generalOptions(applicationConfig());
    const bool isNothing = isRemote() || m_doc->getEntryCount() == 0;
    const QUrl untitled = isNothing ? VelConfiguration::readOptions(stored).docUrl : QUrl();
    options.docUrl = m_doc->isUntitled() ? untitled : m_doc->URL();
    return options;
}

void VelMainWindow::saveOptions()
{
    saveOptions(currentOptions());
}

void VelMainWindow::saveOptions(const VelWindowOptions &options)
{
    KConfig *config = applicationConfig();
    VelConfiguration::writeOptions(VelConfiguration::generalOptions(config), options);
    VelConfiguration::writePreferences(VelConfiguration::preferences(config), m_settings, m_look,
                                       VelLook::defaults(palette()));
    m_view->writeConfig(config);
    VelConfiguration::save(*config);
}

/** All windows offer the same files. */
void VelMainWindow::addRecentFile(const QUrl &url)
{
    KConfigGroup group = applicationConfig()->group(QStringLiteral("Recent Files"));
    m_actions->openRecent->loadEntries(group);
    m_actions->openRecent->addUrl(url);
    m_actions->openRecent->saveEntries(group);
    VelConfiguration::save(*applicationConfig());
    const QList<KMainWindow *> windows = memberList();
    for (KMainWindow *each : windows) {
        auto *window = qobject_cast<VelMainWindow *>(each);
        if (window && window != this)
            window->m_actions->openRecent->loadEntries(group);
    }
}

/** Whichever view tells it: what counts is the one that the commands act on. */
void VelMainWindow::setCutCopy(const VelEntry *, bool)
{
    const VelEntry *selected = m_view ? m_view->getCommandView()->getSelectedEntry() : nullptr;
    const bool hasEntry = selected != nullptr;
    const bool mayRemove = hasEntry && mayEdit() && m_doc->isOwner(selected);
    m_actions->cut->setEnabled(mayRemove);
    m_actions->del->setEnabled(mayRemove);
    m_actions->copy->setEnabled(hasEntry);
    m_actions->viewEntry->setEnabled(hasEntry);
    m_actions->editEntry->setEnabled(mayRemove);
}

void VelMainWindow::setEditLock(bool locked)
{
    m_lockHolders = std::max(0, m_lockHolders + (locked ? 1 : -1));
    updateEditActions();
    // What the editor held is in the calendar now.
    if (m_lockHolders == 0 && m_isDenied)
        QTimer::singleShot(0, this, &VelMainWindow::closeDenied);
}

bool VelMainWindow::isEditLocked() const
{
    return m_lockHolders > 0 || m_closing.isWaiting() || m_isUnfilled || m_network->isLocking()
        || !m_doc->isWritable();
}

bool VelMainWindow::mayEdit() const
{
    return !isEditLocked();
}

void VelMainWindow::updateEditActions()
{
    setCutCopy(nullptr, false);
    m_actions->purge->setEnabled(mayEdit());
    m_actions->import->setEnabled(mayEdit());
    m_actions->newEntry->setEnabled(mayEdit());
    m_actions->newTodo->setEnabled(mayEdit());
    // A calendar that may only be read is locked for good, but what others do in it is still to be seen.
    m_actions->synchronize->setEnabled(m_lockHolders == 0 && !m_closing.isWaiting()
                                       && !m_network->isLocking());
    m_actions->stopSynchronizing->setEnabled(m_network->isStoppable());
    for (QAction *action :
         {m_actions->openNew, m_actions->open, static_cast<QAction *>(m_actions->openRecent)})
        action->setEnabled(!m_closing.isWaiting());
    m_undo->updateActions();
    slotClipboardChanged();
    m_network->release();
}

void VelMainWindow::slotClipboardChanged()
{
    m_actions->paste->setEnabled(m_view->getCurrentView()->mayPaste());
}

void VelMainWindow::slotStatusMsg(const QString &text)
{
    statusBar()->clearMessage();
    m_statusText->setText(text);
    // Most texts stand there just while something runs that leaves no time to paint.
    m_statusText->repaint();
}

QString VelMainWindow::captionText() const
{
    const QString person = isRemote() ? getAccountName(m_doc->getUserId()) : QString();
    return person.isEmpty() ? m_doc->URL().fileName()
                            : i18nc("title of a window: whose calendar it shows", "Calendar of %1",
                                    WShownText::cut(person, MostName));
}

QUrl VelMainWindow::proposeFile() const
{
    if (!m_doc->isUntitled())
        return m_doc->URL();
    const QString person = isRemote() ? getAccountName(m_doc->getUserId()) : QString();
    return VelUrl::inDocuments(person.isEmpty() ? i18nc("name of a new calendar's file", "Calendar")
                                                : person);
}

void VelMainWindow::updateCaption()
{
    setCaption(captionText(), m_doc->isModified());
}

void VelMainWindow::openDocumentFile(const QUrl &url)
{
    const QUrl last =
        VelConfiguration::readOptions(VelConfiguration::generalOptions(applicationConfig())).docUrl;
    const QUrl wanted = url.isEmpty() ? last : url;
    if (!wanted.isEmpty() && !showElsewhere(wanted))
        m_fileCommands->openDocumentFile(wanted);
}

void VelMainWindow::setAutoSaveTimer()
{
    if (m_settings.autoSave)
        m_autoSaveTimer.start(m_settings.autoSaveInterval * MsecsPerMinute);
    else
        m_autoSaveTimer.stop();
}

void VelMainWindow::updateAll()
{
    m_view->updateColors();
    setAutoSaveTimer();
    m_network->setAutoSyncTimer();
    const QList<QWidget *> widgets = findChildren<QWidget *>();
    for (QWidget *widget : widgets)
        widget->update();
}

void VelMainWindow::takePreferences(const VelSettings &settings, const VelLook &look)
{
    const bool isOtherWeek = settings.getWorkdays() != m_settings.getWorkdays();
    const bool isOtherAccount = settings.server != m_settings.server || settings.user != m_settings.user;
    m_settings = settings;
    m_look = look;
    updateAll();
    followAccount();
    if (isOtherAccount) {
        m_network->resume();
        netTask(VelNetTask::UserList, {}, true);
    }
    if (!m_settings.isUntried)
        m_network->accountTried();
    if (isOtherWeek)
        m_view->setMainView(m_view->viewType(), m_view->viewSize());
}

void VelMainWindow::showOrDock()
{
    const bool docked =
        VelConfiguration::readOptions(VelConfiguration::generalOptions(applicationConfig())).docked;
    if (docked && VelTray::isAvailable())
        dock();
    else
        show();
}

void VelMainWindow::dock()
{
    if (!VelTray::isAvailable())
        return;
    m_tray->show();
    hide();
}

void VelMainWindow::changeEvent(QEvent *event)
{
    VelApp::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange && isMinimized() && m_settings.dock)
        QTimer::singleShot(0, this, &VelMainWindow::dock);
}

void VelMainWindow::showEvent(QShowEvent *event)
{
    VelApp::showEvent(event);
    // Later: the icon itself may be what brought the window back.
    if (m_tray && m_tray->isShown())
        QTimer::singleShot(0, this, [this] {
            if (isVisible())
                m_tray->hide();
        });
}
