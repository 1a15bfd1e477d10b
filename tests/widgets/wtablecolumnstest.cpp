// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "widgets/wtable.h"
#include "widgets/wtableheader.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QTest>

using Ints = QList<int>;

namespace
{
const QStringList Headers{QStringLiteral("Start"), QStringLiteral("Due"), QStringLiteral("Title"),
                          QStringLiteral("Com"), QStringLiteral("Pri")};
const QStringList MenuNames{QStringLiteral("Start date && time"), QStringLiteral("Due date"),
                            QStringLiteral("Title"), QStringLiteral("Complete"), QStringLiteral("Priority")};
const QList<bool> Actives{true, false, true, true, true};
const Ints Widths{101, 102, 103, 104, 105};

const char ActivesWarning[] = "ASSERT: \"t.count()==a.count()\" in wtable (87)";
const char NamesWarning[] = "ASSERT: \"n.count()==t.count()\" in wtable (91)";
const char WidthsWarning[] = "ASSERT: \"w.count()==t.count()\" in wtable (108)";
const char ColumnWarning[] = "ASSERT: \"(unsigned int)col<colactives.count()\" in wtable (158)";

Ints positions(const WTable &table)
{
    Ints result;
    for (int column = 0; column < Headers.count(); ++column) {
        result.append(table.getDispColumn(column));
    }
    return result;
}

Ints shownColumns(const WTable &table)
{
    Ints result;
    for (int column = 0; column < Headers.count(); ++column) {
        result.append(table.isColumnHidden(column) ? 0 : 1);
    }
    return result;
}

QAction *menuItem(const WTable &table, const QString &name)
{
    const QList<QAction *> items = table.columnMenu()->actions();
    for (QAction *item : items) {
        if (item->text() == name) {
            return item;
        }
    }
    return nullptr;
}

QStringList menuTexts(const WTable &table)
{
    QStringList result;
    const QList<QAction *> items = table.columnMenu()->actions();
    for (const QAction *item : items) {
        result.append(item->text());
    }
    return result;
}

QPoint edgeOf(const WTable &table, int column)
{
    const QHeaderView *header = table.horizontalHeader();
    return {header->sectionViewportPosition(column) + header->sectionSize(column) - 1, header->height() / 2};
}

void drag(QWidget *widget, const QPoint &from, const QPoint &to)
{
    QTest::mousePress(widget, Qt::LeftButton, Qt::NoModifier, from);
    for (const QPoint &pos : {(from + to) / 2, to}) {
        QMouseEvent move(QEvent::MouseMove, pos, widget->mapToGlobal(pos), Qt::NoButton, Qt::LeftButton,
                         Qt::NoModifier);
        QCoreApplication::sendEvent(widget, &move);
    }
    QTest::mouseRelease(widget, Qt::LeftButton, Qt::NoModifier, to);
}
} // namespace

class WTableColumnsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void shouldWarnOfCountsAndGoOn_data();
    void shouldWarnOfCountsAndGoOn();
    void shouldWarnOfMenuItemWithoutColumn();
    void shouldTakeHeadersForMissingMenuNames();
    void shouldGiveHiddenColumnItsWidthBack();
    void shouldHideAndShowFromMenu();
    void shouldKeepLastShownColumn();
    void shouldListColumnsInDisplayOrder();
    void shouldMoveHeaderTextOnlyWhenTold();
    void shouldOpenMenuWithMouseAndKeyboard();
    void shouldWorkHeaderWithKeyboard_data();
    void shouldWorkHeaderWithKeyboard();
    void shouldFitToContentsWithinReason();
    void shouldNotMeasureLongTables();
    void shouldTellUsersWidthsFromFittedOnes();
    void shouldKeepColumnsWhenFilled();
};

