// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "app/velmainwindow.h"
#include "benchmarksupport.h"
#include "views/velday.h"
#include "views/veldayview.h"
#include "views/velmainview.h"
#include "views/velmonthview.h"

#include <QApplication>
#include <QMouseEvent>
#include <QStandardPaths>

#include <deque>

namespace
{
constexpr int SecondsPerHour = 3600;

/** The program's window with the large calendar, as a user would see it, on the day that the calendar is about. */
VelMainWindow &window()
{
    static VelMainWindow *const shown = [] {
        QStandardPaths::setTestModeEnabled(true);
        VelSurroundings surroundings;
        surroundings.messages = std::make_unique<VelBenchmark::Silent>();
        surroundings.now = [] { return VelDateTime(QDate(2026, 11, 21), QTime(10, 0)); };
        surroundings.alerts = std::make_unique<VelAlertSurface>();
        auto *made = new VelMainWindow(std::move(surroundings));
        made->resize(1280, 800);
        made->show();
        made->openDocumentFile(QUrl::fromLocalFile(VelBenchmark::calendarPath()));
        return made;
    }();
    return *shown;
}

void paint()
{
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
}

void switchToMonth(benchmark::State &state)
{
    VelMainView *view = window().mainView();
    for (auto _ : state) {
        state.PauseTiming();
        view->setMainView(VelMainView::DayView, VelMainView::WorkWeek);
        paint();
        state.ResumeTiming();
        view->setMainView(VelMainView::MonthView);
        paint();
    }
}
BENCHMARK(switchToMonth)->Unit(benchmark::kMillisecond)->Iterations(40);

void step(benchmark::State &state, int type, int size)
{
    VelMainView *view = window().mainView();
    view->setMainView(type, size);
    view->setDate({2026, 11, 21});
    paint();
    int direction = 1;
    for (auto _ : state) {
        view->move(direction);
        paint();
        direction = -direction;
    }
}

void stepMonth(benchmark::State &state)
{
    step(state, VelMainView::MonthView, VelMainView::WorkWeek);
}
BENCHMARK(stepMonth)->Unit(benchmark::kMillisecond)->Iterations(40);

void stepWorkWeek(benchmark::State &state)
{
    step(state, VelMainView::DayView, VelMainView::WorkWeek);
}
BENCHMARK(stepWorkWeek)->Unit(benchmark::kMillisecond)->Iterations(40);

void stepWeek(benchmark::State &state)
{
    step(state, VelMainView::DayView, 7);
}
BENCHMARK(stepWeek)->Unit(benchmark::kMillisecond)->Iterations(40);

/** Moves the end of an entry down and up by one row, as the mouse does, with all that follows from it. */
void dragOneStep(benchmark::State &state)
{
    VelMainView *view = window().mainView();
    view->setMainView(VelMainView::DayView, VelMainView::WorkWeek);
    view->setDate({2026, 11, 18});
    VelDoc &doc = *window().document();
    const VelDateTime start(QDate(2026, 11, 18), QTime(10, 0));
    const VelEntry *entry = doc.addEntry(doc.newEntry(VelEntry::Event, start, start.addSecs(2 * 3600)));
    view->dayView()->updateView();
    paint();
    VelDay *day = view->dayView()->dayOf(start.date());
    const QRect rect = day->entry(day->indexOf(VelEntryRef(entry))).rect();
    QPoint pos(rect.center().x(), rect.bottom());
    const auto send = [&](QEvent::Type type) {
        QMouseEvent event(type, pos, day->mapToGlobal(pos), Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(day, &event);
    };
    view->dayView()->setSelectedEntry(entry, true); // so that it lies on top
    send(QEvent::MouseButtonPress);
    int direction = 17;
    for (auto _ : state) {
        pos.ry() += direction;
        direction = -direction;
        send(QEvent::MouseMove);
        paint();
    }
    send(QEvent::MouseButtonRelease);
    if (!doc.getEntry(entry->localid)->dirty)
        state.SkipWithError("the entry did not move");
    doc.removeEntry(entry->localid);
}
BENCHMARK(dragOneStep)->Unit(benchmark::kMillisecond)->Iterations(40);

/** All at the same time: each overlaps all others. */
class Crowd : public VelDaySource
{
public:
    /** Each begins @p step seconds after the one before it and lasts @p length seconds. */
    Crowd(int size, int step, int length)
    {
        const VelDateTime start(QDate(2026, 11, 18), QTime(9, 0));
        for (int i = 0; i < size; ++i) {
            VelEntry &entry = m_entries.emplace_back(i + 1, VelEntry::Event, start.addSecs(qint64(i) * step),
                                                     start.addSecs(qint64(i) * step + length));
            entry.setTitle(QStringLiteral("Meeting about the budget"));
            m_list.emplace_back(&entry);
        }
    }
    [[nodiscard]] VelEntryList getEntries(QDate) const override { return m_list; }

private:
    std::deque<VelEntry> m_entries;
    VelEntryList m_list;
};

void layOutDay(benchmark::State &state, const Crowd &crowd)
{
    const VelDayLayout layout;
    for (auto _ : state) {
        benchmark::DoNotOptimize(
            layout.setGeometry(QRect(0, 0, 900, 816), 34, crowd.getEntries({}), {2026, 11, 18}));
    }
}

void layOutCrowdedDay(benchmark::State &state)
{
    layOutDay(state, Crowd(200, 60, 4 * SecondsPerHour));
}
BENCHMARK(layOutCrowdedDay)->Unit(benchmark::kMillisecond);

/** What a hostile calendar may hold: all in one hour. */
void layOutCrowdedHour(benchmark::State &state)
{
    layOutDay(state, Crowd(20000, 0, SecondsPerHour));
}
BENCHMARK(layOutCrowdedHour)->Unit(benchmark::kMillisecond);

void paintDay(benchmark::State &state, const Crowd &crowd)
{
    VelDayView view(&window(), VelDay::Calendar, crowd);
    view.resize(1000, 900);
    view.setRange({2026, 11, 18}, 1);
    view.show();
    paint();
    if (view.dayOf({2026, 11, 18})->visibleRegion().isEmpty())
        state.SkipWithError("nothing is to be seen");
    for (auto _ : state) {
        view.updateAll();
        paint();
    }
}

void paintCrowdedDay(benchmark::State &state)
{
    paintDay(state, Crowd(200, 60, 4 * SecondsPerHour));
}
BENCHMARK(paintCrowdedDay)->Unit(benchmark::kMillisecond)->Iterations(40);

void paintCrowdedHour(benchmark::State &state)
{
    paintDay(state, Crowd(20000, 0, SecondsPerHour));
}
BENCHMARK(paintCrowdedHour)->Unit(benchmark::kMillisecond)->Iterations(5);
} // namespace
