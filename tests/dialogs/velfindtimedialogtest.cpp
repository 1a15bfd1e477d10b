// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogs/velfindtimedialog.h"

#include "dialogs/velentrydialog.h"
#include "dialogs/velfindtimepersonlist.h"
#include "dialogs/velfindtimewidget.h"
#include "dialogs/velpeoplepage.h"
#include "dialogs/velvcardaddressbook.h"
#include "support/fakeapp.h"
#include "support/testcalendar.h"
#include "views/veldaynames.h"
#include "views/veldayview.h"
#include "views/velquickentry.h"
#include "widgets/wdatetimewidget.h"
#include "widgets/wtimeinput.h"

#include <KConfig>

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>
#include <QTimer>

#include <functional>

using namespace TestCalendar;

namespace
{
VelAccount person(const char *name, quint32 id, int role = VelAccount::RequiredAttendee)
{
    VelAccount account(QString::fromLatin1(name), {}, id);
    account.attendee = role;
    return account;
}

/** Ann, a room, somebody unknown and Bob, whose meeting of 2 March from 10 to 12 the server knows as 7. */
struct Window {
    Window()
        : app(today())
        , dialog(planned(), config.group(QStringLiteral("General Options")), &app)
    {
        app.fakeSettings.user = QStringLiteral("me");
        dialog.findChild<QTimer *>(QStringLiteral("still"))->setInterval(0);
        dialog.setAccounts({person("Ann", 3), person("Room", 5, VelAccount::ResourceAttendee),
                            person("Guest", 0, VelAccount::OptionalAttendee),
                            person("Bob", 4, VelAccount::OptionalAttendee)});
    }
    static VelEntry planned()
    {
        VelEntry entry = makeEvent(QStringLiteral("Talk"), march(2, 10), march(2, 12));
        entry.globalid = 7;
        return entry;
    }
    /** Busy times of @p user from hour to hour, one for each day in March. */
    void answer(const QVector<int> &days, quint32 user = 3, int from = 8, int to = 17, quint32 globalid = 9)
    {
        auto entries = std::make_shared<std::vector<std::unique_ptr<VelEntry>>>();
        for (const int day : days) {
            entries->push_back(std::make_unique<VelEntry>(makeEvent({}, march(day, from), march(day, to))));
            entries->back()->user = user;
            entries->back()->globalid = globalid;
            entries->back()->access = entries->back()->display = 0;
        }
        Q_EMIT app.taskUserBusyReady(entries, nextBody());
    }
    /** That of the oldest request for busy times that is out. */
    QString nextBody()
    {
        while (m_taken < app.netTasks.size()) {
            const VelNetTask &task = app.netTasks[m_taken++];
            if (task.type == VelNetTask::UserBusy)
                return task.argument;
        }
        return {};
    }
    [[nodiscard]] QPushButton *findButton() const
    {
        return dialog.findChild<VelFindTimeWidget *>()->findChild<QPushButton *>();
    }
    [[nodiscard]] QString status() const
    {
        return dialog.findChild<QLabel *>(QStringLiteral("status"))->text();
    }
    [[nodiscard]] QDateTime proposal() const { return dialog.findChild<VelFindTimeWidget *>()->getStart(); }
    [[nodiscard]] VelDayView *view() const { return dialog.findChild<VelDayView *>(); }
    [[nodiscard]] std::size_t requestCount() const { return app.netTasks.size(); }

    KConfig config{QString(), KConfig::SimpleConfig};
    FakeApp app;
    VelFindTimeDialog dialog;

private:
    std::size_t m_taken = 0; // of the requests
};

/** Leaves the planner open, for the test to use. */
class Editor : public VelEntryDialog
{
public:
    using VelEntryDialog::VelEntryDialog;
    VelFindTimeDialog *planner = nullptr;
    int runs = 0;

protected:
    void runFindDialog(VelFindTimeDialog &dialog) override
    {
        planner = &dialog;
        ++runs;
    }
};
} // namespace

class VelFindTimeDialogTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void weekShouldBeAskedForOnce();
    void weeksAroundNewYearShouldBeTwo();
    void longAndShortEntriesShouldComeInTheirOrder();
    void busyTimesShouldStandInColumns();
    void ownTimesShouldStandFirstAndCountOnce();
    void searchShouldGoOverTwoWeeks();
    void failureShouldEndTheWait();
    void lateAnswersToOthersShouldBeDropped();
    void okShouldGiveTheProposalInOrder();
    void busyTimeShouldBeFetchedToBeRead();
    void editorShouldKeepItsPlanner();
    void answersToAnotherPlannerShouldBeIgnored();
    void searchBeyondTheLimitShouldAskForNothing();
};

void VelFindTimeDialogTest::weekShouldBeAskedForOnce()
{
    Window window;
    QCOMPARE(window.requestCount(), 1U);
    const VelNetTask &task = window.app.netTasks.front();
    QVERIFY(task.type == VelNetTask::UserBusy && !task.quiet);
    QCOMPARE(
        task.argument,
        QStringLiteral("<id>3</id>\n<id>5</id>\n<id>4</id>\n<start>2026-3-2</start>\n<end>2026-3-9</end>\n"));
    QVERIFY(window.dialog.requestEntries(march(8).date()));
    QVERIFY(window.dialog.requestEntries(march(2).date().addDays(53 * 7))); // the same number of a week
    QVERIFY(!window.dialog.isRetrieving());
    QVERIFY(!window.dialog.requestEntries(march(15).date()));
    QVERIFY(window.dialog.isRetrieving());
    window.dialog.next();
    QVERIFY(!window.dialog.isRetrieving());
    for (int week = 0; week < 3; ++week)
        window.dialog.next();
    QCoreApplication::processEvents();
    QCOMPARE(window.requestCount(), 3U); // with the one where the user has stopped
    QVERIFY(window.app.netTasks.back().argument.contains(QLatin1String("<start>2026-3-30</start>")));
    window.app.netTasks.resize(2);
    QVERIFY(window.app.netTasks.back().argument.endsWith(
        QLatin1String("<start>2026-3-9</start>\n<end>2026-3-16</end>\n")));
    window.dialog.setAccounts({person("Guest", 0)});
    QCOMPARE(window.requestCount(), 2U); // nobody to ask for
    QVERIFY(window.dialog.getEntries({}).empty());
}

void VelFindTimeDialogTest::weeksAroundNewYearShouldBeTwo()
{
    QStringList bodies;
    VelBusyTimes busy([&](const QString &body) { bodies.append(body); });
    busy.setAccounts({person("Ann", 3)});
    QVERIFY(!busy.requestEntries({2027, 1, 1})); // a Friday
    QVERIFY(!busy.requestEntries({2027, 1, 4}));
    QVERIFY(busy.requestEntries({2026, 12, 28}));
    QCOMPARE(bodies.last(), QStringLiteral("<id>3</id>\n<start>2027-1-4</start>\n<end>2027-1-11</end>\n"));
}

void VelFindTimeDialogTest::longAndShortEntriesShouldComeInTheirOrder()
{
    QString body;
    VelBusyTimes busy([&body](const QString &sent) { body = sent; });
    busy.setAccounts({person("Ann", 3)});
    busy.requestEntries(today());
    auto entries = std::make_shared<std::vector<std::unique_ptr<VelEntry>>>();
    const struct {
        VelDateTime start;
        VelDateTime end;
    } rows[] = {{march(3, 9), march(3, 10)},
                {march(1, 9), at(QDate(9000, 1, 1))},
                {march(2, 9), march(4, 9)},
                {march(4, 9), march(3, 9)},
                {march(4, 9), march(20, 9)}};
    quint32 id = 0;
    for (const auto &[start, end] : rows) {
        entries->push_back(std::make_unique<VelEntry>(makeEvent({}, start, end)));
        entries->back()->globalid = ++id;
    }
    QVERIFY(!busy.takeEntries(entries, {}));
    QVERIFY(busy.takeEntries(entries, body));
    const auto idsOn = [&busy](QDate date) {
        QVector<quint32> ids;
        for (const VelEntryRef &ref : busy.getEntries(date, 0))
            ids.append(ref.getOriginal()->globalid);
        return ids;
    };
    QCOMPARE(idsOn(march(3).date()), (QVector<quint32>{1, 2, 3}));
    QCOMPARE(idsOn(march(4).date()), (QVector<quint32>{2, 3, 5}));
    QCOMPARE(idsOn({}), (QVector<quint32>{1, 2, 3, 4, 5}));
}

