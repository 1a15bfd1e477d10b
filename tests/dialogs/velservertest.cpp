// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogs/velpassword.h"
#include "dialogs/velpreferences.h"
#include "dialogs/velremotecalendardialog.h"
#include "dialogs/velrightsmodel.h"
#include "dialogs/velrightspage.h"
#include "dialogs/velserverpage.h"
#include "model/wsecurity.h"
#include "support/fakeapp.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QStackedWidget>
#include <QTest>
#include <QTreeView>

#include <algorithm>

using Button = QDialogButtonBox::StandardButton;

namespace
{
constexpr quint32 Me = 4;

VelAccount account(const QString &name, quint32 id)
{
    VelAccount account(name, {}, id);
    account.type = VelAccount::Person;
    return account;
}

/** A window that has an account on a server, whose answers the test gives. */
struct Window {
    Window()
        : app(QDate(2026, 3, 2))
    {
        app.fakeSettings.server = QStringLiteral("time.example.org");
        app.fakeSettings.user = QStringLiteral("me");
        app.fakeSettings.pass = WSecurity::md5(QStringLiteral("secret"));
        app.fakeSettings.origUserid = Me;
        app.doc.setUserId(Me);
    }
    void answerAccounts(const VelAccountList &accounts = {account(QStringLiteral("Zoe"), 9),
                                                          account(QStringLiteral("Me"), Me),
                                                          account(QStringLiteral("Anna"), 7)})
    {
        VelXmlContent content;
        content.accounts = accounts;
        app.doc.readXml(content);
        Q_EMIT app.accountsReady();
    }
    void answerRights(const VelRights::Map &rights)
    {
        VelXmlContent content;
        content.rights = rights;
        app.doc.readXml(content);
        Q_EMIT app.rightsReady();
    }
    /** What was asked for since it was last called, as "type argument". */
    QStringList takeTasks()
    {
        QStringList tasks;
        for (const VelNetTask &task : app.netTasks)
            tasks.append(VelNetTask::nameOf(task.type) + QLatin1Char(' ') + task.argument);
        app.netTasks.clear();
        return tasks;
    }
    void fail(int type) { Q_EMIT app.netTaskFailed(type, {}); }

    FakeApp app;
};

QString textOf(const QAbstractItemView *view)
{
    QStringList rows;
    const QAbstractItemModel *model = view->model();
    for (int row = 0; row < model->rowCount(); ++row)
        rows.append(model->index(row, 0).data(Qt::AccessibleTextRole).toString());
    return rows.join(QLatin1String("; "));
}

bool says(const QWidget &widget, const char *text)
{
    const QList<QLabel *> labels = widget.findChildren<QLabel *>();
    return std::any_of(labels.begin(), labels.end(), [text](const QLabel *label) {
        return label->isVisibleTo(label->window()) && label->text().contains(QLatin1String(text));
    });
}

/** The preferences of a window, open. */
struct Preferences : Window {
    explicit Preferences(const std::function<void(FakeApp &)> &prepare = {})
    {
        if (prepare)
            prepare(app);
        QObject::connect(&dialog, &VelPreferences::settingsChanged, &dialog,
                         [this](const VelSettings &settings) { app.fakeSettings = settings; });
        dialog.refresh(app.fakeSettings, app.fakeLook);
        dialog.QDialog::show();
        rights = dialog.findChild<VelRightsPage *>();
        server = dialog.findChild<VelServerPage *>();
        view = rights->findChild<QTreeView *>();
    }
    void showPage(QWidget *page) const
    {
        auto *list = dialog.findChild<QListWidget *>();
        list->setCurrentRow(qobject_cast<QStackedWidget *>(page->parentWidget())->indexOf(page));
    }
    /** Gives the one in @p row that right by the keyboard: opens the box, and chooses in it. */
    void choose(int row, const QString &right) const
    {
        view->setCurrentIndex(view->model()->index(row, 0));
        QTest::keyClick(view, Qt::Key_Space);
        QCoreApplication::processEvents(); // the choice opens when its box is in its place
        auto *box = qobject_cast<QComboBox *>(view->indexWidget(view->currentIndex()));
        QVERIFY(box);
        const int choice = box->findText(right);
        QVERIFY2(choice >= 0, qPrintable(right));
        box->hidePopup();
        box->setCurrentIndex(choice);
        Q_EMIT box->activated(choice);
    }
    void click(Button which) const { dialog.findChild<QDialogButtonBox *>()->button(which)->click(); }
    template <typename Widget>
    [[nodiscard]] Widget *find(const char *name) const
    {
        return dialog.findChild<Widget *>(QLatin1String(name));
    }

