// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "views/veldayband.h"

#include "document/veldoc.h"
#include "hub/velapp.h"
#include "hub/vellook.h"
#include "views/veldayview.h"
#include "views/veldrop.h"
#include "views/velentrytext.h"

#include <KLocalizedString>

#include <QApplication>
#include <QDragEnterEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>

VelDayBand::VelDayBand(VelDayView *view)
    : VelDayArea(view)
{
    setAcceptDrops(true);
}

QString VelDayBand::accessibleText() const
{
    return i18nc("a day, of which the entries without times follow", "%1, all day",
                 VelEntryText::dayName(m_date));
}

void VelDayBand::updateData(QDate date, const VelEntryList &list, int maximumLines)
{
    m_date = date;
    m_maximumLines = maximumLines;
    m_list.clear();
    std::copy_if(list.begin(), list.end(), std::back_inserter(m_list),
                 [](const VelEntryRef &entry) { return entry.getOriginal()->notime; });
    layOut();
    velAccessibleChanged(this);
}

QRect VelDayBand::lineRect(int line) const
{
    return {1, line * lineHeight() + 1, width() - 2, lineHeight() - 1};
}

void VelDayBand::layOut()
{
    m_entries.clear();
    const int count = static_cast<int>(m_list.size());
    const int shown = count > m_maximumLines ? m_maximumLines - 1 : count;
    for (int i = 0; i < shown; ++i) {
        const VelEntryRef &ref = m_list[static_cast<std::size_t>(i)];
        m_entries.emplace_back(ref, lineRect(i), true,
                               VelApp::getDocument(m_view)->isTentative(*ref.getOriginal()));
    }
    update();
}

void VelDayBand::paintEvent(QPaintEvent *event)
{
    const VelLook &look = VelApp::getApp(m_view)->look();
    QPainter painter(this);
    painter.fillRect(rect(), m_isDropTarget ? look.selection : look.dayOffHour);
    painter.fillRect(0, 0, 1, height(), look.grid());
    painter.fillRect(width() - 1, 0, 1, height(), look.grid());
    paintEntries(painter, event->rect(), 0);
    if (hiddenCount() == 0)
        return;
    painter.setFont(m_style.font);
    painter.setPen(VelLook::textOn(look.dayOffHour));
    painter.drawText(lineRect(entryCount()).adjusted(4, 0, -4, 0), Qt::AlignRight | Qt::AlignVCenter,
                     i18nc("so many more entries", "+%1", hiddenCount()));
}

void VelDayBand::mousePressEvent(QMouseEvent *event)
{
    m_view->setFocus(Qt::MouseFocusReason);
    m_pressed = 0;
    const int index = entryAt(event->pos());
    if (index < 0) {
        m_view->clearSelectedEntry(true);
        return;
    }
    const VelEntryRef ref = entry(index).entry();
    if (selectPressed(index, event) || event->button() != Qt::LeftButton)
        return;
    if (ref.getNumber() == 0 && m_view->mayMoveEntry(ref.getOriginal())) {
        m_pressed = ref.getOriginal()->localid;
        m_pressPos = event->pos();
    }
}

void VelDayBand::mouseMoveEvent(QMouseEvent *event)
{
    if (!(event->buttons() & Qt::LeftButton) || m_pressed == 0
        || (event->pos() - m_pressPos).manhattanLength() <= QApplication::startDragDistance())
        return;
    const VelEntry *stored = VelApp::getDocument(m_view)->getEntry(m_pressed);
    m_pressed = 0;
    if (stored)
        m_view->dragStored(stored);
}

void VelDayBand::mouseReleaseEvent(QMouseEvent *event)
{
    m_pressed = 0;
    if (event->button() == Qt::LeftButton && hiddenCount() > 0
        && lineRect(entryCount()).contains(event->pos()))
        Q_EMIT m_view->dayWanted(m_date);
}

void VelDayBand::mouseDoubleClickEvent(QMouseEvent *event)
{
    m_pressed = 0;
    const int index = entryAt(event->pos());
    if (index < 0 || event->button() != Qt::LeftButton)
        return;
    m_view->setSelectedEntry(entry(index).entry().getEntry(), true);
    m_view->editSelected();
}

void VelDayBand::dragEnterEvent(QDragEnterEvent *event)
{
    m_isDropTarget = m_view->mayDropHere(event);
    event->setAccepted(m_isDropTarget);
    update();
}

void VelDayBand::dragLeaveEvent(QDragLeaveEvent *)
{
    m_isDropTarget = false;
    update();
}

/** Onto the day, at the time that the entry has. */
void VelDayBand::dropEvent(QDropEvent *event)
{
    m_isDropTarget = false;
    update();
    m_view->takeDrop(event, [date = m_date](const VelEntry &entry) {
        return VelDrop::startOn(entry, date, entry.getStart().time());
    });
}
