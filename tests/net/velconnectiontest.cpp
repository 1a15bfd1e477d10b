// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "net/scriptedserver.h"
#include "net/velsyncrecord.h"

#include <QSignalSpy>
#include <QTest>

using Steps = std::deque<ScriptedServer::Step>;
struct Row {
    QVector<int> types; ///< of the tasks; negative ones are quiet
    Steps steps;
    QList<QByteArray> requests;
    QByteArray told;
    QByteArray argument = {};
    QByteArray host = "127.0.0.1";
};
Q_DECLARE_METATYPE(Row)

using namespace TestCalendar;

namespace
{
QByteArray request(const char *name, const QByteArray &rest = "</action>\n")
{
    return QByteArray("<?xml version = '1.0' encoding = 'ISO-8859-15' ?>\n<calendar>\n<action type=\"") + name
        + "\">\n <version>1.0</version>\n <user>anna &lt;\xE4\xA4&gt;</user>\n <pass>d41d8</pass>\n" + rest
        + "</calendar>\n\x1A";
}

const QByteArray Users = request("userlist");
const QByteArray Busy = request("userbusy");
const QByteArray Rights = request("getuserrights", " <userid>4000000000</userid>\n</action>\n");
const QByteArray Sync = request("sync",
                                " <userid>4000000000</userid>\n <synctime></synctime>\n</action>\n"
                                "<entry>\n <localid>1</localid>\n <globalid>0</globalid>\n <dirty>1</dirty>\n"
                                " <title>\xA4 &#1046;</title>\n <start>2026-3-2 9:0</start>\n"
                                " <end>2026-3-2 10:0</end>\n <type>1</type>\n</entry>\n"
                                "<entry>\n <localid>3</localid>\n <globalid>9</globalid>\n <dirty>1</dirty>\n"
                                " <title>gone</title>\n <start>2026-3-2 10:0</start>\n"
                                " <end>2026-3-2 11:0</end>\n <type>-1</type>\n</entry>\n");

using enum ScriptedServer::Then;
const QByteArray Ok = answer("<action/>");
} // namespace

