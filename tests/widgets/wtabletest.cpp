// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "widgets/wtable.h"

#include <KConfig>
#include <KConfigGroup>

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QMenu>
#include <QRandomGenerator>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

using Items = std::vector<WTableItem>;
Q_DECLARE_METATYPE(Items)

namespace
{
const QStringList Headers = QStringLiteral("Start Due Title Com Pri").split(QLatin1Char(' '));
const QList<bool> Actives{true, false, true, true, true};
const QList<int> Widths{101, 102, 103, 104, 105};
const char Default[] = "Start -Due Title Com Pri";

/** The items of the column menu, with a dash before those of hidden columns. */
QString columnsOf(const WTable &table)
{
    QStringList result;
    const QList<QAction *> items = table.columnMenu()->actions();
    for (const QAction *item : items) {
        const bool hidden = table.isColumnHidden(table.getOrigColumn(int(result.count())));
        const QString mark = QLatin1String(hidden ? "-" : "");
        result.append(item->isChecked() == hidden ? QStringLiteral("wrong tick") : mark + item->text());
    }
    return result.join(QLatin1Char(' '));
}

/** Shows a table with the items in the first column and the numbers of the rows in the second. */
void fill(WTable &table, const Items &items)
{
    table.setColumns(Headers, {true, true, true, true, true}, {}, Widths);
    table.beginFill(int(items.size()));
    int number = 0;
    for (const WTableItem &item : items)
        table.addRow({item, number++});
    table.endFill();
    table.resize(1200, 300);
    table.show();
}

QString rowNumbers(const WTable &table)
{
    QString result;
    for (int row = 0; row < table.rowCount(); ++row)
        result += QString::number(std::get<int>(*table.item(row, 1)));
    return result;
}

/** A place in a cell, and in its check box if it has one. */
QPoint placeOf(const WTable &table, int row, int column)
{
    const QRect cell = table.visualRect(table.model()->index(row, column));
    return {cell.left() + table.style()->pixelMetric(QStyle::PM_IndicatorWidth), cell.center().y()};
}
} // namespace

class WTableTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void shouldKeepWidthOfHiddenColumnAndLastShownColumn();
    void shouldListMovedColumnsAndWarnOfMissingOnes();
    void shouldWorkHeaderWithKeyboard();
    void shouldFitToContentsWithinReason();
    void shouldShowNoMoreOfALongTextThanIsRead();
    void shouldStretchColumnUntilUserSizesOne();
    void shouldRestoreWhatWasSaved();
    void shouldSurviveConfiguration_data();
    void shouldSurviveConfiguration();
    void shouldSortByValueAndKeepTiesInFillOrder_data();
    void shouldSortByValueAndKeepTiesInFillOrder();
    void shouldSortByClicksOnHeaderOnceEnabled();
    void shouldKeepSelectedRowWhenSortedOrFilledAgain();
    void shouldTellOfBoxTickedByHand();
    void shouldReportWhatMouseDoesToRows();
    void shouldReportWhatKeysDoToRows();
};

void WTableTest::shouldKeepWidthOfHiddenColumnAndLastShownColumn()
{
    WTable table;
    table.setColumns(Headers, {false, false, false, true, true}, {}, Widths);
    const QList<QAction *> items = table.columnMenu()->actions();
    items.at(1)->trigger();
    QCOMPARE(table.columnWidth(1), 102);
    table.setColumnWidth(1, 222);
    for (const int column : {1, 1, 4, 3})
        table.hideColumn(column);
    QCOMPARE(columnsOf(table), QStringLiteral("-Start -Due -Title Com -Pri"));
    QVERIFY(!items.at(3)->isEnabled());
    items.at(1)->trigger();
    QVERIFY(items.at(3)->isEnabled());
    QCOMPARE(table.columnWidth(1), 222);
    table.setColumns(Headers, {false, false, false, false, false});
    QCOMPARE(table.colActivesInt().count(1), 1);
}

