// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "support/fakeapp.h"
#include "support/testcalendar.h"
#include "views/veldaylayout.h"
#include "views/veldayprintout.h"
#include "views/veldocsource.h"
#include "views/velentryprintout.h"
#include "views/vellistprintout.h"
#include "views/vellistview.h"
#include "views/velmonthentries.h"
#include "views/velmonthprintout.h"
#include "views/velprintpages.h"
#include "views/velprinttext.h"
#include "widgets/wpopupmenu.h"
#include "widgets/wtable.h"

#include <KConfig>

#include <QImage>
#include <QMenu>
#include <QPainter>
#include <QPrinter>
#include <QTemporaryDir>
#include <QTest>

using namespace TestCalendar;

namespace
{
constexpr int Margin = 40;
const QSize Portrait(827, 1169); // A4 at 100 dots per inch
const QSize Landscape(1169, 827);

QString longText()
{
    return QStringLiteral("A title that no box and no cell of a calendar has room for, ").repeated(12);
}

QImage blank(const QSize &size)
{
    constexpr int dotsPerMeter = 3937;
    QImage image(size, QImage::Format_RGB32);
    image.setDotsPerMeterX(dotsPerMeter);
    image.setDotsPerMeterY(dotsPerMeter);
    image.fill(Qt::white);
    return image;
}

bool isWhite(const QImage &image, const QRect &rect)
{
    for (int y = rect.top(); y <= rect.bottom(); ++y) {
        for (int x = rect.left(); x <= rect.right(); ++x) {
            if (image.pixel(x, y) != qRgb(255, 255, 255))
                return false;
        }
    }
    return true;
}

/** Whether everything that is painted is within @p inner, give or take the rounding of a dot. */
bool isWhiteAround(const QImage &image, const QRect &inner)
{
    const QRect kept = inner.adjusted(-1, -1, 1, 1);
    return isWhite(image, {0, 0, image.width(), kept.top()})
        && isWhite(image, QRect(QPoint(0, kept.bottom() + 1), image.rect().bottomRight()))
        && isWhite(image, {0, 0, kept.left(), image.height()})
        && isWhite(image, QRect(QPoint(kept.right() + 1, 0), image.rect().bottomRight()));
}

/** A calendar and what prints it. */
class Printing
{
public:
    void addMany()
    {
        for (int i = 0; i < 60; ++i) {
            VelEntry entry = makeEvent(longText(), march(1 + i % 31, i % 24, i % 60),
                                       march(1 + i % 31, i % 24, i % 60).addSecs(i * 600));
            entry.notime = i % 3 == 0;
            entry.access = VelEntry::Private;
            add(doc, entry);
        }
    }

    [[nodiscard]] std::unique_ptr<VelPrintout> make(const QString &kind) const
    {
        auto source = std::make_unique<VelDocSource>(doc);
        if (kind == QLatin1String("day"))
            return std::make_unique<VelDayPrintout>(std::move(source), settings, today(), 1);
        if (kind == QLatin1String("week"))
            return std::make_unique<VelDayPrintout>(std::move(source), settings, today(), 7);
        if (kind == QLatin1String("month"))
            return std::make_unique<VelMonthPrintout>(std::move(source), today());
        const int count = int(doc.getEntryCount());
        if (kind == QLatin1String("list")) {
            const auto rows = [](int row) {
                return QStringList{QString::number(row), longText(), longText()};
            };
            return std::make_unique<VelListPrintout>(
                longText(),
                std::vector<VelListPrintout::Column>{{longText()}, {kind}, {kind, Qt::AlignRight, true}},
                count, rows);
        }
        VelEntry entry = makeEvent(longText(), march(2, 9), march(2, 10));
        entry.accounts.append(VelAccount(longText(), longText(), 7));
        entry.setDescription(QString(longText() + QLatin1Char('\n')).repeated(count));
        return std::make_unique<VelEntryPrintout>(entry, longText());
    }

