// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "document/veldoc.h"
#include "model/velsettings.h"
#include "support/fakemessages.h"
#include "support/testcalendar.h"

#include <QRandomGenerator>
#include <QTest>

#include <algorithm>
#include <map>
#include <utility>
#include <vector>

using namespace TestCalendar;

namespace
{
/** What was found, in a form to compare: local id and number of the occurrence, 0 for the entry itself. */
using Found = std::vector<std::pair<quint32, quint32>>;

Found sorted(const VelEntryList &list)
{
    Found found;
    for (const VelEntryRef &ref : list)
        found.emplace_back(ref.getOriginal()->localid, ref.getNumber());
    std::sort(found.begin(), found.end());
    return found;
}

struct Query {
    QDate from;
    int type = 0;
    bool withRecurrences = true;
    QDate to;
};

/** The rule for one entry or occurrence, as it reads. */
bool passes(const VelEntry &entry, const Query &query)
{
    const QDate start = entry.getStart().date();
    const QDate end = entry.getEnd().date();
    if (query.from.isNull())
        return true;
    if (query.to.isNull())
        return start <= query.from && end >= query.from;
    return (start >= query.from || end >= query.from) && start <= query.to;
}

/** A calendar that looks at everything it has. */
class PlainCalendar
{
public:
    void put(const VelEntry &entry)
    {
        VelEntry &stored = m_entries[entry.localid];
        stored = entry;
        stored.updRecurrence(today());
    }
    void remove(quint32 localid) { m_entries.erase(localid); }
    void clear() { m_entries.clear(); }

    void purgeCompleted()
    {
        std::vector<VelEntry> notices;
        for (auto &[localid, entry] : m_entries) {
            if (entry.type == VelEntry::Todo && entry.complete)
                notices.push_back(entry);
        }
        for (const VelEntry &notice : notices)
            discard(notice.localid, false);
    }

    void discard(quint32 localid, bool force)
    {
        const auto found = m_entries.find(localid);
        if (found->second.globalid == 0 || force) {
            m_entries.erase(found);
            return;
        }
        found->second.type = VelEntry::Deleted;
        found->second.dirty = 1;
    }

    [[nodiscard]] Found find(const Query &query) const
    {
        Found found;
        for (const auto &[localid, entry] : m_entries) {
            if (query.type != 0 && entry.type != query.type)
                continue;
            if (passes(entry, query))
                found.emplace_back(localid, 0);
            for (quint32 number = 1; query.withRecurrences && entry.getOccurrence(number); ++number) {
                if (passes(*entry.getOccurrence(number), query))
                    found.emplace_back(localid, number);
            }
        }
        return found;
    }

    [[nodiscard]] const std::map<quint32, VelEntry> &entries() const { return m_entries; }

private:
    std::map<quint32, VelEntry> m_entries;
};

/** Makes entries and questions of every kind, the same ones in each run. */
class Dice
{
public:
    explicit Dice(quint32 seed)
        : m_random(seed)
    {
    }

    int upTo(int highest) { return m_random.bounded(highest + 1); }
    bool oneIn(int chances) { return m_random.bounded(chances) == 0; }

    /** Mostly around the day of the tests, where entries meet; now and then anywhere. */
    QDate day()
    {
        if (oneIn(20))
            return QDate(1, 1, 1).addDays(m_random.bounded(3652059));
        return today().addDays(upTo(1600) - 800);
    }

    /** Of any length in days, short ones mostly; one in ten ends before it starts. */
    int span()
    {
        switch (upTo(9)) {
        case 0:
            return -1 - upTo(40);
        case 1:
            return upTo(4000);
        case 2:
            return 1 << upTo(11);
        case 3:
            return (1 << upTo(11)) - 1;
        default:
            return upTo(3);
        }
    }

    void setDates(VelEntry &entry)
    {
        const QDate start = day();
        const VelDateTime end = at(start.addDays(span()), upTo(23));
        entry.setStart(at(start, upTo(23)));
        entry.setEnd(end.isValid() ? end : entry.getStart());
    }

    void setRule(VelEntry &entry)
    {
        VelRecurrenceRule rule;
        rule.recurringtype = upTo(VelRecurrenceRule::Yearly);
        rule.occurevery = 1 + upTo(3);
        if (rule.recurringtype == VelRecurrenceRule::Weekly)
            rule.occurdays = {1 + upTo(2), 4 + upTo(3)};
        if (rule.recurringtype == VelRecurrenceRule::Monthly) {
            rule.occurdaynumber = upTo(5) - 1;
            rule.occurdays = {1 + upTo(rule.occurdaynumber == 0 ? 30 : 6)};
        }
        if (oneIn(2))
            rule.occurendcount = upTo(60);
        if (oneIn(4))
            rule.occurenddate = entry.getStart().date().addDays(upTo(500));
        entry.rule = rule;
    }

    VelEntry entry()
    {
        VelEntry entry(0, oneIn(3) ? VelEntry::Todo : VelEntry::Event, march(2), march(2));
        entry.globalid = oneIn(3) ? 1 + static_cast<quint32>(upTo(100000)) : 0;
        setDates(entry);
        if (oneIn(4))
            setRule(entry);
        return entry;
    }

