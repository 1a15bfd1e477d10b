// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "app/velmainwindow.h"
#include "app/velaboutdata.h"
#include "app/velprintdialogs.h"
#include "app/velprintpreview.h"
#include "app/velrecovery.h"
#include "dialogs/velentrydialog.h"
#include "dialogs/velentryinfo.h"
#include "dialogs/velpreferences.h"
#include "document/veldrag.h"
#include "formats/velvcalendar.h"
#include "hub/velprintout.h"
#include "session.h"
#include "support/testcalendar.h"
#include "views/veldayview.h"
#include "views/vellistviewwidget.h"
#include "widgets/wtable.h"

#include <KColorButton>

#include <QCheckBox>
#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPainter>
#include <QProgressDialog>
#include <QPushButton>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <sys/resource.h>

#include <csignal>

using namespace TestCalendar;
using Answer = VelMessages::Answer;

namespace
{
/** Pages with a word on each. */
class Pages : public VelPrintout
{
public:
    [[nodiscard]] QString title() const override { return QStringLiteral("Word"); }
    int layOut(const QSizeF &, const QPaintDevice *) override { return count; }
    void paintPage(QPainter &painter, int page) const override
    {
        painter.drawText(9, 99, title());
        if (onPage)
            onPage(page);
    }
    int count = 1;
    std::function<void(int)> onPage;
};

/** While it lives no file becomes longer than that many bytes, as on a full disk. */
class FullDisk
{
public:
    explicit FullDisk(rlim_t bytes)
    {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{bytes, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk() { setrlimit(RLIMIT_FSIZE, &m_before); }
    Q_DISABLE_COPY_MOVE(FullDisk)

private:
    rlimit m_before{};
};

} // namespace

class VelMainWindowTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init();
    void everyActionShouldBeInAMenuAndHaveStatusText();
    void emptyStartShouldShowAnUntitledCalendar();
    void missingFileShouldKeepTheCalendar();
    void editSaveAndReopenShouldFindEverythingAsItWas();
    void arrangementShouldSurviveARestart();
    void lastCalendarShouldBeOpenedAgain();
    void exportAndImportShouldCarryAllEntries_data();
    void exportAndImportShouldCarryAllEntries();
    void importShouldAddAllOrNothing_data();
    void importShouldAddAllOrNothing();
    void importWithoutEntriesShouldChangeNothing();
    void closingShouldAskAboutChanges_data();
    void closingShouldAskAboutChanges();
    void readOnlyCalendarShouldDisableChanges();
    void editActionsShouldFollowTheSelection();
    void commandsShouldActOnWhatHasTheKeyboard();
    void purgeShouldRemoveCompletedTasks();
    void undoShouldTakeBackOneCommandAtATime();
    void archiveShouldSaveBothFilesAndTellHowMany();
    void declinedInvitationShouldLeaveTheViews();
    void autoSaveShouldNotAskTwiceAboutAForeignChange();
    void sessionShouldBringBackUnsavedChanges_data();
    void sessionShouldBringBackUnsavedChanges();
    void calendarWithoutAFileShouldBeRecovered();
    void quitShouldTakeItsDataOffTheClipboard();
    void editorShouldWriteOnlyWhatIsAccepted();
    void newEntryShouldBeOnTheDayOfTheSelectedOne();
    void onlyGuestsOutsideTheServerShouldBeMailed_data();
    void onlyGuestsOutsideTheServerShouldBeMailed();
    void keysShouldSwitchViews_data();
    void keysShouldSwitchViews();
    void preferencesShouldTakeEffectAndSurviveARestart();
    void previewShouldSaveAsPdf_data();
    void previewShouldSaveAsPdf();
    void reminderShouldLeadToItsDate();
    void pdfThatFailsShouldLeaveTheOldFile_data();
    void pdfThatFailsShouldLeaveTheOldFile();
    void printDialogMayGoWithTheWindow();

private:
    QString copyOfExample(const QString &name) const;
    QTemporaryDir m_folder;
};

void VelMainWindowTest::initTestCase()
{
    KAboutData::setApplicationData(velAboutData());
    QVERIFY(m_folder.isValid());
}

void VelMainWindowTest::init()
{
    const KSharedConfigPtr config = KSharedConfig::openConfig();
    const QStringList groups = config->groupList();
    for (const QString &group : groups)
        config->deleteGroup(group);
    QGuiApplication::clipboard()->clear();
}

QString VelMainWindowTest::copyOfExample(const QString &name) const
{
    QString path = m_folder.filePath(name);
    QFile::remove(path);
    QFile::copy(QStringLiteral(EXAMPLE_CALENDAR), path);
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner);
    return path;
}

void VelMainWindowTest::everyActionShouldBeInAMenuAndHaveStatusText()
{
    const Session session;
    QList<QAction *> shown;
    const QList<QMenu *> menus = session.window->findChildren<QMenu *>();
    for (const QMenu *menu : menus)
        shown += menu->actions();
    for (const char *name : {"file_new_window",
                             "file_new",
                             "file_open",
                             "file_open_recent",
                             "file_remote",
                             "file_save",
                             "file_save_as",
                             "file_import",
                             "file_export",
                             "file_archive",
                             "file_close",
                             "file_print",
                             "file_quit",
                             "edit_cut",
                             "edit_copy",
                             "edit_paste",
                             "go_today",
                             "options_show_toolbar",
                             "options_show_statusbar",
                             "view_1_day",
                             "view_5_day",
                             "view_7_day",
                             "view_month",
                             "view_list",
                             "new_entry",
                             "new_todo",
                             "edit_entry",
                             "view_entry",
                             "edit_delete",
                             "purge_todo",
                             "synchronize",
                             "changepass",
                             "options_configure",
                             "options_configure_keybinding",
                             "options_configure_toolbars"}) {
        QAction *action = session.window->getAction(QLatin1String(name));
        QVERIFY2(action, name);
        QVERIFY2(shown.contains(action), name);
        QVERIFY2(!action->statusTip().isEmpty(), name);
    }
    QCOMPARE(session.window->getAction(QStringLiteral("file_new"))->text(), QStringLiteral("New calendar"));
}

