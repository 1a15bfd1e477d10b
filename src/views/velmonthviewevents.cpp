// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "views/velmonthview.h"

#include "document/veldoc.h"
#include "hub/velapp.h"
#include "views/velentrytext.h"
#include "widgets/wpopupmenu.h"

#include <KLocalizedString>

#include <QApplication>
#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QKeySequence>
#include <QMouseEvent>
#include <QToolTip>
#include <QWheelEvent>

#include <algorithm>

int VelMonthView::entryAt(const QPoint &point) const
{
    const std::vector<VelMonthEntry> &all = entries();
    const auto found = std::find_if(all.begin(), all.end(), [&point](const VelMonthEntry &entry) {
        return entry.rect().contains(point);
    });
    return found == all.end() ? -1 : static_cast<int>(found - all.begin());
}

QDate VelMonthView::moreAt(const QPoint &point) const
{
    for (const VelMonthCell &cell : cells()) {
        if (cell.more.contains(point))
            return cell.date;
    }
    return {};
}

void VelMonthView::mousePressEvent(QMouseEvent *event)
{
    const bool isLeft = event->button() == Qt::LeftButton;
    if (!isLeft && event->button() != Qt::RightButton)
        return;
    m_pressedMore = isLeft ? moreAt(event->pos()) : QDate();
    const int line = entryAt(event->pos());
    m_mayDrag = isLeft && line >= 0;
    m_pressPos = event->pos();
    const QDate date = getDate(event->pos());
    if (m_pressedMore.isValid() || !date.isValid())
        return;
    if (line >= 0) {
        selectLine(line);
        if (!isLeft)
            getEntryPopup()->popup(mapToGlobal(event->pos()));
    } else if (!isLeft) {
        if (date == m_selectedDay)
            getPopup()->popup(mapToGlobal(event->pos()));
    } else if (date == m_selectedDay) {
        leaveCurrent();
    } else {
        selectDay(date);
    }
}

void VelMonthView::mouseMoveEvent(QMouseEvent *event)
{
    if (event->buttons() == Qt::NoButton)
        setCursor(moreAt(event->pos()).isValid() ? Qt::PointingHandCursor : Qt::ArrowCursor);
    if (!m_mayDrag || !event->buttons().testFlag(Qt::LeftButton)
        || (event->pos() - m_pressPos).manhattanLength() <= QApplication::startDragDistance())
        return;
    m_mayDrag = false;
    const VelEntry *entry = getSelectedEntry();
    if (!mayMove(entry))
        return;
    dragEntry(entry);
    endDrag();
}

void VelMonthView::mouseReleaseEvent(QMouseEvent *event)
{
    m_mayDrag = false;
    const QDate wanted = event->button() == Qt::LeftButton ? moreAt(event->pos()) : QDate();
    const bool isWanted = wanted.isValid() && wanted == m_pressedMore;
    m_pressedMore = QDate();
    if (isWanted)
        Q_EMIT dayWanted(wanted);
}

void VelMonthView::mouseDoubleClickEvent(QMouseEvent *event)
{
    const QDate date = getDate(event->pos());
    if (event->button() != Qt::LeftButton || !date.isValid() || moreAt(event->pos()).isValid())
        return;
    const int line = entryAt(event->pos());
    if (line >= 0)
        selectLine(line);
    else
        selectDay(date);
    editCurrent();
}

void VelMonthView::contextMenuEvent(QContextMenuEvent *event)
{
    if (event->reason() != QContextMenuEvent::Keyboard)
        return; // the press has opened it
    const int line = currentLine();
    if (line >= 0)
        getEntryPopup()->popup(mapToGlobal(entries()[static_cast<std::size_t>(line)].rect().center()));
    else if (hasSelection())
        getPopup()->popup(mapToGlobal(getRect(m_selectedDay).center()));
}

void VelMonthView::wheelEvent(QWheelEvent *event)
{
    const int angle = event->angleDelta().y();
    event->setAccepted(angle != 0);
    if (angle == 0 || isTyping())
        return; // sideways, or not meant for the month
    if ((angle > 0) != (m_wheelAngle > 0))
        m_wheelAngle = 0; // turned back: what was left of the other way does not count
    m_wheelAngle += angle;
    for (; m_wheelAngle >= QWheelEvent::DefaultDeltasPerStep;
         m_wheelAngle -= QWheelEvent::DefaultDeltasPerStep)
        Q_EMIT prevWanted();
    for (; m_wheelAngle <= -QWheelEvent::DefaultDeltasPerStep;
         m_wheelAngle += QWheelEvent::DefaultDeltasPerStep)
        Q_EMIT nextWanted();
}

bool VelMonthView::event(QEvent *event)
{
    if (event->type() != QEvent::ToolTip)
        return VelView::event(event);
    showToolTip(static_cast<QHelpEvent *>(event));
    return true;
}

void VelMonthView::showToolTip(const QHelpEvent *event)
{
    const QDate more = moreAt(event->pos());
    if (more.isValid()) {
        const int hidden = content().lines.hidden(more);
        const QString count = i18np("%1 more entry", "%1 more entries", hidden);
        const QString key = QKeySequence(QStringLiteral("Ctrl+Return")).toString(QKeySequence::NativeText);
        QToolTip::showText(event->globalPos(),
                           i18nc("so many entries; a key", "%1 (show the day: %2)", count, key), this);
        return;
    }
    const int line = entryAt(event->pos());
    if (line < 0) {
        QToolTip::hideText();
        return;
    }
    const VelMonthEntry &entry = entries()[static_cast<std::size_t>(line)];
    const VelEntry *original = entry.ref().getOriginal();
    const QString owner =
        document()->isOwner(original) ? QString() : VelApp::getApp(this)->getAccountName(original->user);
    QToolTip::showText(event->globalPos(), VelEntryText::toolTip(entry.ref(), entry.getDate(), owner), this,
                       entry.rect());
}
