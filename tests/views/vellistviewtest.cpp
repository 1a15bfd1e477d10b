// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "views/vellistview.h"
#include "document/veldrag.h"
#include "support/fakeapp.h"
#include "support/testcalendar.h"
#include "views/vellistviewwidget.h"
#include "widgets/wtable.h"

#include <KConfig>

#include <QClipboard>
#include <QDragEnterEvent>
#include <QGuiApplication>
#include <QMenu>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTest>

using namespace TestCalendar;
using Answer = VelMessages::Answer;

namespace
{
/** A list in a window of its own, filled. */
class ListWindow
{
public:
    explicit ListWindow(VelListView::Kind kind)
        : view(new VelListView(&app, kind, today()))
        , config(QString(), KConfig::SimpleConfig)
    {
        view->readConfig(&config, QStringLiteral("Test"));
        app.doc.addView(view);
        view->resize(600, 400);
    }
    ~ListWindow() { app.doc.removeView(view); }
    Q_DISABLE_COPY_MOVE(ListWindow)

    [[nodiscard]] QStringList titles() const
    {
        QStringList titles;
        for (int row = 0; row < view->table()->rowCount(); ++row)
            titles.append(view->getEntry(row)->getTitle());
        return titles;
    }

    [[nodiscard]] int rowOf(const QString &title) const { return static_cast<int>(titles().indexOf(title)); }

    void select(const QString &title)
    {
        view->updateView();
        view->table()->selectRow(rowOf(title));
    }

    /** Ticks or clears the box in that row as the user's hand does. */
    void tick(int row)
    {
        QAbstractItemModel *model = view->table()->model();
        const QModelIndex index = model->index(row, VelListView::CompleteColumn);
        const bool checked = index.data(Qt::CheckStateRole).toInt() == Qt::Checked;
        model->setData(index, checked ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
    }

    FakeApp app{today()};
    VelListView *view;
    KConfig config;
};

/** A second view that counts how often it is told. */
class CountingView : public VelDocView
{
public:
    void updateView() override { ++count; }
    int count = 0;
};
} // namespace

class VelListViewTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void bigListShouldHoldWhatTheFilterCovers();
    void bigListShouldSkipDeletionNotices();
    void compactListShouldHoldTasksByDueDate();
    void movingTheDateShouldKeepTheFilterLength();
    void tickShouldCompleteTheTaskAndTellOthersOnly();
    void tickShouldBeRefusedWhereNothingMayChange_data();
    void tickShouldBeRefusedWhereNothingMayChange();
    void dateOnlyEntryShouldShowNoTime();
    void deleteShouldAskForASeries_data();
    void deleteShouldAskForASeries();
    void copyOfAnOccurrenceShouldCarryTheSeries();
    void cutAndPasteShouldRestoreASynchronisedEntry();
    void pasteShouldMakeACopyAndSelectIt();
    void lockShouldForbidEveryChange();
    void droppedEntryShouldBecomeANewOne();
    void menuDeleteShouldNeitherAskNorLeaveANotice();
};

void VelListViewTest::bigListShouldHoldWhatTheFilterCovers()
{
    ListWindow window(VelListView::Kind::Entries);
    VelDoc &doc = window.app.doc;
    addEvent(doc, QStringLiteral("before"), march(1, 9), march(1, 10));
    addEvent(doc, QStringLiteral("into"), march(1, 9), march(3, 10));
    VelEntry daily = makeEvent(QStringLiteral("daily"), march(1, 8), march(1, 9));
    daily.rule = dailyRule(1, 3);
    add(doc, daily);
    addTodo(doc, QStringLiteral("task"), QDate(2026, 3, 31));
    addEvent(doc, QStringLiteral("after"), march(2).addDays(31), march(2).addDays(31));
    window.view->updateView();
    // Sorted by start; the first instance of the series lies before the filter, its two occurrences do not.
    QCOMPARE(window.titles(),
             QStringList({QStringLiteral("into"), QStringLiteral("daily"), QStringLiteral("daily"),
                          QStringLiteral("task")}));
    QCOMPARE(window.view->getEntry(2)->getStart(), march(3, 8));
}

void VelListViewTest::bigListShouldSkipDeletionNotices()
{
    ListWindow window(VelListView::Kind::Entries);
    window.app.doc.deleteEntry(addSynced(window.app.doc, QStringLiteral("gone"), 77), false);
    window.view->updateView();
    QCOMPARE(window.app.doc.getEntryCount(), std::size_t(1));
    QCOMPARE(window.view->table()->rowCount(), 0);
}

void VelListViewTest::compactListShouldHoldTasksByDueDate()
{
    ListWindow window(VelListView::Kind::Tasks);
    VelDoc &doc = window.app.doc;
    addTodo(doc, QStringLiteral("later"), QDate(2027, 10, 1));
    addTodo(doc, QStringLiteral("sooner"), QDate(2027, 9, 5));
    addEvent(doc, QStringLiteral("event"), march(2, 9), march(2, 10));
    window.view->updateView();
    QCOMPARE(window.titles(), QStringList({QStringLiteral("sooner"), QStringLiteral("later")}));
}