void VelMainWindowTest::emptyStartShouldShowAnUntitledCalendar()
{
    Session session;
    session.window->openDocumentFile(QUrl());
    QVERIFY(session.doc().isUntitled());
    session.trigger("file_save_as");
    QCOMPARE(session.files->proposed.fileName(), QStringLiteral("Calendar.xml"));
    QVERIFY(session.window->windowTitle().startsWith(QLatin1String("Untitled")));
    QVERIFY(!session.isEnabled("file_save"));
    QCOMPARE(session.messages->count(), 0);
}

void VelMainWindowTest::missingFileShouldKeepTheCalendar()
{
    Session session;
    session.open(copyOfExample(QStringLiteral("kept.xml")));
    const std::size_t count = session.doc().getEntryCount();
    session.choose(m_folder.filePath(QStringLiteral("nowhere.xml")));
    session.trigger("file_open");
    QCOMPARE(session.messages->errors(), QStringList(QStringLiteral("Cannot open the file.")));
    QCOMPARE(session.doc().getEntryCount(), count);
    QVERIFY(session.window->windowTitle().startsWith(QLatin1String("kept.xml")));
}

void VelMainWindowTest::editSaveAndReopenShouldFindEverythingAsItWas()
{
    Session session = Session::withList();
    const QString path = copyOfExample(QStringLiteral("edited.xml"));
    session.open(path);
    QVERIFY(session.list()->table()->rowCount() > 20);
    QVERIFY(!session.isEnabled("file_save"));

    // The first open task is ticked with the mouse.
    WTable *tasks = session.tasks()->table();
    int row = 0;
    while (session.tasks()->getEntry(row)->complete)
        ++row;
    const quint32 task = session.tasks()->getEntry(row)->localid;
    const QRect cell = tasks->visualRect(tasks->model()->index(row, VelListView::CompleteColumn));
    const int boxSize = tasks->style()->pixelMetric(QStyle::PM_IndicatorWidth);
    QTest::mouseClick(tasks->viewport(), Qt::LeftButton, {},
                      QPoint(cell.left() + boxSize / 2 + 3, cell.center().y()));
    QVERIFY(session.doc().getEntry(task)->complete);

    // An entry is deleted with the key.
    session.list()->table()->selectRow(0);
    const quint32 deleted = session.list()->getEntry(0)->localid;
    QVERIFY(session.isEnabled("edit_delete"));
    session.messages->orderAnswer(Answer::Yes);
    session.trigger("edit_delete");
    QVERIFY(session.isEnabled("file_save"));
    session.trigger("file_save");
    QVERIFY(!session.isEnabled("file_save"));
    const QByteArray saved = fileBytes(path);

    session.trigger("file_new");
    QCOMPARE(session.doc().getEntryCount(), std::size_t(0));
    session.open(path);
    QVERIFY(session.doc().getEntry(task)->complete);
    QVERIFY(!session.doc().getEntry(deleted) || session.doc().getEntry(deleted)->isDeleted());
    QVERIFY(session.doc().saveDocument(session.doc().URL(), true));
    QCOMPARE(fileBytes(path), saved);
}

void VelMainWindowTest::arrangementShouldSurviveARestart()
{
    {
        Session session;
        session.open(copyOfExample(QStringLiteral("arranged.xml")));
        WTable *table = session.list()->table();
        table->sortBy(VelListView::TitleColumn);
        table->sortBy(VelListView::TitleColumn);
        table->columnDisplayChange(VelListView::EndDateColumn);
        table->swapColumns(0, VelListView::TitleColumn, true);
        table->horizontalHeader()->resizeSection(VelListView::TitleColumn, 177);
        session.trigger("options_show_statusbar");
        QVERIFY(session.window->close());
    }
    const Session session;
    const WTable *table = session.list()->table();
    QCOMPARE(table->sortColumn(), int(VelListView::TitleColumn));
    QVERIFY(!table->ascending());
    QVERIFY(!table->isColumnHidden(VelListView::EndDateColumn));
    QCOMPARE(table->getDispColumn(VelListView::TitleColumn), 0);
    QCOMPARE(table->columnWidth(VelListView::TitleColumn), 177);
    QVERIFY(!session.window->getAction(QStringLiteral("options_show_statusbar"))->isChecked());
}

void VelMainWindowTest::lastCalendarShouldBeOpenedAgain()
{
    const QString path = copyOfExample(QStringLiteral("last.xml"));
    {
        Session session;
        session.open(path);
        QVERIFY(session.window->close());
    }
    const Session session;
    session.window->openDocumentFile(QUrl());
    QCOMPARE(session.doc().URL(), QUrl::fromLocalFile(path));
}