    VelPreferences dialog{&app};
    VelRightsPage *rights = nullptr;
    VelServerPage *server = nullptr;
    QTreeView *view = nullptr;
};
} // namespace

class VelServerTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void passwordShouldBeCheckedAndDigested_data();
    void passwordShouldBeCheckedAndDigested();
    void placeholderShouldKeepTheDigest();
    void accountsShouldBeFetchedForRemoteCalendars();
    void remoteCalendarShouldBeChosen();
    void rightsShouldBeFetchedChangedAndSent();
    void rightsShouldWait_data();
    void rightsShouldWait();
    void rightsShouldNotBeStoredBeforeEverybodysIsChosen();
    void encryptionShouldMoveOnlyTheUsualPort_data();
    void encryptionShouldMoveOnlyTheUsualPort();
    void connectionShouldBeTested_data();
    void connectionShouldBeTested();
    void testedPageMayBeGone();
    void typedAccountShouldStayWhenTheStoredOneChanges();
    void certificateShouldBeForgotten();
    void passwordShouldReachTheSettingsAsDigestOnly();
};

void VelServerTest::passwordShouldBeCheckedAndDigested_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QStringList>("typed"); // old, new, again
    QTest::addColumn<QString>("error");
    QTest::addColumn<QString>("digest");
    const QString secret = QStringLiteral("secret");
    const QString other = QStringLiteral("n\u00e9w");
    QTest::newRow("changed") << 1 << QStringList{secret, other, other} << "" << WSecurity::md5(other);
    QTest::newRow("old one is wrong")
        << 1 << QStringList{other, other, other} << "Old Password does not match." << QString();
    QTest::newRow("differ") << 1 << QStringList{secret, other, secret} << "Passwords do not match."
                            << QString();
    QTest::newRow("emptied") << 1 << QStringList{secret, {}, {}} << ""
                             << QStringLiteral("d41d8cd98f00b204e9800998ecf8427e");
    QTest::newRow("confirmed") << 0 << QStringList{{}, secret, secret} << "" << WSecurity::md5(secret);
    QTest::newRow("not confirmed") << 5 << QStringList{{}, secret, {}} << "Passwords do not match."
                                   << QString();
}

void VelServerTest::passwordShouldBeCheckedAndDigested()
{
    QFETCH(int, mode);
    QFETCH(QStringList, typed);
    QFETCH(QString, error);
    QFETCH(QString, digest);
    Window window;
    VelPassword dialog(&window.app, mode);
    dialog.setOldPass(window.app.fakeSettings.pass);
    dialog.show();
    const QList<QLineEdit *> fields = dialog.findChildren<QLineEdit *>();
    QCOMPARE(fields.size(), mode == 1 ? 3 : 2);
    for (int i = 0; i < fields.size(); ++i) {
        QCOMPARE(fields[i]->echoMode(), QLineEdit::Password);
        fields[i]->setText(typed[typed.size() - fields.size() + i]);
    }
    QTest::keyClick(&dialog, Qt::Key_Return);
    QCOMPARE(window.app.fakeMessages.errors(), error.isEmpty() ? QStringList() : QStringList{error});
    QCOMPARE(dialog.isVisible(), !error.isEmpty());
    QCOMPARE(dialog.getPass(), digest);
}