    [[nodiscard]] int pageCount(const QString &kind, const QSize &size = Portrait) const
    {
        const QImage image = blank(size);
        return make(kind)->layOut(size, &image);
    }

    VelSettings settings;
    FakeMessages messages;
    VelDoc doc{messages, settings, nullptr, &today};
};

/** Knows which of its pages were painted. */
class FivePages : public VelPrintout
{
public:
    [[nodiscard]] QString title() const override { return QStringLiteral("Five"); }
    int layOut(const QSizeF &, const QPaintDevice *) override { return 5; }
    void paintPage(QPainter &, int page) const override { painted.append(page); }
    mutable QVector<int> painted;
};

class PdfPrinter
{
public:
    PdfPrinter()
    {
        printer->setOutputFormat(QPrinter::PdfFormat);
        printer->setOutputFileName(folder.filePath(QStringLiteral("pages.pdf")));
    }
    VelPrintPages::Result print(VelPrintout &printout, const VelPrintPages::Progress &progress = {}) const
    {
        QPainter painter(printer.get());
        return VelPrintPages(printout, march(2, 10)).print(painter, *printer, progress);
    }
    QTemporaryDir folder;
    std::unique_ptr<QPrinter> printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
};

QImage painted(const VelPrintout &printout, int page)
{
    QImage image = blank(Portrait);
    QPainter painter(&image);
    printout.paintPage(painter, page);
    return image;
}

QImage firstPage(VelPrintout &printout)
{
    const QImage image = blank(Portrait);
    printout.layOut(Portrait, &image);
    return painted(printout, 0);
}
} // namespace

Q_DECLARE_METATYPE(QPrinter::PageOrder)

class VelPrintoutTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void nothingShouldLeaveItsPlace_data();
    void nothingShouldLeaveItsPlace();
    void agendaShouldFollowWhenSomethingDoesNotFit_data();
    void agendaShouldFollowWhenSomethingDoesNotFit();
    void chainOfOverlapsShouldStandSideBySide();
    void listShouldHoldEveryRowOnceAndItsHeaderOnEachPage();
    void emptyListShouldStillBeAPage();
    void descriptionShouldFlowOverPages();
    void docSourceShouldGiveAFixedOrder();
    void pdfShouldHaveTheWantedPages_data();
    void pdfShouldHaveTheWantedPages();
    void cancellingShouldEndThePrinting();
    void listViewShouldPrintWhatItShows();
    void menusShouldPrintTheEntryTheyAreOpenedOn();
    void midnightShouldEndEventsButNotTasks();
    void monthAndDaysShouldHoldTheSame();
    void dashesShouldFollowTheCalendar();
    void headingShouldStayWithItsRow();
    void longListShouldBeMeasuredOnce();
    void titleShouldUseTheDigitsOfTheLocale();
};

void VelPrintoutTest::nothingShouldLeaveItsPlace_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<bool>("many");
    for (const char *kind : {"day", "week", "month", "list", "entry"}) {
        for (const bool many : {false, true}) {
            QTest::addRow("%s portrait %d", kind, int(many)) << QString::fromLatin1(kind) << Portrait << many;
            QTest::addRow("%s landscape %d", kind, int(many))
                << QString::fromLatin1(kind) << Landscape << many;
        }
    }
}

