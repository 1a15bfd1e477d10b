// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "views/velmainview.h"
#include "support/fakeapp.h"
#include "support/testcalendar.h"
#include "views/vellistview.h"
#include "views/vellistviewwidget.h"
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
    void shouldFallBackToAViewThatIsThere_data();
    void shouldFallBackToAViewThatIsThere();
    void shouldRememberViewAndSplitters();
    void setDateShouldMoveTheList();
    void shouldLeaveTheDocumentWhenItGoes();
    void weekdaysShouldStandInTheLocalesOrder_data();
    void weekdaysShouldStandInTheLocalesOrder();
};

void VelMainViewTest::shouldFallBackToAViewThatIsThere_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("size");
    QTest::addColumn<int>("expectedSize");
    QTest::newRow("list") << 2 << 5 << 5;
    QTest::newRow("day range, not there yet") << 0 << 7 << 7;
    QTest::newRow("nonsense") << 99 << -3 << 5;
}

void VelMainViewTest::shouldFallBackToAViewThatIsThere()
{
    QFETCH(int, type);
    QFETCH(int, size);
    QFETCH(int, expectedSize);
    FakeApp app(today());
    KConfig config(QString(), KConfig::SimpleConfig);
    KConfigGroup group = config.group(QStringLiteral("General Options"));
    group.writeEntry("MainViewType", type);
    group.writeEntry("MainViewSize", size);
    const VelMainView view(&app, &config, {}, {});
    QCOMPARE(view.viewType(), int(VelMainView::ListView));
    QCOMPARE(view.viewSize(), expectedSize);
    QCOMPARE(view.getCurrentView(), static_cast<VelView *>(view.listView()));
}

void VelMainViewTest::shouldRememberViewAndSplitters()
{
    FakeApp app(today());
    KConfig config(QString(), KConfig::SimpleConfig);
    QList<int> sizes;
    {
        VelMainView view(&app, &config, {400, 200}, {});
        view.resize(610, 400);
        view.show();
        sizes = view.getSplitter1Sizes();
        view.writeConfig(&config);
    }
    VelMainView view(&app, &config, sizes, {});
    view.resize(610, 400);
    view.show();
    QCOMPARE(view.getSplitter1Sizes(), sizes);
    // The day view is what a new user starts with, once it is there.
    QCOMPARE(config.group(QStringLiteral("General Options")).readEntry("MainViewType", -1), 0);
}

void VelMainViewTest::setDateShouldMoveTheList()
{
    FakeApp app(today());
    const KConfig config(QString(), KConfig::SimpleConfig);
    VelMainView view(&app, &config, {}, {});
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
