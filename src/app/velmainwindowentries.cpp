// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "app/velactions.h"
#include "app/velmainwindow.h"
#include "dialogs/velentrydialog.h"
#include "document/veldoc.h"
#include "views/velmainview.h"
#include "views/velview.h"

#include <QPointer>

namespace
{
constexpr int SecondsPerHour = 3600;
}

/** The day of what is selected, or else the one that is looked at. */
QDate VelMainWindow::dayOfNew() const
{
    const QDate selected = m_view->getCurrentView()->currentDay();
    return selected.isValid() ? selected : m_view->getDate();
}

/** Onto the selected time, or else from the next full hour of that day. */
void VelMainWindow::slotNewEntry()
{
    if (!mayEdit())
        return;
    m_view->finishInput();
    const VelView *view = m_view->getCurrentView();
    VelDateTime start = view->getSelectionStart();
    VelDateTime end = view->getSelectionEnd();
    if (!view->hasSelection()) {
        start = VelDateTime(dayOfNew(), QTime(now().time().hour(), 0)).addSecs(SecondsPerHour);
        end = start.addSecs(SecondsPerHour);
    }
    const std::unique_ptr<VelEntry> entry = m_doc->newEntry(VelEntry::Event, start, end);
    entry->access = VelEntry::Public;
    entry->display = VelEntry::Busy;
    showEntryDialog(*entry, true);
}

void VelMainWindow::slotNewTodo()
{
    if (!mayEdit())
        return;
    m_view->finishInput();
    const VelDateTime day(dayOfNew(), QTime(0, 0));
    showEntryDialog(*m_doc->newEntry(VelEntry::Todo, day, day), true);
}

void VelMainWindow::slotEditEntry()
{
    m_view->getCommandView()->editSelected();
}

void VelMainWindow::showEntryDialog(const VelEntry &entry, bool isNew)
{
    if (!mayEdit() || !m_doc->isOwner(&entry)) {
        // What may not be changed can still be read.
        showEntryInfo(entry, VelAnswer::Plain);
        return;
    }
    if (!m_addressBook)
        m_addressBook = VelAddressBook::create();
    setEditLock(true);
    const QPointer<VelMainWindow> self(this);
    const QPointer<VelEntryDialog> dialog(new VelEntryDialog(
        *this, *m_addressBook, entry, isNew, [this](const VelEntry &written) { informChanges(written); }));
    if (m_edit)
        m_edit(*dialog);
    else
        dialog->exec();
    if (!self)
        return; // closed meanwhile, and the dialog with it
    delete dialog.data();
    setEditLock(false);
}