void WTableColumnsTest::shouldWarnOfCountsAndGoOn_data()
{
    QTest::addColumn<QList<bool>>("actives");
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<Ints>("widths");
    QTest::addColumn<QByteArray>("warning");
    QTest::addColumn<Ints>("shown");
    QTest::newRow("too few actives") << QList<bool>{false} << MenuNames << Widths
                                     << QByteArray(ActivesWarning) << Ints{0, 1, 1, 1, 1};
    QTest::newRow("too many actives")
        << (Actives + Actives) << MenuNames << Widths << QByteArray(ActivesWarning) << Ints{1, 0, 1, 1, 1};
    QTest::newRow("too few menu names") << Actives << QStringList(MenuNames.mid(0, 2)) << Widths
                                        << QByteArray(NamesWarning) << Ints{1, 0, 1, 1, 1};
    QTest::newRow("too many menu names") << Actives << QStringList(MenuNames + MenuNames) << Widths
                                         << QByteArray(NamesWarning) << Ints{1, 0, 1, 1, 1};
    QTest::newRow("too few widths") << Actives << MenuNames << Ints{150} << QByteArray(WidthsWarning)
                                    << Ints{1, 0, 1, 1, 1};
    QTest::newRow("too many widths") << Actives << MenuNames << (Widths + Widths) << QByteArray(WidthsWarning)
                                     << Ints{1, 0, 1, 1, 1};
}

void WTableColumnsTest::shouldWarnOfCountsAndGoOn()
{
    QFETCH(QList<bool>, actives);
    QFETCH(QStringList, names);
    QFETCH(Ints, widths);
    QFETCH(QByteArray, warning);
    QFETCH(Ints, shown);
    WTable table;
    QTest::ignoreMessage(QtWarningMsg, warning.constData());
    table.setColumns(Headers, actives, names, widths);
    QCOMPARE(shownColumns(table), shown);
    QCOMPARE(table.colActivesInt(), shown);
    QCOMPARE(table.columnMenu()->actions().count(), Headers.count());
    QCOMPARE(table.colWidths().first(), widths.first());
    for (const int width : table.colWidths()) {
        QVERIFY(width > 0);
    }
}

void WTableColumnsTest::shouldWarnOfMenuItemWithoutColumn()
{
    WTable table;
    table.setColumns(Headers, Actives);
    for (const int id : {-1, 5}) {
        QTest::ignoreMessage(QtWarningMsg, ColumnWarning);
        table.columnDisplayChange(id);
    }
    table.hideColumn(5);
    table.showColumn(-1);
    table.swapColumns(0, 5, true);
    QCOMPARE(shownColumns(table), (Ints{1, 0, 1, 1, 1}));
    QCOMPARE(table.getOrigColumn(5), -1);
    QCOMPARE(table.getDispColumn(-1), -1);
}

void WTableColumnsTest::shouldTakeHeadersForMissingMenuNames()
{
    WTable table;
    table.setColumns(Headers, Actives);
    QCOMPARE(menuTexts(table), Headers);
}

void WTableColumnsTest::shouldGiveHiddenColumnItsWidthBack()
{
    WTable table;
    table.setColumns(Headers, Actives, MenuNames, Widths);
    QCOMPARE(table.colWidths(), Widths);
    table.showColumn(1);
    QCOMPARE(table.columnWidth(1), 102);
    table.horizontalHeader()->resizeSection(2, 222);
    table.hideColumn(2);
    table.hideColumn(2);
    QVERIFY(table.isColumnHidden(2));
    QCOMPARE(table.colWidths(), (Ints{101, 102, 222, 104, 105}));
    table.showColumn(2);
    QCOMPARE(table.columnWidth(2), 222);
}

void WTableColumnsTest::shouldHideAndShowFromMenu()
{
    WTable table;
    table.setColumns(Headers, Actives, MenuNames);
    QVERIFY(menuItem(table, MenuNames.at(0))->isChecked());
    QVERIFY(!menuItem(table, MenuNames.at(1))->isChecked());
    menuItem(table, MenuNames.at(0))->trigger();
    menuItem(table, MenuNames.at(1))->trigger();
    QCOMPARE(shownColumns(table), (Ints{0, 1, 1, 1, 1}));
    QVERIFY(!menuItem(table, MenuNames.at(0))->isChecked());
    QVERIFY(menuItem(table, MenuNames.at(1))->isChecked());
}

