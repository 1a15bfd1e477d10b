// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "document/veldoc.h"
#include "document/veldocview.h"
#include "model/velsettings.h"
#include "support/fakemessages.h"
#include "support/testcalendar.h"

#include <QDir>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <functional>

using namespace TestCalendar;
using Answer = VelMessages::Answer;

Q_DECLARE_METATYPE(VelMessages::Answer)

namespace
{
class FakeView : public VelDocView
{
public:
    void updateView() override
    {
        ++updates;
        if (onUpdate)
            onUpdate();
    }

    int updates = 0;
    std::function<void()> onUpdate;
};

struct Calendar {
    FakeMessages messages;
    VelSettings settings;
    VelDoc doc{messages, settings, nullptr, &TestCalendar::today};
};

const QString Question = QStringLiteral("The current file has been modified.\nDo you want to save it?");
const QString WriteError = QStringLiteral("Cannot write to the file.");
} // namespace

class VelDocStateTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void shouldUpdateEveryViewButTheSender();
    void shouldUpdateViewOnceThoughAddedTwice();
    void shouldNotUpdateRemovedView();
    void shouldNotUpdateViewThatGoesDuringTheUpdate();
    void shouldSayModifiedOnlyWhenItChanges();
    void shouldSayModifiedBeforeItIs();
    void shouldTrackWhatTheServerHasNotSeen();
    void shouldResetOnNewDocument();
    void shouldUpdateViewsOnNewDocument();
    void shouldBeUntitledByNameOnly();
    void shouldBeWritableByRight_data();
    void shouldBeWritableByRight();
    void shouldGoOnOrNotWhenModified_data();
    void shouldGoOnOrNotWhenModified();
    void shouldWriteTheFileWhenSavingIsAccepted();
    void shouldGoOnAfterSaveAsOnlyWhenItSaved_data();
    void shouldGoOnAfterSaveAsOnlyWhenItSaved();
};

void VelDocStateTest::shouldUpdateEveryViewButTheSender()
{
    Calendar calendar;
    FakeView sender;
    FakeView other;
    calendar.doc.addView(&sender);
    calendar.doc.addView(&other);
    calendar.doc.slotUpdateAllViews(&sender);
    QCOMPARE(sender.updates, 0);
    QCOMPARE(other.updates, 1);
    QVERIFY(calendar.doc.isModified());
    calendar.doc.slotUpdateAllViews(nullptr);
    QCOMPARE(sender.updates, 1);
    QCOMPARE(other.updates, 2);
}

void VelDocStateTest::shouldUpdateViewOnceThoughAddedTwice()
{
    Calendar calendar;
    FakeView view;
    calendar.doc.addView(&view);
    calendar.doc.addView(&view);
    calendar.doc.slotUpdateAllViews(nullptr);
    QCOMPARE(view.updates, 1);
    calendar.doc.removeView(&view);
    calendar.doc.slotUpdateAllViews(nullptr);
    QCOMPARE(view.updates, 1);
}

void VelDocStateTest::shouldNotUpdateRemovedView()
{
    Calendar calendar;
    FakeView removed;
    FakeView kept;
    calendar.doc.addView(&removed);
    calendar.doc.addView(&kept);
    calendar.doc.removeView(&removed);
    calendar.doc.slotUpdateAllViews(nullptr);
    QCOMPARE(removed.updates, 0);
    QCOMPARE(kept.updates, 1);
}

void VelDocStateTest::shouldNotUpdateViewThatGoesDuringTheUpdate()
{
    Calendar calendar;
    FakeView first;
    auto second = std::make_unique<FakeView>();
    calendar.doc.addView(&first);
    calendar.doc.addView(second.get());
    // A viewer closes when it finds its entry gone, and takes its parts with it.
    first.onUpdate = [&calendar, &second] {
        calendar.doc.removeView(second.get());
        second.reset();
    };
    calendar.doc.slotUpdateAllViews(nullptr);
    QCOMPARE(first.updates, 1);
    QVERIFY(!second);
}

void VelDocStateTest::shouldSayModifiedOnlyWhenItChanges()
{
    Calendar calendar;
    const QSignalSpy spy(&calendar.doc, &VelDoc::modifiedChanged);
    calendar.doc.setModified(false);
    QCOMPARE(spy.count(), 0);
    calendar.doc.setModified(true);
    calendar.doc.setModified(true);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0).at(0).toBool(), true);
    calendar.doc.setModified(false);
    QCOMPARE(spy.count(), 2);
    QCOMPARE(spy.at(1).at(0).toBool(), false);
}

void VelDocStateTest::shouldSayModifiedBeforeItIs()
{
    Calendar calendar;
    QVector<bool> states;
    connect(&calendar.doc, &VelDoc::modifiedChanged, this, [&] { states.append(calendar.doc.isModified()); });
    calendar.doc.setModified(true);
    calendar.doc.setModified(false);
    QCOMPARE(states, (QVector<bool>{false, true}));
}

