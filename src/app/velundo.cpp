// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "app/velundo.h"

#include "document/veldoc.h"
#include "document/velstep.h"
#include "hub/velapp.h"

#include <KLocalizedString>

#include <QAction>

namespace
{
class StepCommand : public QUndoCommand
{
public:
    StepCommand(VelDoc &doc, std::shared_ptr<VelStep> step)
        : QUndoCommand(step->text())
        , m_doc(doc)
        , m_step(std::move(step))
    {
    }

    void undo() override { settle(m_step->undo(m_doc)); }

    void redo() override
    {
        // The stack begins with it, but by then the user has done it.
        if (std::exchange(m_isDone, true))
            settle(m_step->redo(m_doc));
    }

    [[nodiscard]] const std::vector<quint32> &localids() const { return m_localids; }

private:
    void settle(std::vector<quint32> localids)
    {
        m_localids = std::move(localids);
        if (!m_localids.empty())
            m_doc.slotUpdateAllViews(nullptr);
    }

    VelDoc &m_doc;
    std::shared_ptr<VelStep> m_step;
    std::vector<quint32> m_localids; // of what the last undo or redo changed
    bool m_isDone = false;
};

const std::vector<quint32> &localidsOf(const QUndoCommand *command)
{
    return static_cast<const StepCommand *>(command)->localids();
}
} // namespace

VelUndo::VelUndo(VelApp &app, VelDoc &doc, QAction &undoAction, QAction &redoAction)
    : m_app(app)
    , m_doc(doc)
    , m_undoAction(undoAction)
    , m_redoAction(redoAction)
{
    m_stack.setUndoLimit(Limit);
    connect(&doc, &VelDoc::stepDone, this, &VelUndo::add);
    connect(&doc, &VelDoc::contentsReplaced, &m_stack, &QUndoStack::clear);
    connect(&m_stack, &QUndoStack::indexChanged, this, &VelUndo::updateActions);
    connect(&undoAction, &QAction::triggered, this, &VelUndo::undo);
    connect(&redoAction, &QAction::triggered, this, &VelUndo::redo);
    updateActions();
}

void VelUndo::add(const std::shared_ptr<VelStep> &step)
{
    m_stack.push(new StepCommand(m_doc, step));
}

void VelUndo::undo()
{
    if (!m_app.mayEdit() || !m_stack.canUndo())
        return;
    const QString text = m_stack.undoText();
    m_stack.undo();
    tell(localidsOf(m_stack.command(m_stack.index())), i18n("Undone: %1", text));
}

void VelUndo::redo()
{
    if (!m_app.mayEdit() || !m_stack.canRedo())
        return;
    const QString text = m_stack.redoText();
    m_stack.redo();
    tell(localidsOf(m_stack.command(m_stack.index() - 1)), i18n("Done again: %1", text));
}

/** What happened may be out of sight, and guests by e-mail know only what they are told. */
void VelUndo::tell(const std::vector<quint32> &localids, const QString &text)
{
    m_app.slotStatusMsg(localids.empty() ? i18n("%1. The entries are gone by now; nothing was changed.", text)
                                         : text);
    Q_EMIT changed();
    const VelEntry *only = localids.size() == 1 ? m_doc.getEntry(localids.front()) : nullptr;
    if (only && only->type == VelEntry::Event)
        m_app.informChanges(VelEntry(*only));
}

void VelUndo::updateActions()
{
    const bool mayEdit = m_app.mayEdit();
    m_undoAction.setEnabled(mayEdit && m_stack.canUndo());
    m_redoAction.setEnabled(mayEdit && m_stack.canRedo());
    m_undoAction.setText(m_stack.canUndo() ? i18n("&Undo: %1", m_stack.undoText()) : i18n("&Undo"));
    m_redoAction.setText(m_stack.canRedo() ? i18n("Re&do: %1", m_stack.redoText()) : i18n("Re&do"));
}
