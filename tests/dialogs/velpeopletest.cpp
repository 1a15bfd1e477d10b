// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogs/velnewaccount.h"
#include "dialogs/velpeoplepage.h"
#include "dialogs/velpersonlist.h"
#include "dialogs/velpersonmodel.h"
#include "dialogs/velpersonsource.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDropEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>
#include <QTreeView>

#include <algorithm>
#include <utility>

Q_DECLARE_METATYPE(VelAccount)

namespace
{
VelAccount person(const char *name, quint32 id, const char *email = "", int type = VelAccount::Person)
{
    VelAccount account(QLatin1String(name), QLatin1String(email), id);
    account.type = type;
    return account;
}

QStringList namesOf(const VelPersonModel &model)
{
    QStringList names;
    for (int i = 0; i < model.rowCount(); ++i)
        names.append(model.account(i).name);
    return names;
}

class FakeBook : public VelAddressBook
{
public:
    [[nodiscard]] QVector<VelAddressee> addressees() const override { return people; }
    [[nodiscard]] bool add(const VelAddressee &addressee) override
    {
        if (isWritable)
            people.append(addressee);
        return isWritable;
    }

    QVector<VelAddressee> people = {{QStringLiteral("Åsa Öberg"), QStringLiteral("asa@example.se")},
                                    {{}, QStringLiteral("nameless@example.org")}};
    bool isWritable = true;
};

/** A page whose server knows two persons and a room. */
struct Page {
    Page()
        : page(book)
    {
        page.setServerAccounts({person("Room", 7, "", VelAccount::Resource), person("Bo", 2, "bo@b.org"),
                                person("Anna", 1, "anna@a.org")});
        lists = page.findChildren<VelPersonList *>();
    }

    /** The names in all lists with the role of each. */
    [[nodiscard]] QString text() const
    {
        QStringList names;
        const VelAccountList accounts = page.getAccounts();
        for (const VelAccount &account : accounts)
            names.append(account.name + QString::number(account.attendee));
        return names.join(QLatin1Char(' '));
    }
    [[nodiscard]] QAbstractButton *button(const char *text) const
    {
        const auto buttons = page.findChildren<QAbstractButton *>();
        for (QAbstractButton *button : buttons) {
            if (button->text() == QLatin1String(text) || button->toolTip() == QLatin1String(text))
                return button;
        }
        return nullptr;
    }

    [[nodiscard]] bool says(const char *text) const
    {
        const auto labels = page.findChildren<QLabel *>();
        return std::any_of(labels.cbegin(), labels.cend(),
                           [text](const QLabel *label) { return label->text() == QLatin1String(text); });
    }

    FakeBook book;
    VelPeoplePage page;
    QList<VelPersonList *> lists; ///< attendees, optional, resources
    VelPersonSource *source = page.findChild<VelPersonSource *>();
    QLineEdit *search = source->findChild<QLineEdit *>();
    QTreeView *view = source->findChild<QTreeView *>();
};
} // namespace

class VelPeopleTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void shouldKnowWhoIsTheSame_data();
    void shouldKnowWhoIsTheSame();
    void shouldSayWhyAMoveIsRefused_data();
    void shouldSayWhyAMoveIsRefused();
    void shouldGiveBackAccountsByRoleInOrder();
    void shouldFindByPartsOfNameAndEmail_data();
    void shouldFindByPartsOfNameAndEmail();
    void shouldSortByEitherColumn();
    void shouldMoveBySearchArrowsKeysAndDoubleClick();
    void shouldTakeDropsAndMoveBetweenLists();
    void shouldIgnoreDamagedDrops();
    void shouldShowTheAddressBook();
    void newListShouldKeepWhoIsSelected();
    void shouldTakeNamesAndAddressesThatMakeSense_data();
    void shouldTakeNamesAndAddressesThatMakeSense();
    void shouldAddSomebodyNew();
};