    void change(VelEntry &entry)
    {
        switch (upTo(4)) {
        case 0:
            entry.type = entry.type == VelEntry::Event ? VelEntry::Todo : VelEntry::Event;
            break;
        case 1:
            setRule(entry);
            break;
        case 2:
            entry.setEnd(entry.getStart().addDays(oneIn(5) ? -3 : upTo(20)));
            break;
        case 3:
            entry.complete = !entry.complete;
            break;
        default:
            setDates(entry);
            break;
        }
        if (!entry.isValid())
            setDates(entry);
    }

    Query query()
    {
        Query query;
        if (!oneIn(20))
            query.from = day();
        if (!oneIn(3))
            query.to =
                (query.from.isValid() ? query.from : today()).addDays(oneIn(10) ? -upTo(20) : upTo(60));
        query.type = oneIn(2) ? 0 : upTo(3) - 1;
        query.withRecurrences = !oneIn(4);
        return query;
    }

private:
    QRandomGenerator m_random;
};

/** The calendar under test and the plain one, to which the same things happen. */
class Pair
{
public:
    explicit Pair(quint32 seed)
        : dice(seed)
    {
    }

    void step()
    {
        switch (plain.entries().empty() ? 0 : dice.upTo(19)) {
        case 0:
        case 1:
        case 2:
        case 3:
        case 4:
        case 5:
        case 6:
            add(doc.newEntry(std::make_unique<VelEntry>(dice.entry())));
            break;
        case 7:
            replace();
            break;
        case 8:
            remove();
            break;
        case 9:
        case 10:
            discard();
            break;
        case 11:
            purge();
            break;
        default:
            change();
            break;
        }
    }

    void clear()
    {
        doc.newDocument();
        plain.clear();
    }

    Dice dice;
    PlainCalendar plain;
    FakeMessages messages;
    VelSettings settings;
    VelDoc doc{messages, settings, nullptr, &TestCalendar::today};

private:
    quint32 anyId()
    {
        auto entry = plain.entries().begin();
        std::advance(entry, dice.upTo(static_cast<int>(plain.entries().size()) - 1));
        return entry->first;
    }

    void add(std::unique_ptr<VelEntry> entry)
    {
        plain.put(*entry);
        doc.addEntry(std::move(entry));
    }

    void replace()
    {
        auto entry = std::make_unique<VelEntry>(dice.entry());
        entry->localid = anyId();
        add(std::move(entry));
    }

    void remove()
    {
        const quint32 localid = anyId();
        plain.remove(localid);
        doc.removeEntry(localid);
    }

    void discard()
    {
        const quint32 localid = anyId();
        const bool force = dice.oneIn(2);
        plain.discard(localid, force);
        doc.deleteEntry(doc.getEntry(localid), force);
    }

    void purge()
    {
        plain.purgeCompleted();
        doc.purgeCompleted();
    }

    void change()
    {
        const quint32 localid = anyId();
        VelEntry changed = plain.entries().at(localid);
        dice.change(changed);
        plain.put(changed);
        doc.changeEntry(localid, [&changed](VelEntry &entry) { entry = changed; });
    }
};

QByteArray describe(const Query &query)
{
    const QString text = QStringLiteral("from %1 to %2 type %3%4")
                             .arg(query.from.toString(Qt::ISODate), query.to.toString(Qt::ISODate))
                             .arg(query.type)
                             .arg(query.withRecurrences ? QStringLiteral(" with recurrences") : QString());
    return text.toUtf8();
}
} // namespace

class VelEntryIndexTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void shouldFindWhatAPlainSearchFinds_data();
    void shouldFindWhatAPlainSearchFinds();
    void shouldNameOccurrencesByWhereTheyStart();
    void shouldFindTheFewOfADayAmongVeryMany();
    void shouldFindLongEntryByAnyDayOfIt_data();
    void shouldFindLongEntryByAnyDayOfIt();
    void shouldFindEntriesAtTheEndsOfTime();

private:
    static bool agree(const Pair &pair, const Query &query);
};

bool VelEntryIndexTest::agree(const Pair &pair, const Query &query)
{
    const Found expected = pair.plain.find(query);
    const Found found = sorted(pair.doc.getEntries(query.from, query.type, query.withRecurrences, query.to));
    if (found == expected)
        return true;
    qWarning("%s: found %zu, expected %zu", describe(query).constData(), found.size(), expected.size());
    return false;
}

void VelEntryIndexTest::shouldFindWhatAPlainSearchFinds_data()
{
    QTest::addColumn<quint32>("seed");
    for (quint32 seed = 1; seed <= 8; ++seed)
        QTest::addRow("seed %u", seed) << seed;
}

