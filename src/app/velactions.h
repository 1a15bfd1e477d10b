// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QObject>

class KActionCollection;
class KRecentFilesAction;
class KToggleAction;
class QAction;
class VelMainWindow;

/**
 * The actions of a window: what they are called, look like and answer to. Those whose work is not part of the
 * program yet are there, and disabled.
 */
class VelActions
{
public:
    /** Makes all actions in the window's collection and connects them to it. */
    explicit VelActions(VelMainWindow *window);

    KRecentFilesAction *openRecent = nullptr;
    KToggleAction *showToolBar = nullptr;
    KToggleAction *showStatusBar = nullptr;
    QAction *openNew = nullptr;
    QAction *open = nullptr;
    QAction *save = nullptr;
    QAction *quit = nullptr;
    QAction *import = nullptr;
    QAction *viewEntry = nullptr;
    QAction *undo = nullptr;
    QAction *redo = nullptr;
    QAction *cut = nullptr;
    QAction *copy = nullptr;
    QAction *paste = nullptr;
    QAction *del = nullptr;
    QAction *purge = nullptr;
    QAction *synchronize = nullptr;
    QAction *stopSynchronizing = nullptr; ///< enabled only while one is under way that can be stopped
    QAction *answerInvitations = nullptr;
    QAction *newEntry = nullptr;
    QAction *newTodo = nullptr;
    QAction *editEntry = nullptr;

private:
    void makeFileActions();
    void makeEditActions();
    void makeViewActions();
    void makeEntryActions();
    void makeSettingsActions();
    QAction *add(const char *name, const QString &text, const char *icon, const QString &status);
    QAction *addWithKey(const char *name, const QString &text, const char *icon, Qt::Key key,
                        const QString &status);
    template <typename Slot>
    void connect(QAction *action, Slot slot);

    VelMainWindow *m_window;
    KActionCollection *m_collection;
};
