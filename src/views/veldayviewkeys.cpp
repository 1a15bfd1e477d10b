// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "document/veldoc.h"
#include "hub/velapp.h"
#include "model/velsettings.h"
#include "views/velcommonentry.h"
#include "views/veldayband.h"
#include "views/veldayview.h"
#include "views/veldrop.h"
#include "widgets/wpopupmenu.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QScrollArea>

#include <algorithm>

namespace
{
constexpr int SecondsPerMinute = 60;
} // namespace

/** Nothing can be entered where others' busy times are shown, and Escape belongs to the dialog. */
bool VelDayView::handlePlannerKey(QKeyEvent *event)
{
    if (m_dayMode != VelDay::Planner)
        return false;
    const int key = event->key();
    if (key == Qt::Key_Escape)
        event->ignore();
    return key == Qt::Key_Escape || key == Qt::Key_Return || key == Qt::Key_Enter;
}

void VelDayView::keyPressEvent(QKeyEvent *event)
{
    if (handlePlannerKey(event))
        return;
    switch (event->key()) {
    case Qt::Key_PageUp:
        Q_EMIT prevWanted();
        break;
    case Qt::Key_PageDown:
        Q_EMIT nextWanted();
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (hasSelectedEntry())
            editSelected();
        else if (hasSelection())
            offerNew();
        break;
    case Qt::Key_Escape:
        escape();
        break;
    default:
        if (!handleArrow(event->key(), event->modifiers()))
            VelView::keyPressEvent(event);
    }
}

void VelDayView::escape()
{
    for (VelDay *day : m_days) {
        if (day->isDragging()) {
            day->abandonDrag();
            return;
        }
    }
    clearSelectedEntry(true);
    clearSelection();
}

bool VelDayView::handleArrow(int key, Qt::KeyboardModifiers modifiers)
{
    const int forward = layoutDirection() == Qt::RightToLeft ? -1 : 1;
    int days = 0;
    int rows = 0;
    switch (key) {
    case Qt::Key_Left:
        days = -forward;
        break;
    case Qt::Key_Right:
        days = forward;
        break;
    case Qt::Key_Up:
        rows = -1;
        break;
    case Qt::Key_Down:
        rows = 1;
        break;
    default:
        return false;
    }
    if (!hasSelectedEntry())
        moveSlot(days, rows, modifiers.testFlag(Qt::ShiftModifier));
    else if (modifiers.testFlag(Qt::ControlModifier))
        moveSelectedEntry(days, rows);
    else if (rows != 0)
        walkEntries(rows, false);
    else
        walkToDay(days);
    return true;
}

/** Of a long entry the first day that is shown. */
QDate VelDayView::currentDay() const
{
    const QDate day = VelView::currentDay();
    return day.isValid() ? std::max(day, startDate()) : day;
}

/** The selected row goes on; from the edge of the range into the next range. */
void VelDayView::moveSlot(int days, int rows, bool extend)
{
    const VelSettings &settings = *VelApp::getSettings(this);
    const int interval = settings.interval * SecondsPerMinute;
    const QDate today = VelApp::getApp(this)->now().date();
    VelDateTime start = getSelectionStart();
    VelDateTime end = getSelectionEnd();
    if (!hasSelection()) {
        start = VelDateTime(dayOf(today) ? today : startDate(), settings.workdayBegin);
        end = start;
    } else if (extend && rows != 0) {
        end = end.withTime(m_days.front()->rows().stepped(end.time(), rows));
    } else {
        start = start.addDays(days).addSecs(qint64(rows) * interval);
        end = start;
    }
    if (!start.isValid() || end < start)
        return;
    const bool isSingle = end == start;
    if (start.date() < startDate() || !dayOf(start.date())) {
        const bool isBack = start.date() < startDate();
        if (isBack)
            Q_EMIT prevWanted();
        else
            Q_EMIT nextWanted();
        start = VelDateTime(isBack ? startDate().addDays(m_numDays - 1) : startDate(), start.time());
        end = start;
    }
    VelDay *day = dayOf(start.date());
    if (!day)
        return;
    if (isSingle)
        end = VelDateTime(start.date(), day->addInterval(start.time()));
    else if (end.date() != start.date())
        return; // a range stays within its day
    setSelection(start, end, false, false);
    const QRect row = day->rowRect(isSingle ? start.time() : end.time());
    m_scrollView->ensureVisible(day->x(), row.center().y(), 0, row.height() * 2);
}

void VelDayView::moveSelectedEntry(int days, int rows)
{
    const VelEntry *entry = getSelectedEntry();
    if (!mayMove(entry) || (rows != 0 && entry->notime))
        return;
    const qint64 seconds = qint64(rows) * VelApp::getSettings(this)->interval * SecondsPerMinute;
    const VelDateTime start = entry->getStart().addDays(days).addSecs(seconds);
    const quint32 id = entry->localid;
    const VelEntry *moved = VelDrop::move(*document(), id, start).entry;
    if (moved)
        announce(id);
    if (moved && !selectIfShown(id)) {
        // A to-do stands on the day that it is due.
        setDate(moved->type == VelEntry::Todo ? qMax(moved->getStart(), moved->getEnd()).date()
                                              : start.date());
        selectIfShown(id);
    }
}

