// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "document/calendarfiles.h"
#include "document/veldoc.h"
#include "model/velsettings.h"
#include "support/fakemessages.h"
#include "support/testcalendar.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

using namespace CalendarFiles;
using namespace TestCalendar;
using Answer = VelMessages::Answer;

Q_DECLARE_METATYPE(VelMessages::Answer)

namespace
{
struct Calendar {
    FakeMessages messages;
    VelSettings settings;
    VelDoc doc{messages, settings, nullptr, &TestCalendar::today};
};
} // namespace

class VelSaveTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void shouldGiveFileItsSuffix_data();
    void shouldGiveFileItsSuffix();
    void shouldAskBeforeReplacingAnotherFile_data();
    void shouldAskBeforeReplacingAnotherFile();
    void shouldNotAskWhenOverwriteWasAgreed();
    void shouldAskWhenTheSuffixLeadsToAnotherFile();
    void shouldAskBeforeUndoingForeignChange_data();
    void shouldAskBeforeUndoingForeignChange();
    void shouldNoticeForeignChangeMadeWhileOpening();
    void shouldNotAskAgainAfterReplacing();
    void shouldNotAskWhenTheFileVanished();
    void shouldRememberDeclinedReplacementUntilSaved();

private:
    [[nodiscard]] QString path(const QString &name) const { return m_folder->filePath(name); }
    [[nodiscard]] QUrl url(const QString &name) const { return QUrl::fromLocalFile(path(name)); }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void VelSaveTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
}

void VelSaveTest::shouldGiveFileItsSuffix_data()
{
    QTest::addColumn<QString>("chosen");
    QTest::addColumn<QString>("written");

    QTest::newRow("with it") << QStringLiteral("a.xml") << QStringLiteral("a.xml");
    QTest::newRow("without") << QStringLiteral("a") << QStringLiteral("a.xml");
    QTest::newRow("another") << QStringLiteral("a.ics") << QStringLiteral("a.ics.xml");
    QTest::newRow("without its dot") << QStringLiteral("axml") << QStringLiteral("axml.xml");
    QTest::newRow("with blanks and signs") << QStringLiteral("ä #1 50%?") << QStringLiteral("ä #1 50%?.xml");
}

void VelSaveTest::shouldGiveFileItsSuffix()
{
    QFETCH(QString, chosen);
    QFETCH(QString, written);

    Calendar calendar;
    QVERIFY(calendar.doc.saveDocument(url(chosen), false));
    QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files), QStringList{written});
    QCOMPARE(calendar.doc.URL(), url(written));
}

void VelSaveTest::shouldAskBeforeReplacingAnotherFile_data()
{
    QTest::addColumn<Answer>("answer");
    QTest::addColumn<bool>("isSaved");

    QTest::newRow("yes") << Answer::Yes << true;
    QTest::newRow("no") << Answer::No << false;
    QTest::newRow("closed") << Answer::Cancel << false;
}

void VelSaveTest::shouldAskBeforeReplacingAnotherFile()
{
    QFETCH(Answer, answer);
    QFETCH(bool, isSaved);

    const QByteArray before = fileWithIds({1});
    QVERIFY(writeBytes(path(QStringLiteral("a.xml")), before));
    Calendar calendar;
    calendar.doc.setModified(true);
    calendar.messages.orderAnswer(answer);
    // The name without suffix is asked about, too.
    QCOMPARE(calendar.doc.saveDocument(url(QStringLiteral("a")), false), isSaved);
    QCOMPARE(calendar.messages.count(), 1);
    QCOMPARE(calendar.messages.last().kind, FakeMessages::Kind::YesNo);
    QCOMPARE(calendar.messages.last().text, QStringLiteral("Do you want to overwrite existing file?"));
    QCOMPARE(calendar.messages.last().caption, QStringLiteral("File exists"));
    QCOMPARE(fileBytes(path(QStringLiteral("a.xml"))) == before, !isSaved);
    QCOMPARE(calendar.doc.isModified(), !isSaved);
    QCOMPARE(calendar.doc.isUntitled(), !isSaved);
}

void VelSaveTest::shouldNotAskWhenOverwriteWasAgreed()
{
    QVERIFY(writeBytes(path(QStringLiteral("a.xml")), fileWithIds({1})));
    Calendar calendar;
    QVERIFY(calendar.doc.saveDocument(url(QStringLiteral("a.xml")), true));
    QCOMPARE(calendar.messages.count(), 0);
    QVERIFY(!fileBytes(path(QStringLiteral("a.xml"))).contains("<entry>"));
}

void VelSaveTest::shouldAskWhenTheSuffixLeadsToAnotherFile()
{
    QVERIFY(writeBytes(path(QStringLiteral("work")), canonicalFile()));
    QVERIFY(writeBytes(path(QStringLiteral("work.xml")), fileWithIds({1})));
    Calendar calendar;
    VelDoc &doc = calendar.doc;
    QVERIFY(doc.openDocument(url(QStringLiteral("work"))));
    doc.setModified(true);
    // To save the open file is no consent to replace another one.
    QVERIFY(!doc.saveDocument(doc.URL(), true));
    QCOMPARE(calendar.messages.last().caption, QStringLiteral("File exists"));
    QCOMPARE(fileBytes(path(QStringLiteral("work.xml"))), fileWithIds({1}));
    QVERIFY(doc.isModified());
    QVERIFY(doc.hasDeclinedOverwrite());
}

