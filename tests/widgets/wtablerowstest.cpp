// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "widgets/wtable.h"

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

namespace
{
constexpr int TitleColumn = 0;
constexpr int DoneColumn = 1;
constexpr int DateColumn = 2;

/** Title, check box and date, shown as date, title, check box: no display column is its own logical one. */
class RowsTable : public WTable
{
public:
    explicit RowsTable(int rows = 5)
    {
        setColumns({QStringLiteral("Title"), QStringLiteral("Done"), QStringLiteral("Date")},
                   {true, true, true});
        refill(rows);
        swapColumns(0, 2, true);
        swapColumns(1, 2, true);
        resize(500, 400);
        adjustAll();
        show();
    }

    void refill(int rows)
    {
        beginFill(rows);
        for (int row = 0; row < rows; ++row) {
            addRow({WKeyTableItem(QStringLiteral("Row %1").arg(row), &m_objects[row % 10]),
                    WCheckTableItem{false}, WDateTableItem(QDate(2026, 1, 1).addDays(rows - row))});
        }
        endFill();
    }

    [[nodiscard]] QPoint placeOf(int row, int column) const
    {
        return visualRect(model()->index(row, column)).center();
    }

    [[nodiscard]] QPoint boxOf(int row) const
    {
        const QRect cell = visualRect(model()->index(row, DoneColumn));
        QStyleOptionViewItem option;
        option.initFrom(this);
        option.rect = cell;
        option.features = QStyleOptionViewItem::HasCheckIndicator;
        return style()->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &option, this).center();
    }

    [[nodiscard]] bool isChecked(int row) const
    {
        return std::get<WCheckTableItem>(*item(row, DoneColumn)).checked;
    }

    [[nodiscard]] void *objectOf(int number) { return &m_objects[number]; }

private:
    int m_objects[10] = {};
};
} // namespace

class WTableRowsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void shouldTellOfBoxTickedWithMouse();
    void shouldTellOfBoxTickedWithSpace();
    void shouldTickOnlyBoxThatIsMeant_data();
    void shouldTickOnlyBoxThatIsMeant();
    void shouldTickSilentlyForOwner();
    void shouldReportClick_data();
    void shouldReportClick();
    void shouldReportDoubleClickOnRowButNotOnBox();
    void shouldReportReturn();
    void shouldAskForMenuOfRowUnderMouse_data();
    void shouldAskForMenuOfRowUnderMouse();
    void shouldAskForMenuOfCurrentRowByKeyboard();
    void shouldReachFirstAndLastRowByKeyboard();
    void shouldKeepCurrentRowOfSameObjectWhenFilledAgain();
    void shouldShowNoSelectionWhenOwnerWantsNone();
    void shouldMakeRowFromTooFewOrTooManyCells();
    void shouldWriteTextsAsOwnerWants();
    void shouldSayStateOfBoxToScreenReaders();
    void shouldGiveNoCellOutsideTable_data();
    void shouldGiveNoCellOutsideTable();
    void shouldMakeEmptyTableOfGivenSize();
};

void WTableRowsTest::shouldTellOfBoxTickedWithMouse()
{
    RowsTable table;
    QSignalSpy changes(&table, &WTable::valueChanged);
    QTest::mouseClick(table.viewport(), Qt::LeftButton, Qt::NoModifier, table.boxOf(2));
    QVERIFY(table.isChecked(2));
    QCOMPARE(changes.count(), 1);
    QCOMPARE(changes.first().at(0).toInt(), 2);
    QCOMPARE(changes.first().at(1).toInt(), table.getDispColumn(DoneColumn));
    QTest::mouseClick(table.viewport(), Qt::LeftButton, Qt::NoModifier, table.boxOf(2));
    QVERIFY(!table.isChecked(2));
    QTest::mouseClick(table.viewport(), Qt::LeftButton, Qt::NoModifier, table.placeOf(2, TitleColumn));
    QCOMPARE(changes.count(), 2);
}

