// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "benchmarksupport.h"
#include "widgets/wtable.h"

namespace
{
/** What the big list does for a range that holds everything: six cells a row, then sorted by title. */
void fillAndSortList(benchmark::State &state)
{
    const VelEntryList entries = VelBenchmark::loadedDocument().getEntries(QDate(), 0, false, QDate());
    WTable table;
    const QStringList headers{QStringLiteral("Start"), QStringLiteral("Start"), QStringLiteral("End"),
                              QStringLiteral("End"),   QStringLiteral("Title"), QStringLiteral("Reminder")};
    table.setColumns(headers, {true, false, true, false, true, true});
    table.setSorting(true);
    table.sortBy(4);
    for (auto _ : state) {
        table.beginFill(static_cast<int>(entries.size()));
        for (const VelEntryRef &ref : entries) {
            std::vector<WTableItem> cells;
            cells.reserve(6);
            cells.emplace_back(WDateTimeTableItem(ref.getStart().toQDateTime()));
            cells.emplace_back(WDateTableItem(ref.getStart().date()));
            cells.emplace_back(WDateTimeTableItem(ref.getEnd().toQDateTime()));
            cells.emplace_back(WDateTableItem(ref.getEnd().date()));
            cells.emplace_back(WKeyTableItem(ref.getOriginal()->getTitle()));
            cells.emplace_back(QString());
            table.addRow(std::move(cells));
        }
        table.endFill();
    }
    state.counters["rows"] = table.rowCount();
}
BENCHMARK(fillAndSortList)->Unit(benchmark::kMillisecond);
} // namespace
