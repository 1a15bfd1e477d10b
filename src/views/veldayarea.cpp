// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "views/veldayarea.h"

#include "hub/velapp.h"
#include "views/veldayview.h"
#include "views/velentrytext.h"
#include "widgets/wpopupmenu.h"
#include "widgets/wshowntext.h"

#include <KLocalizedString>

#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>

VelDayArea::VelDayArea(VelDayView *view)
    : m_view(view)
{
    velInstallAccessibility();
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMouseTracking(true);
}

void VelDayArea::updateStyle()
{
    m_style = VelDayStyle(VelApp::getApp(m_view)->look(), this);
    layOut();
}

void VelDayArea::resizeEvent(QResizeEvent *)
{
    layOut();
}

void VelDayArea::updateAllEntries(const VelEntry *entry)
{
    const quint32 id = entry->isOccurrence() ? entry->originalid : entry->localid;
    for (const VelDayEntry &each : m_entries) {
        if (each.entry().getOriginal()->localid == id)
            update(each.rect());
    }
}

int VelDayArea::entryAt(QPoint point) const
{
    const int selected = selectedIndex();
    if (selected >= 0 && entry(selected).rect().contains(point))
        return selected; // it is painted last
    for (int i = entryCount() - 1; i >= 0; --i) {
        if (entry(i).rect().contains(point))
            return i;
    }
    return -1;
}

int VelDayArea::indexOf(const VelEntryRef &wanted) const
{
    for (int i = 0; i < entryCount(); ++i) {
        if (entry(i).entry() == wanted)
            return i;
    }
    return -1;
}

int VelDayArea::selectedIndex() const
{
    if (!m_view->hasSelectedEntry())
        return -1;
    for (int i = 0; i < entryCount(); ++i) {
        if (m_view->isSelectedEntry(entry(i).entry()))
            return i;
    }
    return -1;
}

bool VelDayArea::selectPressed(int index, const QMouseEvent *event)
{
    m_view->setSelectedEntry(entry(index).entry().getEntry(), true);
    if (event->button() != Qt::RightButton)
        return false;
    m_view->getEntryPopup()->popup(mapToGlobal(event->pos()));
    return true;
}

void VelDayArea::paintEntries(QPainter &painter, const QRect &exposed, int visibleTop) const
{
    const int selected = selectedIndex();
    painter.setFont(m_style.font);
    for (int i = 0; i < entryCount(); ++i) {
        // What the next one covers whole need not be painted: thousands may be crowded into one place.
        const bool isCovered =
            i + 1 < entryCount() && i + 1 != selected && entry(i + 1).rect() == entry(i).rect();
        if (i != selected && !isCovered && entry(i).rect().intersects(exposed)) // an invalid one never does
            entry(i).paint(painter, m_style, false, visibleTop);
    }
    // On top, so that a crowded entry can be seen whole once it is chosen.
    if (selected >= 0 && entry(selected).rect().isValid())
        entry(selected).paint(painter, m_style, true, visibleTop);
}

bool VelDayArea::event(QEvent *event)
{
    if (event->type() != QEvent::ToolTip)
        return QWidget::event(event);
    const auto *help = static_cast<QHelpEvent *>(event);
    const int index = entryAt(help->pos());
    if (index < 0) {
        QToolTip::hideText();
        event->ignore();
        return true;
    }
    const VelEntryRef &shown = entry(index).entry();
    const VelEntry &original = *shown.getOriginal();
    // Of others only that they are busy is to be seen.
    const QString text = entry(index).isEditable()
        ? VelEntryText::toolTip(shown, m_date, VelApp::getApp(m_view)->getAccountName(original.user))
        : WShownText::plain(WShownText::cut(busyName(original)));
    QToolTip::showText(help->globalPos(), text, this, entry(index).rect());
    return true;
}

QString VelDayArea::busyName(const VelEntry &entry) const
{
    return VelApp::getApp(m_view)->getAccountName(entry.user);
}

QString VelDayArea::accessibleText() const
{
    return i18ncp("a day and how many entries it has", "%2, 1 entry", "%2, %1 entries", entryCount(),
                  VelEntryText::dayName(m_date));
}

VelAccessibleItem VelDayArea::accessibleItem(int index) const
{
    const VelDayEntry &item = entry(index);
    const QString name = item.isEditable()
        ? VelEntryText::describe(item.entry(), m_date)
        : i18nc("a person, then from when to when", "%1 is busy, %2", busyName(*item.entry().getOriginal()),
                VelEntryText::times(item.entry(), m_date));
    return {name, item.rect(), QAccessible::ListItem, m_view->isSelectedEntry(item.entry())};
}
