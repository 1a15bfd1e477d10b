// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogs/velbusytimes.h"

#include "formats/velxmlvalues.h"
#include "model/velsettings.h"

#include <algorithm>
#include <iterator>

namespace
{
constexpr int DaysPerWeek = 7;
constexpr int MaximumIndexedDays = 14; // of one entry; a faulty one may claim thousands of years

QDate mondayOf(QDate date)
{
    return date.addDays(Qt::Monday - date.dayOfWeek());
}

/**
 * The number by which the week of @p date is known. Requests are for weeks from Monday; where weeks begin on Sunday, or
 * around New Year, the days of one have different numbers, and its Monday's stands for all.
 */
int weekOf(QDate date)
{
    return VelSettings::weekOfYear(mondayOf(date));
}

bool contains(const std::vector<int> &weeks, int week)
{
    return std::find(weeks.begin(), weeks.end(), week) != weeks.end();
}

bool touches(const VelEntry &entry, QDate date)
{
    return entry.getStart().date() <= date && date <= entry.getEnd().date();
}
} // namespace

void VelBusyTimes::setAccounts(const VelAccountList &accounts)
{
    m_accounts = accounts;
    m_cache.clear();
    m_byDay.clear();
    m_long.clear();
    m_answers.clear();
    m_requested.clear();
    for (Request &request : m_out)
        request.week = Dropped;
    m_isRetrieving = false;
}

bool VelBusyTimes::isKnownToServer() const
{
    return std::any_of(m_accounts.begin(), m_accounts.end(),
                       [](const VelAccount &account) { return account.id != 0; });
}

QString VelBusyTimes::requestBody(QDate date) const
{
    const QDate monday = mondayOf(date);
    QString body;
    for (const VelAccount &account : m_accounts) {
        if (account.id != 0)
            body += QStringLiteral("<id>%1</id>\n").arg(account.id);
    }
    body +=
        QStringLiteral("<start>%1</start>\n<end>%2</end>\n")
            .arg(VelXmlValues::toStringDate(monday), VelXmlValues::toStringDate(monday.addDays(DaysPerWeek)));
    return body;
}

bool VelBusyTimes::requestEntries(QDate date)
{
    if (!date.isValid())
        return true;
    const int week = weekOf(date);
    if (contains(m_requested, week)) {
        m_isRetrieving = false;
        return true;
    }
    if (!isKnownToServer())
        return true;
    m_requested.push_back(week);
    const QString body = requestBody(date);
    m_out.push_back({week, body});
    m_isRetrieving = true;
    m_ask(body);
    return false;
}

bool VelBusyTimes::isRequested(QDate date) const
{
    return contains(m_requested, weekOf(date));
}

bool VelBusyTimes::isAnswered(QDate date) const
{
    if (!isKnownToServer())
        return true;
    const int week = weekOf(date);
    return contains(m_requested, week)
        && std::none_of(m_out.begin(), m_out.end(),
                        [week](const Request &request) { return request.week == week; });
}

bool VelBusyTimes::isFetching() const
{
    return std::any_of(m_out.begin(), m_out.end(),
                       [](const Request &request) { return request.week != Dropped; });
}

/** The week of the oldest request of that body, which is out no longer. */
int VelBusyTimes::takeRequest(const QString &body)
{
    const auto found = std::find_if(m_out.begin(), m_out.end(),
                                    [&body](const Request &request) { return request.body == body; });
    if (found == m_out.end())
        return Dropped;
    const int week = found->week;
    m_out.erase(found);
    return week;
}

bool VelBusyTimes::takeEntries(const VelReceivedEntries &entries, const QString &body)
{
    if (takeRequest(body) == Dropped)
        return false;
    m_isRetrieving = false;
    if (!entries)
        return true;
    m_answers.push_back(entries);
    for (const std::unique_ptr<VelEntry> &entry : *entries) {
        addToIndex(*entry, m_cache.size());
        m_cache.emplace_back(entry.get());
    }
    return true;
}

bool VelBusyTimes::takeFailure(const QString &body)
{
    const int week = takeRequest(body);
    if (week == Dropped)
        return false;
    m_isRetrieving = false;
    m_requested.erase(std::remove(m_requested.begin(), m_requested.end(), week), m_requested.end());
    return true;
}

void VelBusyTimes::addToIndex(const VelEntry &entry, std::size_t place)
{
    const qint32 first = entry.getStart().julianDay();
    const qint32 last = entry.getEnd().julianDay();
    if (!entry.getStart().date().isValid() || last < first)
        return;
    if (last - first >= MaximumIndexedDays) {
        m_long.push_back(place);
        return;
    }
    for (qint32 day = first; day <= last; ++day)
        m_byDay[day].push_back(place);
}

/** Where the entries that touch @p date are in the cache, in its order. */
std::vector<std::size_t> VelBusyTimes::placesOn(QDate date) const
{
    std::vector<std::size_t> places;
    std::copy_if(m_long.begin(), m_long.end(), std::back_inserter(places),
                 [&](std::size_t place) { return touches(*m_cache[place].getOriginal(), date); });
    const auto found = m_byDay.find(static_cast<qint32>(date.toJulianDay()));
    if (found == m_byDay.end())
        return places;
    std::vector<std::size_t> merged;
    merged.reserve(places.size() + found->second.size());
    std::merge(places.begin(), places.end(), found->second.begin(), found->second.end(),
               std::back_inserter(merged));
    return merged;
}

VelEntryList VelBusyTimes::getEntries(QDate date, quint32 except)
{
    VelEntryList entries;
    const auto take = [&](const VelEntryRef &ref) {
        if (ref.getOriginal()->globalid != except)
            entries.push_back(ref);
    };
    if (!date.isValid()) {
        std::for_each(m_cache.begin(), m_cache.end(), take);
        return entries;
    }
    if (!isRequested(date)) {
        requestEntries(date);
        return entries;
    }
    for (const std::size_t place : placesOn(date))
        take(m_cache[place]);
    return entries;
}