void VelServerTest::placeholderShouldKeepTheDigest()
{
    for (const bool isTyped : {false, true}) {
        VelPassword dialog(nullptr, VelPassword::ConfirmMode);
        dialog.setPass(QStringLiteral("known"), 8);
        const QList<QLineEdit *> fields = dialog.findChildren<QLineEdit *>();
        QCOMPARE(fields[1]->text().size(), 8);
        if (isTyped) {
            fields[0]->setCursorPosition(3); // amid what is no part of a password
            QTest::keyClicks(fields[0], QStringLiteral("new"));
            QTest::keyClicks(fields[1], QStringLiteral("new"));
        }
        dialog.findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok)->click();
        QCOMPARE(dialog.result(), int(QDialog::Accepted));
        QCOMPARE(dialog.getPass(), isTyped ? WSecurity::md5(QStringLiteral("new")) : QStringLiteral("known"));
    }
}

void VelServerTest::accountsShouldBeFetchedForRemoteCalendars()
{
    Window window;
    VelRemoteCalendarDialog dialog(&window.app);
    const auto *view = dialog.findChild<QTreeView *>();
    QCOMPARE(window.takeTasks(), QStringList{QStringLiteral("userlist ")});
    QVERIFY(says(dialog, "Fetching the list of users..."));
    window.fail(VelNetTask::Sync);
    QVERIFY(says(dialog, "Fetching the list of users..."));
    window.fail(VelNetTask::UserList);
    QVERIFY(says(dialog, "could not be fetched"));
    window.answerAccounts({}); // asks no second time
    QVERIFY(says(dialog, "The server knows no users."));
    window.answerAccounts();
    QVERIFY(!says(dialog, "The server knows no users."));
    QCOMPARE(view->model()->rowCount(), 3);
    QCOMPARE(view->model()->index(1, 0).data().toString(), QStringLiteral("Me"));
    QVERIFY(window.app.netTasks.empty());

    window.app.fakeSettings.server.clear();
    window.answerAccounts({});
    QVERIFY(says(VelRemoteCalendarDialog(&window.app), "name no server"));
}

void VelServerTest::remoteCalendarShouldBeChosen()
{
    Window window;
    window.answerAccounts();
    VelRemoteCalendarDialog dialog(&window.app);
    QVERIFY(window.app.netTasks.empty());
    QSignalSpy chosen(&dialog, &VelRemoteCalendarDialog::calendarChosen);
    dialog.show();
    QTest::keyClick(&dialog, Qt::Key_Return);
    QCOMPARE(window.app.fakeMessages.errors(), QStringList{QStringLiteral("Nothing is selected.")});
    QVERIFY(dialog.isVisible());

    auto *view = dialog.findChild<QTreeView *>();
    QTest::keyClick(dialog.findChild<QLineEdit *>(), Qt::Key_Down);
    QTest::keyClick(dialog.findChild<QLineEdit *>(), Qt::Key_Down);
    window.answerAccounts(); // meanwhile
    QTest::keyClick(&dialog, Qt::Key_Return);
    QCOMPARE(chosen.takeFirst().first().toUInt(), Me);
    QVERIFY(!dialog.isVisible());

    dialog.show();
    QTest::keyClicks(dialog.findChild<QLineEdit *>(), QStringLiteral("zo"));
    QCOMPARE(view->model()->rowCount(), 1);
    Q_EMIT view->doubleClicked(view->model()->index(0, 0));
    QCOMPARE(chosen.takeFirst().first().toUInt(), 9U);
}