void WTableColumnsTest::shouldKeepLastShownColumn()
{
    WTable table;
    table.setColumns(Headers, {false, false, true, true, false}, MenuNames);
    QVERIFY(menuItem(table, QStringLiteral("Title"))->isEnabled());
    menuItem(table, QStringLiteral("Complete"))->trigger();
    QVERIFY(!menuItem(table, QStringLiteral("Title"))->isEnabled());
    table.hideColumn(2);
    table.columnDisplayChange(2);
    QCOMPARE(shownColumns(table), (Ints{0, 0, 1, 0, 0}));
    QVERIFY(menuItem(table, QStringLiteral("Title"))->isChecked());
    table.showColumn(4);
    QVERIFY(menuItem(table, QStringLiteral("Title"))->isEnabled());

    table.setColumns(Headers, {false, false, false, false, false});
    QCOMPARE(table.colActivesInt().count(1), 1);
}

void WTableColumnsTest::shouldListColumnsInDisplayOrder()
{
    WTable table;
    table.setColumns(Headers, Actives);
    table.swapColumns(0, 4, true);
    QCOMPARE(menuTexts(table).join(QLatin1Char(' ')), QStringLiteral("Pri Due Title Com Start"));
    QCOMPARE(table.getDispColumn(4), 0);
    QCOMPARE(table.getOrigColumn(4), 0);
    table.horizontalHeader()->moveSection(4, 1);
    QCOMPARE(menuTexts(table).join(QLatin1Char(' ')), QStringLiteral("Pri Start Due Title Com"));
    menuItem(table, QStringLiteral("Start"))->trigger();
    QVERIFY(table.isColumnHidden(0));
}

void WTableColumnsTest::shouldMoveHeaderTextOnlyWhenTold()
{
    WTable table;
    table.setColumns(Headers, Actives);
    const auto headerAt = [&table](int display) {
        return table.model()->headerData(table.getOrigColumn(display), Qt::Horizontal).toString();
    };
    table.swapColumns(0, 2, true);
    QCOMPARE(headerAt(0), QStringLiteral("Title"));
    table.swapColumns(0, 2, false);
    QCOMPARE(headerAt(0), QStringLiteral("Title"));
    QCOMPARE(table.getOrigColumn(0), 0);
}

void WTableColumnsTest::shouldOpenMenuWithMouseAndKeyboard()
{
    WTable table;
    table.setColumns(Headers, Actives);
    table.resize(600, 200);
    table.show();
    QHeaderView *header = table.horizontalHeader();
    const QPoint pos(20, 5);
    QContextMenuEvent mouse(QContextMenuEvent::Mouse, pos, header->viewport()->mapToGlobal(pos));
    QCoreApplication::sendEvent(header->viewport(), &mouse);
    QVERIFY(table.columnMenu()->isVisible());
    QCOMPARE(table.columnMenu()->pos(), header->viewport()->mapToGlobal(pos));
    table.columnMenu()->close();
    QContextMenuEvent keyboard(QContextMenuEvent::Keyboard, QPoint());
    QCoreApplication::sendEvent(header, &keyboard);
    QVERIFY(table.columnMenu()->isVisible());
    table.columnMenu()->close();
    QTest::keyClick(header, Qt::Key_F10, Qt::ShiftModifier);
    QVERIFY(table.columnMenu()->isVisible());
    table.columnMenu()->close();
}

void WTableColumnsTest::shouldWorkHeaderWithKeyboard_data()
{
    QTest::addColumn<bool>("reverse");
    QTest::addColumn<int>("next");
    QTest::newRow("left to right") << false << int(Qt::Key_Right);
    QTest::newRow("right to left") << true << int(Qt::Key_Left);
}

