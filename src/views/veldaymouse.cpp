// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "document/veldoc.h"
#include "document/velpaste.h"
#include "document/velstep.h"
#include "hub/velapp.h"
#include "model/compat.h"
#include "model/veltext.h"
#include "views/velcommonentry.h"
#include "views/velday.h"
#include "views/veldayview.h"
#include "views/veldrop.h"
#include "widgets/wpopupmenu.h"

#include <KLocalizedString>

#include <QApplication>
#include <QDragEnterEvent>
#include <QMouseEvent>
#include <QToolTip>

namespace
{
/** Shown for a dragged file, of which only the drop will tell how long its entries are. */
constexpr int UnknownLength = 3600; // seconds

VelDayDrag::Times timesOf(const VelEntry &entry)
{
    return {entry.getStart(), entry.getEnd()};
}
} // namespace

void VelDay::mousePressEvent(QMouseEvent *event)
{
    m_view->setFocus(Qt::MouseFocusReason);
    m_isSelecting = false;
    m_busyPress.reset();
    if (isDragging()) {
        abandonDrag(); // another button while the left one is held
        return;
    }
    const int index = entryAt(event->pos());
    if (index >= 0 && m_mode == Calendar)
        pressEntry(index, event);
    else if (index >= 0 && event->button() == Qt::RightButton)
        m_view->commonEntry().popup(*entry(index).entry().getOriginal(), mapToGlobal(event->pos()));
    else if (index >= 0 && event->button() == Qt::LeftButton)
        m_busyPress = event->pos(); // a double click, to look at it, shall leave the proposal alone
    else
        pressEmpty(event);
}

VelDayDrag::Mode VelDay::zoneAt(int index, QPoint pos) const
{
    const VelDayEntry &item = entry(index);
    const VelEntryRef &ref = item.entry();
    if (ref.getNumber() != 0 || !m_view->mayMoveEntry(ref.getOriginal()))
        return VelDayDrag::NoMode;
    VelDayDrag::Shape shape;
    shape.size = item.rect().size();
    shape.isFirstDay = ref.getStart().date() == m_date;
    shape.isLastDay = ref.getEnd().date() == m_date;
    shape.hasTimes = !ref.getOriginal()->notime;
    QPoint point = pos - item.rect().topLeft();
    if (isMirrored())
        point.setX(item.rect().width() - 1 - point.x());
    return VelDayDrag::hitZone(point, shape);
}

void VelDay::pressEntry(int index, QMouseEvent *event)
{
    const VelDayEntry item = entry(index);
    const VelDayDrag::Mode mode = zoneAt(index, event->pos());
    if (selectPressed(index, event) || event->button() != Qt::LeftButton || mode == VelDayDrag::NoMode)
        return;
    Press press;
    press.mode = mode;
    press.before = *item.entry().getOriginal();
    press.pos = event->pos();
    const bool isAtLeft = (mode == VelDayDrag::MoveStartDay) != isMirrored();
    press.edge = isAtLeft ? item.rect().left() : item.rect().right();
    press.offset = edgeOffset(mode, item);
    press.wasModified = VelApp::getDocument(m_view)->isModified();
    if (mode != VelDayDrag::Drag)
        press.step =
            std::make_shared<VelStepScope>(VelApp::getDocument(m_view), i18nc("what was done", "Move"));
    m_press = press;
    if (mode != VelDayDrag::Drag)
        VelApp::getApp(m_view)->setEditLock(true);
}

/** How far below its time the edge is drawn: short entries are drawn larger than they are. */
int VelDay::edgeOffset(VelDayDrag::Mode mode, const VelDayEntry &item) const
{
    if (mode == VelDayDrag::ResizeStart)
        return item.rect().top() - rows().top(item.entry().getStart().time());
    if (mode == VelDayDrag::ResizeEnd)
        return item.rect().bottom() + 1 - rows().top(item.entry().getEnd().time());
    return 0;
}

