// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "views/velaccessible.h"
#include "views/veldayentry.h"

#include <QDate>
#include <QWidget>

#include <vector>

class QMouseEvent;
class VelDayView;

/**
 * A place that paints entries of one day: finds them under the mouse, tells what they are, and lets them be
 * selected.
 */
class VelDayArea : public QWidget, public VelAccessible
{
    Q_OBJECT
public:
    /** Belongs to @p view, whichever widget is its parent. */
    explicit VelDayArea(VelDayView *view);

    [[nodiscard]] QDate date() const { return m_date; }
    /** What is shown, in the order in which it is painted. */
    [[nodiscard]] const std::vector<VelDayEntry> &entries() const { return m_entries; }
    [[nodiscard]] int entryCount() const { return static_cast<int>(m_entries.size()); }
    [[nodiscard]] const VelDayEntry &entry(int index) const
    {
        return m_entries[static_cast<std::size_t>(index)];
    }
    /** The entry on top at @p point, or -1. */
    [[nodiscard]] int entryAt(QPoint point) const;
    [[nodiscard]] int indexOf(const VelEntryRef &wanted) const;
    /** Where the selected entry is among them, or -1. */
    [[nodiscard]] int selectedIndex() const;
    /** Paints anew what shows @p entry, an occurrence of it or the entry that it is an occurrence of. */
    void updateAllEntries(const VelEntry *entry);
    /** Brings an entry that has no place at the moment to one. */
    virtual void ensureShown(int) { }
    /** Colours or fonts are others now. */
    void updateStyle();

    [[nodiscard]] QAccessible::Role accessibleRole() const override { return QAccessible::List; }
    [[nodiscard]] QString accessibleText() const override;
    [[nodiscard]] int accessibleCount() const override { return entryCount(); }
    [[nodiscard]] VelAccessibleItem accessibleItem(int index) const override;
    [[nodiscard]] int accessibleFocus() const override { return selectedIndex(); }

protected:
    bool event(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

    /** Gives each entry its place. */
    virtual void layOut() = 0;
    /** The name of whoever is busy with what is not editable. */
    [[nodiscard]] virtual QString busyName(const VelEntry &entry) const;
    /** Selects the entry that was pressed; true when its menu was opened with that. */
    bool selectPressed(int index, const QMouseEvent *event);
    void paintEntries(QPainter &painter, const QRect &exposed, int visibleTop) const;
    [[nodiscard]] bool isMirrored() const { return layoutDirection() == Qt::RightToLeft; }

    VelDayView *m_view;
    QDate m_date;
    std::vector<VelDayEntry> m_entries;
    VelDayStyle m_style;
};
