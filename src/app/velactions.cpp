// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "app/velactions.h"

#include "app/velmainwindow.h"

#include <KActionCollection>
#include <KLocalizedString>
#include <KRecentFilesAction>
#include <KStandardAction>
#include <KToggleAction>

#include <QPainter>

namespace
{
/**
 * The same icon, pale where its action is disabled. The desktop's icons are dark and stay so by the frameworks' own
 * rule, which leaves the user to guess.
 */
QIcon withPaleDisabled(const QIcon &icon)
{
    constexpr qreal paleness = 0.35;
    QIcon result;
    for (const int size : {16, 22, 24, 32, 48, 64}) {
        const QPixmap pixmap = icon.pixmap(size);
        QPixmap pale(pixmap.size());
        pale.setDevicePixelRatio(pixmap.devicePixelRatio());
        pale.fill(Qt::transparent);
        QPainter painter(&pale);
        painter.setOpacity(paleness);
        painter.drawPixmap(0, 0, pixmap);
        painter.end();
        result.addPixmap(pixmap);
        result.addPixmap(pale, QIcon::Disabled);
    }
    return result;
}

QAction *withStatus(QAction *action, const QString &status)
{
    action->setStatusTip(status);
    action->setWhatsThis(status);
    return action;
}
} // namespace

VelActions::VelActions(VelMainWindow *window)
    : m_window(window)
    , m_collection(window->actionCollection())
{
    makeFileActions();
    makeEditActions();
    makeViewActions();
    makeEntryActions();
    makeSettingsActions();
    const QList<QAction *> actions = m_collection->actions();
    for (QAction *action : actions) {
        if (!action->icon().pixmap(16).isNull())
            action->setIcon(withPaleDisabled(action->icon()));
    }
}

QAction *VelActions::add(const char *name, const QString &text, const char *icon, const QString &status)
{
    QAction *action = m_collection->addAction(QLatin1String(name));
    action->setText(text);
    if (icon)
        action->setIcon(VelApp::getIcon(QLatin1String(icon)));
    return withStatus(action, status);
}

QAction *VelActions::addWithKey(const char *name, const QString &text, const char *icon, Qt::Key key,
                                const QString &status)
{
    QAction *action = add(name, text, icon, status);
    m_collection->setDefaultShortcut(action, key);
    return action;
}

template <typename Slot>
void VelActions::connect(QAction *action, Slot slot)
{
    QObject::connect(action, &QAction::triggered, m_window, slot);
}

void VelActions::makeFileActions()
{
    connect(add("file_new_window", i18n("New &Window"), "window_new", i18n("Opens a new calendar window")),
            &VelMainWindow::slotFileNewWindow);
    openNew = KStandardAction::openNew(m_window, &VelMainWindow::slotFileNew, m_collection);
    openNew->setText(i18n("New calendar"));
    withStatus(openNew, i18n("Creates a new calendar"));
    open = withStatus(KStandardAction::open(m_window, &VelMainWindow::slotFileOpen, m_collection),
                      i18n("Opens an existing calendar"));
    openRecent = KStandardAction::openRecent(m_window, &VelMainWindow::slotFileOpenRecent, m_collection);
    withStatus(openRecent, i18n("Opens a recently used calendar file"));
    connect(add("file_remote", i18n("Open Remote &Calendar..."), "remotecalendar",
                i18n("Opens a calendar from the server")),
            &VelMainWindow::slotFileRemote);
    save = KStandardAction::save(m_window, &VelMainWindow::slotFileSave, m_collection);
    withStatus(save, i18n("Saves the actual calendar"));
    withStatus(KStandardAction::saveAs(m_window, &VelMainWindow::slotFileSaveAs, m_collection),
               i18n("Saves the actual calendar as..."));
    import = add("file_import", i18n("&Import..."), "fileimport",
                 i18n("Import calendar entries from vCalendar or XML file"));
    connect(import, &VelMainWindow::slotFileImport);
    connect(add("file_export", i18n("&Export..."), "fileexport",
                i18n("Export calendar to vCalendar or XML file")),
            &VelMainWindow::slotFileExport);
    connect(
        add("file_archive", i18n("&Archive Old Entries..."), "archive", i18n("Archive old calendar entries")),
        &VelMainWindow::slotFileArchive);
    withStatus(KStandardAction::close(m_window, &VelMainWindow::slotFileClose, m_collection),
               i18n("Closes the actual calendar"));
    withStatus(KStandardAction::print(m_window, &VelMainWindow::slotFilePrint, m_collection),
               i18n("Prints out the current calendar view"));
    quit = withStatus(KStandardAction::quit(m_window, &VelMainWindow::slotFileQuit, m_collection),
                      i18n("Quits the application"));
}