void VelFindTimeDialogTest::busyTimesShouldStandInColumns()
{
    Window window;
    window.dialog.show();
    QCOMPARE(window.dialog.getDate(), today());
    window.answer({2}, 4, 10, 12, 7); // the planned entry itself
    window.answer({2}); // nobody asked for that
    window.dialog.next();
    QTRY_COMPARE(window.requestCount(), 2U);
    window.answer({9, 10}, 5);
    QVERIFY(window.dialog.getEntries(today()).empty());
    QCOMPARE(window.dialog.getEntries({}).size(), 2U);
    QCOMPARE(window.dialog.getEntries(march(10).date()).size(), 1U);
    QCOMPARE(window.dialog.getColumn(5), 3); // behind the user, Ann and Bob
    QCOMPARE(window.dialog.getColumn(8), -1);
    QCOMPARE(window.view()->findChild<VelDayNames *>()->accessibleItem(2).name, QStringLiteral("Bob"));
    QCOMPARE(window.view()->dayOf(march(10).date())->entryCount(), 1);

    auto *list = window.dialog.findChild<VelFindTimePersonList *>();
    QTreeWidgetItem *guest = list->topLevelItem(1)->child(0);
    QVERIFY(guest->isDisabled() && guest->checkState(0) == Qt::Unchecked);
    list->setCurrentItem(list->topLevelItem(0)->child(0));
    QTest::keyClick(list, Qt::Key_Return);
    QVERIFY(window.dialog.isVisible());
    list->topLevelItem(2)->child(0)->setCheckState(0, Qt::Unchecked);
    QCOMPARE(window.dialog.getVisibleCount(), 2);
    QVERIFY(window.dialog.getColumn(4) == 1 && window.dialog.getColumn(5) == -1);
    QCOMPARE(window.view()->dayOf(march(10).date())->entryCount(), 0);

    QCOMPARE(window.view()->numDays(), 5);
    window.dialog.findChild<QCheckBox *>()->click();
    QVERIFY(window.view()->numDays() == 7 && window.view()->startDate() == march(9).date());
    QTest::keyClick(window.view(), Qt::Key_Return); // on the selected time
    QVERIFY(!window.view()->findChild<VelQuickEntry *>() && window.dialog.isVisible());
    QTest::keyClick(window.view(), Qt::Key_Escape);
    QVERIFY(!window.dialog.isVisible());
}