void VelPeopleTest::shouldKnowWhoIsTheSame_data()
{
    QTest::addColumn<VelAccount>("a");
    QTest::addColumn<VelAccount>("b");
    QTest::addColumn<bool>("isSame");
    QTest::newRow("one id") << person("Anna", 1, "a@a.org") << person("Anna V", 1, "new@a.org") << true;
    QTest::newRow("two ids") << person("Anna", 1, "a@a.org") << person("Anna", 2, "a@a.org") << false;
    QTest::newRow("server and book, one address")
        << person("Anna", 1, "a@a.org") << person("V, Anna", 0, "A@A.org") << true;
    QTest::newRow("server and book, one name") << person("Anna", 1, "a@a.org") << person("Anna", 0) << false;
    QTest::newRow("server and book, names only") << person("Anna", 1) << person("anna", 0) << true;
    QTest::newRow("a family's address")
        << person("Anna", 0, "v@v.org") << person("Bo", 0, "v@v.org") << false;
    QTest::newRow("twice from the book")
        << person("Anna", 0, "v@v.org") << person("ANNA", 0, "v@V.org") << true;
}

void VelPeopleTest::shouldKnowWhoIsTheSame()
{
    QFETCH(VelAccount, a);
    QFETCH(VelAccount, b);
    QTEST(VelPersonList::isSame(a, b), "isSame");
    QTEST(VelPersonList::isSame(b, a), "isSame");
}

void VelPeopleTest::shouldSayWhyAMoveIsRefused_data()
{
    QTest::addColumn<VelAccount>("account");
    QTest::addColumn<int>("role");
    QTest::addColumn<QString>("why");
    const VelAccount room = person("Room", 7, "", VelAccount::Resource);
    QTest::newRow("person attends") << person("Bo", 2) << 0 << "";
    QTest::newRow("no type attends") << person("Bo", 2, "", VelAccount::NoType) << 0 << "";
    QTest::newRow("person is booked") << person("Bo", 2) << 2 << "Bo is a person and can only attend.";
    QTest::newRow("no type is booked")
        << person("", 0, "x@y.z", VelAccount::NoType) << 2 << "x@y.z is a person and can only attend.";
    QTest::newRow("resource attends")
        << room << 1 << "Room is a resource and can only be booked under \"Resources\".";
    QTest::newRow("resource is booked") << room << 2 << "";
    QTest::newRow("twice") << person("Anna", 1) << 0 << "Anna is already in the list \"Attendees\".";
    QTest::newRow("in two lists") << person(
        "Anna", 1) << 1 << "Anna is already in the list \"Attendees\". To change that, drag from there.";
}

void VelPeopleTest::shouldSayWhyAMoveIsRefused()
{
    QFETCH(VelAccount, account);
    QFETCH(int, role);
    QFETCH(QString, why);
    Page p;
    p.page.setAccounts({person("Anna", 1)});
    QSignalSpy refusals(p.lists[role], &VelPersonList::refused);
    p.lists[role]->addAccounts({account});
    QCOMPARE(refusals.value(0).value(0).toString(), why);
    QCOMPARE(p.page.getAccounts().size(), why.isEmpty() ? 2 : 1);
}

void VelPeopleTest::shouldGiveBackAccountsByRoleInOrder()
{
    Page p;
    VelAccountList accounts = {person("R", 4), person("B", 3), person("O", 5), person("A", 2),
                               person("X", 6)};
    const int roles[] = {2, 0, 1, 0, 99};
    for (int i = 0; i < 5; ++i)
        accounts[i].attendee = roles[i];
    accounts[1].status = VelAccount::Accepted;
    p.page.setAccounts(accounts);
    QCOMPARE(p.text(), QStringLiteral("B0 A0 X0 O1 R2"));
    QCOMPARE(p.page.getAccounts().first().status, int(VelAccount::Accepted));
    p.page.setAccounts({});
    QCOMPARE(p.text(), QString());
}

void VelPeopleTest::shouldFindByPartsOfNameAndEmail_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("count");
    QTest::addColumn<QString>("first");
    QTest::newRow("nothing typed") << " " << 10000 << "Person 0";
    QTest::newRow("part of the name") << "son 4321" << 1 << "Person 4321";
    QTest::newRow("part of the e-mail, other case") << "77@EXAM" << 100 << "Person 1077";
    QTest::newRow("words of both in any order") << "@example 999 person" << 18 << "Person 1999";
    QTest::newRow("across name and e-mail") << "0user" << 0 << "";
    QTest::newRow("accents") << QStringLiteral("jurgen") << 1 << QStringLiteral("JÜRGEN");
    QTest::newRow("accents typed") << QStringLiteral("jürgen") << 1 << QStringLiteral("JÜRGEN");
    QTest::newRow("signs of patterns") << ".*" << 0 << "";
}

