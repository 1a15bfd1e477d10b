// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "document/velsyncrule.h"

#include "document/testdoc.h"
#include "document/velkeptcopy.h"

#include <QDir>
#include <QTest>

using namespace TestCalendar;
using Verdict = VelSyncRule::Verdict;

Q_DECLARE_METATYPE(VelSyncRule::Verdict)

namespace
{
const QString Own = QStringLiteral("own.xml");

/** One own entry with guests, an invitation, a notice of a deletion, and the state @p meta. */
void open(TestDoc &doc, const QByteArray &meta)
{
    const QByteArray times = "<start>2026-3-2 9:0</start><end>2026-3-2 10:0</end></entry>";
    doc.put(
        Own,
        "<calendar><meta>" + meta
            + "</meta><account><id>9</id><name>Bert</name></account>"
              "<entry><localid>4</localid><globalid>7</globalid><user>3</user><title>own</title><account>"
              "<id>3</id><name>Anna</name></account><account><id>9</id><name>Bert</name><status>4</status>"
              "</account>"
            + times + "<entry><localid>5</localid><globalid>8</globalid><user>9</user>" + times
            + "<entry><localid>6</localid><globalid>9</globalid><type>-1</type>" + times + "</calendar>");
    doc.openDocument(doc.url(Own));
}
} // namespace

class VelSyncRuleTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldSynchroniseOnlyWhatBelongsToTheAccount_data()
    {
        QTest::addColumn<QByteArray>("meta");
        QTest::addColumn<QString>("archiveFile");
        QTest::addColumn<Verdict>("verdict");
        const QByteArray user = "<userid>3</userid>";
        const QByteArray synced = user + "<synctime>12</synctime>";
        const QByteArray account = "<server>Host</server><user>anna</user>";
        QTest::newRow("never synchronised") << QByteArray() << "" << Verdict::Allowed;
        QTest::newRow("before that was noted") << synced << "" << Verdict::Allowed;
        QTest::newRow("with the account") << synced + account << "" << Verdict::Allowed;
        QTest::newRow("other user") << synced + "<server>host</server><user>Anna</user>"
                                    << "" << Verdict::OtherAccount;
        QTest::newRow("other host") << synced + "<server>hos</server><user>anna</user>"
                                    << "" << Verdict::OtherAccount;
        QTest::newRow("archive") << synced + account + "<archive>1</archive>"
                                 << "" << Verdict::Archive;
        QTest::newRow("numbers from elsewhere") << user << "" << Verdict::MaybeArchive;
        QTest::newRow("named as archive") << synced << "own" << Verdict::MaybeArchive;
        QTest::newRow("other archive") << synced << "other" << Verdict::Allowed;
        QTest::newRow("known to be none") << user + "<archive>0</archive>"
                                          << "own" << Verdict::Allowed;
    }

    void shouldSynchroniseOnlyWhatBelongsToTheAccount()
    {
        QFETCH(QByteArray, meta);
        QFETCH(QString, archiveFile);
        TestDoc doc;
        open(doc, meta);
        const QUrl archive = archiveFile.isEmpty() ? QUrl() : doc.url(archiveFile);
        QTEST(VelSyncRule::judge(doc, {QStringLiteral("host"), QStringLiteral("anna")}, archive), "verdict");
    }

    void answersShouldNotTellWhoseTheCalendarIs()
    {
        TestDoc doc;
        open(doc, "<archive>1</archive><server>host</server>");
        VelXmlContent answer;
        answer.archive = false;
        answer.account.server = QStringLiteral("other");
        doc.readXml(answer);
        QVERIFY(doc.isArchive() && doc.getServerAccount().server == QLatin1String("host"));
    }

    void ownEntriesShouldBeginAnew()
    {
        TestDoc doc;
        open(doc, "<userid>3</userid><origright>2</origright><synctime>12</synctime><server>host</server>");
        doc.restart(VelSyncRule::ownAsNew(doc));
        const VelEntry *own = doc.getEntry(4);
        QVERIFY(own && doc.getEntryCount() == 1);
        QVERIFY(own->globalid == 0 && own->user == 0 && own->dirty == 1);
        QVERIFY(own->accounts.size() == 1 && own->accounts.first().name == QLatin1String("Bert"));
        QVERIFY(own->accounts.first().id == 0 && own->accounts.first().status == VelAccount::Unanswered);
        QVERIFY(doc.isModified() && doc.isWritable() && doc.URL() == doc.url(Own));
        QVERIFY(doc.getUserId() == 0 && doc.getSynctime() == QLatin1String("0")
                && doc.getAccounts().isEmpty());
        QCOMPARE(VelSyncRule::judge(doc, {QStringLiteral("x"), {}}, {}), Verdict::Allowed);
    }

    void copiesShouldBeKeptUnderNamesOfTheirOwn()
    {
        TestDoc doc;
        open(doc, "<userid>3</userid>");
        doc.setModified(true);
        addEvent(doc, QStringLiteral("unsaved"), march(3, 9), march(3, 10));
        const QString first = VelKeptCopy::write(doc, today(), doc.path(QStringLiteral("copies")));
        QCOMPARE(first, doc.path(QStringLiteral("own.before-sync-2026-03-02.xml")));
        QVERIFY(fileBytes(first).contains("unsaved") && fileBytes(first).contains("<archive>1</archive>"));
        QVERIFY(doc.isModified() && !doc.isArchive());
        QVERIFY(
            VelKeptCopy::write(doc, today(), {}).endsWith(QLatin1String("own.before-sync-2026-03-02-2.xml")));
        for (int i = 0; i < VelKeptCopy::MostCopies; ++i)
            QVERIFY(!VelKeptCopy::write(doc, today(), {}).isEmpty());
        QCOMPARE(QDir(doc.path({})).entryList(QDir::Files).size(), VelKeptCopy::MostCopies + 1);
        doc.newDocument(); // has no file to stand beside
        QCOMPARE(VelKeptCopy::write(doc, today(), doc.path(QStringLiteral("copies"))),
                 doc.path(QStringLiteral("copies/Untitled.before-sync-2026-03-02.xml")));
    }
};

QTEST_GUILESS_MAIN(VelSyncRuleTest)

#include "velsyncruletest.moc"