void WTableRowsTest::shouldTellOfBoxTickedWithSpace()
{
    RowsTable table;
    QSignalSpy changes(&table, &WTable::valueChanged);
    table.selectRow(3);
    QTest::keyClick(&table, Qt::Key_Space);
    QVERIFY(table.isChecked(3));
    QCOMPARE(changes.count(), 1);
    QCOMPARE(changes.first().at(0).toInt(), 3);
    QTest::keyClick(&table, Qt::Key_Space);
    QVERIFY(!table.isChecked(3));
    QCOMPARE(table.currentRow(), 3);
}

void WTableRowsTest::shouldTickOnlyBoxThatIsMeant_data()
{
    QTest::addColumn<bool>("secondBox");
    QTest::addColumn<bool>("hidden");
    QTest::newRow("two boxes in the row") << true << false;
    QTest::newRow("box that is hidden") << false << true;
}

void WTableRowsTest::shouldTickOnlyBoxThatIsMeant()
{
    QFETCH(bool, secondBox);
    QFETCH(bool, hidden);
    RowsTable table;
    if (secondBox) {
        table.setItem(1, DateColumn, WCheckTableItem{false});
    }
    if (hidden) {
        table.hideColumn(DoneColumn);
    }
    table.setCurrentIndex(table.model()->index(1, TitleColumn));
    QSignalSpy changes(&table, &WTable::valueChanged);
    QTest::keyClick(&table, Qt::Key_Space);
    QCOMPARE(changes.count(), 0);
    QVERIFY(!table.isChecked(1));
}

void WTableRowsTest::shouldTickSilentlyForOwner()
{
    RowsTable table;
    QSignalSpy changes(&table, &WTable::valueChanged);
    table.setChecked(1, DoneColumn, true);
    QVERIFY(table.isChecked(1));
    table.setChecked(1, TitleColumn, true);
    QVERIFY(std::holds_alternative<WKeyTableItem>(*table.item(1, TitleColumn)));
    QCOMPARE(changes.count(), 0);
}

void WTableRowsTest::shouldReportClick_data()
{
    QTest::addColumn<int>("button");
    QTest::newRow("left") << int(Qt::LeftButton);
    QTest::newRow("right") << int(Qt::RightButton);
}

void WTableRowsTest::shouldReportClick()
{
    QFETCH(int, button);
    const auto mouseButton = Qt::MouseButton(button);
    RowsTable table;
    QSignalSpy clicks(&table, &WTable::rowClicked);
    const QPoint pos = table.placeOf(3, TitleColumn);
    QTest::mouseClick(table.viewport(), mouseButton, Qt::NoModifier, pos);
    QCOMPARE(clicks.count(), 1);
    QCOMPARE(clicks.first(), (QVariantList{3, table.getDispColumn(TitleColumn), button, pos}));
    QCOMPARE(table.currentRow(), 3);

    QTest::mouseClick(table.viewport(), mouseButton, Qt::NoModifier,
                      QPoint(pos.x(), table.viewport()->height() - 2));
    QTest::mousePress(table.viewport(), mouseButton, Qt::NoModifier, table.placeOf(1, TitleColumn));
    QTest::mouseRelease(table.viewport(), mouseButton, Qt::NoModifier, table.placeOf(4, TitleColumn));
    QCOMPARE(clicks.count(), 1);
}

void WTableRowsTest::shouldReportDoubleClickOnRowButNotOnBox()
{
    RowsTable table;
    QSignalSpy clicks(&table, &WTable::rowClicked);
    QSignalSpy doubleClicks(&table, &WTable::rowDoubleClicked);
    const QPoint pos = table.placeOf(2, TitleColumn);
    QTest::mouseClick(table.viewport(), Qt::LeftButton, Qt::NoModifier, pos);
    QTest::mouseDClick(table.viewport(), Qt::LeftButton, Qt::NoModifier, pos);
    QCOMPARE(doubleClicks.count(), 1);
    QCOMPARE(doubleClicks.first(),
             (QVariantList{2, table.getDispColumn(TitleColumn), int(Qt::LeftButton), pos}));

    QTest::mouseClick(table.viewport(), Qt::LeftButton, Qt::NoModifier, table.boxOf(2));
    QTest::mouseDClick(table.viewport(), Qt::LeftButton, Qt::NoModifier, table.boxOf(2));
    QCOMPARE(doubleClicks.count(), 1);
    QVERIFY(clicks.count() >= 2);
}

