// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "model/velentrylist.h"
#include "views/veldaycolumns.h"
#include "views/veldaysource.h"

#include <QRect>

#include <vector>

/**
 * Places the entries of one day on its vertical axis of time, side by side where they overlap.
 *
 * Two rules look odd and are kept on purpose, as they decide where users find their entries: conversions to
 * pixels truncate in a fixed way, and an entry that overlaps any other never takes column 0.
 */
class VelDayLayout
{
public:
    static constexpr int HoursPerDay = 24;

    /**
     * 60 minutes are exactly @p pixelsPerHour, any other number is converted in double precision and truncated:
     * with 11 pixels to the hour the 300 minutes before 05:00 are 54 pixels, not 55.
     */
    [[nodiscard]] static int pixelsPerInterval(int minutes, int pixelsPerHour);

    /** Columns for the entries in their order; quick when that is the order of their starts. */
    [[nodiscard]] static std::vector<VelOl> calcOverlaps(const VelEntryList &entries);

    /**
     * The rectangle of an entry on @p date within @p rect, which spans the whole day. Without @p ol it warns and
     * takes the full width.
     */
    [[nodiscard]] static QRect calcGeometry(const QRect &rect, const VelOl *ol, int pixelsPerHour,
                                            const VelEntryRef &entry, QDate date);

    virtual ~VelDayLayout() = default;
    /** One rectangle for each entry, in their order; a null one is not shown. */
    [[nodiscard]] virtual std::vector<QRect> setGeometry(const QRect &rect, int pixelsPerHour,
                                                         const VelEntryList &entries, QDate date) const;
};

/** The layout of the meeting planner: each person's entries in the column of that person. */
class VelDayFindLayout : public VelDayLayout
{
public:
    /** Keeps a reference to @p source, which knows the columns. */
    explicit VelDayFindLayout(const VelDaySource &source)
        : m_source(source)
    {
    }

    [[nodiscard]] std::vector<QRect> setGeometry(const QRect &rect, int pixelsPerHour,
                                                 const VelEntryList &entries, QDate date) const override;

private:
    const VelDaySource &m_source;
};