void VelPrintoutTest::nothingShouldLeaveItsPlace()
{
    QFETCH(QString, kind);
    QFETCH(QSize, size);
    QFETCH(bool, many);
    Printing printing;
    if (many)
        printing.addMany();
    const std::unique_ptr<VelPrintout> printout = printing.make(kind);
    const QRect page = QRect({0, 0}, size).adjusted(Margin, Margin, -Margin, -Margin);
    QImage image = blank(size);
    VelPrintPages pages(*printout, march(2, 10));
    const int count = pages.layOut(page.size(), &image);
    const QRect room = pages.room().toAlignedRect().translated(page.topLeft());
    for (int i = 0; i < count; ++i) {
        image.fill(Qt::white);
        QPainter painter(&image);
        pages.paint(painter, i, page.topLeft());
        QVERIFY2(isWhiteAround(image, page), qPrintable(QString::number(i)));
        // Head and foot are there, and the printout keeps within its room without being cut off.
        QVERIFY(!isWhite(image, {page.left(), page.top(), page.width(), 20}));
        QVERIFY(!isWhite(image, {page.left(), page.bottom() - 15, page.width(), 15}));
        image.fill(Qt::white);
        painter.translate(room.topLeft());
        printout->paintPage(painter, i);
        QVERIFY2(isWhiteAround(image, room), qPrintable(QString::number(i)));
        QVERIFY2(!isWhite(image, room), qPrintable(QString::number(i)));
    }
}

void VelPrintoutTest::agendaShouldFollowWhenSomethingDoesNotFit_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("title");
    QTest::addColumn<int>("entries");
    QTest::addColumn<int>("minutes");
    QTest::addColumn<bool>("notime");
    QTest::addColumn<bool>("follows");
    const QString brief = QStringLiteral("Meeting");
    QTest::newRow("day: none") << "day" << brief << 0 << 60 << false << false;
    QTest::newRow("day: room enough") << "day" << brief << 2 << 60 << false << false;
    QTest::newRow("day: long title") << "day" << longText() << 1 << 20 << false << true;
    QTest::newRow("day: long title in a long entry") << "day" << longText() << 1 << 480 << false << false;
    QTest::newRow("day: too low") << "day" << brief << 1 << 1 << false << true;
    QTest::newRow("day: no length") << "day" << brief << 1 << 0 << false << true;
    QTest::newRow("day: too thin") << "day" << brief << 40 << 60 << false << true;
    QTest::newRow("day: more than are placed") << "day" << brief << 200 << 60 << false << true;
    QTest::newRow("day: all day") << "day" << brief << 10 << 0 << true << false;
    QTest::newRow("day: too many all day") << "day" << brief << 40 << 0 << true << true;
    QTest::newRow("day: long title all day") << "day" << longText() << 1 << 0 << true << true;
    QTest::newRow("month: none") << "month" << brief << 0 << 60 << false << false;
    QTest::newRow("month: room enough") << "month" << brief << 5 << 60 << false << false;
    QTest::newRow("month: too many") << "month" << brief << 20 << 60 << false << true;
    QTest::newRow("month: long title") << "month" << longText() << 1 << 60 << false << true;
}

void VelPrintoutTest::agendaShouldFollowWhenSomethingDoesNotFit()
{
    QFETCH(QString, kind);
    QFETCH(QString, title);
    QFETCH(int, entries);
    QFETCH(int, minutes);
    QFETCH(bool, notime);
    QFETCH(bool, follows);
    Printing printing;
    for (int i = 0; i < entries; ++i) {
        VelEntry entry = makeEvent(title, march(2, 9), march(2, 9).addSecs(minutes * 60));
        entry.notime = notime;
        add(printing.doc, entry);
    }
    const QImage device = blank(Portrait);
    VelDocSource source(printing.doc);
    const int agendaPages = VelAgendaPrintout(source, today(), 1).layOut(Portrait, &device);
    QCOMPARE(printing.pageCount(kind), follows ? 1 + agendaPages : 1);
    QCOMPARE(agendaPages, entries == 200 ? 4 : 1);
}

void VelPrintoutTest::chainOfOverlapsShouldStandSideBySide()
{
    Printing printing;
    for (const int hour : {9, 10, 11, 15})
        addEvent(printing.doc, QStringLiteral("Event"), march(2, hour), march(2, hour + 1, 30));
    const std::vector<VelOl> places =
        VelDayPrintout::sideBySide(VelDocSource(printing.doc).getEntries(today()));
    QCOMPARE(places.size(), std::size_t(4));
    for (std::size_t i = 0; i < 2; ++i) {
        QCOMPARE(places[i].overlaps, places[i + 1].overlaps);
        QVERIFY(places[i].column != places[i + 1].column);
    }
    QCOMPARE(places[3].overlaps, 0);
}