void VelDay::pressEmpty(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton) {
        startSelection(event->pos());
    } else if (event->button() == Qt::RightButton && m_mode == Calendar) {
        const QTime time = getTime(event->pos());
        const VelDateTime start(m_date, time);
        const VelDateTime end(m_date, addInterval(time));
        if (!m_view->selection().contains(start))
            m_view->setSelection(start, end, false, false);
        m_view->getPopup()->popup(mapToGlobal(event->pos()));
    }
}

void VelDay::startSelection(QPoint pos)
{
    const QTime time = getTime(pos);
    m_view->setSelection({m_date, time}, {m_date, addInterval(time)}, true, false);
    m_lastTime = time;
    m_isSelecting = true;
    m_selecting = false;
}

void VelDay::mouseMoveEvent(QMouseEvent *event)
{
    if (!(event->buttons() & Qt::LeftButton)) {
        // The release went elsewhere, to a box that came up perhaps.
        abandonDrag();
        m_isSelecting = false;
        m_busyPress.reset();
        showCursor(event->pos());
        return;
    }
    if (m_busyPress && (event->pos() - *m_busyPress).manhattanLength() > QApplication::startDragDistance()) {
        startSelection(*m_busyPress);
        m_busyPress.reset();
    }
    if (m_isSelecting) {
        dragSelection(event->pos());
        return;
    }
    if (!isDragging())
        return;
    if (m_press->mode != VelDayDrag::Drag) {
        dragEdge(event->pos());
    } else if ((event->pos() - m_press->pos).manhattanLength() > QApplication::startDragDistance()) {
        const VelEntry *entry = VelApp::getDocument(m_view)->getEntry(m_press->before.localid);
        m_press.reset();
        if (entry)
            m_view->dragStored(entry);
    }
}

void VelDay::showCursor(QPoint pos)
{
    const int index = m_mode == Calendar ? entryAt(pos) : -1;
    switch (index >= 0 ? zoneAt(index, pos) : VelDayDrag::NoMode) {
    case VelDayDrag::MoveStartDay:
    case VelDayDrag::MoveEndDay:
        setCursor(Qt::SizeHorCursor);
        break;
    case VelDayDrag::ResizeStart:
    case VelDayDrag::ResizeEnd:
        setCursor(Qt::SizeVerCursor);
        break;
    default:
        unsetCursor();
    }
}

void VelDay::dragSelection(QPoint pos)
{
    if (pos.y() < 0 || pos.y() >= height())
        return;
    const QTime time = getTime(pos);
    if (time == m_lastTime)
        return;
    m_selecting = m_view->toggleSelection({m_date, time}, {m_date, addInterval(time)}, m_selecting);
    m_view->ensureVisible(this, pos);
    m_lastTime = time;
}

void VelDay::dragEdge(QPoint pos)
{
    VelDoc *doc = VelApp::getDocument(m_view);
    const VelEntry *entry = doc->getEntry(m_press->before.localid);
    if (!entry) {
        endDrag();
        return;
    }
    const bool isResize = m_press->mode == VelDayDrag::ResizeStart || m_press->mode == VelDayDrag::ResizeEnd;
    const int x = isMirrored() ? m_press->edge - pos.x() : pos.x() - m_press->edge;
    const VelDayDrag::Times times = isResize
        ? VelDayDrag::resized(m_press->mode, timesOf(*entry), pos.y() - m_press->offset, rows())
        : VelDayDrag::movedDays(m_press->mode, timesOf(m_press->before), x, width(), !entry->notime,
                                rows().interval);
    m_view->ensureVisible(this, pos);
    showTimes(times, mapToGlobal(pos));
    if (times == timesOf(*entry))
        return;
    m_view->changeTimes(*entry, times);
    m_press->changed = true;
}