void WTableColumnsTest::shouldWorkHeaderWithKeyboard()
{
    QFETCH(bool, reverse);
    QFETCH(int, next);
    WTable table;
    table.setLayoutDirection(reverse ? Qt::RightToLeft : Qt::LeftToRight);
    table.setColumns(Headers, Actives, MenuNames, Widths);
    table.setSorting(true);
    table.show();
    auto *header = qobject_cast<WTableHeader *>(table.horizontalHeader());
    QVERIFY(header->focusPolicy() & Qt::TabFocus);
    QTest::keyClick(header, Qt::Key(next));
    QCOMPARE(header->currentColumn(), 2);
    QCOMPARE(header->accessibleName(), QStringLiteral("Title"));
    QTest::keyClick(header, Qt::Key_Space);
    QCOMPARE(table.sortColumn(), 2);
    QTest::keyClick(header, Qt::Key_Return);
    QVERIFY(!table.ascending());
    QTest::keyClick(header, Qt::Key(next), Qt::ControlModifier);
    QCOMPARE(positions(table), (Ints{0, 1, 3, 2, 4}));
    QTest::keyClick(header, Qt::Key(next), Qt::ShiftModifier);
    QVERIFY(table.columnWidth(2) > 103);
    QCOMPARE(header->currentColumn(), 2);
    table.hideColumn(2);
    QCOMPARE(header->currentColumn(), 0);
}

void WTableColumnsTest::shouldFitToContentsWithinReason()
{
    WTable table;
    table.setColumns(Headers, Actives);
    const Ints empty = table.colWidths();
    table.beginFill(1);
    table.addRow(
        {QStringLiteral("x"), {}, QStringLiteral("a title of some length"), QString(5000, QLatin1Char('w'))});
    table.endFill();
    table.adjustAll();
    QCOMPARE(table.columnWidth(0), empty.at(0));
    QVERIFY(table.columnWidth(2)
            >= table.fontMetrics().horizontalAdvance(QStringLiteral("a title of some length")));
    QVERIFY(table.columnWidth(3) > table.columnWidth(2));
    QVERIFY(table.columnWidth(3) < 2000);
}

void WTableColumnsTest::shouldNotMeasureLongTables()
{
    WTable table;
    table.setColumns(Headers, Actives);
    int written = 0;
    table.setDateFormatter([&written](const QDate &date) {
        ++written;
        return date.toString(Qt::ISODate);
    });
    table.beginFill(20000);
    for (int row = 0; row < 20000; ++row) {
        table.addRow({WDateTableItem(QDate(2026, 1, 1).addDays(row))});
    }
    table.endFill();
    table.adjustAll();
    QVERIFY2(written > 0 && written <= 500, qPrintable(QString::number(written)));
}

void WTableColumnsTest::shouldTellUsersWidthsFromFittedOnes()
{
    WTable table;
    table.setColumns(Headers, Actives);
    table.resize(800, 200);
    table.show();
    table.adjustAll();
    table.hideColumn(2);
    table.showColumn(2);
    table.showColumn(1);
    table.swapColumns(0, 2, true);
    table.swapColumns(0, 2, true);
    table.setActives();
    table.resize(400, 300);
    QVERIFY(!table.userWidths());
    const int before = table.columnWidth(0);
    const QPoint edge = edgeOf(table, 0);
    drag(table.horizontalHeader()->viewport(), edge, edge + QPoint(40, 0));
    QCOMPARE(table.columnWidth(0), before + 40);
    QVERIFY(table.userWidths());

    WTable given;
    given.setColumns(Headers, Actives, {}, Widths);
    QVERIFY(given.userWidths());
}

void WTableColumnsTest::shouldKeepColumnsWhenFilled()
{
    WTable table;
    table.setColumns(Headers, Actives, MenuNames, Widths);
    table.swapColumns(0, 3, true);
    const Ints before = positions(table);
    for (const int rows : {3, 0, 2}) {
        table.beginFill(rows);
        for (int row = 0; row < rows; ++row) {
            table.addRow({});
        }
        table.endFill();
        QCOMPARE(positions(table), before);
        QCOMPARE(table.colWidths(), Widths);
        QCOMPARE(shownColumns(table), (Ints{1, 0, 1, 1, 1}));
    }
}

QTEST_MAIN(WTableColumnsTest)

#include "wtablecolumnstest.moc"