void VelPrintoutTest::listShouldHoldEveryRowOnceAndItsHeaderOnEachPage()
{
    constexpr int count = 100;
    std::vector<int> asked;
    VelListPrintout list(QStringLiteral("List"),
                         {{QStringLiteral("Number")}, {QStringLiteral("Title"), {}, true}}, count,
                         [&asked](int row) {
                             asked.push_back(row);
                             return QStringList{QString::number(row), longText().left(row * 4)};
                         });
    const QImage device = blank(Portrait);
    const int pages = list.layOut(Portrait, &device);
    QVERIFY(pages > 1);
    asked.clear();
    const QRect header(0, 0, Portrait.width(), 17);
    const QImage first = painted(list, 0).copy(header);
    QVERIFY(!isWhite(first, first.rect()));
    for (int page = 1; page < pages; ++page)
        QCOMPARE(painted(list, page).copy(header), first);
    std::vector<int> all;
    for (int row = 0; row < count; ++row)
        all.push_back(row);
    QCOMPARE(asked, all);
}

void VelPrintoutTest::emptyListShouldStillBeAPage()
{
    QCOMPARE(Printing().pageCount(QStringLiteral("list")), 1);
}

void VelPrintoutTest::descriptionShouldFlowOverPages()
{
    const auto pagesOf = [](int lines) {
        VelEntry entry = makeEvent(QStringLiteral("Event"), march(2, 9), march(2, 10));
        entry.setDescription(QStringLiteral("<b>line</b>\n").repeated(lines));
        const QImage device = blank(Portrait);
        return VelEntryPrintout(entry, {}).layOut(Portrait, &device);
    };
    QCOMPARE(pagesOf(10), 1);
    const int some = pagesOf(1000);
    QVERIFY(some > 10);
    // Twice as many lines take twice the pages, but for what stands above them.
    QVERIFY(qAbs(pagesOf(2000) - 2 * some) <= 1);
}

void VelPrintoutTest::docSourceShouldGiveAFixedOrder()
{
    Printing printing;
    VelDoc &doc = printing.doc;
    addEvent(doc, QStringLiteral("late"), march(2, 12), march(2, 13));
    VelEntry daily = makeEvent(QStringLiteral("daily"), march(1, 9), march(1, 10));
    daily.rule = dailyRule(1, 3);
    add(doc, daily);
    addEvent(doc, QStringLiteral("same time"), march(2, 9), march(2, 10));
    doc.deleteEntry(addSynced(doc, QStringLiteral("gone"), 77), false);
    QStringList titles;
    for (const VelEntryRef &ref : VelDocSource(doc).getEntries(today()))
        titles.append(ref.getOriginal()->getTitle());
    QCOMPARE(titles,
             QStringList({QStringLiteral("daily"), QStringLiteral("same time"), QStringLiteral("late")}));
}

void VelPrintoutTest::pdfShouldHaveTheWantedPages_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    QTest::addColumn<QPrinter::PageOrder>("order");
    QTest::addColumn<QVector<int>>("expected");
    QTest::newRow("all") << 0 << 0 << QPrinter::FirstPageFirst << QVector<int>{0, 1, 2, 3, 4};
    QTest::newRow("some") << 2 << 3 << QPrinter::FirstPageFirst << QVector<int>{1, 2};
    QTest::newRow("backwards") << 2 << 4 << QPrinter::LastPageFirst << QVector<int>{3, 2, 1};
    QTest::newRow("beyond the last") << 4 << 999 << QPrinter::FirstPageFirst << QVector<int>{3, 4};
}