void WTableRowsTest::shouldReportReturn()
{
    RowsTable table;
    QSignalSpy activations(&table, &WTable::rowActivated);
    table.selectRow(4);
    QTest::keyClick(&table, Qt::Key_Return);
    QTest::keyClick(&table, Qt::Key_Enter, Qt::KeypadModifier);
    QCOMPARE(activations.count(), 2);
    QCOMPARE(activations.first().first().toInt(), 4);
}

void WTableRowsTest::shouldAskForMenuOfRowUnderMouse_data()
{
    QTest::addColumn<bool>("onRow");
    QTest::newRow("on a row") << true;
    QTest::newRow("below the rows") << false;
}

void WTableRowsTest::shouldAskForMenuOfRowUnderMouse()
{
    QFETCH(bool, onRow);
    RowsTable table;
    QSignalSpy menus(&table, &WTable::contextMenuRequested);
    const QPoint pos =
        onRow ? table.placeOf(1, DateColumn) : QPoint(table.viewport()->rect().bottomLeft() + QPoint(5, -5));
    const QPoint globalPos = table.viewport()->mapToGlobal(pos);
    QContextMenuEvent event(QContextMenuEvent::Mouse, pos, globalPos);
    QCoreApplication::sendEvent(table.viewport(), &event);
    QCOMPARE(menus.count(), 1);
    const int column = onRow ? table.getDispColumn(DateColumn) : -1;
    QCOMPARE(menus.first(), (QVariantList{onRow ? 1 : -1, column, globalPos}));
}

void WTableRowsTest::shouldAskForMenuOfCurrentRowByKeyboard()
{
    RowsTable table(200);
    QSignalSpy menus(&table, &WTable::contextMenuRequested);
    table.selectRow(150);
    table.scrollToTop();
    QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(0, 0));
    QCoreApplication::sendEvent(&table, &event);
    QTest::keyClick(&table, Qt::Key_F10, Qt::ShiftModifier);
    QCOMPARE(menus.count(), 2);
    for (const QVariantList &menu : {menus.at(0), menus.at(1)}) {
        QCOMPARE(menu.at(0).toInt(), 150);
        const QPoint pos = table.viewport()->mapFromGlobal(menu.at(2).toPoint());
        QCOMPARE(table.indexAt(pos).row(), 150);
    }
}

void WTableRowsTest::shouldReachFirstAndLastRowByKeyboard()
{
    RowsTable table(50);
    QSignalSpy moves(&table, &WTable::currentRowChanged);
    table.selectRow(10);
    QTest::keyClick(&table, Qt::Key_End);
    QCOMPARE(table.currentRow(), 49);
    QTest::keyClick(&table, Qt::Key_Home);
    QCOMPARE(table.currentRow(), 0);
    QTest::keyClick(&table, Qt::Key_Right);
    QTest::keyClick(&table, Qt::Key_Down);
    QCOMPARE(table.currentRow(), 1);
    QCOMPARE(moves.count(), 4);
    QCOMPARE(moves.last().first().toInt(), 1);
}

void WTableRowsTest::shouldKeepCurrentRowOfSameObjectWhenFilledAgain()
{
    RowsTable table(10);
    table.selectRow(7);
    const int scrolled = table.verticalScrollBar()->value();
    table.refill(9);
    QCOMPARE(table.currentRow(), 7);
    QCOMPARE(table.keyOfRow(7), table.objectOf(7));
    QVERIFY(table.selectionModel()->isRowSelected(7, QModelIndex()));
    QCOMPARE(table.verticalScrollBar()->value(), scrolled);
    table.refill(3);
    QCOMPARE(table.currentRow(), -1);
    QCOMPARE(table.rowOfKey(table.objectOf(2)), 2);
    QCOMPARE(table.rowOfKey(table.objectOf(7)), -1);
}

