// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "ical/velicalendarreader.h"

#include "ical/velicalendar.h"
#include "ical/velicalendarextras.h"
#include "ical/velicalendarincidence.h"
#include "ical/velicalendarrule.h"
#include "model/compat.h"

#include <KCalendarCore/ICalFormat>
#include <KCalendarCore/MemoryCalendar>

#include <algorithm>

using namespace KCalendarCore;

namespace
{
constexpr std::size_t PieceSize = 1 << 20; // bytes looked through at once
constexpr std::size_t BatchSize = 64 << 10; // bytes for the parser at once
constexpr std::size_t BatchCount = 200; // components for the parser at once
constexpr int SplittingShare = 50; // of the thousandths; most time goes into parsing
constexpr int ParsingShare = 800;

/** Two incidences of the same id, kind and day are versions of one; without an id nothing is. */
QByteArray keyOf(const Incidence &incidence, const QByteArray &uid)
{
    if (uid.isEmpty())
        return {};
    const QByteArray day =
        incidence.hasRecurrenceId() ? QByteArray::number(incidence.recurrenceId().toSecsSinceEpoch()) : "-";
    return QByteArray::number(static_cast<int>(incidence.type())) + '/' + day + '/' + uid;
}

void completeTimes(VelEntry &entry)
{
    if (!entry.getStart().isValid())
        entry.setStart(entry.notime ? entry.getEnd().withTime(QTime(0, 0)) : entry.getEnd());
    if (!entry.getEnd().isValid() && entry.notime)
        entry.setEnd(entry.getStart().withTime(QTime(23, 59)));
    if (!entry.getEnd().isValid() || entry.getEnd() < entry.getStart())
        entry.setEnd(entry.getStart());
}

int share(std::size_t done, std::size_t all, int part)
{
    return all == 0 ? part : static_cast<int>(static_cast<std::size_t>(part) * done / all);
}
} // namespace

VelICalendarReader::VelICalendarReader(const QByteArray &bytes, const QTimeZone &zone)
    : m_bytes(bytes)
    , m_zone(zone)
    , m_splitter({m_bytes.constData(), static_cast<std::size_t>(m_bytes.size())})
    , m_filter(m_zones)
{
    m_content.isReadable = bytes.size() <= VelICalendar::MaximumSize && VelICalendar::isICalendar(bytes);
    if (!m_content.isReadable)
        m_phase = Phase::Done;
}

bool VelICalendarReader::readSome()
{
    if (m_phase == Phase::Splitting)
        split();
    else if (m_phase == Phase::Parsing)
        parse();
    else if (m_phase == Phase::Converting)
        convert();
    return m_phase != Phase::Done;
}

int VelICalendarReader::progress() const
{
    constexpr int all = 1000;
    switch (m_phase) {
    case Phase::Splitting:
        return share(m_splitter.position(), static_cast<std::size_t>(m_bytes.size()), SplittingShare);
    case Phase::Parsing:
        return SplittingShare + share(m_next, m_splitter.entries().size(), ParsingShare);
    case Phase::Converting:
        return SplittingShare + ParsingShare
            + share(m_next, m_found.size(), all - SplittingShare - ParsingShare);
    default:
        return all;
    }
}

VelForeignContent VelICalendarReader::takeContent()
{
    return std::move(m_content);
}

void VelICalendarReader::split()
{
    if (m_splitter.readSome(PieceSize))
        return;
    for (const std::string_view zone : m_splitter.zones())
        m_zones.add(zone);
    m_content.leftOut = m_splitter.leftOut();
    m_uids.reserve(m_splitter.entries().size());
    m_phase = Phase::Parsing;
}

void VelICalendarReader::parse()
{
    const std::vector<std::string_view> &components = m_splitter.entries();
    const std::size_t begin = m_next;
    QByteArray text;
    while (m_next < components.size() && m_next < begin + BatchCount
           && static_cast<std::size_t>(text.size()) < BatchSize) {
        text += m_filter.filtered(components[m_next], QByteArray::number(static_cast<qulonglong>(m_next)));
        m_uids.push_back(m_filter.uid());
        ++m_next;
    }
    parseBatch(text, begin, m_next);
    if (m_next < components.size())
        return;
    m_content.passedOver = m_filter.passedOver() + m_zones.passedOver();
    m_next = 0;
    m_phase = Phase::Converting;
}