void VelServerTest::rightsShouldBeFetchedChangedAndSent()
{
    Preferences open;
    QVERIFY(open.app.netTasks.empty()); // nobody has looked yet
    open.showPage(open.rights);
    QCOMPARE(open.takeTasks(), QStringList({QStringLiteral("getuserrights "), QStringLiteral("userlist ")}));
    open.answerAccounts();
    QVERIFY(!open.view->isEnabled());
    open.answerRights({{0, 1}, {7, 17}, {12, 4}});
    QVERIFY(open.view->isEnabled());
    QCOMPARE(textOf(open.view),
             QStringLiteral("Everybody else: Busy times only; Anna: Level 17; User number 12: Full access; "
                            "Zoe: As everybody else"));
    QTest::keyClicks(open.rights->findChild<QLineEdit *>(), QStringLiteral("12"));
    QCOMPARE(textOf(open.view),
             QStringLiteral("Everybody else: Busy times only; User number 12: Full access"));
    QTest::keyClick(open.rights->findChild<QLineEdit *>(), Qt::Key_Escape);
    open.view->sortByColumn(VelRightsModel::RightColumn, Qt::AscendingOrder);
    open.choose(1, QStringLiteral("Read and change")); // Zoe, who has least
    open.choose(0, QStringLiteral("No access"));
    open.choose(3, QStringLiteral("Read"));
    open.choose(3, QStringLiteral("Level 17")); // as it was
    open.choose(2, QStringLiteral("As everybody else"));
    open.answerRights({{0, 4}}); // for somebody else's sake: what was chosen stays
    QVERIFY(open.app.netTasks.empty());
    open.click(QDialogButtonBox::Apply);
    QCOMPARE(open.takeTasks(),
             QStringList({QStringLiteral("setuserrights <right id=\"0\" right=\"0\"/>\n"
                                         "<right id=\"7\" right=\"17\"/>\n<right id=\"9\" right=\"3\"/>\n"),
                          QStringLiteral("getuserrights ")}));
    open.answerRights({{0, 0}, {7, 17}, {9, 3}});
    open.choose(2, QStringLiteral("Read"));
    open.choose(2, QStringLiteral("Level 17"));
    open.click(QDialogButtonBox::Apply); // nothing is other than the server has it
    QCOMPARE(open.takeTasks(), QStringList{QStringLiteral("getuserrights ")});
}

void VelServerTest::rightsShouldWait_data()
{
    QTest::addColumn<QString>("server");
    QTest::addColumn<quint32>("calendar");
    QTest::addColumn<bool>("isAsked");
    QTest::addColumn<int>("failed");
    QTest::addColumn<QString>("text");
    QTest::newRow("no server") << "" << Me << false << 0 << "Set a server";
    QTest::newRow("calendar of somebody else")
        << "host" << 5U << false << 0 << "window of one's own calendar";
    QTest::newRow("waiting") << "host" << Me << true << 0 << "Fetching the rights";
    QTest::newRow("failed") << "host" << Me << true << int(VelNetTask::GetUserRights)
                            << "could not be fetched";
}

void VelServerTest::rightsShouldWait()
{
    QFETCH(QString, server);
    QFETCH(quint32, calendar);
    QFETCH(bool, isAsked);
    QFETCH(int, failed);
    QFETCH(QString, text);
    Preferences open([&](FakeApp &app) {
        app.fakeSettings.server = server;
        app.doc.setUserId(calendar);
    });
    open.showPage(open.rights);
    QCOMPARE(open.takeTasks().size(), isAsked ? 2 : 0);
    open.fail(failed);
    QVERIFY(!open.view->isEnabled());
    QVERIFY(says(*open.rights, qPrintable(text)));
    auto *again = open.rights->findChild<QPushButton *>();
    const bool hasFailed = failed == VelNetTask::GetUserRights;
    QCOMPARE(again->isVisible(), hasFailed);
    again->click();
    QCOMPARE(!open.takeTasks().isEmpty(), isAsked);
    open.answerRights({{7, 2}});
    QCOMPARE(open.view->isEnabled(), isAsked);
    open.fail(VelNetTask::UserList);
    QCOMPARE(says(*open.rights, "The list of users could not be fetched."), isAsked);
}