void VelListViewTest::movingTheDateShouldKeepTheFilterLength()
{
    ListWindow window(VelListView::Kind::Entries);
    VelListViewWidget *bar = window.view->filterBar();
    bar->setFilter(QDate(2026, 3, 2));
    const qint64 length = bar->getStart().daysTo(bar->getEnd());
    window.view->setFilter(QDate(2026, 12, 24));
    QCOMPARE(bar->getStart(), QDate(2026, 12, 24));
    QCOMPARE(bar->getEnd(), QDate(2026, 12, 24).addDays(length));
}

void VelListViewTest::tickShouldCompleteTheTaskAndTellOthersOnly()
{
    ListWindow window(VelListView::Kind::Tasks);
    VelDoc &doc = window.app.doc;
    const quint32 id = addTodo(doc, QStringLiteral("task"), today())->localid;
    doc.changeEntry(id, [](VelEntry &entry) { entry.dirty = 0; });
    window.view->updateView();
    CountingView other;
    doc.addView(&other);
    window.tick(0);
    QVERIFY(doc.getEntry(id)->complete);
    QCOMPARE(doc.getEntry(id)->dirty, 1);
    QCOMPARE(other.count, 1);
    QVERIFY(doc.isModified());
    window.tick(0);
    QVERIFY(!doc.getEntry(id)->complete);
}

void VelListViewTest::tickShouldBeRefusedWhereNothingMayChange_data()
{
    QTest::addColumn<bool>("locked");
    QTest::newRow("edit lock") << true;
    QTest::newRow("read right") << false;
}

void VelListViewTest::tickShouldBeRefusedWhereNothingMayChange()
{
    QFETCH(bool, locked);
    ListWindow window(VelListView::Kind::Tasks);
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("read.xml"));
    addTodo(window.app.doc, QStringLiteral("task"), today());
    if (locked) {
        window.app.isLocked = true;
    } else {
        QVERIFY(window.app.doc.writeCopy(path));
        QVERIFY(writeBytes(path, fileBytes(path).replace("<origright>4", "<origright>2")));
        QVERIFY(window.app.doc.openDocument(QUrl::fromLocalFile(path)));
    }
    window.view->updateView();
    const bool modified = window.app.doc.isModified();
    window.tick(0);
    QVERIFY(!window.view->getEntry(0)->complete);
    QCOMPARE(
        window.view->table()->model()->index(0, VelListView::CompleteColumn).data(Qt::CheckStateRole).toInt(),
        int(Qt::Unchecked));
    QCOMPARE(window.app.doc.isModified(), modified);
}

void VelListViewTest::dateOnlyEntryShouldShowNoTime()
{
    ListWindow window(VelListView::Kind::Entries);
    VelEntry day = makeEvent(QStringLiteral("day"), march(3, 0, 0), march(3, 23, 59));
    day.notime = true;
    add(window.app.doc, day);
    addEvent(window.app.doc, QStringLiteral("morning"), march(3, 8, 15), march(3, 9));
    window.view->updateView();
    QCOMPARE(window.titles(), QStringList({QStringLiteral("day"), QStringLiteral("morning")}));
    const QAbstractItemModel *model = window.view->table()->model();
    QVERIFY(!model->index(0, VelListView::StartColumn).data().toString().contains(QLatin1Char(':')));
    QVERIFY(model->index(1, VelListView::StartColumn).data().toString().endsWith(QLatin1String("08:15")));
}

void VelListViewTest::deleteShouldAskForASeries_data()
{
    QTest::addColumn<bool>("recurring");
    QTest::addColumn<int>("answer");
    QTest::addColumn<bool>("cut");
    QTest::addColumn<QString>("question");
    QTest::addColumn<bool>("gone");
    const QString deleting =
        QStringLiteral("Deleting this event will also delete all recurring events based on it.");
    const QString cutting =
        QStringLiteral("Cutting this event to clipboard will also cut all recurring events based on it.");
    QTest::newRow("single, no question") << false << int(Answer::No) << false << QString() << true;
    QTest::newRow("delete series") << true << int(Answer::Yes) << false << deleting << true;
    QTest::newRow("keep series") << true << int(Answer::No) << false << deleting << false;
    QTest::newRow("cut series") << true << int(Answer::Yes) << true << cutting << true;
    QTest::newRow("do not cut series") << true << int(Answer::No) << true << cutting << false;
}

void VelListViewTest::deleteShouldAskForASeries()
{
    QFETCH(bool, recurring);
    QFETCH(int, answer);
    QFETCH(bool, cut);
    QFETCH(QString, question);
    QFETCH(bool, gone);
    ListWindow window(VelListView::Kind::Entries);
    VelEntry entry = makeEvent(QStringLiteral("meeting"), march(2, 9), march(2, 10));
    if (recurring)
        entry.rule = dailyRule(1, 5);
    add(window.app.doc, entry);
    window.view->updateView();
    window.view->table()->selectRow(recurring ? 2 : 0); // of the series an occurrence
    window.app.fakeMessages.orderAnswer(static_cast<Answer>(answer));
    if (cut)
        window.view->cut();
    else
        window.view->del();
    QCOMPARE(window.app.fakeMessages.last().text, question);
    QCOMPARE(window.app.doc.getEntryCount() == 0, gone);
    QCOMPARE(window.view->table()->rowCount() == 0, gone);
}