void WTableTest::shouldListMovedColumnsAndWarnOfMissingOnes()
{
    WTable table;
    QTest::ignoreMessage(QtWarningMsg, "ASSERT: \"n.count()==t.count()\" in wtable (91)");
    table.setColumns(Headers, Actives, {QStringLiteral("Begin")});
    QTest::ignoreMessage(QtWarningMsg, "ASSERT: \"(unsigned int)col<colactives.count()\" in wtable (158)");
    table.columnDisplayChange(5);
    table.swapColumns(0, 5, true);
    table.swapColumns(0, 4, true);
    QCOMPARE(columnsOf(table), QStringLiteral("Pri -Due Title Com Begin"));
    table.swapColumns(0, 2, false);
    QCOMPARE(table.getOrigColumn(0), 2);
    QCOMPARE(table.getDispColumn(4), 2);
    QCOMPARE(table.model()->headerData(2, Qt::Horizontal).toString(), QStringLiteral("Pri"));
}

void WTableTest::shouldWorkHeaderWithKeyboard()
{
    WTable table;
    table.setColumns(Headers, Actives, {}, Widths);
    table.setSorting(true);
    QHeaderView *header = table.horizontalHeader();
    QTest::keyClick(header, Qt::Key_Right);
    QCOMPARE(header->accessibleName(), QStringLiteral("Title"));
    QTest::keyClick(header, Qt::Key_Space);
    QCOMPARE(table.sortColumn(), 2);
    QTest::keyClick(header, Qt::Key_Right, Qt::ControlModifier);
    QCOMPARE(columnsOf(table), QStringLiteral("Start -Due Com Title Pri"));
    QTest::keyClick(header, Qt::Key_Right, Qt::ShiftModifier);
    QVERIFY(table.columnWidth(2) > 103);
    QTest::keyClick(header, Qt::Key_F10, Qt::ShiftModifier);
    QVERIFY(table.columnMenu()->isVisible());
}

void WTableTest::shouldFitToContentsWithinReason()
{
    int written = 0;
    WTable table;
    table.setDateFormatter([&written](const QDate &) { return QString::number(++written); });
    fill(table, Items(5000, WDateTableItem(QDate(2026, 1, 1))));
    table.setItem(0, 3, QString(5000, QLatin1Char('w')));
    table.adjustAll();
    QVERIFY2(written > 0 && written <= 500, "all rows were measured");
    QVERIFY(table.columnWidth(3) > table.columnWidth(2) && table.columnWidth(3) < 2000);
}

void WTableTest::shouldShowNoMoreOfALongTextThanIsRead()
{
    WTable table;
    const QString halves = QString::fromUtf8("😀").repeated(1 << 20); // of which each takes two
    fill(table, {WTableItem(QLatin1Char('x') + halves), WTableItem(QStringLiteral("<b>short"))});
    QCOMPARE(table.model()->index(0, 0).data().toString(),
             QString(QLatin1Char('x') + halves.left(998) + QChar(0x2026)));
    QCOMPARE(table.model()->index(1, 0).data().toString(), QStringLiteral("<b>short"));
    QCOMPARE(std::get<QString>(*table.item(0, 0)).size(), 1 + halves.size());
}

void WTableTest::shouldStretchColumnUntilUserSizesOne()
{
    KConfig config(QString(), KConfig::SimpleConfig);
    WTable table;
    table.readConfig(&config, QString(), Headers, Actives, {});
    table.setStretchColumn(2);
    table.show();
    for (const int width : {900, 800}) {
        table.resize(width, 200);
        QCOMPARE(table.horizontalHeader()->length(), table.viewport()->width());
        table.columnDisplayChange(1);
        QCOMPARE(table.horizontalHeader()->length(), table.viewport()->width());
    }
    table.writeConfig(&config, QString());
    QCOMPARE(config.group(QStringLiteral("WTable_")).readEntry("Widths"), QString());
    table.setColumnWidth(0, 222);
    table.resize(1200, 200);
    QVERIFY(table.horizontalHeader()->length() < table.viewport()->width());
}