void VelServerTest::rightsShouldNotBeStoredBeforeEverybodysIsChosen()
{
    Preferences open;
    open.showPage(open.rights);
    open.answerAccounts({account(QStringLiteral("Anna"), 7)});
    open.answerRights({{7, 2}});
    QCOMPARE(textOf(open.view), QStringLiteral("Everybody else: As the server decides; Anna: Read"));
    open.takeTasks();
    const auto *ok = open.dialog.findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok);
    QVERIFY(ok->isEnabled()); // nothing was changed
    open.choose(1, QStringLiteral("Full access"));
    QVERIFY(!ok->isEnabled());
    open.choose(0, QStringLiteral("Busy times only"));
    open.click(QDialogButtonBox::Apply);
    QCOMPARE(open.takeTasks().first(),
             QStringLiteral("setuserrights <right id=\"0\" right=\"1\"/>\n"
                            "<right id=\"7\" right=\"4\"/>\n"));
}

void VelServerTest::encryptionShouldMoveOnlyTheUsualPort_data()
{
    QTest::addColumn<bool>("isEncrypted"); // before
    QTest::addColumn<int>("port");
    QTest::addColumn<int>("expected");
    QTest::newRow("on") << false << 7070 << 7071;
    QTest::newRow("off") << true << 7071 << 7070;
    QTest::newRow("on, a port of one's own") << false << 443 << 443;
    QTest::newRow("on, the port was right") << false << 7071 << 7071;
    QTest::newRow("off, the port was right") << true << 7070 << 7070;
}

void VelServerTest::encryptionShouldMoveOnlyTheUsualPort()
{
    QFETCH(bool, isEncrypted);
    QFETCH(int, port);
    QFETCH(int, expected);
    Preferences open([&](FakeApp &app) {
        app.fakeSettings.encrypt = isEncrypted;
        app.fakeSettings.port = port;
    });
    open.showPage(open.server);
    QCOMPARE(open.find<QSpinBox>("Port")->value(), port);
    open.find<QCheckBox>("Encrypt")->click();
    QVERIFY(says(*open.server, isEncrypted ? "can be read by others" : "Everything travels encrypted."));
    open.click(QDialogButtonBox::Apply);
    QCOMPARE(open.app.fakeSettings.port, expected);
    QCOMPARE(open.app.fakeSettings.encrypt, !isEncrypted);
}

void VelServerTest::connectionShouldBeTested_data()
{
    QTest::addColumn<bool>("isNew"); // another server than stored
    QTest::addColumn<bool>("isEdited"); // once more, while it is tested
    QTest::addColumn<QString>("problem");
    QTest::addColumn<bool>("isEncrypted"); // so the server was reached
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("port"); // in the end
    QTest::newRow("new and encrypted") << true << false << "" << true << "reached, encrypted" << 4443;
    QTest::newRow("new and plain") << true << false << "" << false << "not encrypted" << 7070;
    QTest::newRow("known") << false << false << "" << true << "reached, encrypted" << 7070;
    QTest::newRow("refused") << true << false << "Invalid <name>" << true << "Invalid <name>" << 7070;
    QTest::newRow("changed meanwhile") << true << true << "" << true << "" << 7070;
}

void VelServerTest::connectionShouldBeTested()
{
    QFETCH(bool, isNew);
    QFETCH(bool, isEdited);
    QFETCH(QString, problem);
    QFETCH(bool, isEncrypted);
    QFETCH(QString, text);
    QFETCH(int, port);
    Preferences open;
    auto *server = open.find<QLineEdit>("Server");
    auto *test = open.find<QPushButton>("TestConnection");
    auto *result = open.find<QLabel>("TestResult");
    server->setText(QStringLiteral(" "));
    QVERIFY(!test->isEnabled());
    server->setText(isNew ? QStringLiteral("new.example.org") : open.app.fakeSettings.server);
    test->click();
    QVERIFY(!test->isEnabled());
    QCOMPARE(result->text(), QStringLiteral("Connecting..."));
    QCOMPARE(open.app.testedSettings.server, server->text());
    QCOMPARE(open.app.testedSettings.pass, open.app.fakeSettings.pass);
    if (isEdited)
        open.find<QLineEdit>("User")->setText(QStringLiteral("you"));
    open.app.answerTest({problem, isEncrypted, 4443});
    QVERIFY(test->isEnabled());
    QVERIFY2(result->text().contains(text) && result->text().isEmpty() == text.isEmpty(),
             qPrintable(result->text()));
    QCOMPARE(open.find<QSpinBox>("Port")->value(), port);
    QCOMPARE(open.find<QCheckBox>("Encrypt")->isChecked(), port != 7070);
}