void VelPeopleTest::shouldFindByPartsOfNameAndEmail()
{
    QFETCH(QString, text);
    QFETCH(int, count);
    QFETCH(QString, first);
    VelAccountList accounts;
    for (int i = 0; i < 9999; ++i)
        accounts.append(
            VelAccount(QStringLiteral("Person %1").arg(i), QStringLiteral("user%1@example.org").arg(i), 1));
    accounts.append(VelAccount(QStringLiteral("JÜRGEN"), {}, 1));
    VelPersonModel model;
    model.setAccounts(accounts);
    model.setFilter(text);
    QCOMPARE(model.rowCount(), count);
    QVERIFY(count == 0 || namesOf(model).contains(first));
}

void VelPeopleTest::shouldSortByEitherColumn()
{
    VelPersonModel model;
    model.setAccounts({person("b", 1, "x@x"), person("C", 2, "a@x"), person("A", 3, "m@x")});
    QCOMPARE(namesOf(model).join(QString()), QStringLiteral("AbC"));
    model.sort(VelPersonModel::EmailColumn);
    QCOMPARE(namesOf(model).join(QString()), QStringLiteral("CAb"));
    model.sort(VelPersonModel::EmailColumn, Qt::DescendingOrder);
    QCOMPARE(namesOf(model).join(QString()), QStringLiteral("bAC"));
}

void VelPeopleTest::shouldMoveBySearchArrowsKeysAndDoubleClick()
{
    Page p;
    QAbstractButton *planner = p.button("&Meeting Planner");
    QVERIFY(!planner->isEnabled());
    QTest::keyClicks(p.search, QStringLiteral("b.or"));
    QTest::keyClick(p.search, Qt::Key_Return);
    QCOMPARE(p.text(), QStringLiteral("Bo0"));
    QVERIFY(planner->isEnabled());
    QTest::keyClick(p.search, Qt::Key_Escape);
    QCOMPARE(p.view->model()->rowCount(), 3);

    // Both at once: the room is refused here, and goes to its list by a double click.
    QAbstractButton *add = p.button("Add to the list \"Optional attendees\"");
    QVERIFY(!add->isEnabled());
    p.view->setCurrentIndex(p.view->model()->index(0, 0));
    p.view->selectionModel()->select(p.view->model()->index(2, 0),
                                     QItemSelectionModel::Select | QItemSelectionModel::Rows);
    QTest::mouseClick(add, Qt::LeftButton);
    QCOMPARE(p.text(), QStringLiteral("Bo0 Anna1"));
    QVERIFY(p.says("Room is a resource and can only be booked under \"Resources\"."));
    p.view->setCurrentIndex(p.view->model()->index(2, 0));
    Q_EMIT p.view->doubleClicked(p.view->currentIndex());
    QCOMPARE(p.text(), QStringLiteral("Bo0 Anna1 Room2"));

    for (VelPersonList *list : std::as_const(p.lists))
        list->selectAll();
    QTest::keyClick(p.lists[0], Qt::Key_Delete);
    QTest::mouseClick(p.button("Remove from the list \"Resources\""), Qt::LeftButton);
    QCOMPARE(p.text(), QStringLiteral("Anna1"));
    QVERIFY(planner->isEnabled());
    QTest::mouseClick(p.button("Remove from the list \"Optional attendees\""), Qt::LeftButton);
    QVERIFY(!planner->isEnabled());
}