void VelPrintoutTest::pdfShouldHaveTheWantedPages()
{
    QFETCH(int, from);
    QFETCH(int, to);
    QFETCH(QPrinter::PageOrder, order);
    QFETCH(QVector<int>, expected);
    const PdfPrinter pdf;
    pdf.printer->setPageOrder(order);
    if (from > 0) {
        pdf.printer->setPrintRange(QPrinter::PageRange);
        pdf.printer->setFromTo(from, to);
    }
    FivePages five;
    QCOMPARE(pdf.print(five), VelPrintPages::Result::Done);
    QCOMPARE(five.painted, expected);
    const QByteArray bytes = fileBytes(pdf.printer->outputFileName());
    QVERIFY(bytes.startsWith("%PDF"));
    QCOMPARE(int(bytes.count("/Type /Page\n")), int(expected.size()));
}

void VelPrintoutTest::cancellingShouldEndThePrinting()
{
    FivePages five;
    QCOMPARE(PdfPrinter().print(five, [](int done, int total) { return done < total - 3; }),
             VelPrintPages::Result::Cancelled);
    QCOMPARE(five.painted, QVector<int>({0, 1}));
}

void VelPrintoutTest::listViewShouldPrintWhatItShows()
{
    FakeApp app(today());
    auto *view = new VelListView(&app, VelListView::Kind::Tasks, today());
    KConfig config{QString(), KConfig::SimpleConfig};
    view->readConfig(&config, QStringLiteral("Test"));
    VelEntry done = makeTodo(QStringLiteral("b"), today());
    done.complete = true;
    add(app.doc, done);
    VelEntry urgent = makeTodo(QStringLiteral("a"), today().addDays(1));
    urgent.priority = 3;
    add(app.doc, urgent);
    view->updateView();
    view->table()->hideColumn(VelListView::EndDateColumn);
    view->table()->swapColumns(VelListView::CompleteColumn, VelListView::PriorityColumn, true);
    view->table()->sortBy(VelListView::TitleColumn);

    const std::vector<QStringList> rows{{QStringLiteral("a"), QStringLiteral("3"), QString()},
                                        {QStringLiteral("b"), QString(), QStringLiteral("Yes")}};
    VelListPrintout expected(
        QString(),
        {{QStringLiteral("Title"), Qt::AlignLeft, true}, {QStringLiteral("Pri")}, {QStringLiteral("Com")}}, 2,
        [&rows](int row) { return rows[std::size_t(row)]; });
    const std::unique_ptr<VelPrintout> printout = view->makePrintout();
    QCOMPARE(firstPage(*printout), firstPage(expected));
}

void VelPrintoutTest::menusShouldPrintTheEntryTheyAreOpenedOn()
{
    FakeApp app(today());
    auto *view = new VelListView(&app, VelListView::Kind::Tasks, today());
    KConfig config{QString(), KConfig::SimpleConfig};
    view->readConfig(&config, QStringLiteral("Test"));
    const VelEntry *first = addTodo(app.doc, QStringLiteral("first"), today());
    addTodo(app.doc, QStringLiteral("second"), today().addDays(1));
    view->updateView();
    const auto trigger = [view](const QString &text) {
        const QList<QAction *> actions = view->findChildren<QAction *>();
        for (QAction *action : actions) {
            if (action->text() == text)
                action->trigger();
        }
    };
    Q_EMIT view->table()->contextMenuRequested(1, 0, {});
    trigger(QStringLiteral("Print Task"));
    QCOMPARE(app.printedTitle, QStringLiteral("second"));
    trigger(QStringLiteral("Print To-Do List"));
    QCOMPARE(app.printedTitle, QStringLiteral("To-Do List"));

    view->getEntryPopup();
    trigger(QStringLiteral("Print Event"));
    QCOMPARE(app.printCount, 2);
    view->setSelectedEntry(first, false);
    trigger(QStringLiteral("Print Event"));
    QCOMPARE(app.printedTitle, QStringLiteral("first"));
}

