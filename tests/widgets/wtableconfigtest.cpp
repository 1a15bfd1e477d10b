// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "widgets/wtable.h"

#include <KConfig>
#include <KConfigGroup>

#include <QHeaderView>
#include <QMenu>
#include <QRandomGenerator>
#include <QTest>

using Ints = QList<int>;
using Entries = QMap<QString, QString>;

namespace
{
const QStringList Headers{QStringLiteral("Start"), QStringLiteral("Due"), QStringLiteral("Title"),
                          QStringLiteral("Com"), QStringLiteral("Pri")};
const QStringList MenuNames{QStringLiteral("Start date && time"), QStringLiteral("Due date"),
                            QStringLiteral("Title"), QStringLiteral("Complete"), QStringLiteral("Priority")};
const QList<bool> Actives{true, false, true, true, true};
const Ints Widths{101, 102, 103, 104, 105};

const char ActivesWarning[] = "ASSERT: \"t.count()==a.count()\" in wtable (87)";
const char WidthsWarning[] = "ASSERT: \"w.count()==t.count()\" in wtable (108)";

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

QStringList menuTexts(const WTable &table)
{
    QStringList result;
    const QList<QAction *> items = table.columnMenu()->actions();
    for (const QAction *item : items) {
        result.append(item->text());
    }
    return result;
}
} // namespace

class WTableConfigTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void shouldSaveOneAndZeroAndRememberedWidths();
    void shouldRestoreWhatWasSaved_data();
    void shouldRestoreWhatWasSaved();
    void shouldSurviveHostileConfiguration_data();
    void shouldSurviveHostileConfiguration();
};

void WTableConfigTest::shouldSaveOneAndZeroAndRememberedWidths()
{
    KConfig config(QString(), KConfig::SimpleConfig);
    WTable table;
    table.setColumns(Headers, Actives, MenuNames, Widths);
    table.writeConfig(&config, QStringLiteral("SmallView"));
    const KConfigGroup group = config.group(QStringLiteral("WTable_SmallView"));
    QCOMPARE(group.readEntry("ActiveColumns", QString()), QStringLiteral("1,0,1,1,1"));
    QCOMPARE(group.readEntry("Widths", QString()), QStringLiteral("101,102,103,104,105"));
    QCOMPARE(group.readEntry("SortColumn", -1), 0);
    QCOMPARE(group.readEntry("SortOrder", false), true);
    QVERIFY(group.hasKey("ColumnOrder1"));
    QVERIFY(group.hasKey("ColumnOrder2"));
}

void WTableConfigTest::shouldRestoreWhatWasSaved_data()
{
    QTest::addColumn<int>("seed");
    for (int seed = 1; seed <= 8; ++seed) {
        QTest::addRow("seed %d", seed) << seed;
    }
}

void WTableConfigTest::shouldRestoreWhatWasSaved()
{
    QFETCH(int, seed);
    QRandomGenerator random{quint32(seed)};
    WTable table;
    table.setColumns(Headers, Actives, MenuNames);
    table.setSorting(true);
    for (int i = 0; i < 20; ++i) {
        table.swapColumns(random.bounded(5), random.bounded(5), true);
        table.horizontalHeader()->moveSection(random.bounded(5), random.bounded(5));
        table.columnDisplayChange(random.bounded(5));
        table.setColumnWidth(random.bounded(5), random.bounded(80, 300));
        table.sortBy(random.bounded(5));
    }
    KConfig config(QString(), KConfig::SimpleConfig);
    table.writeConfig(&config, QStringLiteral("List"));

    WTable restored;
    for (int i = 0; i < 2; ++i) {
        restored.readConfig(&config, QStringLiteral("List"), Headers, Actives, MenuNames);
        QCOMPARE(positions(restored), positions(table));
        QCOMPARE(restored.colActivesInt(), table.colActivesInt());
        QCOMPARE(shownColumns(restored), shownColumns(table));
        QCOMPARE(restored.colWidths(), table.colWidths());
        QCOMPARE(restored.sortColumn(), table.sortColumn());
        QCOMPARE(restored.ascending(), table.ascending());
        QCOMPARE(menuTexts(restored), menuTexts(table));
        QVERIFY(restored.userWidths());
    }
}

