// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "views/velmainview.h"
#include "support/fakeapp.h"
#include "support/testcalendar.h"
#include "views/veldaypicker.h"
#include "views/veldaypickeritem.h"
#include "views/veldayview.h"
#include "views/vellistview.h"
#include "views/vellistviewwidget.h"
#include "views/velmonthview.h"
#include "views/velweekdaywidget.h"

#include <KConfig>
#include <KConfigGroup>

#include <QLocale>
#include <QTest>

using namespace TestCalendar;

class VelMainViewTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void shouldBeginWithTheViewThatWasLeft_data();
    void shouldBeginWithTheViewThatWasLeft();
    void rangeShouldFollowTheDate_data();
    void rangeShouldFollowTheDate();
    void pickerAndViewsShouldLeadToADay();
    void onlyShownViewsShouldBeKeptUpToDate();
    void shouldRememberViewAndSplitters();
    void setDateShouldMoveTheList();
    void shouldLeaveTheDocumentWhenItGoes();
    void weekdaysShouldStandInTheLocalesOrder_data();
    void weekdaysShouldStandInTheLocalesOrder();
};

void VelMainViewTest::shouldBeginWithTheViewThatWasLeft_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("size");
    QTest::addColumn<int>("expectedType");
    QTest::addColumn<int>("expectedSize");
    QTest::newRow("list") << 2 << 5 << 2 << 5;
    QTest::newRow("month") << 1 << 7 << 1 << 7;
    QTest::newRow("one day") << 0 << 1 << 0 << 1;
    QTest::newRow("nonsense") << 99 << -3 << 0 << 5;
}

void VelMainViewTest::shouldBeginWithTheViewThatWasLeft()
{
    QFETCH(int, type);
    QFETCH(int, size);
    QFETCH(int, expectedType);
    QFETCH(int, expectedSize);
    FakeApp app(today());
    KConfig config(QString(), KConfig::SimpleConfig);
    KConfigGroup group = config.group(QStringLiteral("General Options"));
    group.writeEntry("MainViewType", type);
    group.writeEntry("MainViewSize", size);
    VelMainView view(&app, &config, {}, {});
    view.show();
    QCOMPARE(view.viewType(), expectedType);
    QCOMPARE(view.viewSize(), expectedSize);
    QCOMPARE(!view.dayView()->isHidden(), expectedType == VelMainView::DayView);
    QCOMPARE(!view.monthView()->isHidden(), expectedType == VelMainView::MonthView);
    QCOMPARE(!view.listView()->isHidden(), expectedType == VelMainView::ListView);
    view.writeConfig(&config);
    QCOMPARE(group.readEntry("MainViewType", -1), expectedType);
}

void VelMainViewTest::rangeShouldFollowTheDate_data()
{
    QTest::addColumn<QLocale>("locale");
    QTest::addColumn<int>("size");
    QTest::addColumn<QDate>("date");
    QTest::addColumn<QDate>("start");
    QTest::addColumn<int>("days");
    QTest::addColumn<QDate>("next");
    const QLocale german(QLocale::German, QLocale::Germany);
    const QLocale american(QLocale::English, QLocale::UnitedStates);
    const QDate sunday(2026, 3, 8);
    QTest::newRow("one day") << german << 1 << sunday << sunday << 1 << sunday.addDays(1);
    QTest::newRow("work week") << german << 5 << sunday << QDate(2026, 3, 2) << 5 << sunday.addDays(7);
    QTest::newRow("work week from Sunday")
        << american << 5 << sunday << QDate(2026, 3, 9) << 5 << sunday.addDays(7);
    QTest::newRow("week") << german << 7 << sunday << QDate(2026, 3, 2) << 7 << sunday.addDays(7);
    QTest::newRow("week from Sunday") << american << 7 << sunday << sunday << 7 << sunday.addDays(7);
    QTest::newRow("Saturday of a week from Sunday")
        << american << 7 << QDate(2026, 3, 7) << QDate(2026, 3, 1) << 7 << QDate(2026, 3, 14);
}

void VelMainViewTest::rangeShouldFollowTheDate()
{
    QFETCH(QLocale, locale);
    QFETCH(int, size);
    QFETCH(QDate, date);
    const QLocale old;
    QLocale::setDefault(locale);
    FakeApp app(today());
    const KConfig config(QString(), KConfig::SimpleConfig);
    VelMainView view(&app, &config, {}, {});
    view.setMainView(VelMainView::DayView, size);
    view.setDate(date);
    QTEST(view.dayView()->startDate(), "start");
    QTEST(view.dayView()->numDays(), "days");
    const auto isMarked = [&view](QDate day) {
        for (const auto *item : view.dayPicker()->findChildren<VelDayPickerItem *>()) {
            if (item->getDate() == day)
                return item->getDay().isHighlighted;
        }
        return false;
    };
    QVERIFY(isMarked(view.dayView()->startDate()));
    QVERIFY(!isMarked(view.dayView()->startDate().addDays(view.dayView()->numDays())));
    view.next();
    QTEST(view.getDate(), "next");
    view.setMainView(VelMainView::MonthView);
    QVERIFY(!isMarked(view.getDate()));
    view.setDate(QDate(2026, 1, 31));
    view.next();
    QCOMPARE(view.getDate(), QDate(2026, 2, 28));
    QLocale::setDefault(old);
}