void VelPrintoutTest::midnightShouldEndEventsButNotTasks()
{
    VelEntry entry = makeEvent(QStringLiteral("x"), march(2, 9), march(3));
    QVERIFY(VelPrintText::isOver(VelEntryRef(&entry), QDate(2026, 3, 3)));
    entry.type = VelEntry::Todo;
    QVERIFY(!VelPrintText::isOver(VelEntryRef(&entry), QDate(2026, 3, 3)));
}

void VelPrintoutTest::monthAndDaysShouldHoldTheSame()
{
    const VelMonthLayout grid(today(), true);
    for (const int type : {int(VelEntry::Event), int(VelEntry::Todo)}) {
        for (const int end : {4, 10, 12}) {
            Printing printing;
            VelEntry entry = makeEvent(QStringLiteral("x"), march(10, 9), march(end, 9));
            entry.type = type;
            add(printing.doc, entry);
            const VelEntryList list = printing.doc.getEntries(grid.startDate(), 0, true, grid.endDate());
            const VelMonthEntries month(list, grid, 3);
            for (int day = 1; day <= 31; ++day) {
                const QDate date(2026, 3, day);
                QCOMPARE(int(VelDocSource(printing.doc).getEntries(date).size()), month.count(date));
            }
            QCOMPARE(month.count(QDate(2026, 3, std::max(10, end))), 1);
        }
    }
}

void VelPrintoutTest::dashesShouldFollowTheCalendar()
{
    const auto pageOf = [](int display) {
        Printing printing;
        VelEntry entry = makeEvent(QStringLiteral("x"), march(2, 9), march(2, 12));
        entry.display = display;
        add(printing.doc, entry);
        return firstPage(*printing.make(QStringLiteral("day")));
    };
    QVERIFY(pageOf(VelEntry::Free) != pageOf(VelEntry::Busy));
    QCOMPARE(pageOf(VelEntry::Free), pageOf(VelEntry::TentativeTime));
}

void VelPrintoutTest::headingShouldStayWithItsRow()
{
    const VelPaper paper(100);
    // Room for a line of the heading and one of what follows, but not for all of the heading.
    const QSizeF size(600, 2 * paper.lineHeight(VelPaper::Text) + 2 * paper.lineHeight(VelPaper::Heading));
    const auto pageOf = [&](bool hasHeading) {
        VelFlow flow;
        flow.addText(QStringLiteral("first"));
        if (hasHeading) {
            flow.addHeading(longText());
            flow.addRow(QStringLiteral("label"), QStringLiteral("row"));
        }
        flow.layOut(size, paper);
        QImage image = blank(Portrait);
        QPainter painter(&image);
        flow.paintPage(painter, 0);
        return image;
    };
    QCOMPARE(pageOf(true), pageOf(false));
}

void VelPrintoutTest::longListShouldBeMeasuredOnce()
{
    constexpr int count = 20000;
    int asked = 0;
    VelListPrintout list(QStringLiteral("List"), {{QStringLiteral("Number")}}, count, [&asked](int row) {
        ++asked;
        return QStringList{QString::number(row)};
    });
    const QImage device = blank(Portrait);
    const int pages = list.layOut(Portrait, &device);
    QVERIFY(asked >= count && asked < count * 11 / 10);
    QCOMPARE(list.layOut(Portrait, &device), pages); // the preview's pages are those that are printed
    QVERIFY(asked < count * 11 / 10);
    QVERIFY(list.layOut(Landscape, &device) > pages);
}

void VelPrintoutTest::titleShouldUseTheDigitsOfTheLocale()
{
    QLocale::setDefault(QLocale(QStringLiteral("fa_IR")));
    const QString title = Printing().make(QStringLiteral("month"))->title();
    QLocale::setDefault(QLocale::c());
    QVERIFY2(title.endsWith(QStringLiteral(" \u06f2\u06f0\u06f2\u06f6")), qPrintable(title));
}

QTEST_MAIN(VelPrintoutTest)
#include "velprintouttest.moc"