/** Requests, answers and failures, over real sockets. */
class VelConnectionTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void shouldSendWhatIsDueAndTellWhatCame_data()
    {
        QTest::addColumn<Row>("row");
        const auto add = [](const QByteArray &name, const Row &row) {
            QTest::newRow(name.constData()) << row;
        };
        const auto one = [&](int type, const QByteArray &request, const char *argument = "") {
            const QByteArray digit = QByteArray::number(type);
            add("type " + digit,
                {{type}, {{Ok}}, {request}, "S1 S2 A" + digit + " E" + digit + " .", argument});
        };
        one(2, Users);
        one(3, request(""));
        one(4, request("userbusy", "</action>\n<id>7</id>\n"), "<id>7</id>\n");
        one(5, Rights, "ignored");
        one(6, request("setuserrights", "</action>\n<a b=\"\xA4&#1046;&amp;\"/>"), "<a b=\"€Ж\x1A&amp;\"/>");
        one(7, request("changepass", "</action>\n<newpass>x</newpass>"), "<newpass>x</newpass>");
        one(8, request("getentries", "</action>\n<globalid>7</globalid>"), "<globalid>7</globalid>");
        add("users first, but once",
            {{1, 5, 1}, Steps(4, {Ok}), {Users, Sync, Rights, Sync}, "S1 S2 A2 E2 A1 E1 A5 E5 A1 E1 ."});
        const QByteArrayList errors =
            QByteArray(
                "Unknown error: 0|Invalid username or password.|Access denied.|Server temporarily "
                "unavailable "
                "due to maintenance. Try again later.|Server error. Contact the server administrator.|Client "
                "version is incompatible with the server. Please upgrade client to a newer version.|Unknown "
                "error: 6")
                .split('|');
        const QList<QByteArray> both{Busy, Rights};
        for (int code = 0; code <= 6; ++code) {
            const QByteArray bytes =
                answer("<action><error>" + QByteArray::number(code) + "</error></action>");
            const QByteArray end = code == 0 ? " A4 E4 A5 E5 ." : " dropped X5 S0 X4 E4 .";
            const QByteArray text = code == 2 ? '(' + errors.at(2) + ')' : errors.at(code);
            const QByteArray told = "S1 S2 " + text + end + (code == 2 ? " denied0" : "");
            add(errors.at(code), {{4, 5}, {{bytes}, {Ok}}, both.mid(0, code == 0 ? 2 : 1), told});
        }

        const QByteArray fault = answer("<action><error>4</error></action>");
        const QByteArray faultTold = "S1 S2 " + errors.at(4) + " dropped X5 S0 X4 E4 .";
        add("awaited behind a quiet one", {{-4, 5}, {{fault}}, {Busy}, faultTold});

        const QByteArray refused = "S1 (No.) S0 X4 E4 S1 No. S0 X5 E5 .";
        const auto withoutServer = [](QByteArray told) {
            return told.replace("No", "Cannot connect to server");
        };
        const QByteArray nobody = withoutServer(refused);
        const QByteArray nowhere = QByteArray(refused).replace("No", "Host name not found");
        add("refused", {{-4, 5}, {}, {}, nobody});
        add("told once",
            {{4, -5, 6}, {}, {}, withoutServer("S1 No. S0 X4 E4 S1 (No.) S0 X5 E5 S1 (No.) S0 X6 E6 .")});
        add("no list, no synchronisation",
            {{-2, 4, 1}, {}, {}, withoutServer("S1 No. X1 S0 X2 E2 S1 (No.) S0 X4 E4 .")});
        add("nor one by itself", {{-1}, {}, {}, withoutServer("S1 (No.) X1 S0 X2 E2 .")});
        add("no host", {{-4, 5}, {}, {}, nowhere, {}, "no-such-host.invalid"});
        add("no server set", {{-4, 5}, {}, {}, ". .", {}, ""});

        const QByteArray cut = "S1 S2 Error receiving data from server. S0 X4 E4 S1 S2 A5 E5 .";
        const QByteArray unread = "S1 S2 Error receiving data from server. X4 E4 A5 E5 .";
        const QByteArray lost = "S1 S2 closed S0 X4 E4 S1 S2 A5 E5 .";
        const QByteArray foreign = QByteArray(lost).replace("closed", "closed?");
        const QByteArray encrypted =
            QByteArray(lost).replace("closed",
                                     "The server expects an encrypted connection. Turn on \"Encrypt the "
                                     "connection\" on the page \"Server Account\" of the preferences.");
        const QByteArray fine = "S1 S2 A4 E4 A5 E5 .";
        const QByteArray many = answer(QByteArray("<account><name>a</name></account>").repeated(6));
        const QList<QByteArray> again{Busy, Rights, Rights};
        add("garbage", {{4, 5}, {{"hello\x1A"}, {Ok}}, both, unread});
        add("nothing, quiet", {{-4, 5}, {{"\x1A"}, {Ok}}, both, unread});
        add("two in one read", {{4, 5}, {{Ok + Ok}, {Ok}}, both, unread});
        add("too many", {{4, 5}, {{many}, {Ok}}, both, cut});
        add("byte by byte", {{4, 5}, {{Ok, Keep, 1}, {Ok}}, both, fine});
        add("terminator late", {{4, 5}, {{Ok, Keep, int(Ok.size()) - 1}, {Ok}}, both, fine});
        add("answered and closed", {{4, 5}, {{Ok}, {Ok, Close}}, both, fine + " S0"});
        add("closed in the middle", {{4, 5}, {{"<calendar>", Close}, {Ok}}, both, lost});
        add("closed at once", {{4, 5}, {{{}, Close}, {Ok}}, both, foreign});
        add("reset", {{4, 5}, {{{}, Reset}, {Ok}}, both, foreign});
        add("encrypted there", {{4, 5}, {{"\x15\x03\x01\x00\x02\x02\x1A"}, {Ok}}, both, encrypted});
        add("closed when used again",
            {{4, 5}, {{Ok}, {{}, Close}, {Ok}}, again, "S1 S2 A4 E4 S1 S2 A5 E5 ."});
        add("closed in a later answer",
            {{4, 5}, {{Ok}, {"<", Close}}, both, "S1 S2 A4 E4 closed S0 X5 E5 ."});
        add("closed twice",
            {{4, 5}, {{Ok}, {{}, Close}, {{}, Close}}, again, "S1 S2 A4 E4 S1 S2 closed S0 X5 E5 ."});
    }
    void shouldSendWhatIsDueAndTellWhatCame()
    {
        QFETCH(Row, row);
        NetSession session;
        session.doc.settings.server = QString::fromUtf8(row.host);
        if (row.steps.empty())
            session.server.close();
        session.start(row.types, row.steps, QString::fromUtf8(row.argument));
        // Looking a name up may take its time.
        const int patience = row.steps.empty() ? 60000 : 5000;
        QTRY_COMPARE_WITH_TIMEOUT(session.told(), row.told, patience);
        QCOMPARE(session.server.requests, row.requests);
        QCOMPARE(session.connection->currentType(), 0);
    }

    void shouldGiveUpASilentServer()
    {
        NetSession session;
        session.start({-4}, {{"<calendar>"}});
        QTRY_COMPARE(session.server.requests.size(), 1);
        session.connection->setWaits({{}, {}, std::chrono::milliseconds(1)});
        QTRY_COMPARE(session.told(), QByteArray("S1 S2 (Error reading data from the server.) S0 X4 E4 ."));
        QCOMPARE(session.connection->lastFailure(), QLatin1String("Error reading data from the server."));
    }

    void shouldGiveUpAComputerThatDoesNotAnswer()
    {
        NetSession session;
        session.doc.settings.server = QStringLiteral("192.0.2.1"); // kept free for examples
        session.connection->setWaits({std::chrono::milliseconds(1)});
        session.start({4}, {});
        QTRY_COMPARE(session.told(), QByteArray("S1 Cannot connect to server. S0 X4 E4 ."));
    }

    void shouldGiveUpWhatIsNotWantedAnyMore_data()
    {
        QTest::addColumn<QVector<int>>("types");
        QTest::addColumn<QByteArray>("told");
        const QVector<int> first{3, 1, 4, 1};
        QTest::newRow("sent") << first << QByteArray("A3 E3 A2 E2 X1 S0 X1 E1 S1 S2 A4 E4 .");
        QTest::newRow("users first") << QVector<int>{3, -1, 4}
                                     << QByteArray("A3 E3 X1 S0 X2 E2 S1 S2 A4 E4 .");
        QTest::newRow("waits") << QVector<int>{3, 4, 2, 1, 5} << QByteArray("A3 E3 X1 A4 E4 A2 E2 A5 E5 .");
    }
    void shouldGiveUpWhatIsNotWantedAnyMore()
    {
        QFETCH(QVector<int>, types);
        QFETCH(QByteArray, told);
        NetSession session;
        Steps steps(told.contains("A2 E2 X1") ? 2 : 1, {Ok});
        steps.push_back({});
        session.start(types, steps);
        QTRY_COMPARE(session.server.requests.size(), int(steps.size()));
        session.connection->giveUp(VelNetTask::Sync);
        session.server.script = Steps(3, {Ok});
        if (session.server.requests.last() == Busy)
            session.server.say(Ok);
        QTRY_COMPARE(session.told(), "S1 S2 " + told);
    }

    void shouldSayWhatIsNotSynchronised()
    {
        using enum VelSyncRecord::Outcome;
        // One each hour: good, failed by itself, failed by hand, unfinished.
        const std::map<QByteArray, QString> times{{"f", {}},
                                                  {"fhhu", {}},
                                                  {"ff", QStringLiteral("09:00")},
                                                  {"gff", QStringLiteral("09:00")},
                                                  {"hfgfhf", QStringLiteral("11:00")},
                                                  {"ffg", {}},
                                                  {"ffgf", {}}};
        for (const auto &[run, time] : times) {
            VelSyncRecord record;
            VelDateTime now = march(2, 9);
            for (const char step : run) {
                const VelSyncRecord::Outcome bad = step == 'u' ? Undecided : Failed;
                record.note(step == 'g' ? Good : bad, step != 'h', now, QStringLiteral("No."));
                now = now.addSecs(3600);
            }
            const QString text = QStringLiteral("Not synchronised since %1: No.").arg(time);
            QCOMPARE(record.warning(now.date()), time.isEmpty() ? QString() : text);
        }
    }

    void shouldHoldEverythingUntilTheReceiverIsDone()
    {
        NetSession session;
        session.isHolding = true;
        session.doc.setSynctime(QStringLiteral("5 <"));
        session.start({1}, {{Ok}, {Ok}, {answer("<right id='1' right='2'/>")}, {Ok}});
        QTRY_COMPARE(session.told(), QByteArray("S1 S2 A2"));
        session.connection->finishTask();
        QTRY_COMPARE(session.told(), QByteArray("S1 S2 A2 E2 A1"));
        QCOMPARE(session.sent, (VelSentEntries{1, 3}));
        QVERIFY(session.doc.isExchanging());
        session.server.say(Ok); // must not become the answer to what comes next
        session.connection->netTask(5);
        session.connection->clearNet();
        QTRY_COMPARE(session.told(), QByteArray("S1 S2 A2 E2 A1 S0"));
        const QByteArray later = QByteArray(Sync).replace("<synctime></", "<synctime>5 &lt;</");
        QCOMPARE(session.server.requests, (QList<QByteArray>{Users, later}));
        session.connection->finishTask();
        QTRY_COMPARE(session.told(), QByteArray("S1 S2 A2 E2 A1 S0 E1 S1 S2 A5"));
        QVERIFY(session.received->rights);
        session.doc.settings.server = QStringLiteral("localhost"); // is another server
        session.connection->netTask(1); // and no list of users before it again
        session.connection->finishTask();
        QTRY_COMPARE(session.told(), QByteArray("S1 S2 A2 E2 A1 S0 E1 S1 S2 A5 E5 S1 S2 A1"));
    }

    void shouldEndAnAnswerWithAReadThatEndsWithTheTerminator()
    {
        const auto state = [](const QList<QByteArray> &reads) {
            VelAnswerReader reader({100, 2});
            auto last = VelAnswerReader::State::Incomplete;
            for (const QByteArray &read : reads)
                last = reader.feed(read);
            if (last == VelAnswerReader::State::Incomplete)
                return QByteArray("incomplete");
            return reader.takeContent() ? QByteArray("good") : reader.errorText().toLatin1();
        };
        const QByteArray invalid = "XML error [2,3]: not well-formed (invalid token)";
        const QByteArray declared = "<?xml version='1.0'?>\n<c>\x1A</c>";
        QCOMPARE(state({"<c></", "c>", "\x1A"}), QByteArray("good"));
        QCOMPARE(state({declared, " "}), QByteArray("incomplete"));
        QCOMPARE(state({declared, "\x1A"}), QByteArray("XML error [2,3]: not well-formed (invalid token)"));
        QCOMPARE(state({"<c>", QByteArray(100, ' ')}), QByteArray("XML error [1,0]: answer too long"));
    }

    void shouldTellHowMuchOfALargeAnswerHasCome()
    {
        NetSession session;
        QSignalSpy spy(session.connection.get(), &VelConnection::progress);
        session.start({4}, {{answer(QByteArray(10 << 20, ' ')), Close}});
        QTRY_COMPARE(session.told(), QByteArray("S1 S2 A4 E4 . S0"));
        QVERIFY(spy.size() > 10);
        QVERIFY(spy.last().first().toLongLong() > (9 << 20));
    }

    void shouldStartNothingWhileAFailureIsShown()
    {
        NetSession session;
        connect(session.connection.get(), &VelConnection::failed, this, [&session] {
            session.connection->netTask(5);
            session.connection->finishTask();
            session.connection->clearNet();
            session.server.say(Ok);
            QTRY_COMPARE(session.connection->netStatus(), VelConnection::NoConnection);
        });
        session.start({4}, {{"\x1A"}, {Ok}});
        QTRY_COMPARE(session.told(),
                     QByteArray("S1 S2 Error receiving data from server. S0 X4 E4 S1 S2 A5 E5 ."));
    }

    void shouldSendNothingBeforeItIsKnownHow()
    {
        NetSession session;
        session.doc.settings.isUntried = true;
        QSignalSpy wanted(session.connection.get(), &VelConnection::trialWanted);
        session.start({-4, 5}, {{Ok}});
        QCOMPARE(wanted.size(), 2);
        session.connection->failWaiting(QStringLiteral("Nobody there."));
        session.connection->netTask(4, {}, true);
        session.connection->failWaiting(QStringLiteral("Still not."));
        const QByteArray dropped = "Nobody there. dropped X4 X5 . (Still not.) dropped X4 .";
        QCOMPARE(session.told(), dropped);
        QCOMPARE(session.connection->lastFailure(), QLatin1String("Still not."));
        session.connection->netTask(4);
        session.doc.settings.isUntried = false;
        session.connection->resume();
        QTRY_COMPARE(session.told(), dropped + " S1 S2 A4 E4 .");
        QCOMPARE(session.server.requests, QList<QByteArray>{Busy});
    }

    void shouldBearBeingDeletedByEveryReceiver()
    {
        const QByteArray denied = answer("<action><error>2</error></action>");
        const std::map<int, Steps> stepsByCount{
            {8, {{Ok}, {Ok, Close}}}, {12, {{"x\x1A"}, {denied}}}, {13, {{{}, Close}, {"<", Reset}}}};
        for (const auto &[count, steps] : stepsByCount) {
            for (int after = 1; after <= count; ++after) {
                NetSession session;
                session.deleteAfter = after;
                session.start({4, 5}, steps);
                QTRY_VERIFY(!session.connection);
                QCOMPARE(session.log.size(), after);
            }
        }
    }
};

QTEST_GUILESS_MAIN(VelConnectionTest)
#include "velconnectiontest.moc"
