// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "widgets/wtable.h"

#include <QHeaderView>
#include <QScrollBar>
#include <QTest>

using Items = std::vector<WTableItem>;
using Rows = QList<int>;
Q_DECLARE_METATYPE(Items)

namespace
{
WDateTableItem day(int year, int month, int dayOfMonth)
{
    return WDateTableItem(QDate(year, month, dayOfMonth));
}

QDateTime at(const char *text)
{
    return QDateTime::fromString(QLatin1String(text), Qt::ISODate);
}

WDateTimeTableItem moment(const char *text)
{
    return WDateTimeTableItem(at(text));
}

/** A table of three columns: the items, the number of the row in the order of filling, and a text that is the
 * same. */
void fill(WTable &table, const Items &items)
{
    table.setColumns({QStringLiteral("Item"), QStringLiteral("Number"), QStringLiteral("Same")},
                     {true, true, true});
    table.beginFill(int(items.size()));
    int number = 0;
    for (const WTableItem &item : items) {
        table.addRow({item, number++, QStringLiteral("same")});
    }
    table.endFill();
}

Rows fillNumbers(const WTable &table)
{
    Rows result;
    for (int row = 0; row < table.rowCount(); ++row) {
        result.append(std::get<int>(*table.item(row, 1)));
    }
    return result;
}

void clickHeader(WTable &table, int column)
{
    QHeaderView *header = table.horizontalHeader();
    const QPoint pos(header->sectionViewportPosition(column) + header->sectionSize(column) / 2,
                     header->height() / 2);
    QTest::mouseClick(header->viewport(), Qt::LeftButton, Qt::NoModifier, pos);
}

bool hasIcon(const WTable &table, int column, const QIcon &icon)
{
    const auto shown =
        table.tableModel()->headerData(column, Qt::Horizontal, Qt::DecorationRole).value<QIcon>();
    return shown.cacheKey() == icon.cacheKey();
}

QIcon iconOf(Qt::GlobalColor color)
{
    QPixmap pixmap(16, 16);
    pixmap.fill(color);
    return QIcon(pixmap);
}
} // namespace

class WTableSortTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void shouldWriteKey_data();
    void shouldWriteKey();
    void shouldSortByValueAndKeepTiesInFillOrder_data();
    void shouldSortByValueAndKeepTiesInFillOrder();
    void shouldFollowClicksOnHeader();
    void shouldNotSortUntilEnabled();
    void shouldShowDirectionBeforeSortedHeaderOnly();
    void shouldKeepSelectedRowAndItsPlaceInView();
    void shouldSortNewRowsWhenFilledAgain();
    void shouldSortAgainAfterCellChanged();
    void shouldIgnoreColumnThatDoesNotExist();
};

void WTableSortTest::shouldWriteKey_data()
{
    QTest::addColumn<QDateTime>("dateTime");
    QTest::addColumn<QString>("dayKey");
    QTest::addColumn<QString>("momentKey");
    QTest::newRow("one-digit fields") << at("2002-09-05T07:03:01") << "20020905"
                                      << "20020905070301";
    QTest::newRow("two-digit fields") << at("2002-10-11T12:34:56") << "20021011"
                                      << "20021011123456";
    QTest::newRow("wall clock of a zone") << at("2026-03-29T03:30:00+05:00") << "20260329"
                                          << "20260329033000";
    QTest::newRow("invalid") << QDateTime() << ""
                             << "";
}

void WTableSortTest::shouldWriteKey()
{
    QFETCH(QDateTime, dateTime);
    QFETCH(QString, dayKey);
    QFETCH(QString, momentKey);
    const WDateTimeTableItem item(dateTime);
    const WDateTableItem dayItem(dateTime.date());
    QCOMPARE(dayItem.key(), dayKey);
    QCOMPARE(item.key(), momentKey);
    if (!momentKey.isEmpty()) {
        QCOMPARE(dayItem.sortKey(), dayKey.toLongLong());
        QCOMPARE(item.sortKey(), momentKey.toLongLong());
    }
}

void WTableSortTest::shouldSortByValueAndKeepTiesInFillOrder_data()
{
    QTest::addColumn<Items>("items");
    QTest::addColumn<Rows>("ascending");
    QTest::addColumn<Rows>("descending");

    QTest::newRow("nothing") << Items{} << Rows{} << Rows{};
    QTest::newRow("days across months and years")
        << Items{day(2002, 10, 1), day(2002, 9, 5), WDateTableItem(), day(2002, 9, 5), day(2001, 12, 31)}
        << Rows{2, 4, 1, 3, 0} << Rows{0, 1, 3, 4, 2};
    QTest::newRow("moments to the second")
        << Items{moment("2026-01-01T10:00:02"), moment("2026-01-01T10:00:01"), moment("2026-01-01T09:59:59"),
                 WDateTimeTableItem(), moment("2026-01-01T10:00:01")}
        << Rows{3, 2, 1, 4, 0} << Rows{0, 1, 4, 2, 3};
    QTest::newRow("titles as people read them")
        << Items{WKeyTableItem(QStringLiteral("week 10")), WKeyTableItem(QStringLiteral("Week 9")),
                 WKeyTableItem(QStringLiteral("week 9")),  WKeyTableItem(QString()),
                 WKeyTableItem(QStringLiteral("Äpfel")),   WKeyTableItem(QStringLiteral("apple"))}
        << Rows{3, 4, 5, 1, 2, 0} << Rows{0, 1, 2, 5, 4, 3};
    QTest::newRow("numbers") << Items{10, 9, 9, -1} << Rows{3, 1, 2, 0} << Rows{0, 1, 2, 3};
    QTest::newRow("check boxes") << Items{WCheckTableItem{true}, WCheckTableItem{false},
                                          WCheckTableItem{true}, WCheckTableItem{false}}
                                 << Rows{1, 3, 0, 2} << Rows{0, 2, 1, 3};
    QTest::newRow("empty cells first")
        << Items{day(2026, 1, 1), WTableItem(), day(2025, 1, 1)} << Rows{1, 2, 0} << Rows{0, 2, 1};
    QTest::newRow("numbers among texts")
        << Items{QStringLiteral("10"), 9, QStringLiteral("8")} << Rows{2, 1, 0} << Rows{0, 1, 2};
}