void VelMainWindowTest::exportAndImportShouldCarryAllEntries_data()
{
    QTest::addColumn<QString>("chosen");
    QTest::addColumn<QString>("written");
    QTest::newRow("suffix added") << QStringLiteral("out") << QStringLiteral("out.vcs");
    QTest::newRow("suffix kept") << QStringLiteral("kept.vcs") << QStringLiteral("kept.vcs");
    QTest::newRow("iCalendar") << QStringLiteral("other.ics") << QStringLiteral("other.ics");
    QTest::newRow("calendar") << QStringLiteral("out.XML") << QStringLiteral("out.XML");
}

void VelMainWindowTest::exportAndImportShouldCarryAllEntries()
{
    QFETCH(QString, chosen);
    QFETCH(QString, written);
    Session session;
    session.open(copyOfExample(QStringLiteral("source.xml")));
    QFile::remove(m_folder.filePath(written));
    session.choose(m_folder.filePath(chosen));
    session.trigger("file_export");
    QVERIFY(QFile::exists(m_folder.filePath(written)));
    QCOMPARE(session.files->proposed, QUrl(QStringLiteral("source.vcs")));
    const std::size_t count = session.doc().getEntryCount();
    QStringList titles;
    for (quint32 id = 1; id <= count; ++id)
        titles.append(session.doc().getEntry(id)->getTitle());

    session.trigger("file_new");
    session.choose(m_folder.filePath(written));
    session.trigger("file_import");
    QCOMPARE(session.messages->count(), 0);
    QCOMPARE(session.doc().getEntryCount(), count);
    QStringList imported;
    for (quint32 id = 1; id <= count; ++id)
        imported.append(session.doc().getEntry(id)->getTitle());
    titles.sort();
    imported.sort();
    QCOMPARE(imported, titles);
    QVERIFY(session.doc().isModified());
}

void VelMainWindowTest::importShouldAddAllOrNothing_data()
{
    QTest::addColumn<QByteArray>("meanwhile");
    QTest::addColumn<int>("added");
    QTest::newRow("to the end") << QByteArray() << 3000;
    QTest::newRow("stopped") << QByteArray("stop") << 0;
    QTest::newRow("another calendar") << QByteArray("file_new") << 0;
    QTest::newRow("window gone") << QByteArray("close") << 0;
}

void VelMainWindowTest::importShouldAddAllOrNothing()
{
    QFETCH(QByteArray, meanwhile);
    Session session;
    const QString path = m_folder.filePath(QStringLiteral("long.vcs"));
    const QByteArray event = "BEGIN:VEVENT\nDTSTART:20260305T190000\nEND:VEVENT\n";
    QVERIFY(writeBytes(path, event.repeated(3000)));
    int pieces = 0;
    bool isLocked = false;
    session.whileReading = [&] {
        if (++pieces > 1)
            return true;
        isLocked = !session.isEnabled("new_entry") && !session.isEnabled("file_import");
        if (meanwhile == "close")
            delete session.window;
        else if (meanwhile == "file_new")
            session.trigger("file_new");
        return meanwhile != "stop";
    };
    session.window->fileCommands()->importFile(QUrl::fromLocalFile(path));
    QCOMPARE(pieces, meanwhile.isEmpty() ? int(3000 * event.size() / (64 << 10)) : 1);
    QVERIFY(isLocked);
    if (!session.window)
        return;
    QTEST(int(session.doc().getEntryCount()), "added");
    QVERIFY(session.messages->count() == 0 && session.isEnabled("new_entry"));
    session.trigger("edit_undo");
    QCOMPARE(int(session.doc().getEntryCount()), 0);
}

void VelMainWindowTest::importWithoutEntriesShouldChangeNothing()
{
    Session session;
    const QString path = m_folder.filePath(QStringLiteral("empty.vcs"));
    QVERIFY(writeBytes(path, "BEGIN:VCALENDAR\nVERSION:1.0\nEND:VCALENDAR\n"));
    session.choose(path);
    session.trigger("file_import");
    QVERIFY(!session.doc().isModified());
    QCOMPARE(session.messages->last().kind, FakeMessages::Kind::Information);
}

void VelMainWindowTest::closingShouldAskAboutChanges_data()
{
    QTest::addColumn<int>("answer");
    QTest::addColumn<bool>("closes");
    QTest::addColumn<bool>("saves");
    QTest::newRow("yes") << int(Answer::Yes) << true << true;
    QTest::newRow("no") << int(Answer::No) << true << false;
    QTest::newRow("cancel") << int(Answer::Cancel) << false << false;
}

void VelMainWindowTest::closingShouldAskAboutChanges()
{
    QFETCH(int, answer);
    QFETCH(bool, closes);
    QFETCH(bool, saves);
    Session session;
    const QString path = m_folder.filePath(QStringLiteral("closing.xml"));
    QFile::remove(path);
    addEvent(session.doc(), QStringLiteral("new"), march(2, 9), march(2, 10));
    session.doc().slotUpdateAllViews(nullptr);
    session.choose(path);
    session.messages->orderAnswer(static_cast<Answer>(answer));
    const QString question = QStringLiteral("The current file has been modified.\nDo you want to save it?");
    QCOMPARE(session.window->queryClose(), closes);
    QCOMPARE(session.messages->last().text, question);
    QCOMPARE(QFile::exists(path), saves);
    QCOMPARE(session.doc().isModified(), !saves);
}

