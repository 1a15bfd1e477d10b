// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogs/veljoinedaddressbook.h"
#include "dialogs/velpersonsource.h"
#include "dialogs/velvcardaddressbook.h"

#include <QComboBox>
#include <QDir>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeView>

#include <sys/stat.h>

namespace
{
/** All that an address book holds, in one line. */
QString contents(const VelAddressBook &book)
{
    QStringList lines;
    const QVector<VelAddressee> addressees = book.addressees();
    for (const VelAddressee &addressee : addressees)
        lines.append(addressee.name + QLatin1Char('|') + addressee.email);
    return lines.join(QLatin1Char('/'));
}

void writeFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), qint64(bytes.size()));
}

VelAddressee named(const char *name)
{
    return {QLatin1String(name), QLatin1String(name) + QLatin1String("@example.org")};
}

/** A book that keeps what it is given until it is told that this failed. */
class FakeBook : public VelAddressBook
{
public:
    explicit FakeBook(const QVector<VelAddressee> &addressees)
        : people(addressees)
    {
    }
    ~FakeBook() override
    {
        if (isGivingBack)
            Q_EMIT notStored(people.last());
    }
    [[nodiscard]] QVector<VelAddressee> addressees() const override
    {
        ++reads;
        return people;
    }
    [[nodiscard]] bool add(const VelAddressee &addressee) override
    {
        if (isWritable)
            people.append(addressee);
        return isWritable;
    }
    void fail(const VelAddressee &addressee)
    {
        people.removeOne(addressee);
        Q_EMIT notStored(addressee);
    }

    QVector<VelAddressee> people;
    bool isWritable = true;
    bool isGivingBack = false; ///< the last, when it goes
    mutable int reads = 0;
};

/** Two of them, joined: Anna and Bo, Bo and Cai. */
struct Joined {
    FakeBook *first = new FakeBook({named("Anna"), named("Bo")});
    FakeBook *second = new FakeBook({named("bo"), named("Cai")});
    VelJoinedAddressBook book{std::unique_ptr<VelAddressBook>(first),
                              std::unique_ptr<VelAddressBook>(second)};
};

QByteArray card(const QByteArray &lines)
{
    return "BEGIN:VCARD\r\nVERSION:3.0\r\n" + lines + "\r\nEND:VCARD\r\n";
}
} // namespace

class VelAddressBookTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void shouldReadBackWhatItWrote_data();
    void shouldReadBackWhatItWrote();
    void shouldReadCards_data();
    void shouldReadCards();
    void shouldSkipWhatIsNoFileOfCards();
    void shouldNotHangOnACardMadeForIt();
    void shouldBeEmptyAndRefuseWhereNoFolderCanBe();
    void shouldUseTheContactsFolderOfTheUser();
    void shouldShowTwoBooksAsOne();
    void shouldKeepInTheSecondBookWhatTheFirstDoesNot();
    void shouldKeepWhatTheFirstBookGivesBackAtItsEnd();
    void shouldRefillTheListAndKeepSearchAndSelection();
};

void VelAddressBookTest::shouldReadBackWhatItWrote_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("email");
    QTest::newRow("plain") << "Anna Virtanen"
                           << "anna@example.org";
    QTest::newRow("umlauts and a comma")
        << QStringLiteral("Müller, Jürgen") << QStringLiteral("jürgen@bücher.example");
    QTest::newRow("signs with a meaning in cards") << "Smith; John: Sons, \"Ltd\" = 100%"
                                                   << "a+b=c@example.org";
    QTest::newRow("title and particles") << QStringLiteral("Dr. Ida von der Heide Jr.") << "";
    QTest::newRow("another script") << QStringLiteral("山田 太郎") << "yamada@example.jp";
    QTest::newRow("longer than a line of a card") << QString(200, QLatin1Char('x')) << "x@example.org";
    QTest::newRow("no name") << ""
                             << "nobody@example.org";
}

void VelAddressBookTest::shouldReadBackWhatItWrote()
{
    QFETCH(QString, name);
    QFETCH(QString, email);
    const QTemporaryDir dir;
    const QString folder = dir.filePath(QStringLiteral("new/folder"));
    VelVCardAddressBook book(folder);
    QVERIFY(book.add({name, email}));
    QCOMPARE(VelVCardAddressBook(folder).addressees(), (QVector<VelAddressee>{{name, email}}));
    QVERIFY(book.add({QStringLiteral("Somebody else"), {}}));
    QCOMPARE(book.addressees().size(), 2);
    QCOMPARE(QDir(folder).entryList(QDir::Files | QDir::Hidden).size(), 2);
}

