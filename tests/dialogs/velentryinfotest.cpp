// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogs/velentryinfo.h"

#include "dialogs/velarchive.h"
#include "dialogs/velentryrows.h"
#include "hub/velmessageboxes.h"
#include "support/fakeapp.h"
#include "support/testcalendar.h"
#include "widgets/wdatetimewidget.h"

#include <KUrlRequester>

#include <QApplication>
#include <QDialogButtonBox>
#include <QLabel>
#include <QListView>
#include <QPushButton>
#include <QTest>
#include <QTextDocument>
#include <QTextDocumentFragment>
#include <QTimer>

using namespace TestCalendar;
using VelAnswer::Mode;

namespace
{
constexpr quint32 Me = 4;
constexpr quint32 Boss = 5;

/** The calendar of Me with an event of Boss, to which Me is invited with that answer; -1 is not invited. */
struct Window {
    explicit Window(int status, int right = VelDoc::FullRight, quint32 owner = Boss)
        : app(today())
    {
        VelXmlContent content;
        content.userid = Me;
        content.origright = right;
        content.accounts = VelAccountList{VelAccount(QStringLiteral("Boss"), {}, Boss)};
        app.doc.readXml(content);
        VelEntry entry = makeEvent(QStringLiteral("<b>Talk</b>"), march(2, 10), march(2, 11));
        entry.user = owner;
        entry.globalid = 70;
        entry.dirty = 0;
        entry.accounts = {VelAccount(QStringLiteral("Guest"), {}, 0)};
        if (status >= 0) {
            entry.accounts.append(VelAccount(QStringLiteral("Me"), {}, Me));
            entry.accounts.last().status = status;
        }
        id = add(app.doc, entry)->localid;
    }
    [[nodiscard]] const VelEntry &entry() const { return *app.doc.getEntry(id); }

    FakeApp app;
    quint32 id = 0;
};

/** The buttons, those that are disabled in brackets. */
QString buttonsOf(const VelEntryInfo &info)
{
    QStringList texts;
    const QList<QPushButton *> buttons = info.findChildren<QPushButton *>();
    for (const QPushButton *button : buttons) {
        const QString text = button->text().remove(QLatin1Char('&'));
        texts.append(button->isEnabled() ? text : QString(QLatin1Char('(') + text + QLatin1Char(')')));
    }
    return texts.join(QLatin1String(", "));
}

QString headingsOf(const VelDoc &doc, const VelEntry &entry, Mode mode)
{
    QStringList headings;
    for (const VelEntryRow &row : velEntryRows(doc, entry, mode, {}))
        headings.append(row.heading);
    return headings.join(QLatin1String(", "));
}
} // namespace

class VelEntryInfoTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void buttonsShouldFollowModeRightAndAnswer();
    void rowsShouldFollowTheEntry();
    void textsShouldStandAsTheyAre();
    void boxesShouldShowTextsAsTheyAre_data();
    void boxesShouldShowTextsAsTheyAre();
    void answersShouldBeNotedInTheOwnRecord();
    void othersShouldBePutOffWithIt();
    void archiveDialogShouldCountAndNeedAFile();
};

void VelEntryInfoTest::buttonsShouldFollowModeRightAndAnswer()
{
    const struct {
        int mode;
        quint32 owner;
        int right; // 0 is a full one to a locked calendar
        int status;
        const char *buttons;
    } rows[] = {
        {0, Me, 4, -1, "OK"},
        {1, Me, 4, 0, "Accept, Accept tentatively, Decline, (OK)"},
        {0, Boss, 4, 0, "Accept, Accept tentatively, Decline, (OK)"},
        {0, Boss, 4, 2, "Accept, Accept tentatively, Decline, OK"},
        {0, Boss, 4, 3, "Accept, (Accept tentatively), Decline, OK"},
        {0, Boss, 4, 4, "(Accept), Accept tentatively, Decline, OK"},
        {0, Boss, 0, 0, "(Accept), (Accept tentatively), (Decline), OK"},
        {1, Boss, 3, 0, "OK"},
        {2, Boss, 4, 0, "OK"},
        {-1, Boss, 4, 0, "OK"},
    };
    for (const auto &row : rows) {
        Window window(row.status, row.right == 0 ? VelDoc::FullRight : row.right, row.owner);
        window.app.isLocked = row.right == 0;
        const VelEntryInfo info(window.entry(), &window.app, static_cast<Mode>(row.mode), {},
                                window.app.mayEdit());
        QCOMPARE(buttonsOf(info), QString::fromLatin1(row.buttons));
        QVERIFY(info.minimumWidth() == 400 && info.windowTitle() == QLatin1String("Event"));
    }
}