void WTableTest::shouldRestoreWhatWasSaved()
{
    QRandomGenerator random(1);
    for (int round = 0; round < 8; ++round) {
        WTable table;
        table.setColumns(Headers, Actives);
        table.setSorting(true);
        for (int i = 0; i < 20; ++i) {
            table.horizontalHeader()->moveSection(random.bounded(5), random.bounded(5));
            table.columnDisplayChange(random.bounded(5));
            table.setColumnWidth(random.bounded(5), random.bounded(80, 300));
            table.sortBy(random.bounded(5));
        }
        KConfig config(QString(), KConfig::SimpleConfig);
        table.writeConfig(&config, QString());
        WTable restored;
        restored.readConfig(&config, QString(), Headers, Actives, {});
        QCOMPARE(columnsOf(restored), columnsOf(table));
        QCOMPARE(restored.colWidths(), table.colWidths());
        QCOMPARE(restored.sortColumn(), table.sortColumn());
        QCOMPARE(restored.ascending(), table.ascending());
    }
}

void WTableTest::shouldSurviveConfiguration_data()
{
    QTest::addColumn<QString>("columns");
    QTest::addColumn<QByteArray>("warning");
    const QByteArray actives = "ASSERT: \"t.count()==a.count()\" in wtable (87)";
    QTest::newRow("ColumnOrder1=0,1,2,3,4 ColumnOrder2=1,2,3,4,0")
        << "Pri Start -Due Title Com" << QByteArray();
    QTest::newRow("ActiveColumns=0,1") << "-Start Due Title Com Pri" << actives;
    QTest::newRow("ActiveColumns=0,1,0,0,0,1,1") << "-Start Due -Title -Com -Pri" << actives;
    QTest::newRow("Widths=90") << Default << QByteArray("ASSERT: \"w.count()==t.count()\" in wtable (108)");
    for (const char *entries :
         {"ActiveColumns=0,0,0,0,0", "ActiveColumns=a,b,c,d,e", "Widths=-5,0,2000000000,900000,1",
          "ColumnOrder1=0,1 ColumnOrder2=1,0", "ColumnOrder1=0,1,2,3,4 ColumnOrder2=1,0",
          "ColumnOrder1=0,1,2,3,3 ColumnOrder2=4,3,2,1,0", "ColumnOrder1=0,1,2,3,4 ColumnOrder2=5,4,3,2,1",
          "SortColumn=-7", "SortColumn=5"})
        QTest::newRow(entries) << Default << QByteArray();
}

void WTableTest::shouldSurviveConfiguration()
{
    QFETCH(QString, columns);
    QFETCH(QByteArray, warning);
    KConfig config(QString(), KConfig::SimpleConfig);
    KConfigGroup group = config.group(QStringLiteral("WTable_List"));
    const QStringList entries = QString::fromLatin1(QTest::currentDataTag()).split(QLatin1Char(' '));
    for (const QString &entry : entries)
        group.writeEntry(entry.section(QLatin1Char('='), 0, 0), entry.section(QLatin1Char('='), 1));
    if (!warning.isEmpty())
        QTest::ignoreMessage(QtWarningMsg, warning.constData());
    WTable table;
    table.readConfig(&config, QStringLiteral("List"), Headers, Actives, {});
    QCOMPARE(columnsOf(table), columns);
    QCOMPARE(table.sortColumn(), 0);
    for (const int width : table.colWidths())
        QVERIFY2(width > 5 && width <= 10000, qPrintable(QString::number(width)));
}