void VelServerTest::testedPageMayBeGone()
{
    Window window;
    auto page = std::make_unique<VelServerPage>(&window.app);
    page->show(window.app.fakeSettings, window.app.fakeLook);
    page->findChild<QPushButton *>(QStringLiteral("TestConnection"))->click();
    page.reset();
    window.app.answerTest({{}, true, 7071});
    QCOMPARE(window.app.testedSettings.user, QStringLiteral("me"));
}

void VelServerTest::typedAccountShouldStayWhenTheStoredOneChanges()
{
    Preferences open;
    const QPushButton *apply = open.dialog.findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Apply);
    VelSettings stored = open.app.fakeSettings;
    stored.encrypt = true;
    stored.port = 7071;
    stored.pass = WSecurity::md5(QStringLiteral("other"));
    open.dialog.follow(stored); // nothing was typed
    QVERIFY(open.find<QCheckBox>("Encrypt")->isChecked() && !apply->isEnabled());
    open.find<QSpinBox>("Port")->setValue(99);
    stored.encrypt = false;
    stored.port = 7070;
    open.dialog.follow(stored);
    QVERIFY(open.find<QCheckBox>("Encrypt")->isChecked() && open.find<QSpinBox>("Port")->value() == 99);
    open.find<QLineEdit>("Server")->setText(QStringLiteral("new.example.org"));
    stored.origUserid = 77;
    open.dialog.follow(stored);
    open.click(QDialogButtonBox::Apply);
    QCOMPARE(open.app.fakeSettings.server, QStringLiteral("new.example.org"));
    QCOMPARE(open.app.fakeSettings.pass, stored.pass);
    QCOMPARE(open.app.fakeSettings.port, 99);
    open.showPage(open.server); // an account has no defaults
    QVERIFY(!open.dialog.findChild<QDialogButtonBox *>()->button(Button::RestoreDefaults)->isEnabled());
}

void VelServerTest::certificateShouldBeForgotten()
{
    Preferences open([](FakeApp &app) { app.trusted.append(QStringLiteral("time.example.org7070")); });
    auto *forget = open.find<QPushButton>("ForgetCertificate");
    QVERIFY(forget->isEnabled());
    open.find<QSpinBox>("Port")->setValue(7);
    QVERIFY(!forget->isEnabled());
    open.find<QSpinBox>("Port")->setValue(7070);
    forget->click();
    QVERIFY(!forget->isEnabled() && open.app.trusted.isEmpty());
}

void VelServerTest::passwordShouldReachTheSettingsAsDigestOnly()
{
    Preferences open;
    open.showPage(open.server);
    const QString before = open.app.fakeSettings.pass;
    for (const char *typed : {"", "new"}) {
        open.find<QPushButton>("SetPassword")->click();
        const QPointer<VelPassword> dialog = open.dialog.findChild<VelPassword *>();
        QVERIFY(dialog && dialog->isVisible());
        const QList<QLineEdit *> fields = dialog->findChildren<QLineEdit *>();
        for (QLineEdit *field : fields) {
            if (*typed) // else what stands there is left
                QTest::keyClicks(field, QString::fromLatin1(typed));
        }
        QTest::keyClick(dialog, Qt::Key_Return);
        open.click(QDialogButtonBox::Apply);
        QCOMPARE(open.app.fakeSettings.pass,
                 *typed ? QStringLiteral("22af645d1859cb5ca6da0c484f1f37ea") : before);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!dialog);
    }
}

QTEST_MAIN(VelServerTest)

#include "velservertest.moc"
