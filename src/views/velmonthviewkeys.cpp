// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "views/velmonthview.h"

#include "hub/velapp.h"
#include "views/velentrytext.h"

#include <KLocalizedString>

#include <QApplication>
#include <QKeyEvent>

#include <algorithm>

namespace
{
/** How many days an arrow key goes; 0 for another key. */
int daysFor(int key, bool isMirrored)
{
    switch (key) {
    case Qt::Key_Left:
        return isMirrored ? 1 : -1;
    case Qt::Key_Right:
        return isMirrored ? -1 : 1;
    case Qt::Key_Up:
        return -VelMonthLayout::DaysPerWeek;
    case Qt::Key_Down:
        return VelMonthLayout::DaysPerWeek;
    default:
        return 0;
    }
}

/** Where the arrow keys begin when nothing is selected. */
QDate firstDay(const VelMonthLayout &layout, QDate today)
{
    return layout.contains(today) ? today : QDate(layout.month().year(), layout.month().month(), 1);
}
} // namespace

int VelMonthView::currentLine() const
{
    const VelEntry *entry = getSelectedEntry();
    if (!entry)
        return -1;
    return entry->isOccurrence() ? content().lines.find(entry->originalid, entry->localid, m_lineDay)
                                 : content().lines.find(entry->localid, 0, m_lineDay);
}

bool VelMonthView::isTyping() const
{
    const QWidget *focused = QApplication::focusWidget();
    return focused && focused != this && isAncestorOf(focused);
}

void VelMonthView::selectDay(QDate date)
{
    clearSelectedEntry(true);
    clearSelection();
    m_selectedDay = date;
    update(getRect(date));
    VelApp::getApp(this)->slotClipboardChanged();
}

void VelMonthView::selectLine(int index)
{
    const VelMonthEntry &line = entries()[static_cast<std::size_t>(index)];
    m_lineDay = line.getDate();
    setSelectedEntry(line.getEntry(), true);
    VelApp::getApp(this)->slotClipboardChanged();
}

/** Selects a day by keyboard; outside the month only if the view is then taken there. */
void VelMonthView::goToDay(QDate date)
{
    if (!VelDateTime::isSupported(date))
        return;
    if (!m_layout.isInMonth(date))
        setDate(date);
    if (!m_layout.contains(date))
        return;
    selectDay(date);
    tellFocus();
}

void VelMonthView::goToLine(int index)
{
    selectLine(index);
    tellFocus();
}

void VelMonthView::tellFocus()
{
    const int part = accessibleFocus();
    if (part >= 0)
        velAccessibleFocus(this, part);
}

QDate VelMonthView::currentDay() const
{
    const int line = currentLine();
    return line >= 0 ? entries()[static_cast<std::size_t>(line)].getDate() : VelView::currentDay();
}

bool VelMonthView::showCurrentDay()
{
    const QDate day = currentDay();
    if (day.isValid())
        Q_EMIT dayWanted(day);
    return day.isValid();
}

bool VelMonthView::moveCurrent(int key)
{
    const int days = daysFor(key, layoutDirection() == Qt::RightToLeft);
    if (days == 0)
        return false;
    const int line = currentLine();
    if (line < 0) {
        goToDay(hasSelection() ? m_selectedDay.addDays(days)
                               : firstDay(m_layout, VelApp::getApp(this)->now().date()));
        return true;
    }
    if (key == Qt::Key_Left || key == Qt::Key_Right) {
        goToDay(entries()[static_cast<std::size_t>(line)].getDate().addDays(days));
        return true;
    }
    const int next = content().lines.neighbour(line, {}, days > 0);
    if (next >= 0)
        goToLine(next);
    return true;
}

bool VelMonthView::editCurrent()
{
    if (hasSelectedEntry()) {
        editSelected();
        return true;
    }
    if (hasSelection())
        offerNewEntry(freeLine(m_selectedDay));
    return hasSelection();
}

bool VelMonthView::leaveCurrent()
{
    const bool hadAny = hasSelectedEntry() || hasSelection();
    clearSelectedEntry(true);
    clearSelection();
    if (hadAny)
        VelApp::getApp(this)->slotClipboardChanged();
    return hadAny;
}

void VelMonthView::keyPressEvent(QKeyEvent *event)
{
    if (isTyping()) {
        event->ignore(); // a key that a title has no use for
        return;
    }
    bool isDone = true;
    switch (event->key()) {
    case Qt::Key_PageUp:
        Q_EMIT prevWanted();
        break;
    case Qt::Key_PageDown:
        Q_EMIT nextWanted();
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        isDone = event->modifiers().testFlag(Qt::ControlModifier) ? showCurrentDay() : editCurrent();
        break;
    case Qt::Key_Escape:
        isDone = leaveCurrent();
        break;
    default:
        isDone = moveCurrent(event->key());
    }
    event->setAccepted(isDone);
}

bool VelMonthView::focusNextPrevChild(bool next)
{
    // The line for a new event asks here, too, and the toolkit when the view is hidden: the focus goes its usual way.
    const int line =
        isVisible() && !isTyping() ? content().lines.neighbour(currentLine(), m_selectedDay, next) : -1;
    if (line < 0)
        return VelView::focusNextPrevChild(next);
    goToLine(line);
    return true;
}

QString VelMonthView::accessibleText() const
{
    return VelEntryText::monthName(month());
}

int VelMonthView::accessibleCount() const
{
    // Nothing is kept for a view that is hidden.
    if (!isVisible())
        return 0;
    const auto full = std::count_if(cells().begin(), cells().end(),
                                    [](const VelMonthCell &cell) { return cell.hidden > 0; });
    return static_cast<int>(cells().size() + entries().size()) + static_cast<int>(full);
}

const VelMonthCell &VelMonthView::fullCell(std::size_t number) const
{
    return *std::find_if(cells().begin(), cells().end(),
                         [&number](const VelMonthCell &cell) { return cell.hidden > 0 && number-- == 0; });
}

VelAccessibleItem VelMonthView::accessibleItem(int index) const
{
    const auto part = static_cast<std::size_t>(index);
    if (part < cells().size()) {
        const VelMonthCell &cell = cells()[part];
        const QString name = VelEntryText::dayName(cell.date) + QLatin1String(", ")
            + i18np("%1 entry", "%1 entries", cell.count);
        return {name, cell.rect, QAccessible::Cell, cell.date == m_selectedDay};
    }
    if (part >= cells().size() + entries().size()) {
        const VelMonthCell &cell = fullCell(part - cells().size() - entries().size());
        return {i18np("%1 more entry", "%1 more entries", cell.hidden), cell.more, QAccessible::Link, false};
    }
    const VelMonthEntry &line = entries()[part - cells().size()];
    return {VelEntryText::describe(line.ref(), line.getDate()), line.rect(), QAccessible::ListItem,
            currentLine() == static_cast<int>(part - cells().size())};
}

int VelMonthView::accessibleFocus() const
{
    if (!isVisible())
        return -1;
    const int line = currentLine();
    if (line >= 0)
        return m_layout.dayCount() + line;
    return hasSelection() ? static_cast<int>(startDate().daysTo(m_selectedDay)) : -1;
}