void WTableSortTest::shouldSortByValueAndKeepTiesInFillOrder()
{
    QFETCH(Items, items);
    QFETCH(Rows, ascending);
    QFETCH(Rows, descending);
    WTable table;
    fill(table, items);
    table.setSorting(true);
    table.sortBy(2);
    table.sortBy(0);
    QCOMPARE(fillNumbers(table), ascending);
    table.sortBy(0);
    QCOMPARE(fillNumbers(table), descending);
    table.sortBy(-1);
    QCOMPARE(fillNumbers(table), descending);
}

void WTableSortTest::shouldFollowClicksOnHeader()
{
    WTable table;
    fill(table, {3, 1, 2});
    table.resize(600, 300);
    table.setSorting(true);
    table.show();
    clickHeader(table, 1);
    QCOMPARE(table.sortColumn(), 1);
    QVERIFY(table.ascending());
    clickHeader(table, 1);
    QVERIFY(!table.ascending());
    QCOMPARE(fillNumbers(table), (Rows{2, 1, 0}));
    clickHeader(table, 0);
    QVERIFY(table.ascending());
    QCOMPARE(fillNumbers(table), (Rows{1, 2, 0}));
    clickHeader(table, 0);
    clickHeader(table, 0);
    QVERIFY(table.ascending());
    QCOMPARE(fillNumbers(table), (Rows{1, 2, 0}));
}

void WTableSortTest::shouldNotSortUntilEnabled()
{
    WTable table;
    fill(table, {3, 1, 2});
    table.sortBy(1);
    table.sortBy(0);
    QCOMPARE(fillNumbers(table), (Rows{0, 1, 2}));
    QCOMPARE(table.sortColumn(), 0);
    QVERIFY(table.ascending());
}

void WTableSortTest::shouldShowDirectionBeforeSortedHeaderOnly()
{
    const QIcon down = iconOf(Qt::red);
    const QIcon up = iconOf(Qt::blue);
    WTable table;
    fill(table, {3, 1, 2});
    table.setSorting(true);
    table.setSortIcons(down, up);
    table.sortBy(1);
    QVERIFY(hasIcon(table, 1, down));
    table.sortBy(1);
    QVERIFY(hasIcon(table, 1, up));
    table.sortBy(2);
    QVERIFY(hasIcon(table, 2, down));
    QVERIFY(!table.tableModel()->headerData(1, Qt::Horizontal, Qt::DecorationRole).isValid());
}

void WTableSortTest::shouldKeepSelectedRowAndItsPlaceInView()
{
    Items items;
    for (int i = 0; i < 500; ++i) {
        items.emplace_back(1000 - i);
    }
    WTable table;
    fill(table, items);
    table.resize(300, 200);
    table.setSorting(true);
    table.show();
    table.selectRow(2);
    table.sortBy(1);
    table.sortBy(0);
    QCOMPARE(table.currentRow(), 497);
    QCOMPARE(table.selectionModel()->selectedRows().size(), 1);
    QCOMPARE(table.selectionModel()->selectedRows().first().row(), 497);
    QVERIFY(table.viewport()->rect().intersects(table.visualRect(table.currentIndex())));

    table.selectRow(250);
    table.scrollToTop();
    table.sortBy(1);
    QCOMPARE(table.currentRow(), 249);
    QVERIFY2(table.verticalScrollBar()->value() == 0,
             "the view jumped away from what the user was looking at");
}

void WTableSortTest::shouldSortNewRowsWhenFilledAgain()
{
    WTable table;
    fill(table, {3, 1, 2});
    table.setSorting(true);
    table.sortBy(2);
    table.sortBy(0);
    table.sortBy(0);
    fill(table, {5, 6, 4});
    QCOMPARE(fillNumbers(table), (Rows{1, 0, 2}));
}

void WTableSortTest::shouldSortAgainAfterCellChanged()
{
    WTable table;
    fill(table, {3, 1, 2});
    table.setSorting(true);
    table.sortBy(2);
    table.sortBy(0);
    table.setItem(0, 0, 7);
    QCOMPARE(fillNumbers(table), (Rows{1, 2, 0}));
    table.sortBy(-1);
    QCOMPARE(fillNumbers(table), (Rows{2, 0, 1}));
}

void WTableSortTest::shouldIgnoreColumnThatDoesNotExist()
{
    WTable table;
    fill(table, {3, 1, 2});
    table.setSorting(true);
    table.sortBy(3);
    QCOMPARE(table.sortColumn(), 0);
    QCOMPARE(fillNumbers(table), (Rows{0, 1, 2}));
}

QTEST_MAIN(WTableSortTest)

#include "wtablesorttest.moc"
