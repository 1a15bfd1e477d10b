// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "views/velday.h"

#include "document/veldoc.h"
#include "hub/velapp.h"
#include "model/velsettings.h"
#include "views/veldayview.h"

#include <QStyle>

VelDay::VelDay(VelDayView *view, Mode mode, const VelDaySource &source)
    : VelDayArea(view)
    , m_mode(mode)
    , m_source(source)
    , m_layout(mode == Planner ? std::make_unique<VelDayFindLayout>(source)
                               : std::make_unique<VelDayLayout>())
{
    setAcceptDrops(mode == Calendar);
    setMinimumWidth(VelDayEntry::MinimumSize);
}

VelDay::~VelDay() = default;

VelDayRows VelDay::rows() const
{
    return {height() / VelDayLayout::HoursPerDay, VelApp::getSettings(m_view)->interval};
}

QRect VelDay::rowRect(QTime time) const
{
    return {0, rows().top(time), width(), rows().rowHeight()};
}

void VelDay::updateData(QDate date)
{
    m_date = date;
    updateData();
}

void VelDay::updateData()
{
    m_list = m_source.getEntries(m_date);
    layOut();
    velAccessibleChanged(this);
}

void VelDay::release()
{
    abandonDrag();
    m_list.clear();
    m_entries.clear();
    m_dragEntry.reset();
    velAccessibleChanged(this);
}

void VelDay::layOut()
{
    // Entries without times stand above the hours.
    VelEntryList timed = m_list;
    if (m_mode == Calendar)
        std::erase_if(timed, [](const VelEntryRef &entry) { return entry.getOriginal()->notime; });
    const std::vector<QRect> rects = m_layout->setGeometry(rect(), rows().pixelsPerHour, timed, m_date);
    m_entries.clear();
    m_entries.reserve(timed.size());
    for (std::size_t i = 0; i < timed.size(); ++i) {
        if (m_mode == Planner && rects[i].isNull())
            continue;
        const VelEntry &entry = *timed[i].getOriginal();
        m_entries.emplace_back(timed[i], placed(rects[i]), m_mode == Calendar,
                               VelApp::getDocument(m_view)->isTentative(entry));
        if (m_mode == Planner)
            m_entries.back().setBackground(m_source.getColumn(entry.user) % 2 == 0 ? Qt::lightGray
                                                                                   : Qt::white);
    }
    update();
}

QString VelDay::busyName(const VelEntry &entry) const
{
    return m_source.getColumnName(m_source.getColumn(entry.user));
}

/** The rectangle that the mouse can hit: not below the least size, inside the column, mirrored where reading is. */
QRect VelDay::placed(QRect rect) const
{
    rect.setSize(rect.size().expandedTo({VelDayEntry::MinimumSize, VelDayEntry::MinimumSize}));
    rect.moveBottom(qMin(rect.bottom(), height() - 1));
    rect.moveRight(qMin(rect.right(), width() - 1));
    rect.moveLeft(qMax(rect.left(), 0));
    return QStyle::visualRect(layoutDirection(), this->rect(), rect);
}

int VelDay::visibleTop() const
{
    return visibleRegion().boundingRect().top();
}
