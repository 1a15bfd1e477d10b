// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "document/veldoc.h"
#include "hub/velapp.h"
#include "model/velsettings.h"
#include "views/veldayprintout.h"
#include "views/veldayview.h"
#include "views/veldocsource.h"

void VelDayView::clearSelection()
{
    if (m_selection.isEmpty())
        return;
    m_selection.clear();
    updateAll();
    VelApp::getApp(this)->slotClipboardChanged();
}

bool VelDayView::toggleSelection(const VelDateTime &start, const VelDateTime &end, bool keepEnd)
{
    clearSelectedEntry(true);
    const bool result = m_selection.toggle(start, end, keepEnd, VelApp::getSettings(this)->interval);
    updateAll();
    VelApp::getApp(this)->slotClipboardChanged();
    emitSelectionSignal();
    return result;
}

void VelDayView::setSelection(const VelDateTime &start, const VelDateTime &end, bool toggle, bool silent)
{
    clearSelectedEntry(true);
    if (toggle || m_selection.start() != start || m_selection.end() != end) {
        const bool wasSelected = m_selection.contains(start);
        m_selection.clear();
        if (!toggle || !wasSelected)
            m_selection.add(start, end);
        updateAll();
        if (!silent)
            emitSelectionSignal();
    }
    VelApp::getApp(this)->slotClipboardChanged();
}

void VelDayView::emitSelectionSignal()
{
    Q_EMIT selectionChanged(m_selection.start().toQDateTime(), m_selection.end().toQDateTime());
}

bool VelDayView::mayPaste() const
{
    return hasSelection() && VelView::mayPaste();
}

std::unique_ptr<VelPrintout> VelDayView::makePrintout() const
{
    return std::make_unique<VelDayPrintout>(std::make_unique<VelDocSource>(*document()),
                                            *VelApp::getSettings(this), startDate(), m_numDays);
}