void VelMainWindowTest::readOnlyCalendarShouldDisableChanges()
{
    Session session = Session::withList();
    const QString path = copyOfExample(QStringLiteral("readonly.xml"));
    QVERIFY(writeBytes(path, fileBytes(path).replace("<origright>4", "<origright>2")));
    session.open(path);
    QVERIFY(session.window->isEditLocked());
    session.list()->table()->selectRow(0);
    QVERIFY(session.isEnabled("edit_copy"));
    for (const char *action : {"edit_cut", "edit_delete", "edit_paste", "purge_todo", "file_import"})
        QVERIFY2(!session.isEnabled(action), action);
    session.trigger("file_new");
    QVERIFY(!session.window->isEditLocked());
    QVERIFY(session.isEnabled("purge_todo"));
}

void VelMainWindowTest::editActionsShouldFollowTheSelection()
{
    Session session = Session::withList();
    session.open(copyOfExample(QStringLiteral("selection.xml")));
    for (const char *action : {"edit_cut", "edit_copy", "edit_paste", "edit_delete"})
        QVERIFY2(!session.isEnabled(action), action);
    session.list()->table()->selectRow(0);
    for (const char *action : {"edit_cut", "edit_copy", "edit_delete"})
        QVERIFY2(session.isEnabled(action), action);
    session.trigger("edit_copy");
    QVERIFY(session.isEnabled("edit_paste"));
    session.trigger("go_today");
    QVERIFY(!session.isEnabled("edit_copy"));
}

/** What is selected elsewhere is left alone while the to-do list has the keyboard. */
void VelMainWindowTest::commandsShouldActOnWhatHasTheKeyboard()
{
    Session session = Session::withList();
    VelDoc &doc = session.doc();
    const quint32 event =
        addEvent(doc, QStringLiteral("event"), at(testDay(), 9), at(testDay(), 10))->localid;
    VelEntry task = makeTodo(QStringLiteral("task"), testDay());
    task.globalid = 12;
    task.rule = dailyRule(1, 2);
    const quint32 todo = add(doc, task)->localid;
    doc.slotUpdateAllViews(nullptr);
    session.window->show();
    QVERIFY(QTest::qWaitForWindowActive(session.window));
    session.list()->table()->setFocus();
    for (int row = 0; session.list()->getSelectedEntry() != doc.getEntry(event); ++row)
        session.list()->table()->selectRow(row);
    WTable *tasks = session.window->mainView()->smallList()->table();
    tasks->setFocus(Qt::MouseFocusReason); // a click beside the rows: the toolkit's current row is not shown
    for (const char *action : {"edit_cut", "edit_copy", "edit_delete", "edit_entry", "view_entry"})
        QVERIFY2(!session.isEnabled(action), action);
    tasks->selectRow(0);
    session.window->menuBar()->setFocus(Qt::MenuBarFocusReason);
    session.trigger("edit_copy");
    QCOMPARE(VelDrag::decode(QGuiApplication::clipboard()->mimeData())->getTitle(), QStringLiteral("task"));
    session.trigger("edit_delete"); // the series is asked about, and the server told
    QVERIFY(!doc.getEntry(todo)->isDeleted());
    session.messages->orderAnswer(VelMessages::Answer::Yes);
    session.trigger("edit_delete");
    QVERIFY(doc.getEntry(todo)->isDeleted() && !session.isEnabled("edit_delete"));
    session.list()->table()->setFocus();
    QVERIFY(session.isEnabled("edit_delete") && doc.getEntry(event));
}

void VelMainWindowTest::purgeShouldRemoveCompletedTasks()
{
    Session session;
    VelEntry done = makeTodo(QStringLiteral("done"), testDay());
    done.complete = true;
    add(session.doc(), done);
    addTodo(session.doc(), QStringLiteral("open"), testDay());
    session.trigger("purge_todo");
    QCOMPARE(session.tasks()->table()->rowCount(), 1);
    QCOMPARE(session.tasks()->getEntry(0)->getTitle(), QStringLiteral("open"));
}

void VelMainWindowTest::undoShouldTakeBackOneCommandAtATime()
{
    Session session = Session::withList();
    session.open(copyOfExample(QStringLiteral("undo.xml")));
    const QString path = m_folder.filePath(QStringLiteral("state.xml"));
    const auto state = [&session, &path] {
        return session.doc().writeCopy(path) ? fileBytes(path) : QByteArray();
    };
    QVERIFY(!session.isEnabled("edit_undo"));
    QList<QByteArray> states{state()};
    session.edit = [](VelEntryDialog &dialog) {
        dialog.findChild<QLineEdit *>()->setText(QStringLiteral("Edited"));
        dialog.slotOk();
    };
    for (const char *command : {"edit_entry", "edit_copy", "edit_paste", "edit_cut", "edit_paste",
                                "edit_delete", "purge_todo", "new_entry", "file_import"}) {
        session.list()->table()->selectRow(0);
        session.choose(QStringLiteral(EXAMPLE_CALENDAR));
        session.trigger(command);
        const QByteArray now = state();
        if (now != states.last())
            states.append(now);
        else
            QCOMPARE(command, "edit_copy");
    }
    QCOMPARE(session.window->getAction(QStringLiteral("edit_undo"))->text(), QStringLiteral("&Undo: Import"));
    for (int i = int(states.size()) - 2; i >= 0; --i) {
        session.trigger("edit_undo");
        QCOMPARE(state(), states.at(i));
    }
    QVERIFY(!session.isEnabled("edit_undo"));
    session.trigger("edit_redo");
    QCOMPARE(state(), states.at(1));
    session.window->setEditLock(true);
    QVERIFY(!session.isEnabled("edit_undo") && !session.isEnabled("edit_redo"));
    session.window->setEditLock(false);
    session.trigger("file_new");
    QVERIFY(!session.isEnabled("edit_undo") && !session.isEnabled("edit_redo"));
}

