// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "formats/velxmlvalues.h"

#include <QTest>

#include <limits>

namespace
{
constexpr int Highest = std::numeric_limits<int>::max();
constexpr int Lowest = std::numeric_limits<int>::min();

std::string_view view(const QByteArray &text)
{
    return {text.constData(), static_cast<std::size_t>(text.size())};
}
} // namespace

class VelXmlValuesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldReadNumber_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<int>("asInt");
        QTest::addColumn<quint32>("asUInt");
        const auto row = [](const char *text, int asInt, quint32 asUInt) {
            QTest::addRow("\"%s\"", text) << QByteArray(text) << asInt << asUInt;
        };
        row("0", 0, 0);
        row("5", 5, 5);
        row("0012", 12, 12);
        row(" 7", 7, 7);
        row("\t\r\n 7 \n", 7, 7);
        row("+7", 7, 7);
        row("-7", -7, 0);
        row("-0", 0, 0);
        row("2147483647", Highest, 2147483647);
        row("-2147483648", Lowest, 0);
        row("2147483648", 0, 2147483648);
        row("3000000000", 0, 3000000000);
        row("4294967295", 0, 4294967295);
        row("4294967296", 0, 0);
        row("-2147483649", 0, 0);
        row("99999999999999999999999999", 0, 0);
        row("", 0, 0);
        row("   ", 0, 0);
        row("+", 0, 0);
        row("-", 0, 0);
        row("+-5", 0, 0);
        row("-+5", 0, 0);
        row("++5", 0, 0);
        row("--5", 0, 0);
        row("- 5", 0, 0);
        row("1 2", 0, 0);
        row("5x", 0, 0);
        row("x5", 0, 0);
        row("0x10", 0, 0);
        row("1.0", 0, 0);
        row("1e3", 0, 0);
        row("1,000", 0, 0);
        row("\xC2\xA0"
            "5",
            0, 0);
        row("\xD9\xA5", 0, 0); // an Arabic five
    }

    void shouldReadNumber()
    {
        QFETCH(QByteArray, text);
        QTEST(VelXmlValues::parseInt(view(text)), "asInt");
        QTEST(VelXmlValues::parseUInt(view(text)), "asUInt");
    }

    void shouldNotReadBeyondTheText()
    {
        QCOMPARE(VelXmlValues::parseInt(std::string_view("1234").substr(0, 2)), 12);
        QCOMPARE(VelXmlValues::parseInt({}), 0);
        QCOMPARE(VelXmlValues::parseInt(std::string_view("1\0", 2)), 0);
    }

    void shouldReadDate_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QDate>("date");
        const auto row = [](const char *text, QDate date = {}) {
            QTest::addRow("\"%s\"", text) << QByteArray(text) << date;
        };
        row("2002-3-5", {2002, 3, 5});
        row("2002-03-05", {2002, 3, 5});
        row(" 2002 - 3 - 5 ", {2002, 3, 5});
        row("2000-2-29", {2000, 2, 29});
        row("1-1-1", {1, 1, 1});
        row("9999-12-31", {9999, 12, 31});
        row("2002-3-5-7", {2002, 3, 5});
        row("2001-2-29");
        row("1900-2-29");
        row("2002-4-31");
        row("2002-13-1");
        row("2002-0-1");
        row("2002-1-0");
        row("0-1-1");
        row("-1-1-1");
        row("10000-1-1");
        row("2147483647-1-1");
        row("2002--3-5");
        row("2002-3");
        row("2002");
        row("2002/3/5");
        row("2002-3-5x");
        row("5 March 2002");
        row("--");
        row("");
    }

    void shouldReadDate()
    {
        QFETCH(QByteArray, text);
        QTEST(VelXmlValues::parseDate(view(text)), "date");
    }

    void shouldReadDateTime_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QDate>("date");
        QTest::addColumn<QTime>("time");
        const QDate date(2002, 3, 5);
        const auto row = [](const char *text, QDate day, QTime time = {}) {
            QTest::addRow("\"%s\"", text) << QByteArray(text) << day << time;
        };
        row("2002-3-5 9:5", date, {9, 5});
        row("2002-03-05 09:05", date, {9, 5});
        row("2002-3-5 0:0", date, {0, 0});
        row("2002-3-5 23:59", date, {23, 59});
        row("2002-3-5  9:5 ", date, {9, 5});
        // In Helsinki no clock shows this time, and all the same it is one.
        row("2002-3-31 3:30", {2002, 3, 31}, {3, 30});
        row("2002-3-5 x:y", date, {0, 0});
        row("2002-3-5 :", date, {0, 0});
        row("2002-3-5", date);
        row("2002-3-5 ", date);
        row("2002-3-5 9", date);
        row("2002-3-5 9:5:0", date);
        row("2002-3-5 24:0", date);
        row("2002-3-5 9:60", date);
        row("2002-3-5 -1:0", date);
        row("2002-2-30 9:5", {}, {9, 5});
        row(" 2002-3-5 9:5", {}, {0, 5});
        row("2002-3-5T9:5", {});
        row("2002-3-5\n9:5", {});
        row("9:5 2002-3-5", {});
        row("", {});
    }

    void shouldReadDateTime()
    {
        QFETCH(QByteArray, text);
        const VelDateTime dateTime = VelXmlValues::parseDateTime(view(text));
        QTEST(dateTime.date(), "date");
        QTEST(dateTime.time(), "time");
    }

    void shouldReadList_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QVector<int>>("list");
        const auto row = [](const char *text, const QVector<int> &list) {
            QTest::addRow("\"%s\"", text) << QByteArray(text) << list;
        };
        row("", {});
        row("5", {5});
        row("1,3,5", {1, 3, 5});
        row("5,1,5", {5, 1, 5});
        row(" 1 , -2 ,+3", {1, -2, 3});
        row("1,x,3", {1, 0, 3});
        row("1,,3", {1, 0, 3});
        row("1,", {1, 0});
        row("1,2,", {1, 2, 0});
        row(",1", {0, 1});
        row(",", {0, 0});
        row("1;2", {0});
        row("2147483648,1", {0, 1});
    }

    void shouldReadList()
    {
        QFETCH(QByteArray, text);
        QTEST(VelXmlValues::parseIntList(view(text)), "list");
    }

    void shouldCutEndlessList()
    {
        // In time that grows with the length alone, also where every piece is empty.
        const std::string commas(4000000, ',');
        QCOMPARE(VelXmlValues::parseIntList(commas).size(), VelXmlValues::MaximumListLength);
    }

    void shouldWriteWithoutLeadingZeros()
    {
        const VelDateTime dateTime(QDate(2002, 3, 5), QTime(9, 5, 59, 999));
        QCOMPARE(VelXmlValues::toString(dateTime), QStringLiteral("2002-3-5 9:5"));
        QCOMPARE(VelXmlValues::toStringDate(QDate(2002, 3, 5)), QStringLiteral("2002-3-5"));
        QCOMPARE(VelXmlValues::toString({QDate(9999, 12, 31), QTime(23, 59)}),
                 QStringLiteral("9999-12-31 23:59"));
        QCOMPARE(VelXmlValues::toString({QDate(1, 1, 1), QTime(0, 0)}), QStringLiteral("1-1-1 0:0"));
    }

    void shouldAppendNumbersOfAnySize()
    {
        std::string out = "x";
        VelXmlValues::append(out, std::numeric_limits<qint64>::min());
        VelXmlValues::append(out, 4294967295);
        QCOMPARE(out, std::string("x-92233720368547758084294967295"));
    }

    void shouldReadBackWhatIsWritten()
    {
        const QVector<int> list{0, Highest, Lowest, -1, 7};
        std::string out;
        VelXmlValues::appendIntList(out, list);
        QCOMPARE(out, std::string("0,2147483647,-2147483648,-1,7"));
        QCOMPARE(VelXmlValues::parseIntList(out), list);
    }

    void shouldWriteNoDateAsOneThatReadsAsNone()
    {
        const QByteArray text = VelXmlValues::toString({}).toLatin1();
        QCOMPARE(VelXmlValues::parseDateTime(view(text)), VelDateTime());
    }
};

QTEST_GUILESS_MAIN(VelXmlValuesTest)

#include "velxmlvaluestest.moc"