void VelEntryInfoTest::rowsShouldFollowTheEntry()
{
    const Window window(VelAccount::Accepted);
    const Window reader(VelAccount::Accepted, VelDoc::ReadRight);
    const VelDoc &doc = window.app.doc;
    VelEntry entry = window.entry();
    QCOMPARE(
        headingsOf(doc, entry, VelAnswer::Plain),
        QStringLiteral("Title, Start time, End time, Description, Attendees, Access, Priority, Reminder"));
    entry.rule = dailyRule(1, 3);
    entry.display = VelEntry::Busy;
    entry.accounts[0].attendee = VelAccount::OptionalAttendee;
    entry.accounts[1].attendee = VelAccount::ResourceAttendee;
    entry.access = VelEntry::Private;
    const QString head = QStringLiteral("Appointment organizer, Status, ");
    const QString rest =
        QStringLiteral("Start time, End time, Recurrence, Description, Optional, Resources, Access, "
                       "Show time as, Priority, Reminder");
    QCOMPARE(headingsOf(doc, entry, VelAnswer::Notice), QString(head + QLatin1String("Title, ") + rest));
    QCOMPARE(headingsOf(reader.app.doc, entry, VelAnswer::Invitation), QString(head + rest));
    entry.accounts.clear();
    QVERIFY(headingsOf(doc, entry, VelAnswer::Notice)
                .startsWith(QLatin1String("Appointment organizer, Title, ")));
}

void VelEntryInfoTest::textsShouldStandAsTheyAre()
{
    Window window(VelAccount::Tentative);
    const VelEntryInfo info(window.entry(), &window.app, VelAnswer::Plain, QStringLiteral("<i>New</i>"),
                            true);
    const auto *title = info.findChild<QLabel *>(QStringLiteral("Title"));
    QVERIFY(title && title->textFormat() == Qt::PlainText && title->text() == QLatin1String("<b>Talk</b>"));
    QCOMPARE(info.findChild<QLabel *>(QStringLiteral("Appointment organizer"))->text(),
             QStringLiteral("Boss"));
    const QModelIndex me = info.findChild<QListView *>(QStringLiteral("Attendees"))->model()->index(1, 0);
    QCOMPARE(me.data(Qt::ToolTipRole).toString(), QStringLiteral("Accepted tentatively"));
    QCOMPARE(me.data(Qt::AccessibleTextRole).toString(), QStringLiteral("Me: Accepted tentatively"));
    const auto *told = info.findChild<QLabel *>(QString(), Qt::FindDirectChildrenOnly);
    QVERIFY(told && told->textFormat() == Qt::PlainText && told->text() == QLatin1String("<i>New</i>"));
    window.app.fakeSettings.origUserid = Boss; // who looks at the calendar of Me
    const VelEntryInfo foreign(window.entry(), &window.app, VelAnswer::Plain, {}, true);
    QCOMPARE(foreign.findChild<QLabel *>(QString(), Qt::FindDirectChildrenOnly)->text(),
             QStringLiteral("You answer for Me."));
}

void VelEntryInfoTest::boxesShouldShowTextsAsTheyAre_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("shown");
    QTest::newRow("plain") << "Eat & sleep\n<now>"
                           << "Eat & sleep\n<now>";
    QTest::newRow("marked up") << "<img src='x'/>\n& more"
                               << "<img src='x'/>\n& more";
}