void VelMainWindowTest::archiveShouldSaveBothFilesAndTellHowMany()
{
    Session session;
    const QString path = m_folder.filePath(QStringLiteral("archived-from.xml"));
    session.doc().setUserId(4);
    addEvent(session.doc(), QStringLiteral("over"), at({2025, 11, 15}), at({2025, 11, 15}, 1));
    addEvent(session.doc(), QStringLiteral("one year ago"), at({2025, 11, 16}), at({2025, 11, 16}, 1));
    QVERIFY(session.doc().saveDocument(QUrl::fromLocalFile(path), true));
    session.trigger("file_archive"); // cancelled
    QCOMPARE(session.messages->count(), 0);
    session.choose(m_folder.filePath(QStringLiteral("old")));
    session.window->setEditLock(true);
    session.trigger("file_archive");
    QVERIFY(session.messages->errors().size() == 1 && session.doc().getEntryCount() == 2);
    session.window->setEditLock(false);
    session.trigger("file_archive");
    QCOMPARE(session.messages->last().text, QStringLiteral("1 calendar entries were archived."));
    QVERIFY(fileBytes(m_folder.filePath(QStringLiteral("old.xml"))).contains("over"));
    QVERIFY(!fileBytes(path).contains("over"));
    QVERIFY(fileBytes(path).contains("one year ago"));
    QCOMPARE(session.window->settings()->archiveFile.fileName(), QStringLiteral("old.xml"));
    session.trigger("file_archive");
    QCOMPARE(session.messages->last().text,
             QStringLiteral("No calendar entries matched the archive criteria. Nothing archived."));
    QCOMPARE(session.messages->count(), 3);
}

void VelMainWindowTest::declinedInvitationShouldLeaveTheViews()
{
    Session session = Session::withList();
    VelEntry invitation = makeEvent(QStringLiteral("talk"), at(testDay(), 9), at(testDay(), 10));
    invitation.user = 5;
    invitation.globalid = 70;
    invitation.accounts = {VelAccount(QStringLiteral("Me"), {}, 4)};
    session.doc().setUserId(4);
    const quint32 id = add(session.doc(), invitation)->localid;
    session.list()->updateView();
    QVERIFY(!session.isEnabled("view_entry"));
    session.list()->table()->selectRow(0);
    const auto decline = [&session] { session.window->findChild<VelEntryInfo *>()->slotDecline(); };
    QTimer::singleShot(0, session.window, decline);
    const VelEntry received(*session.doc().getEntry(id)); // not the one of the calendar
    QCOMPARE(session.window->showEntryInfo(received, VelAnswer::Invitation), int(VelAccount::Declined));
    QVERIFY(!session.doc().getEntry(id)->isDeleted());
    QTimer::singleShot(0, session.window, decline);
    session.trigger("view_entry");
    QVERIFY(session.doc().getEntry(id)->isDeleted());
    QCOMPARE(session.list()->table()->rowCount(), 0);
    QVERIFY(!session.list()->hasSelectedEntry());
    QVERIFY(!session.isEnabled("view_entry"));
}

void VelMainWindowTest::autoSaveShouldNotAskTwiceAboutAForeignChange()
{
    Session session;
    const QString path = copyOfExample(QStringLiteral("auto.xml"));
    session.open(path);
    session.doc().slotUpdateAllViews(nullptr);
    const QByteArray foreign = fileBytes(path).replace("</calendar>", "<!-- mine --></calendar>");
    QVERIFY(writeBytes(path, foreign));
    session.window->setEditLock(true); // an editor is open, which no box is to come over
    session.window->slotAutoSave();
    QCOMPARE(session.messages->count(), 0);
    session.window->setEditLock(false);
    session.messages->orderAnswer(Answer::No);
    session.window->slotAutoSave();
    QVERIFY(session.messages->count() == 1 && session.messages->last().isUnasked);
    session.window->slotAutoSave();
    QCOMPARE(session.messages->count(), 1);
    QCOMPARE(fileBytes(path), foreign);
    QVERIFY(session.doc().isModified());
    const auto *status = session.window->statusBar()->findChild<QLabel *>();
    QVERIFY(status->text().startsWith(QLatin1String("The calendar could not be saved")));

    // Somebody takes the other file away: now there is nothing to ask, and nothing more to warn of.
    QVERIFY(QFile::remove(path));
    session.window->slotAutoSave();
    QVERIFY(!session.doc().isModified());
    QCOMPARE(status->text(), QStringLiteral("Ready."));
}

void VelMainWindowTest::sessionShouldBringBackUnsavedChanges_data()
{
    QTest::addColumn<bool>("autoSave");
    QTest::newRow("saved by itself") << true;
    QTest::newRow("recovery copy") << false;
}