void WTableTest::shouldSortByValueAndKeepTiesInFillOrder_data()
{
    QTest::addColumn<Items>("items");
    QTest::addColumn<QString>("upAndDown");
    const auto day = [](int month, int number) { return WDateTableItem(QDate(2002, month, number)); };
    const auto moment = [](int month, int number, int second) {
        return WDateTimeTableItem(QDateTime(QDate(2002, month, number), QTime(7, 3, second), Qt::UTC));
    };
    const auto text = [](const char *title) { return WKeyTableItem(QString::fromUtf8(title)); };
    QTest::newRow("days") << Items{day(10, 1), day(9, 5), day(2, 30), day(9, 5), day(9, 12)} << "21340 04132";
    QTest::newRow("moments and a day")
        << Items{moment(10, 1, 0), moment(9, 5, 2), moment(2, 30, 0), moment(9, 5, 10), day(9, 6)}
        << "21340 04312";
    QTest::newRow("titles as people read them")
        << Items{text("week 10"), text("Week 9"), text("week 9"), text(""), text("Äpfel"), text("apple")}
        << "345120 012543";
    QTest::newRow("numbers, empty first") << Items{10, 9, 9, {}, -1} << "34120 01243";
    QTest::newRow("boxes") << Items{WCheckTableItem{true}, WCheckTableItem{}} << "10 01";
    QTest::newRow("numbers among texts") << Items{text("10"), 9, text("8")} << "210 012";
}

void WTableTest::shouldSortByValueAndKeepTiesInFillOrder()
{
    QFETCH(Items, items);
    QFETCH(QString, upAndDown);
    WTable table;
    table.setSorting(true);
    fill(table, items);
    const QString up = rowNumbers(table);
    table.sortBy(0);
    QCOMPARE(up + QLatin1Char(' ') + rowNumbers(table), upAndDown);
}

void WTableTest::shouldSortByClicksOnHeaderOnceEnabled()
{
    WTable table;
    table.setSortIcons(QIcon(), QIcon(QPixmap(16, 16)));
    fill(table, {3, 1, 2});
    QWidget *header = table.horizontalHeader()->viewport();
    QTest::mouseClick(header, Qt::LeftButton, {}, QPoint(Widths.at(0) / 2, 5));
    QCOMPARE(rowNumbers(table), QStringLiteral("012"));
    table.setSorting(true);
    QTest::mouseClick(header, Qt::LeftButton, {}, QPoint(Widths.at(0) / 2, 5));
    QCOMPARE(rowNumbers(table), QStringLiteral("021"));
    QVERIFY(table.model()->headerData(0, Qt::Horizontal, Qt::DecorationRole).isValid());
    QTest::mouseClick(header, Qt::LeftButton, {}, QPoint(Widths.at(0) * 3 / 2, 5));
    QTest::mouseClick(header, Qt::LeftButton, {}, QPoint(Widths.at(0) / 2, 5));
    QCOMPARE(rowNumbers(table), QStringLiteral("120"));
    table.setItem(0, 0, 7);
    table.sortBy(-1);
    QCOMPARE(rowNumbers(table), QStringLiteral("201"));
}

void WTableTest::shouldKeepSelectedRowWhenSortedOrFilledAgain()
{
    Items items(500, QStringLiteral("same"));
    items[249] = WKeyTableItem(QStringLiteral("same"), this);
    WTable table;
    table.setSorting(true);
    fill(table, items);
    table.selectRow(2);
    table.sortBy(1);
    table.sortBy(1);
    QCOMPARE(table.currentRow(), 497);
    QVERIFY(table.selectionModel()->isRowSelected(497, QModelIndex()));
    QVERIFY(table.viewport()->rect().intersects(table.visualRect(table.currentIndex())));
    table.selectRow(250);
    table.scrollToTop();
    table.sortBy(1);
    QVERIFY2(table.verticalScrollBar()->value() == 0, "the view jumped away from what the user looked at");
    fill(table, Items(items.begin() + 100, items.end()));
    QCOMPARE(table.currentRow(), 149);
    QVERIFY(table.selectionModel()->isRowSelected(149, QModelIndex()));
    fill(table, Items(200));
    fill(table, Items(200));
    QCOMPARE(table.currentRow(), -1);
}