void VelDocStateTest::shouldTrackWhatTheServerHasNotSeen()
{
    Calendar calendar;
    VelDoc &doc = calendar.doc;
    QVERIFY(doc.isModsSynced());
    doc.setModified(true);
    QVERIFY(!doc.isModsSynced());
    doc.setModified(false); // saving is not sending
    QVERIFY(!doc.isModsSynced());
    doc.setModsSynced(true);
    QVERIFY(doc.isModsSynced());
    doc.slotUpdateAllViews(nullptr);
    QVERIFY(!doc.isModsSynced());
    doc.closeDocument();
    QVERIFY(doc.isModsSynced());
    QVERIFY(!doc.isModified());
}

void VelDocStateTest::shouldResetOnNewDocument()
{
    Calendar calendar;
    VelDoc &doc = calendar.doc;
    addTodo(doc, QStringLiteral("A"), today());
    doc.setUserId(5);
    doc.setSynctime(QStringLiteral("123"));
    const QSignalSpy lock(&doc, &VelDoc::editLockWanted);
    QVERIFY(doc.newDocument());
    QCOMPARE(doc.getEntryCount(), std::size_t(0));
    QCOMPARE(doc.getUserId(), 0U);
    QCOMPARE(doc.getOrigRight(), int(VelDoc::FullRight));
    QCOMPARE(doc.getSynctime(), QStringLiteral("0"));
    QVERIFY(doc.isUntitled());
    QVERIFY(!doc.isModified());
    QCOMPARE(lock.count(), 1);
    QCOMPARE(lock.at(0).at(0).toBool(), false);
}

void VelDocStateTest::shouldUpdateViewsOnNewDocument()
{
    Calendar calendar;
    addTodo(calendar.doc, QStringLiteral("A"), today());
    FakeView view;
    std::size_t seen = 99;
    view.onUpdate = [&] { seen = calendar.doc.getEntryCount(); };
    calendar.doc.addView(&view);
    calendar.doc.newDocument();
    QCOMPARE(view.updates, 1);
    QCOMPARE(seen, std::size_t(0));
}

void VelDocStateTest::shouldBeUntitledByNameOnly()
{
    const QTemporaryDir folder;
    Calendar calendar;
    VelDoc &doc = calendar.doc;
    QVERIFY(doc.isUntitled());
    QCOMPARE(doc.URL().fileName(), QStringLiteral("Untitled"));
    const QSignalSpy spy(&doc, &VelDoc::urlChanged);
    const QUrl url = QUrl::fromLocalFile(folder.filePath(QStringLiteral("work.xml")));
    QVERIFY(doc.saveDocument(url, true));
    QVERIFY(!doc.isUntitled());
    QCOMPARE(doc.URL(), url);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0).at(0).toUrl(), url);
    doc.newDocument();
    QVERIFY(doc.isUntitled());
}

void VelDocStateTest::shouldBeWritableByRight_data()
{
    QTest::addColumn<int>("right");
    QTest::addColumn<bool>("isWritable");

    QTest::newRow("none") << 0 << false;
    QTest::newRow("times only") << 1 << false;
    QTest::newRow("read") << 2 << false;
    QTest::newRow("write") << 3 << true;
    QTest::newRow("full") << 4 << true;
}

void VelDocStateTest::shouldBeWritableByRight()
{
    QFETCH(int, right);
    QFETCH(bool, isWritable);

    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("right.xml"));
    QVERIFY(writeBytes(
        path, "<calendar><meta><origright>" + QByteArray::number(right) + "</origright></meta></calendar>"));
    Calendar calendar;
    const QSignalSpy lock(&calendar.doc, &VelDoc::editLockWanted);
    QVERIFY(calendar.doc.openDocument(QUrl::fromLocalFile(path)));
    QCOMPARE(calendar.doc.isWritable(), isWritable);
    QCOMPARE(lock.count(), 1);
    QCOMPARE(lock.at(0).at(0).toBool(), !isWritable);
}

