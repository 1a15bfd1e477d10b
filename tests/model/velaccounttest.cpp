// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "model/velaccount.h"

#include <QTest>

#include <utility>

namespace
{
VelAccount account(const char *name, const char *email = "", quint32 id = 0)
{
    return {QString::fromLatin1(name), QString::fromLatin1(email), id};
}

QString names(const VelAccountList &accounts)
{
    QStringList result;
    for (const VelAccount &one : accounts)
        result.append(one.name + QString::number(one.id));
    return result.join(QLatin1Char(' '));
}
} // namespace

Q_DECLARE_METATYPE(VelAccount)

class VelAccountTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldStartWithoutTypeAnswerAndRole();
    void shouldCompare_data();
    void shouldCompare();
    void shouldNotCompareTypeAnswerAndRole();
    void shouldSortByNameCaseSensitively();
    void shouldKeepTheOrderOfEqualNames();
    void shouldFindTheFirstWithAnId();
    void shouldFindNobodyWithoutThatId();
    void shouldChangeTheAccountThatWasFoundInThisListOnly();
    void shouldWordTheAnswer_data();
    void shouldWordTheAnswer();
    void shouldNameThePictureOfTheType_data();
    void shouldNameThePictureOfTheType();
    void shouldHeadTheGroupOfTheRole_data();
    void shouldHeadTheGroupOfTheRole();
};

void VelAccountTest::shouldStartWithoutTypeAnswerAndRole()
{
    const VelAccount someone = account("Al", "al@example.org", 4000000000U);
    QCOMPARE(someone.name, QStringLiteral("Al"));
    QCOMPARE(someone.email, QStringLiteral("al@example.org"));
    QCOMPARE(someone.id, 4000000000U);
    QCOMPARE(someone.type, 0);
    QCOMPARE(someone.status, 0);
    QCOMPARE(someone.attendee, 0);
}

void VelAccountTest::shouldCompare_data()
{
    QTest::addColumn<VelAccount>("a");
    QTest::addColumn<VelAccount>("b");
    QTest::addColumn<int>("order");
    QTest::newRow("equal") << account("Al", "a@x", 1) << account("Al", "a@x", 1) << 0;
    QTest::newRow("name before") << account("Al", "a@x", 1) << account("Bo", "a@x", 1) << -1;
    QTest::newRow("name after") << account("Bo", "a@x", 1) << account("Al", "a@x", 1) << 1;
    QTest::newRow("upper case before lower") << account("Bo") << account("al") << -1;
    QTest::newRow("lower case after upper") << account("al") << account("Bo") << 1;
    QTest::newRow("another e-mail") << account("Al", "a@x", 1) << account("Al", "b@x", 1) << 1;
    QTest::newRow("another e-mail, the other way round")
        << account("Al", "b@x", 1) << account("Al", "a@x", 1) << 1;
    QTest::newRow("another id") << account("Al", "a@x", 1) << account("Al", "a@x", 2) << 1;
}

void VelAccountTest::shouldCompare()
{
    QFETCH(VelAccount, a);
    QFETCH(VelAccount, b);
    QFETCH(int, order);
    QCOMPARE(VelAccountList::compareItems(a, b), order);
    QCOMPARE(a == b, order == 0);
}

void VelAccountTest::shouldNotCompareTypeAnswerAndRole()
{
    VelAccount other = account("Al", "a@x", 1);
    other.type = VelAccount::Resource;
    other.status = VelAccount::Accepted;
    other.attendee = VelAccount::OptionalAttendee;
    QVERIFY(other == account("Al", "a@x", 1));
}

void VelAccountTest::shouldSortByNameCaseSensitively()
{
    VelAccountList accounts{account("al", "", 1), account("Bo", "", 9), account("Al", "", 3),
                            account("Bo", "", 2)};
    accounts.sort();
    QCOMPARE(names(accounts), QStringLiteral("Al3 Bo9 Bo2 al1"));
}

void VelAccountTest::shouldKeepTheOrderOfEqualNames()
{
    VelAccountList accounts;
    for (quint32 id = 1; id <= 100; ++id)
        accounts.append(account(id % 2 == 0 ? "Al" : "Bo", "", id));
    accounts.sort();
    for (int i = 0; i < 50; ++i) {
        QCOMPARE(accounts.at(i).id, static_cast<quint32>(2 * i + 2));
        QCOMPARE(accounts.at(50 + i).id, static_cast<quint32>(2 * i + 1));
    }
}

void VelAccountTest::shouldFindTheFirstWithAnId()
{
    VelAccountList accounts{account("Al", "", 3), account("Bo", "", 7), account("Cy", "", 7)};
    QCOMPARE(accounts.get(7), &accounts[1]);
    QCOMPARE(std::as_const(accounts).get(7)->name, QStringLiteral("Bo"));
}

void VelAccountTest::shouldFindNobodyWithoutThatId()
{
    VelAccountList accounts{account("Al", "", 3)};
    QVERIFY(!accounts.get(0));
    QVERIFY(!std::as_const(accounts).get(4));
    QVERIFY(!VelAccountList().get(3));
}

void VelAccountTest::shouldChangeTheAccountThatWasFoundInThisListOnly()
{
    VelAccountList accounts{account("Al", "", 3)};
    const VelAccountList copy = accounts;
    accounts.get(3)->status = VelAccount::Declined;
    QCOMPARE(accounts.first().status, int(VelAccount::Declined));
    QCOMPARE(copy.first().status, int(VelAccount::Unanswered));
}

void VelAccountTest::shouldWordTheAnswer_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("icon");
    QTest::newRow("0") << 0 << "Unanswered"
                       << "";
    QTest::newRow("1") << 1 << "Unanswered"
                       << "";
    QTest::newRow("2") << 2 << "Declined"
                       << "no";
    QTest::newRow("3") << 3 << "Accepted tentatively"
                       << "tentative";
    QTest::newRow("4") << 4 << "Accepted"
                       << "yes";
    QTest::newRow("5") << 5 << "Unanswered"
                       << "";
    QTest::newRow("-1") << -1 << "Unanswered"
                        << "";
}

void VelAccountTest::shouldWordTheAnswer()
{
    QFETCH(int, status);
    VelAccount someone = account("Al");
    someone.status = status;
    QTEST(someone.getStatusStr(), "text");
    QTEST(someone.getStatusPix(), "icon");
}

void VelAccountTest::shouldNameThePictureOfTheType_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("icon");
    QTest::newRow("none") << 0 << "";
    QTest::newRow("person") << 1 << "person";
    QTest::newRow("resource") << 2 << "resource";
    QTest::newRow("unknown") << 3 << "";
}

void VelAccountTest::shouldNameThePictureOfTheType()
{
    QFETCH(int, type);
    VelAccount someone = account("Al");
    someone.type = type;
    QTEST(someone.getTypePix(), "icon");
}

void VelAccountTest::shouldHeadTheGroupOfTheRole_data()
{
    QTest::addColumn<int>("role");
    QTest::addColumn<QString>("heading");
    QTest::newRow("attendee") << 0 << "Attendees";
    QTest::newRow("optional") << 1 << "Optional attendees";
    QTest::newRow("resource") << 2 << "Resources";
    QTest::newRow("unknown") << 3 << "";
    QTest::newRow("negative") << -1 << "";
}

void VelAccountTest::shouldHeadTheGroupOfTheRole()
{
    QFETCH(int, role);
    VelAccount someone = account("Al");
    someone.attendee = role;
    QTEST(someone.getAttendeeStr(), "heading");
}

QTEST_GUILESS_MAIN(VelAccountTest)

#include "velaccounttest.moc"