bool VelDayView::selectIfShown(quint32 localid)
{
    const std::vector<Place> all = places();
    const auto found = std::find_if(all.begin(), all.end(), [localid](const Place &place) {
        return place.entry().getOriginal()->localid == localid && place.entry().getNumber() == 0;
    });
    if (found != all.end())
        selectShown(found->area, found->index);
    return found != all.end();
}

void VelDayView::selectShown(VelDayArea *area, int index)
{
    if (index < 0)
        return;
    setSelectedEntry(area->entry(index).entry().getEntry(), true);
    area->ensureShown(index);
    const QRect rect = area->entry(index).rect();
    if (qobject_cast<const VelDay *>(area))
        m_scrollView->ensureVisible(area->x(), rect.top(), 0,
                                    qMin(rect.height(), m_scrollView->height() / 2));
    velAccessibleFocus(area, index);
}

/** All entries that can be seen, day by day, each once: one of several days where it begins to be shown. */
std::vector<VelDayView::Place> VelDayView::places() const
{
    std::vector<Place> places;
    for (std::size_t i = 0; i < static_cast<std::size_t>(m_numDays); ++i) {
        for (VelDayArea *area :
             {static_cast<VelDayArea *>(m_bands[i]), static_cast<VelDayArea *>(m_days[i])}) {
            for (int k = 0; k < area->entryCount(); ++k) {
                if (i == 0 || area->entry(k).entry().getStart().date() == area->date())
                    places.push_back({area, k});
            }
        }
    }
    return places;
}

/** Selects the next (1) or previous (-1) entry in the order of days and times. False past the last one. */
bool VelDayView::walkEntries(int step, bool mayLeave)
{
    if (m_dayMode == VelDay::Planner)
        return false; // busy times of others are not the user's to act on
    const std::vector<Place> all = places();
    const int count = static_cast<int>(all.size());
    const auto find = [&all](const auto &test) {
        return static_cast<int>(std::find_if(all.begin(), all.end(), test) - all.begin());
    };
    int next = step > 0 ? 0 : count - 1;
    if (hasSelectedEntry())
        next = find([this](const Place &place) { return isSelectedEntry(place.entry()); }) + step;
    else if (hasSelection())
        next = find([this](const Place &place) { return place.entry().getStart() >= getSelectionStart(); })
            + qMin(0, step);
    if (next < 0 || next >= count) {
        if (mayLeave)
            clearSelectedEntry(true);
        return false;
    }
    selectShown(all[static_cast<std::size_t>(next)].area, all[static_cast<std::size_t>(next)].index);
    return true;
}

/** Selects the entry of a neighbouring day that begins nearest to the time of the selected one. */
void VelDayView::walkToDay(int step)
{
    const VelEntry *entry = getSelectedEntry();
    if (!entry)
        return;
    const QTime time = entry->getStart().time();
    const auto distance = [time](const Place &place) {
        return qAbs(time.secsTo(place.entry().getStart().time()));
    };
    const std::vector<Place> all = places();
    QDate date = qMax(entry->getStart().date(), startDate()).addDays(step);
    for (; dayOf(date); date = date.addDays(step)) {
        const Place *best = nullptr;
        for (const Place &place : all) {
            if (place.area->date() == date && (!best || distance(place) < distance(*best)))
                best = &place;
        }
        if (best) {
            selectShown(best->area, best->index);
            return;
        }
    }
}

bool VelDayView::focusNextPrevChild(bool next)
{
    // The toolkit asks, too, when the view that has the focus is hidden.
    return (isVisible() && hasFocus() && walkEntries(next ? 1 : -1, true))
        || VelView::focusNextPrevChild(next);
}

/** The menu of the first busy time that shares time with what is selected. */
void VelDayView::popupCommonEntry()
{
    const VelDay *day = dayOf(getSelectionStart().date());
    if (!day)
        return;
    for (const VelDayEntry &item : day->entries()) {
        const VelEntry &entry = *item.entry().getOriginal();
        if (VelEntry::overlap(getSelectionStart(), getSelectionEnd(), entry.getStart(), entry.getEnd())) {
            commonEntry().popup(entry, day->mapToGlobal(item.rect().center()));
            return;
        }
    }
}

void VelDayView::contextMenuEvent(QContextMenuEvent *event)
{
    // The mouse has been answered when it was pressed.
    if (event->reason() != QContextMenuEvent::Keyboard)
        return;
    if (m_dayMode == VelDay::Planner) {
        popupCommonEntry();
        return;
    }
    if (hasSelectedEntry()) {
        for (const Place &place : places()) {
            if (isSelectedEntry(place.entry())) {
                const QRect rect = place.area->entry(place.index).rect();
                getEntryPopup()->popup(place.area->mapToGlobal(rect.center()));
                return;
            }
        }
    } else if (const VelDay *day = dayOf(getSelectionStart().date())) {
        getPopup()->popup(day->mapToGlobal(day->rowRect(getSelectionStart().time()).center()));
    }
}