void VelListViewTest::copyOfAnOccurrenceShouldCarryTheSeries()
{
    ListWindow window(VelListView::Kind::Entries);
    VelEntry daily = makeEvent(QStringLiteral("daily"), march(2, 9), march(2, 10));
    daily.rule = dailyRule(1, 5);
    add(window.app.doc, daily);
    window.view->updateView();
    window.view->table()->selectRow(3);
    QVERIFY(window.app.cutCopyEntry->isOccurrence());
    window.view->copy();
    const auto copied = VelDrag::decode(QGuiApplication::clipboard()->mimeData());
    QVERIFY(copied);
    QCOMPARE(copied->getStart(), march(2, 9));
    QCOMPARE(copied->rule.occurendcount, 5);
}

void VelListViewTest::cutAndPasteShouldRestoreASynchronisedEntry()
{
    ListWindow window(VelListView::Kind::Entries);
    const quint32 id = addSynced(window.app.doc, QStringLiteral("synced"), 900)->localid;
    window.select(QStringLiteral("synced"));
    window.view->cut();
    QVERIFY(window.app.doc.getEntry(id)->isDeleted());
    window.view->paste();
    QCOMPARE(window.app.doc.getEntryCount(), std::size_t(1));
    QCOMPARE(window.app.doc.getEntry(id)->type, int(VelEntry::Event));
    QCOMPARE(window.app.doc.getEntry(id)->globalid, 900U);
    QCOMPARE(window.titles(), QStringList(QStringLiteral("synced")));
}

void VelListViewTest::pasteShouldMakeACopyAndSelectIt()
{
    ListWindow window(VelListView::Kind::Entries);
    const quint32 id = addSynced(window.app.doc, QStringLiteral("synced"), 900)->localid;
    window.select(QStringLiteral("synced"));
    window.view->copy();
    window.view->paste();
    QCOMPARE(window.app.doc.getEntryCount(), std::size_t(2));
    const VelEntry *selected = window.view->getSelectedEntry();
    QVERIFY(selected);
    QVERIFY(selected->localid != id);
    QCOMPARE(selected->globalid, 0U);
    QCOMPARE(selected->dirty, 1);
    QCOMPARE(window.view->getEntry(window.view->table()->currentRow()), selected);
}

void VelListViewTest::lockShouldForbidEveryChange()
{
    ListWindow window(VelListView::Kind::Entries);
    addEvent(window.app.doc, QStringLiteral("event"), march(2, 9), march(2, 10));
    window.select(QStringLiteral("event"));
    window.view->copy();
    window.app.doc.setModified(false);
    window.app.isLocked = true;
    QVERIFY(!window.view->mayPaste());
    window.view->paste();
    window.view->cut();
    window.view->del();
    QCOMPARE(window.app.doc.getEntryCount(), std::size_t(1));
    QVERIFY(!window.app.doc.isModified());
}

void VelListViewTest::droppedEntryShouldBecomeANewOne()
{
    ListWindow window(VelListView::Kind::Entries);
    VelEntry foreign = makeEvent(QStringLiteral("dropped"), march(2, 9), march(2, 10));
    foreign.localid = 5;
    foreign.globalid = 6;
    const VelDrag data(foreign, 0);
    QDragEnterEvent enter(QPoint(50, 200), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(window.view, &enter);
    QDropEvent drop(QPoint(50, 200), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(window.view, &drop);
    QVERIFY(drop.isAccepted());
    QCOMPARE(window.titles(), QStringList(QStringLiteral("dropped")));
    QCOMPARE(window.view->getEntry(0)->localid, 1U);
    QCOMPARE(window.view->getEntry(0)->globalid, 0U);
}

void VelListViewTest::menuDeleteShouldNeitherAskNorLeaveANotice()
{
    ListWindow window(VelListView::Kind::Tasks);
    VelEntry todo = makeTodo(QStringLiteral("task"), today());
    todo.globalid = 12;
    add(window.app.doc, todo);
    window.view->updateView();
    Q_EMIT window.view->table()->contextMenuRequested(0, 0, QPoint());
    auto *menu = window.view->findChild<QMenu *>(QString(), Qt::FindDirectChildrenOnly);
    QVERIFY(menu);
    const QList<QAction *> actions = menu->actions();
    const auto found = std::find_if(actions.begin(), actions.end(), [](const QAction *action) {
        return action->text() == QLatin1String("Delete Task");
    });
    QVERIFY(found != actions.end());
    (*found)->trigger();
    menu->hide();
    QCOMPARE(window.app.doc.getEntryCount(), std::size_t(0));
    QCOMPARE(window.app.fakeMessages.count(), 0);
    QCOMPARE(window.app.statusBar()->currentMessage(),
             QStringLiteral("The task \"task\" has been deleted. Undo brings it back."));
}

QTEST_MAIN(VelListViewTest)

#include "vellistviewtest.moc"