void WTableTest::shouldTellOfBoxTickedByHand()
{
    WTable table;
    fill(table, Items(5, WCheckTableItem{}));
    table.swapColumns(0, 2, true);
    QSignalSpy ticks(&table, &WTable::valueChanged);
    table.setChecked(2, 0, true);
    QCOMPARE(ticks.count(), 0);
    QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, placeOf(table, 2, 0));
    QVERIFY(!std::get<WCheckTableItem>(*table.item(2, 0)).checked);
    QCOMPARE(ticks.takeFirst(), (QVariantList{2, 2}));
    QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, placeOf(table, 3, 1));
    QTest::keyClick(&table, Qt::Key_Space);
    QVERIFY(std::get<WCheckTableItem>(*table.item(3, 0)).checked);
    QCOMPARE(ticks.takeFirst(), (QVariantList{3, 2}));
    table.hideColumn(0);
    QTest::keyClick(&table, Qt::Key_Space);
    table.showColumn(0);
    table.setItem(3, 2, WCheckTableItem{});
    QTest::keyClick(&table, Qt::Key_Space);
    QVERIFY2(ticks.isEmpty(), "a box was ticked that is hidden or one of two");
}

void WTableTest::shouldReportWhatMouseDoesToRows()
{
    WTable table;
    fill(table, Items(5, WCheckTableItem{}));
    table.swapColumns(0, 2, true);
    QSignalSpy clicks(&table, &WTable::rowClicked);
    QSignalSpy doubleClicks(&table, &WTable::rowDoubleClicked);
    QSignalSpy menus(&table, &WTable::contextMenuRequested);
    QWidget *viewport = table.viewport();
    const QPoint pos = placeOf(table, 3, 2);
    QTest::mouseClick(viewport, Qt::RightButton, {}, pos);
    QCOMPARE(clicks.takeFirst(), (QVariantList{3, 0, int(Qt::RightButton), pos}));
    QTest::mousePress(viewport, Qt::LeftButton, {}, placeOf(table, 1, 2));
    QTest::mouseRelease(viewport, Qt::LeftButton, {}, pos);
    QVERIFY2(clicks.isEmpty(), "pressed on one row and released on another");
    QTest::mouseDClick(viewport, Qt::LeftButton, {}, pos);
    QTest::mouseDClick(viewport, Qt::LeftButton, {}, placeOf(table, 2, 0));
    QCOMPARE(doubleClicks.takeFirst(), (QVariantList{3, 0, int(Qt::LeftButton), pos}));
    QVERIFY2(doubleClicks.isEmpty(), "a double click on a box is two ticks");
    QContextMenuEvent menu(QContextMenuEvent::Mouse, pos, viewport->mapToGlobal(pos));
    QCoreApplication::sendEvent(viewport, &menu);
    QCOMPARE(menus.takeFirst(), (QVariantList{3, 0, menu.globalPos()}));
    fill(table, {1});
    QCoreApplication::sendEvent(viewport, &menu);
    QCOMPARE(menus.takeFirst(), (QVariantList{-1, -1, menu.globalPos()}));
}

void WTableTest::shouldReportWhatKeysDoToRows()
{
    WTable table;
    fill(table, Items(50, 1));
    table.selectRow(10);
    QSignalSpy moves(&table, &WTable::currentRowChanged);
    QSignalSpy activations(&table, &WTable::rowActivated);
    QSignalSpy menus(&table, &WTable::contextMenuRequested);
    for (const Qt::Key key : {Qt::Key_Home, Qt::Key_Right, Qt::Key_Down, Qt::Key_End, Qt::Key_Return})
        QTest::keyClick(&table, key);
    for (const int row : {0, 1, 49})
        QCOMPARE(moves.takeFirst().first().toInt(), row);
    QCOMPARE(activations.takeFirst().first().toInt(), 49);
    table.scrollToTop();
    QTest::keyClick(&table, Qt::Key_F10, Qt::ShiftModifier);
    const QPoint pos = table.viewport()->mapFromGlobal(menus.first().at(2).toPoint());
    QVERIFY(table.indexAt(pos).row() == 49 && table.viewport()->rect().contains(pos));
    QContextMenuEvent menu(QContextMenuEvent::Keyboard, QPoint(), QPoint());
    QCoreApplication::sendEvent(&table, &menu);
    QCOMPARE(menus.at(1), menus.at(0));
}

QTEST_MAIN(WTableTest)

#include "wtabletest.moc"
