// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "net/velunanswered.h"
#include "document/testdoc.h"
#include "net/velmerge.h"
#include "support/velrandomentry.h"

#include <QTest>

#include <set>

using namespace TestCalendar;

namespace
{
constexpr quint32 Me = 3;

VelXmlContent contentOf(const QByteArray &message)
{
    VelXmlReader reader;
    reader.feed(message.constData(), std::size_t(message.size()) - 1);
    return reader.finish() ? reader.takeContent() : VelXmlContent();
}

/** Takes every change, and knows a new entry again that comes once more as it was. */
class Server
{
public:
    VelXmlContent take(const QByteArray &request)
    {
        VelXmlContent answer;
        answer.userid = Me;
        answer.origright = VelDoc::FullRight;
        for (auto &entry : contentOf(request).entries) {
            if (entry->globalid == 0)
                entry->globalid = numberOf(*entry);
            entry->user = Me;
            titles[entry->globalid] = entry->isDeleted() ? QString() : entry->getTitle();
            answer.entries.push_back(std::move(entry));
        }
        return answer;
    }
    std::map<quint32, QString> titles; // of all that were ever made; empty for what was deleted

private:
    quint32 numberOf(const VelEntry &entry)
    {
        const auto known = m_new.find({entry.localid, entry.getTitle()});
        const auto number = static_cast<quint32>(m_new.size() + 1);
        return known == m_new.end() ? m_new[{entry.localid, entry.getTitle()}] = number : known->second;
    }
    std::map<std::pair<quint32, QString>, quint32> m_new;
};

QStringList titlesOf(const VelDoc &doc)
{
    QStringList titles;
    for (const VelEntryRef &each : doc.getEntries({}, 0, false, {})) {
        if (!each.getOriginal()->isDeleted())
            titles.append(each.getOriginal()->getTitle());
    }
    titles.sort();
    return titles;
}
} // namespace

class VelUnansweredTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void shouldRepeatWhatItWas();
    void shouldForgetWhatDoesNotCount_data();
    void shouldForgetWhatDoesNotCount();
    void shouldLoseAndDoubleNothing();
};

void VelUnansweredTest::shouldRepeatWhatItWas()
{
    TestDoc doc;
    VelUnanswered unanswered(doc, doc.settings);
    const VelNetTask sync{VelNetTask::Sync, {}, false};
    const quint32 renamed = addEvent(doc, QStringLiteral("Old"), march(2, 9), march(2, 10))->localid;
    const quint32 removed = addEvent(doc, QStringLiteral("Gone"), march(2, 9), march(2, 10))->localid;
    VelEntry ringing = *addEvent(doc, QStringLiteral("Rings"), march(2, 9), march(2, 10));
    ringing.reminder = 5;
    doc.addEntry(std::make_unique<VelEntry>(ringing));
    const VelRequest first = unanswered.write(sync);
    QVERIFY(!unanswered.isRepeat() && unanswered.isPending());
    doc.changeEntry(renamed, [](VelEntry &entry) { entry.setTitle(QStringLiteral("New")); });
    doc.deleteEntry(doc.getEntry(removed), false);
    doc.dismissReminder(ringing.localid);
    addEvent(doc, QStringLiteral("Later"), march(2, 9), march(2, 10));
    for (int i = 0; i < 2; ++i) {
        const VelRequest again = unanswered.write(sync);
        QVERIFY(unanswered.isRepeat());
        QCOMPARE(again.bytes, first.bytes);
        QVERIFY(again.sent == first.sent);
        unanswered.refuse(); // of the first one nothing is known yet
    }
    Server server;
    VelMerge(doc, server.take(first.bytes), first.sent, Me).apply();
    QVERIFY(!unanswered.isPending());
    QCOMPARE(titlesOf(doc),
             (QStringList{QStringLiteral("Later"), QStringLiteral("New"), QStringLiteral("Rings")}));
    QVERIFY(doc.getEntry(ringing.localid)->reminderfired);
    const VelXmlContent rest = contentOf(unanswered.write(sync).bytes);
    QVERIFY(!unanswered.isRepeat());
    QCOMPARE(rest.entries.size(), std::size_t(4)); // two changed, a notice, and what is new
    QVERIFY(doc.getEntry(removed)->isDeleted() && doc.getEntry(removed)->globalid != 0);
}

void VelUnansweredTest::shouldForgetWhatDoesNotCount_data()
{
    using Happening = std::function<void(TestDoc &, VelUnanswered &)>;
    QTest::addColumn<Happening>("happening");
    QTest::newRow("refused") << Happening([](TestDoc &, VelUnanswered &sent) { sent.refuse(); });
    QTest::newRow("another calendar") << Happening([](TestDoc &doc, VelUnanswered &) { doc.newDocument(); });
    QTest::newRow("another account") << Happening(
        [](TestDoc &doc, VelUnanswered &) { doc.settings.user = QStringLiteral("bert"); });
    QTest::newRow("answered") << Happening([](TestDoc &doc, VelUnanswered &) { doc.endExchange(); });
}

void VelUnansweredTest::shouldForgetWhatDoesNotCount()
{
    using Happening = std::function<void(TestDoc &, VelUnanswered &)>;
    QFETCH(const Happening, happening);
    TestDoc doc;
    VelUnanswered unanswered(doc, doc.settings);
    addEvent(doc, QStringLiteral("Old"), march(2, 9), march(2, 10));
    QVERIFY(!unanswered.write({VelNetTask::Sync, {}, false}).sent.empty());
    happening(doc, unanswered);
    QVERIFY(!unanswered.isPending());
    addEvent(doc, QStringLiteral("New"), march(2, 9), march(2, 10));
    QVERIFY(unanswered.write({VelNetTask::Sync, {}, false}).bytes.contains("<title>New"));
}

// Whatever is lost on the way, there or back: in the end both sides have the same, each entry once.
void VelUnansweredTest::shouldLoseAndDoubleNothing()
{
    for (quint32 seed = 1; seed <= 100; ++seed) {
        VelRandomEntry random(seed);
        TestDoc doc;
        VelUnanswered unanswered(doc, doc.settings);
        Server server;
        for (int round = 0; round < 30; ++round) {
            for (int i = random.number(0, 3); i > 0 && round < 28; --i) {
                const auto localid = static_cast<quint32>(random.number(1, 12));
                const QString title = QStringLiteral("%1.%2").arg(round).arg(i);
                if (random.chance(2))
                    addEvent(doc, title, march(2, 9), march(2, 10));
                else if (doc.getEntry(localid) && !doc.getEntry(localid)->isDeleted() && random.chance(2))
                    doc.deleteEntry(doc.getEntry(localid), false);
                else if (doc.getEntry(localid) && !doc.getEntry(localid)->isDeleted())
                    doc.changeEntry(localid, [&title](VelEntry &entry) { entry.setTitle(title); });
            }
            const VelRequest request = unanswered.write({VelNetTask::Sync, {}, false});
            const bool isLost = round < 28 && random.chance(2);
            if (isLost && random.chance(2))
                continue; // on the way there
            VelXmlContent answer = server.take(request.bytes);
            if (!isLost)
                VelMerge(doc, std::move(answer), request.sent, Me).apply();
        }
        QStringList titles;
        for (const auto &[number, title] : server.titles) {
            if (!title.isEmpty())
                titles.append(title);
        }
        titles.sort();
        QCOMPARE(titlesOf(doc), titles);
    }
}

Q_DECLARE_METATYPE(std::function<void(TestDoc &, VelUnanswered &)>)
QTEST_GUILESS_MAIN(VelUnansweredTest)
#include "velunansweredtest.moc"