void VelActions::makeEditActions()
{
    undo = withStatus(m_collection->addAction(KStandardAction::Undo), i18n("Takes back the last change"));
    redo = withStatus(m_collection->addAction(KStandardAction::Redo),
                      i18n("Makes the change again that was taken back last"));
    cut = withStatus(KStandardAction::cut(m_window, &VelMainWindow::slotEditCut, m_collection),
                     i18n("Cuts the selected entry and puts it to the clipboard"));
    copy = withStatus(KStandardAction::copy(m_window, &VelMainWindow::slotEditCopy, m_collection),
                      i18n("Copies the selected entry to the clipboard"));
    paste = withStatus(KStandardAction::paste(m_window, &VelMainWindow::slotEditPaste, m_collection),
                       i18n("Pastes the clipboard contents to actual position"));
}

void VelActions::makeViewActions()
{
    QAction *today = add("go_today", i18n("&Go to Today"), "gotoday", i18n("Go to todays date"));
    m_collection->setDefaultShortcut(today, Qt::Key_G);
    connect(today, &VelMainWindow::slotGoToday);

    showToolBar = new KToggleAction(i18n("Show &Toolbar"), m_collection);
    m_collection->addAction(QStringLiteral("options_show_toolbar"), showToolBar);
    withStatus(showToolBar, i18n("Enables/disables the toolbar"));
    connect(showToolBar, &VelMainWindow::slotViewToolBar);
    showStatusBar = KStandardAction::showStatusbar(m_window, &VelMainWindow::slotViewStatusBar, m_collection);
    withStatus(showStatusBar, i18n("Enables/disables the statusbar"));

    connect(addWithKey("view_1_day", i18n("View &1 Day"), "view1", Qt::Key_1, i18n("View 1 calendar day")),
            &VelMainWindow::slotView1Day);
    connect(addWithKey("view_5_day", i18n("View &5 Days"), "view5", Qt::Key_5, i18n("View 5 calendar days")),
            &VelMainWindow::slotView5Day);
    connect(addWithKey("view_7_day", i18n("View &7 Days"), "view7", Qt::Key_7, i18n("View 7 calendar days")),
            &VelMainWindow::slotView7Day);
    connect(
        addWithKey("view_month", i18n("View &Month"), "viewmonth", Qt::Key_M, i18n("View calendar month")),
        &VelMainWindow::slotViewMonth);
    connect(addWithKey("view_list", i18n("View &List"), "viewlist", Qt::Key_L,
                       i18n("View list of calendar entries")),
            &VelMainWindow::slotViewList);
}

void VelActions::makeEntryActions()
{
    newEntry =
        addWithKey("new_entry", i18n("&New Event"), "newappointment", Qt::Key_N, i18n("Create a new event"));
    connect(newEntry, &VelMainWindow::slotNewEntry);
    newTodo = addWithKey("new_todo", i18n("New &To-Do Task"), "newtodo", Qt::Key_T,
                         i18n("Create a new to-do task"));
    connect(newTodo, &VelMainWindow::slotNewTodo);
    editEntry =
        addWithKey("edit_entry", i18n("&Edit Event"), "edit", Qt::Key_E, i18n("Edit the selected event"));
    connect(editEntry, &VelMainWindow::slotEditEntry);
    viewEntry =
        addWithKey("view_entry", i18n("&View Event"), "info", Qt::Key_I, i18n("View the selected event"));
    connect(viewEntry, &VelMainWindow::slotViewEntry);
    del = addWithKey("edit_delete", i18n("&Delete Event"), "editdelete", Qt::Key_Delete,
                     i18n("Delete the selected event"));
    connect(del, &VelMainWindow::slotEditDelete);
    purge = add("purge_todo", i18n("&Purge To-Do Tasks"), "edittrash", i18n("Remove completed To-Do tasks"));
    connect(purge, &VelMainWindow::slotPurgeCompleted);
    synchronize = addWithKey("synchronize", i18n("&Synchronize"), "synchronize", Qt::Key_S,
                             i18n("Synchronize calendar with the server"));
    connect(synchronize, &VelMainWindow::slotSynchronize);
    stopSynchronizing = addWithKey("stop_synchronize", i18n("St&op Synchronizing"), "process-stop",
                                   Qt::Key_Escape, i18n("Gives up the synchronization that is under way"));
    stopSynchronizing->setEnabled(false);
    connect(stopSynchronizing, &VelMainWindow::slotStopSynchronizing);
    answerInvitations = add("answer_invitations", i18n("Waiting &Invitations..."), "info",
                            i18n("Shows the invitations that wait for your answer"));
    connect(answerInvitations, &VelMainWindow::slotAnswerInvitations);
    connect(add("changepass", i18n("&Change Password..."), "password", i18n("Change password on the server")),
            &VelMainWindow::slotChangePass);
}

void VelActions::makeSettingsActions()
{
    withStatus(KStandardAction::preferences(m_window, &VelMainWindow::slotPreferences, m_collection),
               i18n("Change settings in preferences"));
    withStatus(KStandardAction::keyBindings(m_window, &VelMainWindow::slotAccels, m_collection),
               i18n("Change configured shortcuts"));
    withStatus(KStandardAction::configureToolbars(m_window, &VelMainWindow::slotToolbar, m_collection),
               i18n("Change toolbar contents"));
}
