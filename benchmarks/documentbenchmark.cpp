// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "benchmarksupport.h"

#include <QFile>
#include <QTemporaryDir>

#include <random>

namespace
{
using VelBenchmark::calendarPath;
using VelBenchmark::loadedDocument;

void openCalendar(benchmark::State &state)
{
    for (auto _ : state) {
        VelBenchmark::Document document;
        if (!document.doc.openDocument(QUrl::fromLocalFile(calendarPath())))
            state.SkipWithError("cannot open the calendar");
        state.PauseTiming();
        state.counters["entries"] = static_cast<double>(document.doc.getEntryCount());
        document.doc.closeDocument();
        state.ResumeTiming();
    }
}
BENCHMARK(openCalendar)->Unit(benchmark::kMillisecond);

void saveCalendar(benchmark::State &state)
{
    const QTemporaryDir folder;
    const QUrl url = QUrl::fromLocalFile(folder.filePath(QStringLiteral("saved.xml")));
    VelDoc &doc = loadedDocument();
    for (auto _ : state) {
        if (!doc.saveDocument(url, true))
            state.SkipWithError("cannot save the calendar");
    }
}
BENCHMARK(saveCalendar)->Unit(benchmark::kMillisecond);

void queryMonth(benchmark::State &state)
{
    const VelDoc &doc = loadedDocument();
    std::size_t count = 0;
    for (auto _ : state)
        count = doc.getEntries(QDate(2026, 11, 1), 0, true, QDate(2026, 11, 30)).size();
    state.counters["found"] = static_cast<double>(count);
}
BENCHMARK(queryMonth)->Unit(benchmark::kMicrosecond);

void queryFortyTwoDays(benchmark::State &state)
{
    const VelDoc &doc = loadedDocument();
    std::size_t count = 0;
    for (auto _ : state) {
        count = 0;
        for (int day = 0; day < 42; ++day)
            count += doc.getEntries(QDate(2026, 10, 26).addDays(day), 0, true, QDate()).size();
    }
    state.counters["found"] = static_cast<double>(count);
}
BENCHMARK(queryFortyTwoDays)->Unit(benchmark::kMicrosecond);

void moveEntry(benchmark::State &state)
{
    VelDoc &doc = loadedDocument();
    std::mt19937 random(1); // NOLINT(cert-msc51-cpp): the same moves each time
    const auto last = static_cast<quint32>(doc.getEntryCount());
    for (auto _ : state) {
        const quint32 id = random() % last + 1;
        const int days = static_cast<int>(random() % 29) - 14;
        doc.changeEntry(id, [days](VelEntry &entry) {
            entry.setStart(entry.getStart().addDays(days));
            entry.setEnd(entry.getEnd().addDays(days));
        });
    }
}
BENCHMARK(moveEntry)->Unit(benchmark::kMicrosecond);

/** Sets a reminder anew, and finds the one that then rings next. */
void nextReminder(benchmark::State &state)
{
    VelDoc &doc = loadedDocument();
    std::mt19937 random(1); // NOLINT(cert-msc51-cpp): the same reminders each time
    const auto last = static_cast<quint32>(doc.getEntryCount());
    qint64 day = 0;
    for (auto _ : state) {
        doc.changeEntry(random() % last + 1, [&random](VelEntry &entry) {
            entry.reminder = random() % 1440 + 1;
            entry.reminderfired = false;
        });
        day += doc.nextReminder()->time.julianDay();
    }
    benchmark::DoNotOptimize(day);
}
BENCHMARK(nextReminder)->Unit(benchmark::kMicrosecond);

/** The whole of what a change of entries, or a minute, costs. */
void updateAlarm(benchmark::State &state)
{
    VelDoc &doc = loadedDocument();
    for (auto _ : state)
        doc.updateAlarm();
}
BENCHMARK(updateAlarm)->Unit(benchmark::kMicrosecond);
} // namespace