void WTableRowsTest::shouldShowNoSelectionWhenOwnerWantsNone()
{
    RowsTable table;
    table.selectRow(1);
    table.setRowSelection(false);
    QTest::mouseClick(table.viewport(), Qt::LeftButton, Qt::NoModifier, table.placeOf(2, TitleColumn));
    QVERIFY(!table.selectionModel()->hasSelection());
    table.setRowSelection(true);
    QTest::mouseClick(table.viewport(), Qt::LeftButton, Qt::NoModifier, table.placeOf(2, TitleColumn));
    QVERIFY(table.selectionModel()->isRowSelected(2, QModelIndex()));
}

void WTableRowsTest::shouldMakeRowFromTooFewOrTooManyCells()
{
    RowsTable table;
    table.beginFill(2);
    table.addRow({QStringLiteral("few")});
    table.addRow({QStringLiteral("many"), 1, 2, 3, 4, 5});
    table.endFill();
    QCOMPARE(table.rowCount(), 2);
    QVERIFY(std::holds_alternative<std::monostate>(*table.item(0, DateColumn)));
    QCOMPARE(std::get<QString>(*table.item(1, TitleColumn)), QStringLiteral("many"));
    QCOMPARE(std::get<int>(*table.item(1, DateColumn)), 2);
}

void WTableRowsTest::shouldWriteTextsAsOwnerWants()
{
    RowsTable table(1);
    const QModelIndex cell = table.model()->index(0, DateColumn);
    const QDate date(2026, 1, 2);
    QCOMPARE(cell.data().toString(), QLocale().toString(date, QLocale::ShortFormat));
    table.setDateFormatter([](const QDate &day) { return day.toString(Qt::ISODate); });
    QCOMPARE(cell.data().toString(), QStringLiteral("2026-01-02"));
    table.setItem(0, DateColumn, WDateTableItem());
    QCOMPARE(cell.data().toString(), QString());
    table.setDateTimeFormatter([](const QDateTime &time) { return time.toString(QStringLiteral("HH~mm")); });
    table.setItem(0, DateColumn, WDateTimeTableItem(date.startOfDay(Qt::UTC).addSecs(3660)));
    QCOMPARE(cell.data().toString(), QStringLiteral("01~01"));
}

void WTableRowsTest::shouldSayStateOfBoxToScreenReaders()
{
    RowsTable table(1);
    const QModelIndex cell = table.model()->index(0, DoneColumn);
    QCOMPARE(cell.data(Qt::AccessibleTextRole).toString(), QStringLiteral("not checked"));
    table.setChecked(0, DoneColumn, true);
    QCOMPARE(cell.data(Qt::AccessibleTextRole).toString(), QStringLiteral("checked"));
}

void WTableRowsTest::shouldGiveNoCellOutsideTable_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("column");
    QTest::newRow("before the first row") << -1 << 0;
    QTest::newRow("after the last row") << 5 << 0;
    QTest::newRow("before the first column") << 0 << -1;
    QTest::newRow("after the last column") << 0 << 3;
}

void WTableRowsTest::shouldGiveNoCellOutsideTable()
{
    QFETCH(int, row);
    QFETCH(int, column);
    RowsTable table(5);
    table.setItem(row, column, 1);
    table.setChecked(row, column, true);
    QVERIFY(!table.item(row, column));
    QCOMPARE(table.rowCount(), 5);
}

void WTableRowsTest::shouldMakeEmptyTableOfGivenSize()
{
    const WTable table(3, 2);
    QCOMPARE(table.rowCount(), 3);
    QCOMPARE(table.colActivesInt(), (QList<int>{1, 1}));
    QVERIFY(std::holds_alternative<std::monostate>(*table.item(2, 1)));
}

QTEST_MAIN(WTableRowsTest)

#include "wtablerowstest.moc"
