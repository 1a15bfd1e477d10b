// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "app/velmainwindow.h"
#include "benchmarksupport.h"
#include "dialogs/velentrydialog.h"
#include "dialogs/velpersonsource.h"
#include "formats/velxmlreader.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QStandardPaths>
#include <QTabWidget>
#include <QTreeView>

namespace
{
constexpr int AccountCount = 10000;

/** As many as a large house has, whose names share syllables as names do. */
VelAccountList manyAccounts()
{
    const char *const first[] = {"Anna",       "J\u00f6rg", "Mar\u00eda", "Li",
                                 "Bj\u00f6rn", "Olga",      "Pekka",      "Zo\u00eb"};
    const char *const last[] = {"Andersson", "M\u00fcller", "Virtanen", "Novak",
                                "O'Neill",   "Garc\u00eda", "Ito"};
    VelAccountList accounts;
    for (int i = 0; i < AccountCount; ++i) {
        // Primes, so that the order of the list is not that of the names.
        const QString name =
            QStringLiteral("%1 %2 %3")
                .arg(QString::fromUtf8(first[i * 7919 % 8]), QString::fromUtf8(last[i * 104729 % 7]))
                .arg(i * 7907 % AccountCount);
        const QString email = QStringLiteral("person%1@example.org").arg(i);
        accounts.append(VelAccount(name, email, static_cast<quint32>(i + 1)));
        accounts.last().type = i % 20 == 0 ? VelAccount::Resource : VelAccount::Person;
    }
    return accounts;
}

/** A window whose server knows that many. */
struct World {
    World()
    {
        QStandardPaths::setTestModeEnabled(true);
        VelSurroundings surroundings;
        surroundings.messages = std::make_unique<VelBenchmark::Silent>();
        surroundings.alerts = std::make_unique<VelAlertSurface>();
        window = new VelMainWindow(std::move(surroundings));
        window->resize(1280, 800);
        window->show();
        VelXmlContent content;
        content.accounts = manyAccounts();
        window->document()->readXml(content);
        const VelDateTime start(QDate(2026, 11, 21), QTime(10, 0));
        entry = window->document()->newEntry(VelEntry::Event, start, start.addSecs(3600));
    }
    [[nodiscard]] std::unique_ptr<VelEntryDialog> makeDialog() const
    {
        return std::make_unique<VelEntryDialog>(*window, *book, *entry, true, VelEntryDialog::Written());
    }

    std::unique_ptr<VelAddressBook> book = VelAddressBook::create();
    VelMainWindow *window;
    std::unique_ptr<VelEntry> entry;
};

World &world()
{
    static auto *const made = new World;
    return *made;
}

void paint()
{
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
}

void openEditor(benchmark::State &state)
{
    world();
    paint();
    for (auto _ : state) {
        std::unique_ptr<VelEntryDialog> dialog = world().makeDialog();
        dialog->show();
        paint();
        if (dialog->visibleRegion().isEmpty()) {
            state.SkipWithError("nothing is to be seen");
            break;
        }
        state.PauseTiming();
        dialog.reset();
        state.ResumeTiming();
    }
}
BENCHMARK(openEditor)->Unit(benchmark::kMillisecond)->Iterations(40);

/** What it costs more to look at the page with the people. */
void openPeoplePage(benchmark::State &state)
{
    for (auto _ : state) {
        state.PauseTiming();
        std::unique_ptr<VelEntryDialog> dialog = world().makeDialog();
        dialog->show();
        paint();
        state.ResumeTiming();
        dialog->findChild<QTabWidget *>()->setCurrentIndex(1);
        paint();
        state.PauseTiming();
        dialog.reset();
        state.ResumeTiming();
    }
}
BENCHMARK(openPeoplePage)->Unit(benchmark::kMillisecond)->Iterations(40);

/** One key in the search line and the list that is painted for it; @p from is typed by then. */
void typeInSearch(benchmark::State &state, const QString &from, int key)
{
    const std::unique_ptr<VelEntryDialog> dialog = world().makeDialog();
    dialog->findChild<QTabWidget *>()->setCurrentIndex(1);
    dialog->show();
    auto *source = dialog->findChild<VelPersonSource *>();
    auto *line = source->findChild<QLineEdit *>();
    const auto *view = source->findChild<QTreeView *>();
    for (auto _ : state) {
        state.PauseTiming();
        line->setText(from);
        paint();
        const int before = view->model()->rowCount();
        state.ResumeTiming();
        QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, QString(QChar(key).toLower()));
        QCoreApplication::sendEvent(line, &press);
        paint();
        if (view->model()->rowCount() == before) {
            state.SkipWithError("nothing was searched for");
            break;
        }
    }
}

void typeFirstKey(benchmark::State &state)
{
    typeInSearch(state, {}, Qt::Key_I);
}
BENCHMARK(typeFirstKey)->Unit(benchmark::kMillisecond)->Iterations(100);

void typeLaterKey(benchmark::State &state)
{
    typeInSearch(state, QStringLiteral("an"), Qt::Key_D);
}
BENCHMARK(typeLaterKey)->Unit(benchmark::kMillisecond)->Iterations(100);
} // namespace