void VelDay::showTimes(const VelDayDrag::Times &times, QPoint globalPos)
{
    const bool notime = m_press->before.notime;
    const auto text = [notime](const VelDateTime &time) {
        return notime ? VelText::getDay(time.date()) : VelText::getDateTime(time);
    };
    QToolTip::showText(
        globalPos, i18nc("from one time to another", "%1 to %2", text(times.start), text(times.end)), this);
}

void VelDay::hideEvent(QHideEvent *)
{
    abandonDrag();
}

void VelDay::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    m_isSelecting = false;
    m_busyPress.reset();
    if (!isDragging())
        return;
    if (m_press->mode == VelDayDrag::Drag) {
        m_press.reset();
        return;
    }
    // Let go outside the window, it was not meant.
    const QPoint inWindow = mapTo(window(), event->pos());
    if (!window()->rect().contains(inWindow)) {
        abandonDrag();
        return;
    }
    const Press press = *m_press;
    endDrag();
    if (press.changed)
        m_view->announceChange(press.before.localid);
}

void VelDay::endDrag()
{
    m_press.reset();
    QToolTip::hideText();
    VelApp::getApp(m_view)->setEditLock(false);
}

void VelDay::abandonDrag()
{
    if (!isDragging())
        return;
    const Press press = *m_press;
    if (press.mode == VelDayDrag::Drag) {
        m_press.reset();
        return;
    }
    endDrag();
    if (!press.changed)
        return;
    VelDoc *doc = VelApp::getDocument(m_view);
    // Saved by itself meanwhile, the file holds what is given up.
    const bool isInFile = !doc->isModified();
    doc->changeEntry(press.before.localid, [&press](VelEntry &entry) { entry = press.before; });
    doc->slotUpdateAllViews(nullptr);
    doc->setModified(press.wasModified || isInFile);
}

void VelDay::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    const int index = entryAt(event->pos());
    if (m_mode == Planner) {
        if (index >= 0)
            m_view->commonEntry().view(*entry(index).entry().getOriginal());
        return;
    }
    if (index >= 0) {
        abandonDrag();
        m_view->setSelectedEntry(entry(index).entry().getEntry(), true);
        m_view->editSelected();
        return;
    }
    const QTime time = getTime(event->pos());
    if (!m_view->selection().contains({m_date, time}))
        m_view->setSelection({m_date, time}, {m_date, addInterval(time)}, false, false);
    m_view->offerNew();
}

void VelDay::moveEntry(QPoint pos, VelEntry *entry) const
{
    VelPaste::moveTo(*entry, VelDrop::startOn(*entry, m_date, getTime(pos)));
}

void VelDay::dragEnterEvent(QDragEnterEvent *event)
{
    event->setAccepted(m_view->mayDropHere(event));
    if (!event->isAccepted())
        return;
    m_dragEntry = m_view->previewOf(event->mimeData());
    if (!m_dragEntry) {
        const VelDateTime start(m_date, QTime(0, 0));
        m_dragEntry = std::make_unique<VelEntry>(0, VelEntry::Event, start, start.addSecs(UnknownLength));
    }
    m_dragTime = {};
}

void VelDay::dragMoveEvent(QDragMoveEvent *event)
{
    event->setAccepted(m_dragEntry && m_view->mayDropHere(event));
    if (!event->isAccepted())
        return;
    const QPoint pos = velDropPosition(*event);
    m_view->ensureVisible(this, pos);
    if (getTime(pos) == m_dragTime)
        return;
    m_dragTime = getTime(pos);
    moveEntry(pos, m_dragEntry.get());
    update();
}

void VelDay::dragLeaveEvent(QDragLeaveEvent *)
{
    m_dragEntry.reset();
    update();
}

void VelDay::dropEvent(QDropEvent *event)
{
    const bool hasPreview = m_dragEntry != nullptr;
    m_dragEntry.reset();
    update();
    if (!hasPreview) {
        event->ignore();
        return;
    }
    const QTime time = getTime(velDropPosition(*event));
    m_view->takeDrop(
        event, [date = m_date, time](const VelEntry &entry) { return VelDrop::startOn(entry, date, time); });
}