void VelEntryIndexTest::shouldFindWhatAPlainSearchFinds()
{
    QFETCH(quint32, seed);

    Pair pair(seed);
    for (int batch = 0; batch < 30; ++batch) {
        if (batch == 15)
            pair.clear();
        for (int step = 0; step < 15; ++step)
            pair.step();
        QCOMPARE(pair.doc.getEntryCount(), pair.plain.entries().size());
        for (int i = 0; i < 25; ++i)
            QVERIFY(agree(pair, pair.dice.query()));
    }
    QVERIFY(pair.plain.entries().size() > 30);
}

void VelEntryIndexTest::shouldNameOccurrencesByWhereTheyStart()
{
    Pair pair(99);
    for (int step = 0; step < 200; ++step)
        pair.step();
    const VelEntryList list = pair.doc.getEntries(today().addDays(-200), 0, true, today().addDays(200));
    QVERIFY(list.size() > 50);
    for (const VelEntryRef &ref : list) {
        QVERIFY(ref.getEntry());
        QCOMPARE(ref.getStartDay(), ref.getEntry()->getStart().julianDay());
        QVERIFY(ref.getStart() == ref.getEntry()->getStart());
        QVERIFY(ref.getEnd() == ref.getEntry()->getEnd());
    }
}

void VelEntryIndexTest::shouldFindTheFewOfADayAmongVeryMany()
{
    Pair pair(1);
    // One entry begins on each of 49,000 days, 1,000 more go on for ten thousand days each: level after level.
    const QDate first(1900, 1, 1);
    for (int i = 0; i < 49000; ++i)
        addEvent(pair.doc, QString(), at(first.addDays(i), 9), at(first.addDays(i), 10));
    for (int i = 0; i < 1000; ++i)
        addEvent(pair.doc, QString(), at(first.addDays(49 * i)), at(first.addDays(49 * i + 9999)));
    QCOMPARE(pair.doc.getEntryCount(), std::size_t(50000));

    const QDate day = first.addDays(30000);
    const auto isLong = [](const VelEntryRef &ref) { return ref.getOriginal()->getSpan() > 0; };
    const VelEntryList onDay = pair.doc.getEntries(day, 0, true, QDate());
    // Long ones that began at most 9,999 days before: from the 409th to the 613th.
    QCOMPARE(std::count_if(onDay.begin(), onDay.end(), isLong),
             std::ptrdiff_t(30000 / 49 - (20001 + 48) / 49 + 1));
    QCOMPARE(std::count_if(onDay.begin(), onDay.end(), std::not_fn(isLong)), std::ptrdiff_t(1));
    const VelEntryList inWeek = pair.doc.getEntries(day, 0, true, day.addDays(6));
    QCOMPARE(std::count_if(inWeek.begin(), inWeek.end(), std::not_fn(isLong)), std::ptrdiff_t(7));
}

void VelEntryIndexTest::shouldFindLongEntryByAnyDayOfIt_data()
{
    QTest::addColumn<int>("days");
    // Around each power of two, where entries of another magnitude begin, up to all the years there are.
    QTest::newRow("one day") << 0;
    QTest::newRow("two days") << 1;
    for (int days = 4; days < 3652058; days *= 2) {
        QTest::addRow("%d days", days - 1) << days - 1;
        QTest::addRow("%d days", days) << days;
    }
    QTest::newRow("all years") << 3652058;
}

void VelEntryIndexTest::shouldFindLongEntryByAnyDayOfIt()
{
    QFETCH(int, days);

    Pair pair(1);
    const QDate first(1, 1, 1);
    const QDate last = first.addDays(days);
    addEvent(pair.doc, QStringLiteral("A"), at(first), at(last, 23, 59));
    const auto count = [&pair](QDate from, QDate to) {
        return pair.doc.getEntries(from, 0, true, to).size();
    };
    QCOMPARE(count(first, QDate()), std::size_t(1));
    QCOMPARE(count(first.addDays(days / 2), QDate()), std::size_t(1));
    QCOMPARE(count(last, QDate()), std::size_t(1));
    QCOMPARE(count(last, last.addDays(1)), std::size_t(1));
    QCOMPARE(count(last.addDays(1), QDate()), std::size_t(0));
    QCOMPARE(count(last.addDays(1), last.addDays(2)), std::size_t(0));
    QCOMPARE(count(first.addDays(-1), QDate()), std::size_t(0));
}

void VelEntryIndexTest::shouldFindEntriesAtTheEndsOfTime()
{
    Pair pair(1);
    const QDate last(9999, 12, 31);
    VelEntry entry = makeEvent(QStringLiteral("A"), at(last.addDays(-1)), at(last.addDays(-1), 1));
    entry.rule = dailyRule(1, 100);
    entry.rule.occurenddate = last.addDays(9);
    add(pair.doc, entry);
    QCOMPARE(pair.doc.getEntries(last, 0, true, QDate()).size(), std::size_t(1));
    QCOMPARE(pair.doc.getEntries(QDate(1, 1, 1), 0, true, last).size(), std::size_t(2));
    QCOMPARE(pair.doc.getEntries(QDate(-4000, 1, 1), 0, true, QDate(20000, 1, 1)).size(), std::size_t(2));
}

QTEST_GUILESS_MAIN(VelEntryIndexTest)

#include "velentryindextest.moc"