/** The parser takes all of a text or nothing: where it takes nothing, one by one. */
void VelICalendarReader::parseBatch(const QByteArray &text, std::size_t begin, std::size_t end)
{
    Incidence::List incidences = parsed(text);
    if (incidences.isEmpty() && end - begin > 1) {
        VelICalendarFilter filter(m_zones);
        for (std::size_t i = begin; i < end; ++i)
            incidences += parsed(
                filter.filtered(m_splitter.entries()[i], QByteArray::number(static_cast<qulonglong>(i))));
    }
    std::sort(incidences.begin(), incidences.end(), [](const Incidence::Ptr &a, const Incidence::Ptr &b) {
        return a->uid().toULongLong() < b->uid().toULongLong();
    });
    for (const Incidence::Ptr &incidence : incidences)
        add(incidence);
    m_content.leftOut += static_cast<int>(end - begin) - static_cast<int>(incidences.size());
}

Incidence::List VelICalendarReader::parsed(const QByteArray &components) const
{
    const std::string_view product = m_splitter.product().substr(0, VelICalendarFilter::MaximumHead);
    const QByteArray text = "BEGIN:VCALENDAR\nVERSION:2.0\n"
        + QByteArray(product.data(), static_cast<VelSize>(product.size())).trimmed() + '\n' + components
        + "END:VCALENDAR\n";
    const MemoryCalendar::Ptr calendar(new MemoryCalendar(m_zone));
    ICalFormat format;
    return format.fromRawString(calendar, text) ? calendar->rawIncidences() : Incidence::List();
}

/** Of several versions the latest counts, else the one that came first. */
void VelICalendarReader::add(const Incidence::Ptr &incidence)
{
    const auto number = static_cast<std::size_t>(incidence->uid().toULongLong());
    const QByteArray uid = number < m_uids.size() ? m_uids[number] : QByteArray();
    const QByteArray key = keyOf(*incidence, uid);
    const auto known = m_places.constFind(key);
    if (!key.isEmpty() && known != m_places.constEnd()) {
        if (incidence->revision() > m_found[*known].incidence->revision())
            m_found[*known].incidence = incidence;
        return;
    }
    if (!key.isEmpty())
        m_places.insert(key, m_found.size());
    m_found.push_back({incidence, uid});
    if (incidence->hasRecurrenceId())
        m_replacedDays[uid].append(
            VelICalendarIncidence::toWallClock(incidence->recurrenceId(), m_zone).date());
}

void VelICalendarReader::convert()
{
    const std::size_t end = std::min(m_next + BatchCount, m_found.size());
    for (; m_next < end; ++m_next)
        convert(m_found[m_next]);
    if (m_next < m_found.size())
        return;
    std::stable_sort(m_content.entries.begin(), m_content.entries.end(),
                     [](const auto &a, const auto &b) { return a->getStart() < b->getStart(); });
    m_phase = Phase::Done;
}

void VelICalendarReader::convert(const Found &found)
{
    const Incidence &incidence = *found.incidence;
    if (incidence.status() == Incidence::StatusCanceled) {
        ++m_content.leftOut;
        return;
    }
    auto entry = std::make_unique<VelEntry>(VelICalendarIncidence::toEntry(incidence, m_zone));
    VelICalendarExtras::readFields(incidence, *entry);
    completeTimes(*entry);
    if (!entry->isValid()) {
        ++m_content.leftOut;
        return;
    }
    const std::optional<QVector<QDate>> days = setRule(found, *entry);
    if (!days)
        m_content.simplified.append(entry->getTitle());
    entry->dirty = 1;
    m_content.add(std::move(entry), days.value_or(QVector<QDate>()));
}

/** The days of the series that are to be entries of their own; none when the entry repeats otherwise than the incidence. */
std::optional<QVector<QDate>> VelICalendarReader::setRule(const Found &found, VelEntry &entry) const
{
    const Incidence &incidence = *found.incidence;
    if (incidence.hasRecurrenceId())
        return QVector<QDate>();
    const QDate written = incidence.dtStart().date();
    const auto shift = written.isValid() ? written.daysTo(entry.getStart().date()) : 0;
    const VelICalendarRule::Place place{
        entry.getStart(), static_cast<int>(shift),
        found.uid.isEmpty() ? QVector<QDate>() : m_replacedDays.value(found.uid), m_zone};
    const VelICalendarRule::Reading reading = VelICalendarRule::read(incidence, place);
    entry.rule = reading.rule;
    if (VelICalendarExtras::readRule(incidence, entry))
        return QVector<QDate>();
    return reading.isExact ? std::optional(reading.days) : std::nullopt;
}