void VelMainViewTest::pickerAndViewsShouldLeadToADay()
{
    FakeApp app(today());
    const KConfig config(QString(), KConfig::SimpleConfig);
    VelMainView view(&app, &config, {}, {});
    view.setMainView(VelMainView::DayView, 5);
    view.dayPicker()->emitDateSelected({2026, 3, 18});
    QCOMPARE(view.dayView()->startDate(), QDate(2026, 3, 16));
    Q_EMIT view.monthView()->dayWanted({2026, 4, 1});
    QCOMPARE(view.viewSize(), 1);
    QCOMPARE(view.dayView()->startDate(), QDate(2026, 4, 1));
    QCOMPARE(view.getDate(), QDate(2026, 4, 1));
}

/** Hidden views are not told of changes, and show them once they are shown. */
void VelMainViewTest::onlyShownViewsShouldBeKeptUpToDate()
{
    FakeApp app(today());
    const KConfig config(QString(), KConfig::SimpleConfig);
    VelMainView view(&app, &config, {}, {});
    view.setMainView(VelMainView::DayView, 1);
    addEvent(app.doc, QStringLiteral("new"), march(2, 9), march(2, 10));
    app.doc.slotUpdateAllViews(nullptr);
    QCOMPARE(view.dayView()->dayOf(today())->entryCount(), 1);
    view.setMainView(VelMainView::MonthView);
    addEvent(app.doc, QStringLiteral("newer"), march(2, 9), march(2, 10));
    app.doc.removeEntry(1);
    app.doc.slotUpdateAllViews(nullptr);
    view.updateColors(); // reaches the hidden view, which must not know the entry any more
    view.dayView()->resize(300, 300);
    addEvent(app.doc, QStringLiteral("newest"), march(2, 9), march(2, 10));
    view.setMainView(VelMainView::DayView);
    QCOMPARE(view.dayView()->dayOf(today())->entryCount(), 2);
}

void VelMainViewTest::shouldRememberViewAndSplitters()
{
    KConfig config(QString(), KConfig::SimpleConfig);
    QList<int> sizes{400, 400, 400, 320};
    for (int start = 0; start < 2; ++start) {
        FakeApp app(today());
        auto *view = new VelMainView(&app, &config, sizes, {});
        app.setCentralWidget(view);
        app.resize(1000, 500);
        app.show();
        sizes = view->getSplitter1Sizes();
        QCOMPARE(sizes.last(), 320);
        view->writeConfig(&config);
        delete view; // before the calendar that it shows
    }
    // The day view is what a new user starts with.
    QCOMPARE(config.group(QStringLiteral("General Options")).readEntry("MainViewType", -1), 0);
}

void VelMainViewTest::setDateShouldMoveTheList()
{
    FakeApp app(today());
    const KConfig config(QString(), KConfig::SimpleConfig);
    VelMainView view(&app, &config, {}, {});
    view.setMainView(VelMainView::ListView);
    addEvent(app.doc, QStringLiteral("summer"), {QDate(2026, 7, 1), QTime(9, 0)},
             {QDate(2026, 7, 1), QTime(10, 0)});
    view.setDate(QDate(2026, 6, 30));
    QCOMPARE(view.listView()->filterBar()->getStart(), QDate(2026, 6, 30));
    QCOMPARE(view.listView()->getEntry(0)->getTitle(), QStringLiteral("summer"));
    view.next(); // a list has no range to step by
    QCOMPARE(view.getDate(), QDate(2026, 6, 30));
    view.setDate(QDate());
    QCOMPARE(view.getDate(), QDate(2026, 6, 30));
}

void VelMainViewTest::shouldLeaveTheDocumentWhenItGoes()
{
    FakeApp app(today());
    const KConfig config(QString(), KConfig::SimpleConfig);
    auto view = std::make_unique<VelMainView>(&app, &config, QList<int>(), QList<int>());
    view.reset();
    app.doc.slotUpdateAllViews(nullptr); // would reach into freed views
    QVERIFY(app.doc.isModified());
}

void VelMainViewTest::weekdaysShouldStandInTheLocalesOrder_data()
{
    QTest::addColumn<QLocale>("locale");
    QTest::addColumn<QVector<int>>("days");
    QTest::newRow("Monday first") << QLocale(QLocale::German, QLocale::Germany) << QVector<int>{1, 3, 7};
    QTest::newRow("Sunday first") << QLocale(QLocale::English, QLocale::UnitedStates)
                                  << QVector<int>{7, 1, 3};
}

void VelMainViewTest::weekdaysShouldStandInTheLocalesOrder()
{
    QFETCH(QLocale, locale);
    QFETCH(QVector<int>, days);
    const QLocale old;
    QLocale::setDefault(locale);
    VelWeekDayWidget widget;
    widget.setList({3, 7, 1, 12});
    QCOMPARE(widget.getList(), days);
    QLocale::setDefault(old);
}

QTEST_MAIN(VelMainViewTest)

#include "velmainviewtest.moc"