void VelAddressBookTest::shouldReadCards_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *name, const QByteArray &bytes, const QString &expected) {
        QTest::newRow(name) << bytes << expected;
    };
    const QByteArray anna = card("FN:Anna\r\nEMAIL:anna@a.org");
    const QString annaText = QStringLiteral("Anna|anna@a.org");
    row("several in a file", anna + card("FN:Bo\r\nEMAIL:bo@b.org"),
        annaText + QStringLiteral("/Bo|bo@b.org"));
    row("bare line feeds and no last one", QByteArray(anna).replace("\r", "").chopped(1), annaText);
    row("bare carriage returns", QByteArray(anna).replace("\n", ""), annaText);
    row("byte order mark", "\xef\xbb\xbf" + anna, annaText);
    row("the preferred of three addresses",
        card("FN:Anna\r\nEMAIL:old@a.org\r\nEMAIL;TYPE=PREF:anna@a.org\r\nEMAIL:x@a.org"), annaText);
    row("properties in a group", card("item1.FN:Anna\r\nitem2.email;type=work:anna@a.org"), annaText);
    row("folded lines and a picture",
        card("FN:An\r\n na\r\nPHOTO;ENCODING=b:AAAA\r\n EMAIL:no@a.org\r\nEMAIL:anna@\r\n\ta.org"), annaText);
    row("quoted-printable over two lines",
        "BEGIN:VCARD\r\nVERSION:2.1\r\nNOTE;ENCODING=QUOTED-PRINTABLE:x=\r\nFN:no\r\n"
        "FN;CHARSET=UTF-8;ENCODING=QUOTED-PRINTABLE:J=C3=BC=\r\nrgen\r\nEND:VCARD\r\n",
        QStringLiteral("Jürgen|"));
    row("quoted-printable without an end", card("FN;ENCODING=QUOTED-\r\n PRINTABLE:J=") + anna, annaText);
    row("quoted-printable at the end of the file", anna + "BEGIN:VCARD\r\nFN;ENCODING=QUOTED-PRINTABLE:J=\r",
        annaText);
    row("only the parts of a name", card("N:Virtanen;Anna;;;"), QStringLiteral("Anna Virtanen|"));
    row("only a company", card("ORG:Delmast"), QStringLiteral("Delmast|"));
    row("line breaks in a name", card("FN:Anna\\nVirtanen"), QStringLiteral("Anna Virtanen|"));
    row("a group of people", card("KIND:group\r\nFN:Team") + anna, annaText);
    row("nobody", card("TEL:123") + anna, annaText);
    row("cut off", anna + "BEGIN:VCARD\r\nVERSION:3.0\r\nFN:Bo", annaText);
    row("no cards", "BEGIN:VCALENDAR\r\nEND:VCALENDAR\r\n", {});
    const QByteArray equals(200000, '='); // so many that whatever takes the square of it does not end in time
    row("signs of quoted-printable without end", card(equals + ';' + equals + ":x\r\nFN:Anna"),
        QStringLiteral("Anna|"));
    row("no text", QByteArray("\0\xff\xfe\0:;=\n\0\n ", 10).repeated(1000), {});
}

void VelAddressBookTest::shouldReadCards()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, expected);
    const QTemporaryDir dir;
    writeFile(dir.filePath(QStringLiteral("a.vcf")), bytes);
    QCOMPARE(contents(VelVCardAddressBook(dir.path())), expected);
}

void VelAddressBookTest::shouldSkipWhatIsNoFileOfCards()
{
    const QTemporaryDir dir;
    const QByteArray large =
        card("FN:Too large\r\nPHOTO:" + QByteArray(VelVCardAddressBook::MaxFileSize, 'A'));
    writeFile(dir.filePath(QStringLiteral("large.vcf")), large);
    writeFile(dir.filePath(QStringLiteral("other.txt")), card("FN:No card file"));
    writeFile(dir.filePath(QStringLiteral("zoe.vcf")), card("FN:Zoe"));
    QVERIFY(QDir(dir.path()).mkdir(QStringLiteral("folder.vcf")));
    QVERIFY(QFile::link(QStringLiteral("nowhere"), dir.filePath(QStringLiteral("link.vcf"))));
    QCOMPARE(mkfifo(QFile::encodeName(dir.filePath(QStringLiteral("pipe.vcf"))).constData(), 0600), 0);
    QCOMPARE(contents(VelVCardAddressBook(dir.path())), QStringLiteral("Zoe|"));
}

/** Reading all its addresses would take longer than a test may. */
void VelAddressBookTest::shouldNotHangOnACardMadeForIt()
{
    constexpr int count = 200000;
    QByteArray lines = "FN:Anna";
    lines.reserve(
        count * 24); // each addition grows it by a little: that alone would take minutes under a sanitizer
    for (int i = 0; i < count; ++i)
        lines.append("\r\nEMAIL:a").append(QByteArray::number(i)).append("@a.org");
    const QTemporaryDir dir;
    writeFile(dir.filePath(QStringLiteral("a.vcf")), card(lines));
    QCOMPARE(contents(VelVCardAddressBook(dir.path())), QStringLiteral("Anna|a0@a.org"));
}