void VelMainWindowTest::sessionShouldBringBackUnsavedChanges()
{
    QFETCH(bool, autoSave);
    KSharedConfig::openConfig()->group(QStringLiteral("Preferences")).writeEntry("AutoSave", autoSave);
    const QString path = copyOfExample(QStringLiteral("session.xml"));
    const QByteArray before = fileBytes(path);
    KConfig sessionConfig(QString(), KConfig::SimpleConfig);
    KConfigGroup group = sessionConfig.group(QStringLiteral("1"));
    {
        Session session;
        session.open(path);
        addEvent(session.doc(), QStringLiteral("unsaved"), march(2, 9), march(2, 10));
        session.doc().slotUpdateAllViews(nullptr);
        session.window->saveProperties(group);
    }
    QCOMPARE(fileBytes(path) == before, !autoSave);

    const Session session;
    session.window->readProperties(group);
    const VelEntryList found = session.doc().getEntries(QDate(2026, 3, 2), 0, false, QDate());
    QCOMPARE(found.size(), std::size_t(1));
    QCOMPARE(session.doc().URL(), QUrl::fromLocalFile(path));
    QCOMPARE(session.doc().isModified(), !autoSave);
    const QString recovery = VelRecovery::fileName(QUrl::fromLocalFile(path), group.name());
    if (!autoSave)
        QCOMPARE(session.messages->last().text, QStringLiteral("recover:1-") + recovery);
    QVERIFY(!QFile::exists(recovery));
}

void VelMainWindowTest::calendarWithoutAFileShouldBeRecovered()
{
    const QDir folder = VelRecovery::folder();
    const auto copies = [&folder] { return folder.entryList({QStringLiteral("untitled-*.xml")}); };
    {
        const Session session;
        addEvent(session.doc(), QStringLiteral("unsaved"), march(2, 9), march(2, 10));
        session.doc().slotUpdateAllViews(nullptr);
        session.window->slotAutoSave();
        QCOMPARE(copies().size(), 1);
        session.window->offerRecovered(); // not its own
        QCOMPARE(session.messages->count(), 0);
        // As if its process were killed: nobody holds the copy.
        QVERIFY(QFile::copy(folder.filePath(copies().first()),
                            folder.filePath(QStringLiteral("untitled-0.xml"))));
    }
    QCOMPARE(copies(), QStringList{QStringLiteral("untitled-0.xml")});
    for (const int choice : {1, 0}) { // later, then to open it
        const Session session;
        session.messages->orderChoice(choice);
        session.window->offerRecovered();
        QCOMPARE(session.messages->count(), 1);
        QCOMPARE(session.doc().getEntryCount(), std::size_t(choice == 0 ? 1 : 0));
        QCOMPARE(session.doc().isModified() && session.doc().isUntitled(), choice == 0);
        session.window->offerRecovered(); // it is in this window now
        QCOMPARE(session.messages->count(), choice == 0 ? 1 : 2);
        QCOMPARE(copies().size(), 1);
    }
    QVERIFY(copies().isEmpty());
}

void VelMainWindowTest::quitShouldTakeItsDataOffTheClipboard()
{
    Session session = Session::withList();
    session.open(copyOfExample(QStringLiteral("quit.xml")));
    session.list()->table()->selectRow(0);
    session.trigger("edit_copy");
    QVERIFY(!QGuiApplication::clipboard()->text().isEmpty());
    session.trigger("file_quit");
    QVERIFY(QGuiApplication::clipboard()->text().isEmpty());
    QVERIFY(!session.window || !session.window->isVisible());
}

void VelMainWindowTest::keysShouldSwitchViews_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<QString>("printed");
    QTest::newRow("1") << Qt::Key_1 << QStringLiteral("Monday, 16 November 2026");
    QTest::newRow("5") << Qt::Key_5 << QStringLiteral("16 Nov 2026 – 20 Nov 2026");
    QTest::newRow("7") << Qt::Key_7 << QStringLiteral("16 Nov 2026 – 22 Nov 2026");
    QTest::newRow("M") << Qt::Key_M << QStringLiteral("November 2026");
    QTest::newRow("L") << Qt::Key_L << QStringLiteral("Calendar entries 16 Nov 2026 – 16 Dec 2026");
}

/** A first start shows the working week; a key shows another view, and that is what is printed. */
void VelMainWindowTest::keysShouldSwitchViews()
{
    QFETCH(Qt::Key, key);
    QFETCH(QString, printed);
    Session session;
    QCOMPARE(session.window->mainView()->dayView()->startDate(), testDay());
    QCOMPARE(session.window->mainView()->dayView()->numDays(), 5);
    session.window->mainView()->setDate(testDay().addDays(100));
    session.window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(session.window));
    QTest::keyClick(session.window, key);
    QTest::keyClick(session.window, Qt::Key_G);
    session.trigger("file_print");
    QCOMPARE(session.printed, QStringList(printed));
    QCOMPARE(session.window->statusBar()->findChild<QLabel *>()->text(), QStringLiteral("Ready."));
}

/** In all windows at once, or one that still has the old ones would write them when it closes. */
void VelMainWindowTest::preferencesShouldTakeEffectAndSurviveARestart()
{
    const auto paintedColor = [](const Session &session) {
        const VelDay *day = session.window->mainView()->dayView()->dayOf(testDay());
        const QRect row = day->rowRect(QTime(2, 0));
        return const_cast<VelDay *>(day)->grab(row).toImage().pixelColor(row.width() / 2, row.height() / 2);
    };
    {
        Session session;
        const Session other;
        session.trigger("options_configure");
        auto *dialog = session.window->findChild<VelPreferences *>();
        dialog->findChild<QWidget *>(QStringLiteral("Workdays"))->findChildren<QCheckBox *>().at(5)->click();
        dialog->findChild<KColorButton *>(QStringLiteral("DayOffHour"))->setColor(QColor(1, 2, 3));
        dialog->accept();
        for (const Session *each : {static_cast<const Session *>(&session), &other}) {
            QCOMPARE(each->window->mainView()->dayView()->numDays(), 6); // with Saturday
            QCOMPARE(paintedColor(*each), QColor(1, 2, 3));
        }
        session.trigger("options_configure");
        QCOMPARE(session.window->findChildren<VelPreferences *>(), QList<VelPreferences *>{dialog});
        QVERIFY(dialog->isVisible());
        dialog->reject();
        QVERIFY(other.window->close());
    }
    const Session session;
    QCOMPARE(session.window->mainView()->dayView()->numDays(), 6);
    QCOMPARE(paintedColor(session), QColor(1, 2, 3));
}

