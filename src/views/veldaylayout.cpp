// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "views/veldaylayout.h"

namespace
{
constexpr int MinutesPerHour = 60;
constexpr int SecondsPerMinute = 60;
const QTime LastMinute(23, 59);

/** Begin and end on one day; the end may lie before the begin in a faulty entry. */
struct DayTimes {
    QTime start;
    QTime end;

    DayTimes(const VelEntryRef &entry, QDate date)
        : start(entry.getStart().date() < date ? QTime(0, 0) : entry.getStart().time())
        , end(entry.getEnd().date() > date ? LastMinute : entry.getEnd().time())
    {
    }

    [[nodiscard]] int minutes() const { return start.secsTo(end) / SecondsPerMinute; }
};

} // namespace

int VelDayLayout::pixelsPerInterval(int minutes, int pixelsPerHour)
{
    if (minutes == MinutesPerHour)
        return pixelsPerHour;
    return static_cast<int>(minutes * (pixelsPerHour / double(MinutesPerHour)));
}

std::vector<VelOl> VelDayLayout::calcOverlaps(const VelEntryList &entries)
{
    std::vector<VelDayColumns::Span> spans;
    spans.reserve(entries.size());
    for (const VelEntryRef &entry : entries)
        spans.emplace_back(entry.getStart(), entry.getEnd());
    return VelDayColumns::calcOverlaps(spans);
}

QRect VelDayLayout::calcGeometry(const QRect &rect, const VelOl *ol, int pixelsPerHour,
                                 const VelEntryRef &entry, QDate date)
{
    if (!ol)
        qWarning("ASSERT: \"%s\" in %s (%d)", "ol", "veldaylayout", 112);
    const VelOl record = ol ? *ol : VelOl();
    const DayTimes times(entry, date);
    const int top = rect.top() + pixelsPerInterval(times.start.hour() * MinutesPerHour, pixelsPerHour)
        + pixelsPerInterval(times.start.minute(), pixelsPerHour);
    const int width = rect.width() / (record.overlaps + 1);
    return {rect.left() + record.column * width, top, width,
            pixelsPerInterval(times.minutes(), pixelsPerHour)};
}

std::vector<QRect> VelDayLayout::setGeometry(const QRect &rect, int pixelsPerHour,
                                             const VelEntryList &entries, QDate date) const
{
    const std::vector<VelOl> records = calcOverlaps(entries);
    std::vector<QRect> rects;
    rects.reserve(entries.size());
    for (std::size_t i = 0; i < entries.size(); ++i)
        rects.push_back(calcGeometry(rect, &records[i], pixelsPerHour, entries[i], date));
    return rects;
}

std::vector<QRect> VelDayFindLayout::setGeometry(const QRect &rect, int pixelsPerHour,
                                                 const VelEntryList &entries, QDate date) const
{
    const int columns = m_source.getVisibleCount();
    std::vector<QRect> rects;
    rects.reserve(entries.size());
    for (const VelEntryRef &entry : entries) {
        const int column = columns > 0 ? m_source.getColumn(entry.getOriginal()->user) : -1;
        if (column < 0) {
            rects.emplace_back();
            continue;
        }
        const DayTimes times(entry, date);
        const int width = rect.width() / columns;
        const int top = pixelsPerInterval(MinutesPerHour, pixelsPerHour) * times.start.hour()
            + pixelsPerInterval(times.start.minute(), pixelsPerHour);
        rects.emplace_back(rect.left() + column * width, top, width,
                           pixelsPerInterval(times.minutes(), pixelsPerHour));
    }
    return rects;
}