void VelAddressBookTest::shouldBeEmptyAndRefuseWhereNoFolderCanBe()
{
    const QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("file"));
    writeFile(file, "x");
    VelVCardAddressBook book(file + QStringLiteral("/contacts"));
    QVERIFY(book.addressees().isEmpty());
    QVERIFY(!book.add({QStringLiteral("Anna"), {}}));
    QVERIFY(!VelVCardAddressBook(dir.path()).add({QStringLiteral(" "), QStringLiteral("\t")}));
    QCOMPARE(QDir(dir.path()).entryList(QDir::Files).size(), 1);
}

void VelAddressBookTest::shouldUseTheContactsFolderOfTheUser()
{
    const QString folder = qEnvironmentVariable("XDG_DATA_HOME") + QStringLiteral("/contacts");
    QDir(folder).removeRecursively();
    QVERIFY(VelAddressBook::create()->add({QStringLiteral("Anna"), {}}));
    QCOMPARE(contents(VelVCardAddressBook(folder)), QStringLiteral("Anna|"));
}

void VelAddressBookTest::shouldShowTwoBooksAsOne()
{
    Joined joined;
    joined.second->people.append({QStringLiteral("Anna"), QStringLiteral("other@example.org")});
    QCOMPARE(contents(joined.book),
             QStringLiteral("Anna|Anna@example.org/Bo|Bo@example.org/Cai|Cai@example.org/"
                            "Anna|other@example.org"));
    // Each batch that comes from the first must not cost reading a folder; who asks later gets what is there then.
    QString told;
    connect(&joined.book, &VelAddressBook::changed, this, [&] { told = contents(joined.book); });
    joined.first->people = {named("Dia")};
    joined.second->people = {named("Eva")};
    Q_EMIT joined.first->changed();
    QCOMPARE(told,
             QStringLiteral("Dia|Dia@example.org/bo|bo@example.org/Cai|Cai@example.org/"
                            "Anna|other@example.org"));
    QCOMPARE(joined.second->reads, 1);
    QCOMPARE(joined.book.addressees(), (QVector<VelAddressee>{named("Dia"), named("Eva")}));
}

void VelAddressBookTest::shouldKeepInTheSecondBookWhatTheFirstDoesNot()
{
    Joined joined;
    const QSignalSpy changes(&joined.book, &VelAddressBook::changed);
    const QSignalSpy losses(&joined.book, &VelAddressBook::notStored);
    QVERIFY(joined.book.add(named("Dia")));
    QCOMPARE(joined.first->people.last(), named("Dia"));
    QCOMPARE(joined.second->people.size(), 2);
    joined.first->fail(named("Dia"));
    QCOMPARE(joined.second->people.last(), named("Dia"));
    QCOMPARE(changes.size(), 1);

    joined.first->isWritable = false;
    QVERIFY(joined.book.add(named("Eva")));
    QCOMPARE(joined.second->people.last(), named("Eva"));
    QVERIFY(losses.isEmpty());
    joined.second->isWritable = false;
    QVERIFY(!joined.book.add(named("Fia")));
    joined.first->fail(named("Fia"));
    QCOMPARE(losses.size(), 1);
}

void VelAddressBookTest::shouldKeepWhatTheFirstBookGivesBackAtItsEnd()
{
    const QTemporaryDir dir;
    auto first = std::make_unique<FakeBook>(QVector<VelAddressee>{named("Anna")});
    first->isGivingBack = true;
    auto cards = std::make_unique<VelVCardAddressBook>(dir.path());
    auto book = std::make_unique<VelJoinedAddressBook>(std::move(first), std::move(cards));
    bool isAsked = false;
    connect(book.get(), &VelAddressBook::changed, this, [&isAsked] { isAsked = true; });
    book.reset();
    QCOMPARE(contents(VelVCardAddressBook(dir.path())), QStringLiteral("Anna|Anna@example.org"));
    QVERIFY(!isAsked);
}

void VelAddressBookTest::shouldRefillTheListAndKeepSearchAndSelection()
{
    FakeBook book({named("Anna"), named("Bo Ek"), named("Cai Ek")});
    VelPersonSource source(book);
    source.findChild<QComboBox *>()->setCurrentIndex(VelPersonSource::AddressBookSource);
    auto *search = source.findChild<QLineEdit *>();
    auto *view = source.findChild<QTreeView *>();
    search->setText(QStringLiteral("ek"));
    view->setCurrentIndex(view->model()->index(1, 0));
    book.people.prepend(named("Ada Ek"));
    Q_EMIT book.changed();
    QCOMPARE(view->model()->rowCount(), 3);
    QCOMPARE(search->text(), QStringLiteral("ek"));
    QCOMPARE(source.selectedAccounts().size(), 1);
    QCOMPARE(source.selectedAccounts().first().name, QStringLiteral("Cai Ek"));
    QCOMPARE(view->currentIndex().row(), 2);
    // Who is gone is not selected; Return takes the best match again.
    book.people.removeLast();
    Q_EMIT book.changed();
    QCOMPARE(source.selectedAccounts().first().name, QStringLiteral("Ada Ek"));
}

QTEST_MAIN(VelAddressBookTest)
#include "veladdressbooktest.moc"