void WTableConfigTest::shouldSurviveHostileConfiguration_data()
{
    QTest::addColumn<Entries>("entries");
    QTest::addColumn<QByteArray>("warning");
    QTest::addColumn<Ints>("shown");
    const Ints defaults{1, 0, 1, 1, 1};
    const auto order = [](const char *logical, const char *display) {
        return Entries{{QStringLiteral("ColumnOrder1"), QLatin1String(logical)},
                       {QStringLiteral("ColumnOrder2"), QLatin1String(display)}};
    };
    const auto entry = [](const char *key, const char *value) {
        return Entries{{QLatin1String(key), QLatin1String(value)}};
    };
    QTest::newRow("nothing") << Entries() << QByteArray() << defaults;
    QTest::newRow("too short actives")
        << entry("ActiveColumns", "0,1") << QByteArray(ActivesWarning) << Ints{0, 1, 1, 1, 1};
    QTest::newRow("too long actives")
        << entry("ActiveColumns", "0,1,0,0,0,1,1") << QByteArray(ActivesWarning) << Ints{0, 1, 0, 0, 0};
    QTest::newRow("nothing shown") << entry("ActiveColumns", "0,0,0,0,0") << QByteArray() << defaults;
    QTest::newRow("no numbers") << entry("ActiveColumns", "a,b,c,d,e") << QByteArray() << defaults;
    QTest::newRow("too short widths") << entry("Widths", "90") << QByteArray(WidthsWarning) << defaults;
    QTest::newRow("too long widths") << entry("Widths", "90,90,90,90,90,90") << QByteArray(WidthsWarning)
                                     << defaults;
    QTest::newRow("impossible widths")
        << entry("Widths", "-5,0,2000000000,900000,1") << QByteArray() << defaults;
    QTest::newRow("order of another length") << order("0,1", "1,0") << QByteArray() << defaults;
    QTest::newRow("order of two lengths") << order("0,1,2,3,4", "1,0") << QByteArray() << defaults;
    QTest::newRow("half an order") << entry("ColumnOrder1", "4,3,2,1,0") << QByteArray() << defaults;
    QTest::newRow("column twice") << order("0,1,2,3,3", "4,3,2,1,0") << QByteArray() << defaults;
    QTest::newRow("place twice") << order("0,1,2,3,4", "4,3,2,1,1") << QByteArray() << defaults;
    QTest::newRow("place outside") << order("0,1,2,3,4", "5,4,3,2,1") << QByteArray() << defaults;
    QTest::newRow("negative places") << order("0,1,2,3,4", "-1,-2,-3,-4,-5") << QByteArray() << defaults;
    QTest::newRow("negative sort column") << entry("SortColumn", "-7") << QByteArray() << defaults;
    QTest::newRow("sort column outside") << entry("SortColumn", "5") << QByteArray() << defaults;
}

void WTableConfigTest::shouldSurviveHostileConfiguration()
{
    QFETCH(Entries, entries);
    QFETCH(QByteArray, warning);
    QFETCH(Ints, shown);
    KConfig config(QString(), KConfig::SimpleConfig);
    KConfigGroup group = config.group(QStringLiteral("WTable_List"));
    for (auto it = entries.constBegin(); it != entries.constEnd(); ++it) {
        group.writeEntry(it.key(), it.value());
    }
    WTable table;
    if (!warning.isEmpty()) {
        QTest::ignoreMessage(QtWarningMsg, warning.constData());
    }
    table.readConfig(&config, QStringLiteral("List"), Headers, Actives, MenuNames);
    QCOMPARE(shownColumns(table), shown);
    QCOMPARE(positions(table), (Ints{0, 1, 2, 3, 4}));
    QCOMPARE(table.sortColumn(), 0);
    for (const int width : table.colWidths()) {
        QVERIFY2(width > 5 && width <= 10000, qPrintable(QString::number(width)));
    }
}

QTEST_MAIN(WTableConfigTest)

#include "wtableconfigtest.moc"