void VelFindTimeDialogTest::ownTimesShouldStandFirstAndCountOnce()
{
    Window window;
    VelDoc &doc = window.app.doc;
    doc.setUserId(4); // Bob
    const VelAccountList declined = [] {
        VelAccountList list{person("Bob", 4)};
        list.first().status = VelAccount::Declined;
        return list;
    }();
    const struct {
        int hour;
        std::function<void(VelEntry &)> change;
    } rows[] = {{9, [](VelEntry &entry) { entry.rule = dailyRule(1, 5); }},
                {11, [](VelEntry &entry) { entry.globalid = 20; }},
                {12, [](VelEntry &entry) { entry.display = VelEntry::Free; }},
                {13, [&](VelEntry &entry) { entry.accounts = declined; }},
                {14, [](VelEntry &entry) { entry.setEnd(entry.getStart()); }},
                {15, [](VelEntry &entry) { entry.type = VelEntry::Todo; }},
                {16, [](VelEntry &entry) { entry.type = VelEntry::Deleted; }},
                {17, [](VelEntry &entry) {
                     entry.setStart(march(4, 17));
                     entry.setEnd(march(4, 18));
                     entry.notime = true;
                 }}};
    for (const auto &[hour, change] : rows) {
        VelEntry entry = makeEvent({}, march(2, hour), march(2, hour + 1));
        change(entry);
        add(doc, entry);
    }
    VelEntry planned = Window::planned();
    planned.localid = addEvent(doc, {}, march(2, 10), march(2, 12))->localid;
    window.dialog.setAccounts({person("Ann", 3), person("Bob", 4)});
    window.dialog.setEntry(planned);
    window.nextBody(); // to others
    window.answer({2}, 4, 11, 12, 20); // what the calendar knows itself
    const auto hoursOn = [&window](int day) {
        QVector<int> hours;
        for (const VelEntryRef &ref : window.dialog.getEntries(march(day).date()))
            hours.append(ref.getStart().time().hour());
        return hours;
    };
    QCOMPARE(hoursOn(2), (QVector<int>{9, 11}));
    QCOMPARE(hoursOn(3), QVector<int>{9});
    QCOMPARE(hoursOn(4), (QVector<int>{0, 9}));
    QVERIFY(window.dialog.getVisibleCount() == 2 && window.dialog.getColumn(4) == 0);
    QCOMPARE(window.dialog.getColumnName(0), QStringLiteral("Yourself"));
    const auto *busy = window.dialog.findChild<QLabel *>(QStringLiteral("busy"));
    QCOMPARE(busy->text(), QStringLiteral("Busy then: Yourself."));
    window.findButton()->click();
    QCOMPARE(window.proposal(), march(2, 12).toQDateTime());
    QCOMPARE(busy->text(), QStringLiteral("Nobody is known to be busy then."));
    window.findButton()->click();
    window.findButton()->click();
    QCOMPARE(window.proposal(), march(3, 10).toQDateTime());
    window.app.fakeSettings.origUserid = 3; // the calendar is a colleague's
    window.dialog.setAccounts({person("Ann", 3)});
    QCOMPARE(window.dialog.getColumnName(0), QStringLiteral("Owner of the calendar"));
}

void VelFindTimeDialogTest::searchShouldGoOverTwoWeeks()
{
    Window window;
    window.findButton()->click();
    QVERIFY(!window.findButton()->isEnabled());
    QCOMPARE(window.status(), QStringLiteral("Fetching busy times..."));
    window.dialog.setDate(today()); // which ends isRetrieving(), but is no answer
    QVERIFY(!window.dialog.isRetrieving());
    window.answer({2, 3, 4, 5, 6}, 5);
    QVERIFY(!window.findButton()->isEnabled());
    QCOMPARE(window.requestCount(), 2U);
    window.answer({9}, 3, 8, 12);
    QVERIFY(window.findButton()->isEnabled() && window.status().isEmpty());
    QCOMPARE(window.proposal(), march(9, 12).toQDateTime());
    QCOMPARE(window.view()->getSelectionEnd(), march(9, 14));
    QCOMPARE(window.dialog.getDate(), march(9).date());
    window.findButton()->click();
    QCOMPARE(window.proposal(), march(9, 14).toQDateTime());
    window.view()->setSelection(march(10, 9), march(10, 10), true, false);
    QCOMPARE(window.proposal(), march(10, 9).toQDateTime());
}

void VelFindTimeDialogTest::failureShouldEndTheWait()
{
    Window window;
    window.findButton()->click();
    Q_EMIT window.app.netTaskFailed(VelNetTask::Sync, {});
    QVERIFY(!window.findButton()->isEnabled());
    Q_EMIT window.app.netTaskFailed(VelNetTask::UserBusy, QStringLiteral("<id>8</id>\n"));
    QVERIFY(!window.findButton()->isEnabled());
    Q_EMIT window.app.netTaskFailed(VelNetTask::UserBusy, window.nextBody());
    QVERIFY(window.findButton()->isEnabled());
    QCOMPARE(window.status(), QStringLiteral("The busy times could not be fetched."));
    QCOMPARE(window.requestCount(), 1U);
    window.findButton()->click();
    QCOMPARE(window.requestCount(), 2U);
    QCOMPARE(window.app.netTasks.front().argument, window.app.netTasks.back().argument);
    window.dialog.slotCancel();
    QVERIFY(window.findButton()->isEnabled());
    window.answer({});
    QCOMPARE(window.proposal(), march(2, 10).toQDateTime()); // nobody waits any longer
}