void VelPeopleTest::shouldTakeDropsAndMoveBetweenLists()
{
    Page p;
    p.view->selectAll();
    const std::unique_ptr<QMimeData> data(
        p.view->model()->mimeData(p.view->selectionModel()->selectedIndexes()));
    QCOMPARE(data->text(), QStringLiteral("Anna <anna@a.org>\nBo <bo@b.org>\nRoom"));
    QDragEnterEvent enter(QPoint(1, 1), Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(p.lists[0]->viewport(), &enter);
    QDropEvent drop(QPoint(1, 1), Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(p.lists[0]->viewport(), &drop);
    QVERIFY(drop.isAccepted());
    QCOMPARE(p.text(), QStringLiteral("Anna0 Bo0"));

    p.lists[1]->moveAccounts({person("Anna", 1, "anna@a.org")}, p.lists[0]);
    QCOMPARE(p.text(), QStringLiteral("Bo0 Anna1"));
    p.lists[2]->moveAccounts({person("Anna", 1, "anna@a.org")}, p.lists[1]);
    QCOMPARE(p.text(), QStringLiteral("Bo0 Anna1"));
}

void VelPeopleTest::shouldIgnoreDamagedDrops()
{
    const std::unique_ptr<QMimeData> whole = VelPersonDrag::encode({person("Anna", 1), person("Bo", 2)});
    const QString type = whole->formats().filter(QStringLiteral("accounts")).value(0);
    const QByteArray bytes = whole->data(type);
    const auto middle = VelPersonDrag::encode({person("Anna", 1)})->data(type).size();
    for (int length = 1; length <= bytes.size(); ++length) {
        QMimeData cut;
        cut.setData(type, bytes.left(length));
        QCOMPARE(VelPersonDrag::decode(&cut).size(), length == bytes.size() ? 2 : length == middle ? 1 : 0);
    }
}

void VelPeopleTest::shouldShowTheAddressBook()
{
    Page p;
    auto *source = p.source->findChild<QComboBox *>();
    source->setCurrentIndex(VelPersonSource::AddressBookSource);
    p.page.setServerAccounts({});
    QCOMPARE(p.view->model()->rowCount(), 2);
    QTest::keyClicks(p.search, QStringLiteral("nameless"));
    QTest::keyClick(p.search, Qt::Key_Return);
    QCOMPARE(p.text(), QStringLiteral("nameless@example.org0"));
    QTest::keyClicks(p.search, QStringLiteral("x"));
    QVERIFY(p.source->selectedAccounts().isEmpty());
}

void VelPeopleTest::newListShouldKeepWhoIsSelected()
{
    Page p;
    p.view->setCurrentIndex(p.view->model()->index(1, 0));
    const VelAccountList bo = p.source->selectedAccounts();
    p.page.setServerAccounts({person("Bo", 2, "bo@b.org"), person("Al", 3)});
    QCOMPARE(p.view->model()->rowCount(), 2);
    QVERIFY(bo.size() == 1 && p.source->selectedAccounts() == bo);
}

void VelPeopleTest::shouldTakeNamesAndAddressesThatMakeSense_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("email");
    QTest::addColumn<bool>("isGood");
    QTest::newRow("blanks") << "  " << QStringLiteral(" ") << false;
    QTest::newRow("only an address") << QString() << " anna@example.org " << true;
    for (const char *good : {"", "anna@mail", "jürgen@bücher.example"})
        QTest::newRow(good) << "Anna" << QString::fromUtf8(good) << true;
    for (const char *bad : {"anna", "@example.org", "anna@", "a b@c.org", "a@b@c.org", "a@b..org", "a@b.org.",
                            "a@b.org,c@d.org", "a@b.org;c@d.org", "Anna <a@b.org>"})
        QTest::newRow(bad) << "Anna" << bad << false;
}

void VelPeopleTest::shouldTakeNamesAndAddressesThatMakeSense()
{
    QFETCH(QString, name);
    QFETCH(QString, email);
    QFETCH(bool, isGood);
    VelNewAccount dialog;
    const auto lines = dialog.findChildren<QLineEdit *>();
    lines[0]->setText(name);
    lines[1]->setText(email);
    QCOMPARE(dialog.findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok)->isEnabled(), isGood);
}

void VelPeopleTest::shouldAddSomebodyNew()
{
    Page p;
    p.source->findChild<QComboBox *>()->setCurrentIndex(VelPersonSource::AddressBookSource);
    const auto add = [&p](const char *name, int list, bool isKept) {
        QTest::mouseClick(p.button("New &Attendee"), Qt::LeftButton);
        const auto dialogs = p.page.findChildren<VelNewAccount *>();
        VelNewAccount *dialog = dialogs.last();
        dialog->findChildren<QLineEdit *>().first()->setText(QLatin1String(name));
        dialog->findChild<QComboBox *>()->setCurrentIndex(list);
        dialog->findChild<QCheckBox *>()->setChecked(isKept);
        dialog->accept();
    };
    add("Ida", 1, true);
    add("Ulf", 0, false);
    QCOMPARE(p.text(), QStringLiteral("Ulf0 Ida1"));
    QCOMPARE(p.view->model()->rowCount(), 3);
    p.book.isWritable = false;
    add("Eva", 0, true);
    QCOMPARE(p.text(), QStringLiteral("Ulf0 Eva0 Ida1"));
    QVERIFY(p.says("Eva could not be added to the address book."));
}

QTEST_MAIN(VelPeopleTest)
#include "velpeopletest.moc"
