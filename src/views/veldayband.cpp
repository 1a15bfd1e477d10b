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
    if (date != m_date)
        m_first = 0;
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
    for (const VelEntryRef &ref : m_list) {
        const bool isTentative = VelApp::getDocument(m_view)->isTentative(*ref.getOriginal());
        m_entries.emplace_back(ref, QRect(), true, isTentative);
    }
    m_first = qBound(0, m_first, hiddenCount());
    for (int line = 0; line < shownCount(); ++line)
        m_entries[static_cast<std::size_t>(m_first) + static_cast<std::size_t>(line)].setRect(lineRect(line));
    update();
}

void VelDayBand::scrollTo(int first)
{
    first = qBound(0, first, hiddenCount());
    if (first == m_first)
        return;
    m_first = first;
    layOut();
}

void VelDayBand::ensureShown(int index)
{
    if (index < m_first)
        scrollTo(index);
    else if (index >= m_first + shownCount())
        scrollTo(index - shownCount() + 1);
}

void VelDayBand::wheelEvent(QWheelEvent *event)
{
    constexpr int step = 120; // eighths of a degree that a wheel turns at a time
    if (hiddenCount() == 0) {
        event->ignore();
        return;
    }
    m_wheelAngle += event->angleDelta().y();
    scrollTo(m_first - m_wheelAngle / step);
    m_wheelAngle %= step;
    event->accept();
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
    painter.drawText(lineRect(shownCount()).adjusted(4, 0, -4, 0), Qt::AlignRight | Qt::AlignVCenter,
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
    if (event->button() != Qt::LeftButton || hiddenCount() == 0
        || !lineRect(shownCount()).contains(event->pos()))
        return;
    if (m_view->numDays() > 1)
        Q_EMIT m_view->dayWanted(m_date);
    else
        scrollTo(m_first == hiddenCount() ? 0 : m_first + shownCount());
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
