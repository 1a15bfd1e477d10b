// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "views/velmonthview.h"

#include "document/velpaste.h"
#include "model/compat.h"
#include "views/veldrop.h"
#include "views/velentrytext.h"

#include <QDragEnterEvent>

void VelMonthView::moveEntry(const QPoint &point, VelEntry &entry) const
{
    const QDate date = getDate(point);
    if (date.isValid())
        VelPaste::moveTo(entry, VelDrop::startOn(entry, date, entry.getStart().time()));
}

void VelMonthView::dragEnterEvent(QDragEnterEvent *event)
{
    // Over the heading, too: the days below are next.
    event->setAccepted(mayDrop(event));
    if (!event->isAccepted())
        return;
    m_dragged = draggedEntry(event->mimeData());
    showPreview(velDropPosition(*event));
}

void VelMonthView::dragMoveEvent(QDragMoveEvent *event)
{
    showPreview(velDropPosition(*event));
    event->setAccepted(m_preview.date.isValid() && mayDrop(event));
}

void VelMonthView::showPreview(const QPoint &point)
{
    const QDate date = getDate(point);
    if (date == m_preview.date)
        return;
    m_preview = VelMonthPreview();
    m_preview.date = date;
    m_preview.cell = date.isValid() ? getRect(date) : QRect();
    if (m_dragged && date.isValid()) {
        VelEntry moved(*m_dragged);
        moveEntry(point, moved);
        m_preview.rect = freeLine(date);
        // The title first: the times stay as they are.
        const QString times = VelEntryText::times(VelEntryRef(&moved), date);
        m_preview.text = VelEntryText::title(moved);
        if (!times.isEmpty())
            m_preview.text += QLatin1String(", ") + times;
    }
    update();
}

void VelMonthView::endDrag()
{
    m_dragged.reset();
    if (m_preview.date.isValid())
        update();
    m_preview = VelMonthPreview();
}

void VelMonthView::dragLeaveEvent(QDragLeaveEvent *)
{
    endDrag();
}

void VelMonthView::dropEvent(QDropEvent *event)
{
    endDrag();
    const QDate date = getDate(velDropPosition(*event));
    if (date.isValid())
        dropEntry(event, [date](const VelEntry &entry) {
            return VelDrop::startOn(entry, date, entry.getStart().time());
        });
    else
        event->ignore();
}