void VelEntryInfoTest::boxesShouldShowTextsAsTheyAre()
{
    QFETCH(QString, text);
    QStringList labels;
    QTimer timer;
    connect(&timer, &QTimer::timeout, this, [&] {
        QWidget *box = QApplication::activeModalWidget();
        if (!box)
            return;
        timer.stop();
        const QList<QLabel *> found = box->findChildren<QLabel *>();
        for (const QLabel *label : found) {
            const bool isRich = Qt::mightBeRichText(label->text());
            labels.append(isRich ? QTextDocumentFragment::fromHtml(label->text()).toPlainText()
                                 : label->text());
        }
        box->close();
    });
    timer.start(0);
    VelMessageBoxes(nullptr).error(text);
    QFETCH(QString, shown);
    QVERIFY2(labels.contains(shown), qPrintable(labels.join(QLatin1Char('|')).left(200)));
}

void VelEntryInfoTest::answersShouldBeNotedInTheOwnRecord()
{
    const struct {
        const char *name;
        int button;
        int status;
        quint32 user;
        int answer;
        bool isNoted;
    } rows[] = {
        {"accept", 0, 3, Me, 4, true},        {"accept tentatively", 1, 4, Me, 3, true},
        {"decline", 2, 4, Me, 2, true},       {"ok", 3, 2, Me, 0, false},
        {"not invited", 2, -1, Me, 2, false}, {"unknown to the server, as the guest is", 0, 0, 0, 4, false},
    };
    for (const auto &[name, button, status, user, answer, isNoted] : rows) {
        Window window(status);
        window.app.doc.setUserId(user);
        const VelEntry before = window.entry();
        VelEntryInfo info(before, &window.app, VelAnswer::Plain, {}, true);
        info.findChildren<QPushButton *>().at(button)->click();
        QVERIFY2(info.result() == QDialog::Accepted && info.getAnswer() == answer, name);
        QVERIFY2(VelAnswer::apply(window.app.doc, window.id, answer) == isNoted, name);
        const VelEntry &entry = window.entry();
        QVERIFY2((entry == before) == !isNoted && (entry.dirty == 1) == isNoted, name);
        QCOMPARE(entry.isDeleted(), isNoted && answer == VelAccount::Declined);
        QCOMPARE(entry.accounts.last().status, isNoted ? answer : before.accounts.last().status);
    }
}

void VelEntryInfoTest::othersShouldBePutOffWithIt()
{
    Window window(VelAccount::Unanswered);
    VelEntryInfo info(window.entry(), &window.app, VelAnswer::Plain, {}, true);
    info.offerLater(0);
    QCOMPARE(buttonsOf(info), QStringLiteral("Accept, Accept tentatively, Decline, (OK)"));
    info.offerLater(2);
    info.findChildren<QPushButton *>().last()->click();
    QVERIFY(info.result() == QDialog::Rejected && info.getAnswer() == VelAnswer::AllLater);
}

void VelEntryInfoTest::archiveDialogShouldCountAndNeedAFile()
{
    const auto count = [](QDate date) { return date > today() ? 7 : 0; };
    VelArchive dialog(count, today(), QUrl::fromLocalFile(QStringLiteral("/tmp/old.xml")), nullptr);
    const QPushButton *ok = dialog.findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok);
    auto *file = dialog.findChild<KUrlRequester *>();
    file->setText(QStringLiteral("archive.xml"));
    QCOMPARE(dialog.getURL(), QUrl::fromLocalFile(QStringLiteral("/tmp/archive.xml")));
    dialog.findChild<WDateTimeWidget *>()->setDate(today().addDays(1));
    QVERIFY(ok->isEnabled());
    QCOMPARE(dialog.findChild<QLabel *>(QString(), Qt::FindDirectChildrenOnly)->text(),
             QStringLiteral("7 entries will be moved to the archive."));
    file->setText(QStringLiteral(" "));
    QVERIFY(!ok->isEnabled() && dialog.getURL().isEmpty());
}

QTEST_MAIN(VelEntryInfoTest)

#include "velentryinfotest.moc"