void VelSaveTest::shouldAskBeforeUndoingForeignChange_data()
{
    QTest::addColumn<Answer>("answer");
    QTest::addColumn<bool>("isSaved");

    QTest::newRow("replace") << Answer::Yes << true;
    QTest::newRow("cancel") << Answer::No << false;
}

void VelSaveTest::shouldAskBeforeUndoingForeignChange()
{
    QFETCH(Answer, answer);
    QFETCH(bool, isSaved);

    QVERIFY(writeBytes(path(QStringLiteral("a.xml")), canonicalFile()));
    Calendar calendar;
    VelDoc &doc = calendar.doc;
    QVERIFY(doc.openDocument(url(QStringLiteral("a.xml"))));
    doc.setModified(true);
    QVERIFY(writeBytes(path(QStringLiteral("a.xml")), fileWithIds({1})));
    calendar.messages.orderAnswer(answer);

    QCOMPARE(doc.saveModified(), isSaved);
    QCOMPARE(calendar.messages.count(), 1);
    QCOMPARE(calendar.messages.last().kind, FakeMessages::Kind::YesNo);
    QVERIFY(calendar.messages.last().text.contains(
        QStringLiteral("\"a.xml\" has been changed by another program")));
    QCOMPARE(calendar.messages.last().caption, QStringLiteral("File was changed"));
    QCOMPARE(calendar.messages.last().yes, QStringLiteral("Replace the file"));
    QCOMPARE(calendar.messages.last().no, QStringLiteral("Cancel"));
    QCOMPARE(fileBytes(path(QStringLiteral("a.xml"))) == fileWithIds({1}), !isSaved);
    QCOMPARE(doc.isModified(), !isSaved);
}

void VelSaveTest::shouldNoticeForeignChangeMadeWhileOpening()
{
    QVERIFY(writeBytes(path(QStringLiteral("a.xml")), canonicalFile()));
    Calendar calendar;
    // The document asks for today between reading the file and showing it.
    VelDoc doc(calendar.messages, calendar.settings, nullptr, [this] {
        writeBytes(path(QStringLiteral("a.xml")), fileWithIds({1}));
        return today();
    });
    QVERIFY(doc.openDocument(url(QStringLiteral("a.xml"))));
    QCOMPARE(doc.getEntryCount(), std::size_t(3));
    QVERIFY(!doc.saveDocument(doc.URL(), true));
    QCOMPARE(calendar.messages.last().caption, QStringLiteral("File was changed"));
}

void VelSaveTest::shouldNotAskAgainAfterReplacing()
{
    QVERIFY(writeBytes(path(QStringLiteral("a.xml")), canonicalFile()));
    Calendar calendar;
    VelDoc &doc = calendar.doc;
    QVERIFY(doc.openDocument(url(QStringLiteral("a.xml"))));
    QVERIFY(doc.saveDocument(doc.URL(), true));
    QCOMPARE(calendar.messages.count(), 0);
    QVERIFY(writeBytes(path(QStringLiteral("a.xml")), fileWithIds({1})));
    calendar.messages.orderAnswer(Answer::Yes);
    QVERIFY(doc.saveDocument(doc.URL(), true));
    QCOMPARE(calendar.messages.count(), 1);
    QVERIFY(doc.saveDocument(doc.URL(), true));
    QCOMPARE(calendar.messages.count(), 1);
}

void VelSaveTest::shouldNotAskWhenTheFileVanished()
{
    QVERIFY(writeBytes(path(QStringLiteral("a.xml")), canonicalFile()));
    Calendar calendar;
    QVERIFY(calendar.doc.openDocument(url(QStringLiteral("a.xml"))));
    QVERIFY(QFile::remove(path(QStringLiteral("a.xml"))));
    QVERIFY(calendar.doc.saveDocument(calendar.doc.URL(), true));
    QCOMPARE(calendar.messages.count(), 0);
    QVERIFY(QFile::exists(path(QStringLiteral("a.xml"))));
}

void VelSaveTest::shouldRememberDeclinedReplacementUntilSaved()
{
    QVERIFY(writeBytes(path(QStringLiteral("a.xml")), canonicalFile()));
    Calendar calendar;
    VelDoc &doc = calendar.doc;
    QVERIFY(doc.openDocument(url(QStringLiteral("a.xml"))));
    QVERIFY(!doc.hasDeclinedOverwrite());
    QVERIFY(writeBytes(path(QStringLiteral("a.xml")), fileWithIds({1})));
    QVERIFY(!doc.saveDocument(doc.URL(), true));
    QVERIFY(doc.hasDeclinedOverwrite());
    QVERIFY(doc.saveDocument(url(QStringLiteral("b.xml")), false));
    QVERIFY(!doc.hasDeclinedOverwrite());
}

QTEST_GUILESS_MAIN(VelSaveTest)

#include "velsavetest.moc"