void VelDocStateTest::shouldGoOnOrNotWhenModified_data()
{
    QTest::addColumn<bool>("isModified");
    QTest::addColumn<bool>("autoSave");
    QTest::addColumn<bool>("isUntitled");
    QTest::addColumn<bool>("canWrite");
    QTest::addColumn<Answer>("answer");
    QTest::addColumn<bool>("goesOn");
    QTest::addColumn<bool>("asks");
    QTest::addColumn<bool>("isModifiedAfter");
    QTest::addColumn<bool>("isSyncedAfter");

    constexpr bool Mod = true;
    constexpr bool Auto = true;
    constexpr bool Untitled = true;
    constexpr bool Writable = true;
    QTest::newRow("clean") << !Mod << !Auto << !Untitled << Writable << Answer::Cancel << true << false
                           << false << true;
    QTest::newRow("clean, untitled") << !Mod << Auto << Untitled << Writable << Answer::Cancel << true
                                     << false << false << true;
    QTest::newRow("saved by itself") << Mod << Auto << !Untitled << Writable << Answer::Cancel << true
                                     << false << false << false;
    QTest::newRow("saved by itself, fails")
        << Mod << Auto << !Untitled << !Writable << Answer::Yes << false << false << true << false;
    QTest::newRow("untitled is never saved by itself")
        << Mod << Auto << Untitled << Writable << Answer::Cancel << false << true << true << false;
    QTest::newRow("yes") << Mod << !Auto << !Untitled << Writable << Answer::Yes << true << true << false
                         << false;
    QTest::newRow("yes, fails") << Mod << !Auto << !Untitled << !Writable << Answer::Yes << false << true
                                << true << false;
    QTest::newRow("no") << Mod << !Auto << !Untitled << Writable << Answer::No << true << true << true
                        << true;
    QTest::newRow("no, untitled") << Mod << Auto << Untitled << Writable << Answer::No << true << true << true
                                  << true;
    QTest::newRow("cancel") << Mod << !Auto << !Untitled << Writable << Answer::Cancel << false << true
                            << true << false;
}

void VelDocStateTest::shouldGoOnOrNotWhenModified()
{
    QFETCH(bool, isModified);
    QFETCH(bool, autoSave);
    QFETCH(bool, isUntitled);
    QFETCH(bool, canWrite);
    QFETCH(Answer, answer);
    QFETCH(bool, asks);

    QTemporaryDir folder;
    Calendar calendar;
    calendar.settings.autoSave = autoSave;
    if (!isUntitled)
        QVERIFY(
            calendar.doc.saveDocument(QUrl::fromLocalFile(folder.filePath(QStringLiteral("a.xml"))), true));
    if (!canWrite)
        QVERIFY(folder.remove());
    if (isModified)
        calendar.doc.setModified(true);
    calendar.messages.orderAnswer(answer);

    QTEST(calendar.doc.saveModified(), "goesOn");
    QTEST(calendar.doc.isModified(), "isModifiedAfter");
    QTEST(calendar.doc.isModsSynced(), "isSyncedAfter");
    QCOMPARE(calendar.messages.texts(FakeMessages::Kind::YesNoCancel),
             asks ? QStringList{Question} : QStringList());
    QCOMPARE(calendar.messages.errors(), canWrite ? QStringList() : QStringList{WriteError});
    if (asks)
        QCOMPARE(calendar.messages.messages().front().caption, QStringLiteral("Warning"));
}

void VelDocStateTest::shouldWriteTheFileWhenSavingIsAccepted()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.xml"));
    Calendar calendar;
    calendar.settings.autoSave = false;
    QVERIFY(calendar.doc.saveDocument(QUrl::fromLocalFile(path), true));
    addTodo(calendar.doc, QStringLiteral("Buy milk"), today());
    calendar.doc.slotUpdateAllViews(nullptr);

    calendar.messages.orderAnswer(Answer::No);
    QVERIFY(calendar.doc.saveModified());
    QVERIFY(!fileBytes(path).contains("Buy milk"));
    calendar.messages.orderAnswer(Answer::Yes);
    QVERIFY(calendar.doc.saveModified());
    QVERIFY(fileBytes(path).contains("Buy milk"));
}

void VelDocStateTest::shouldGoOnAfterSaveAsOnlyWhenItSaved_data()
{
    QTest::addColumn<QString>("fileName"); // that the user chooses; none when they cancel
    QTest::addColumn<bool>("goesOn");

    QTest::newRow("saved") << QStringLiteral("chosen.xml") << true;
    QTest::newRow("cancelled") << QString() << false;
    QTest::newRow("failed") << QStringLiteral("missing/chosen.xml") << false;
}

void VelDocStateTest::shouldGoOnAfterSaveAsOnlyWhenItSaved()
{
    QFETCH(QString, fileName);
    QFETCH(bool, goesOn);

    const QTemporaryDir folder;
    Calendar calendar;
    calendar.doc.setModified(true);
    calendar.messages.orderAnswer(Answer::Yes);
    connect(&calendar.doc, &VelDoc::saveAsWanted, this, [&] {
        if (!fileName.isEmpty())
            calendar.doc.saveDocument(QUrl::fromLocalFile(folder.filePath(fileName)), false);
    });
    const QSignalSpy spy(&calendar.doc, &VelDoc::saveAsWanted);
    QCOMPARE(calendar.doc.saveModified(), goesOn);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(calendar.doc.isModified(), !goesOn);
    QCOMPARE(calendar.doc.isUntitled(), !goesOn);
}

QTEST_GUILESS_MAIN(VelDocStateTest)

#include "veldocstatetest.moc"