void VelFindTimeDialogTest::lateAnswersToOthersShouldBeDropped()
{
    Window window;
    window.dialog.setAccounts({person("Bob", 4)});
    QCOMPARE(window.requestCount(), 2U);
    window.findButton()->click();
    window.answer({2}, 3);
    QVERIFY(!window.findButton()->isEnabled() && window.dialog.getEntries({}).empty());
    window.answer({2}, 4);
    QCOMPARE(window.proposal(), march(3, 9).toQDateTime());
}

void VelFindTimeDialogTest::okShouldGiveTheProposalInOrder()
{
    Window window;
    QDateTime chosen;
    connect(&window.dialog, &VelFindTimeDialog::timeChosen, this,
            [&](const QDateTime &start) { chosen = start; });
    auto *buttons = window.dialog.findChild<QDialogButtonBox *>();
    QVERIFY(buttons->button(QDialogButtonBox::Cancel)->isDefault());
    const QList<WDateTimeWidget *> inputs = window.dialog.findChildren<WDateTimeWidget *>();
    inputs.at(3)->setTime(QTime(13, 0));
    buttons->button(QDialogButtonBox::Ok)->click();
    QCOMPARE(window.app.fakeMessages.errors(),
             QStringList(QStringLiteral("Start time may not be later than end time.")));
    QVERIFY(!chosen.isValid());
    auto *time = inputs.at(3)->findChild<WTimeInput *>(); // typed, and the focus left there
    const auto type = [time](const char *text) {
        time->lineEdit()->selectAll();
        QTest::keyClicks(time, QLatin1String(text));
    };
    type("11:60");
    window.findButton()->click();
    QVERIFY(window.findButton()->isEnabled()); // nothing is looked for
    QVERIFY(inputs.at(3)->getProblem().startsWith(QLatin1String("\"11:60\"")));
    type("11");
    window.dialog.resize(800, 580);
    buttons->button(QDialogButtonBox::Ok)->click();
    QCOMPARE(chosen, march(2, 11).toQDateTime());
    QCOMPARE(window.dialog.result(), int(QDialog::Accepted));
    const KConfigGroup group = window.config.group(QStringLiteral("General Options"));
    QCOMPARE(group.readEntry("FindTimeGeometry", QSize()), QSize(800, 580));
    QCOMPARE(group.readEntry("SplitterSizesFind2", QList<int>()).size(), 2);
    const VelFindTimeDialog again(Window::planned(), group, &window.app);
    QCOMPARE(again.size(), QSize(800, 580));
}

void VelFindTimeDialogTest::busyTimeShouldBeFetchedToBeRead()
{
    Window window;
    window.app.doc.setUserId(1);
    window.dialog.show();
    window.answer({2}, 3, 8, 8); // takes no time, but a search sees it
    VelDay *day = window.view()->dayOf(today());
    const auto open = [day] {
        const QPoint place = day->entry(0).rect().center();
        QTest::mouseClick(day, Qt::LeftButton, Qt::NoModifier, place);
        QTest::mouseDClick(day, Qt::LeftButton, Qt::NoModifier, place);
    };
    open();
    QCOMPARE(window.app.netTasks.back().type, int(VelNetTask::GetEntries));
    QCOMPARE(window.app.netTasks.back().argument, QStringLiteral("<globalid>9</globalid>"));
    Q_EMIT window.app.netTaskFailed(VelNetTask::GetEntries, QStringLiteral("<globalid>8</globalid>"));
    Q_EMIT window.app.entriesReceived(); // of another one
    QVERIFY(window.app.shownTitle.isEmpty());
    const VelEntry received = makeEvent(QStringLiteral("Lunch"), march(2, 8), march(2, 17));
    window.app.receivedEntry = &received;
    Q_EMIT window.app.entriesReceived();
    QVERIFY(window.app.shownTitle.isEmpty()); // while the answer is being told
    QTRY_COMPARE(window.app.shownTitle, QStringLiteral("Lunch"));
    window.app.shownTitle.clear();
    Q_EMIT window.app.entriesReceived();
    QCoreApplication::processEvents();
    QVERIFY(window.app.shownTitle.isEmpty()); // was shown once
    QCOMPARE(window.proposal(), march(2, 10).toQDateTime());

    addSynced(window.app.doc, QStringLiteral("Mine"), 9);
    window.app.doc.setUserId(3);
    open();
    QCOMPARE(window.app.shownTitle, QStringLiteral("Mine"));
    const QPoint busy = day->entry(0).rect().center();
    QTest::mousePress(day, Qt::LeftButton, {}, busy);
    const QPoint below = day->rowRect(QTime(9, 0)).center();
    QMouseEvent move(QEvent::MouseMove, below, day->mapToGlobal(below), Qt::NoButton, Qt::LeftButton, {});
    QCoreApplication::sendEvent(day, &move);
    QCOMPARE(window.view()->getSelectionStart(), march(2, 8));
}

