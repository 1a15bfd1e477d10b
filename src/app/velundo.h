// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QUndoStack>

#include <memory>

class QAction;
class VelApp;
class VelDoc;
class VelStep;

/** Undo and redo of what the user did to the calendar of one window. */
class VelUndo : public QObject
{
    Q_OBJECT
public:
    /** How many steps can be taken back; an import may be as large as the calendar. */
    static constexpr int Limit = 200;

    /** Serves the two actions. All of these must outlive this. */
    VelUndo(VelApp &app, VelDoc &doc, QAction &undoAction, QAction &redoAction);

    void undo();
    void redo();
    /** Enables the actions as the steps and the calendar's lock allow, and names the steps in their texts. */
    void updateActions();

Q_SIGNALS:
    /** A step was taken back or made again, and the views show it. */
    void changed();

private:
    void add(const std::shared_ptr<VelStep> &step);
    void tell(const std::vector<quint32> &localids, const QString &text);

    VelApp &m_app;
    VelDoc &m_doc;
    QAction &m_undoAction;
    QAction &m_redoAction;
    QUndoStack m_stack;
};
