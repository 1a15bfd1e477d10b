// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogs/velbusytimes.h"
#include "dialogs/velfreetimesearch.h"

#include <benchmark/benchmark.h>

namespace
{
constexpr int AttendeeCount = 50;
constexpr int BusyCount = 10000;
constexpr int DaysPerWeek = 7;
const QDate Today(2026, 11, 23);

/** Fifty people with ten thousand meetings in the year to come, all fetched. */
class Crowd : public VelFreeTimeSearch::Source
{
public:
    Crowd()
    {
        VelAccountList accounts;
        for (int i = 1; i <= AttendeeCount; ++i)
            accounts.append(VelAccount(QStringLiteral("Somebody"), {}, static_cast<quint32>(i)));
        m_busy.setAccounts(accounts);
        auto entries = std::make_shared<std::vector<std::unique_ptr<VelEntry>>>();
        for (int i = 0; i < BusyCount; ++i)
            entries->push_back(makeEntry(i));
        for (int day = 0; day <= VelFreeTimeSearch::LastDay + DaysPerWeek; ++day) {
            if (!m_busy.requestEntries(Today.addDays(day)))
                (void)m_busy.takeEntries(day == 0 ? entries : nullptr, m_asked);
        }
    }
    [[nodiscard]] bool isWorkingDay(QDate day) const override { return day.dayOfWeek() <= Qt::Friday; }
    [[nodiscard]] bool isWaiting(QDate day) const override
    {
        return m_busy.isRetrieving() || !m_busy.isAnswered(day);
    }
    [[nodiscard]] VelEntryList getBusyEntries(QDate day) override { return m_busy.getEntries(day, 0); }
    void showDay(QDate) override { }

private:
    /** Half an hour each, so that all hours of all days are taken by somebody. */
    static std::unique_ptr<VelEntry> makeEntry(int number)
    {
        constexpr int slotsPerDay = 27;
        constexpr int secondsPerSlot = 1800;
        const VelDateTime start(Today.addDays(number / slotsPerDay), QTime(8, 0));
        const VelDateTime begin = start.addSecs(number % slotsPerDay * secondsPerSlot);
        auto entry = std::make_unique<VelEntry>(0, VelEntry::Event, begin, begin.addSecs(secondsPerSlot));
        entry->user = static_cast<quint32>(number % AttendeeCount + 1);
        entry->globalid = static_cast<quint32>(number + 1);
        return entry;
    }

    QString m_asked; // the last request
    VelBusyTimes m_busy{[this](const QString &body) { m_asked = body; }};
};

/** All hours are taken by somebody, so that every day up to the limit is looked at. */
void searchFreeTime(benchmark::State &state)
{
    Crowd crowd;
    VelFreeTimeSearch::Terms terms;
    terms.begin = QTime(8, 0);
    terms.end = QTime(17, 0);
    terms.from = Today;
    terms.isWorkDaysOnly = false;
    terms.length = 1;
    VelFreeTimeSearch search(crowd);
    for (auto _ : state) {
        const VelFreeTimeSearch::Outcome outcome = search.find(terms, Today);
        if (outcome.result != VelFreeTimeSearch::Result::Exhausted)
            state.SkipWithError("the search did not go to its end");
    }
}
BENCHMARK(searchFreeTime)->Unit(benchmark::kMillisecond);
} // namespace