void VelFindTimeDialogTest::editorShouldKeepItsPlanner()
{
    FakeApp app(today());
    VelVCardAddressBook book(QStringLiteral("/nonexistent"));
    VelEntry entry = makeEvent(QStringLiteral("Trip"), march(2, 10), march(4, 11));
    entry.accounts = {person("Ann", 3)};
    Editor editor(app, book, entry, true, {});
    auto *page = editor.findChild<VelPeoplePage *>();
    Q_EMIT page->plannerWanted();
    QVERIFY(editor.planner && editor.planner->getVisibleCount() == 2);
    QCOMPARE(editor.planner->findChild<QSpinBox *>()->value(), 2); // days
    const QList<WDateTimeWidget *> inputs = editor.planner->findChildren<WDateTimeWidget *>();
    inputs.at(3)->setDateTime(march(5, 8).toQDateTime());
    inputs.at(4)->setDateTime(march(5, 9).toQDateTime());
    editor.planner->slotOk();
    QVERIFY(editor.form().start == march(5, 8) && editor.form().end == march(5, 9));
    VelFindTimeDialog *first = editor.planner;
    first->findChild<QSpinBox *>()->setValue(5);
    Q_EMIT page->plannerWanted();
    QVERIFY(editor.planner == first && editor.runs == 2);
    QCOMPARE(first->findChild<QSpinBox *>()->value(), 5); // the times are those that it has proposed
    QCOMPARE(first->findChild<VelFindTimeWidget *>()->getStart(), march(5, 8).toQDateTime());
    const auto isBusyTimes = [](const VelNetTask &task) { return task.type == VelNetTask::UserBusy; };
    QCOMPARE(std::count_if(app.netTasks.begin(), app.netTasks.end(), isBusyTimes), 2); // fetched anew
}

void VelFindTimeDialogTest::answersToAnotherPlannerShouldBeIgnored()
{
    Window window;
    VelFindTimeDialog other(Window::planned(), window.config.group(QStringLiteral("Other")), &window.app);
    other.setAccounts({person("Eve", 8)});
    const QString body = window.app.netTasks.back().argument;
    window.findButton()->click();
    Q_EMIT window.app.taskUserBusyReady(std::make_shared<std::vector<std::unique_ptr<VelEntry>>>(), body);
    QVERIFY(!other.isRetrieving());
    QVERIFY(!window.findButton()->isEnabled() && window.dialog.isRetrieving());
    window.answer({2});
    QVERIFY(window.findButton()->isEnabled());
    QVERIFY(other.getEntries({}).empty());
}

void VelFindTimeDialogTest::searchBeyondTheLimitShouldAskForNothing()
{
    Window window;
    window.app.fakeNow = march(5, 10);
    const QDate last(2027, 3, 5); // a Friday: the next day of work is in another week
    QCOMPARE(march(5).date().daysTo(last), qint64(VelFreeTimeSearch::LastDay));
    window.dialog.setAccounts({person("Ann", 3)});
    window.dialog.findChildren<WDateTimeWidget *>().at(2)->setDate(last);
    window.dialog.findChildren<WDateTimeWidget *>().at(1)->setTime(QTime(0, 0)); // no day has room
    window.app.netTasks.clear();
    window.findButton()->click();
    while (window.requestCount() == 1 && !window.findButton()->isEnabled())
        window.answer({});
    QCoreApplication::processEvents();
    QVERIFY(window.findButton()->isEnabled());
    QCOMPARE(window.dialog.getDate(), last);
    QCOMPARE(window.requestCount(), 1U);
}

QTEST_MAIN(VelFindTimeDialogTest)

#include "velfindtimedialogtest.moc"