void VelMainWindowTest::previewShouldSaveAsPdf_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("exists");
    QTest::addColumn<int>("answer");
    QTest::addColumn<bool>("isWritten");
    QTest::newRow("new, without suffix") << "fresh" << false << int(Answer::No) << true;
    QTest::newRow("overwritten") << "old.pdf" << true << int(Answer::Yes) << true;
    QTest::newRow("kept") << "kept.pdf" << true << int(Answer::No) << false;
    QTest::newRow("cannot be written") << "missing/folder.pdf" << false << int(Answer::No) << false;
}

void VelMainWindowTest::previewShouldSaveAsPdf()
{
    QFETCH(QString, name);
    QFETCH(bool, exists);
    QFETCH(int, answer);
    QFETCH(bool, isWritten);
    Session session;
    const QString path = m_folder.filePath(name);
    const QByteArray before("something else");
    if (exists)
        QVERIFY(writeBytes(path, before));
    session.choose(path);
    session.messages->orderAnswer(static_cast<Answer>(answer));
    VelPrintDialogs dialogs(
        {session.window, *session.messages, *session.files, [] { return at(testDay(), 10); }});
    Pages page;
    QTimer::singleShot(0, session.window, [&session] {
        auto *preview = session.window->findChild<VelPrintPreview *>();
        preview->findChild<QPushButton *>(QStringLiteral("pdf"))->click();
        preview->reject();
    });
    dialogs.printOut(page);
    const QByteArray bytes =
        fileBytes(name.endsWith(QLatin1String(".pdf")) ? path : path + QLatin1String(".pdf"));
    QCOMPARE(bytes.startsWith("%PDF"), isWritten);
    QCOMPARE(bytes == before, exists && !isWritten);
    QCOMPARE(session.messages->count(), isWritten && !exists ? 0 : 1);
}

void VelMainWindowTest::editorShouldWriteOnlyWhatIsAccepted()
{
    Session session;
    bool wasLocked = false;
    const auto enter = [&](const QString &title, bool accept) {
        return [&wasLocked, &session, title, accept](VelEntryDialog &dialog) {
            wasLocked = session.window->isEditLocked();
            dialog.findChild<QLineEdit *>(QStringLiteral("title"))->setText(title);
            if (accept)
                dialog.slotOk();
            else
                dialog.slotCancel();
        };
    };
    session.edit = enter(QStringLiteral("never"), false);
    session.trigger("new_entry");
    QVERIFY(wasLocked);
    QVERIFY(!session.window->isEditLocked());
    QCOMPARE(session.doc().getEntryCount(), std::size_t(0));
    QVERIFY(!session.doc().isModified());

    VelDayView *view = session.window->mainView()->dayView();
    view->setSelection(at(testDay(), 14), at(testDay(), 15, 30), false, false);
    session.edit = enter(QStringLiteral("Meeting"), true);
    session.trigger("new_entry");
    QCOMPARE(session.doc().getEntryCount(), std::size_t(1));
    QCOMPARE(view->dayOf(testDay())->entryCount(), 1);
    const VelEntryRef meeting = view->dayOf(testDay())->entry(0).entry();
    QCOMPARE(meeting.getStart(), at(testDay(), 14));
    QCOMPARE(meeting.getEnd(), at(testDay(), 15, 30));
    const quint32 id = meeting.getOriginal()->localid;
    session.doc().changeEntry(id, [](VelEntry &entry) { entry.dirty = 0; });

    QVERIFY(!session.isEnabled("edit_entry"));
    view->setSelectedEntry(session.doc().getEntry(id), true);
    session.edit = enter(QStringLiteral("Other"), true);
    session.trigger("edit_entry");
    QCOMPARE(session.doc().getEntry(id)->getTitle(), QStringLiteral("Other"));
    QCOMPARE(session.doc().getEntry(id)->dirty, 1);

    session.edit = enter(QStringLiteral("Task"), true);
    session.trigger("new_todo");
    QCOMPARE(session.tasks()->getEntry(0)->getTitle(), QStringLiteral("Task"));
}

void VelMainWindowTest::newEntryShouldBeOnTheDayOfTheSelectedOne()
{
    Session session;
    const VelDateTime start = at(testDay().addDays(2), 9);
    const VelEntry *selected = addEvent(session.doc(), QStringLiteral("Meeting"), start, start);
    QVector<QDate> days;
    session.edit = [&days](VelEntryDialog &dialog) { days.append(dialog.form().start.date()); };
    for (const char *view : {"view_month", "view_7_day"}) {
        session.trigger(view);
        session.window->mainView()->getCurrentView()->setSelectedEntry(selected, true);
        session.trigger("new_entry");
        session.trigger("new_todo");
    }
    QCOMPARE(days, QVector<QDate>(4, start.date()));
}

void VelMainWindowTest::onlyGuestsOutsideTheServerShouldBeMailed_data()
{
    QTest::addColumn<bool>("hasGuests");
    QTest::addColumn<int>("answer");
    QTest::addColumn<int>("questions");
    QTest::addColumn<int>("mails");
    QTest::newRow("colleagues only") << false << int(Answer::Yes) << 0 << 0;
    QTest::newRow("guests, no") << true << int(Answer::No) << 1 << 0;
    QTest::newRow("guests, yes") << true << int(Answer::Yes) << 1 << 1;
}

void VelMainWindowTest::onlyGuestsOutsideTheServerShouldBeMailed()
{
    QFETCH(bool, hasGuests);
    QFETCH(int, answer);
    Session session;
    session.messages->orderAnswer(static_cast<Answer>(answer));
    VelEntry entry = makeEvent(QStringLiteral("Meeting"), march(2, 9), march(2, 10));
    entry.rule = dailyRule(1, 3);
    entry.accounts.append(VelAccount(QStringLiteral("Colleague"), QStringLiteral("c@example.org"), 7));
    if (hasGuests) {
        for (const char *email : {"a@example.org", "", "b@example.org"})
            entry.accounts.append(VelAccount(QStringLiteral("Guest"), QLatin1String(email), 0));
    }
    session.window->informChanges(entry);
    QTEST(session.messages->count(), "questions");
    QTEST(int(session.mailer->sent.size()), "mails");
    if (session.mailer->sent.empty())
        return;
    QCOMPARE(session.messages->last().text, QStringLiteral("Do you want to sent invitations via email?"));
    const VelInvitation &sent = session.mailer->sent.front();
    QCOMPARE(sent.recipients,
             QStringList({QStringLiteral("a@example.org"), QStringLiteral("b@example.org")}));
    QCOMPARE(sent.subject, QStringLiteral("Meeting"));
    QCOMPARE(sent.body,
             QString(QLatin1String("Start: 2 Mar 2026 09:00\nEnd: 2 Mar 2026 10:00\n")
                     + entry.getRecurrenceText() + QLatin1String("\n\n")));
    const auto attached = VelVCalendar::readAll(sent.vCalendar).entries;
    QCOMPARE(attached.size(), std::size_t(1));
    QCOMPARE(attached.front()->getTitle(), entry.getTitle());
    QCOMPARE(attached.front()->getStart(), entry.getStart());
    QCOMPARE(attached.front()->rule, entry.rule);
}

void VelMainWindowTest::reminderShouldLeadToItsDate()
{
    Session session;
    VelEntry entry =
        makeEvent(QStringLiteral("Lunch"), at(testDay().addDays(40), 12), at(testDay().addDays(40), 13));
    entry.reminder = 50 * 24 * 60;
    const quint32 id = add(session.doc(), entry)->localid;
    session.doc().updateAlarm();
    QCOMPARE(session.alerts->given, QStringList{QStringLiteral("show Lunch 0")});
    session.alerts->answer({VelReminderDialog::Show});
    QCOMPARE(session.window->mainView()->getDate(), testDay().addDays(40));
    QVERIFY(session.doc().getEntry(id)->reminderfired);
}

void VelMainWindowTest::pdfThatFailsShouldLeaveTheOldFile_data()
{
    QTest::addColumn<bool>("isFull");
    QTest::addColumn<QStringList>("errors");
    QTest::newRow("disk is full") << true << QStringList{QStringLiteral("Cannot write to the file.")};
    QTest::newRow("user cancels") << false << QStringList();
}

void VelMainWindowTest::pdfThatFailsShouldLeaveTheOldFile()
{
    QFETCH(bool, isFull);
    QFETCH(QStringList, errors);
    Session session;
    const QString path = m_folder.filePath(QStringLiteral("failing.pdf"));
    const QByteArray before("something else");
    QVERIFY(writeBytes(path, before));
    session.choose(path);
    session.messages->orderAnswer(Answer::Yes);
    VelPrintDialogs dialogs(
        {session.window, *session.messages, *session.files, [] { return at(testDay(), 10); }});
    Pages pages;
    pages.count = 60;
    bool isOpen = false;
    QTimer::singleShot(0, session.window, [&] {
        auto *preview = session.window->findChild<VelPrintPreview *>();
        if (!isFull) {
            pages.onPage = [preview](int page) {
                if (page == 20)
                    preview->findChild<QProgressDialog *>()->cancel();
            };
        }
        {
            const FullDisk disk(isFull ? 1000 : RLIM_INFINITY);
            preview->findChild<QPushButton *>(QStringLiteral("pdf"))->click();
        }
        isOpen = preview->isVisible();
        preview->reject();
    });
    dialogs.printOut(pages);
    QCOMPARE(fileBytes(path), before);
    QCOMPARE(session.messages->errors(), errors);
    QVERIFY(isOpen); // to try another place
}

void VelMainWindowTest::printDialogMayGoWithTheWindow()
{
    Session session;
    auto dialogs = std::make_unique<VelPrintDialogs>(VelPrintDialogs::Context{
        session.window, *session.messages, *session.files, [] { return at(testDay(), 10); }});
    Pages pages;
    QTimer::singleShot(0, session.window, [&] {
        QTimer::singleShot(0, session.window, [&] {
            dialogs.reset();
            delete session.window;
        });
        auto *preview = session.window->findChild<VelPrintPreview *>();
        Q_EMIT preview->printWanted();
    });
    dialogs->printOut(pages);
    QVERIFY(!session.window);
}

QTEST_MAIN(VelMainWindowTest)

#include "velmainwindowtest.moc"
