// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "app/velmainwindow.h"
#include "app/velnetwork.h"
#include "benchmarksupport.h"
#include "net/velrequestwriter.h"
#include "views/velday.h"
#include "views/velmainview.h"

#include <KConfigGroup>
#include <KSharedConfig>

#include <QApplication>
#include <QSemaphore>
#include <QStandardPaths>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QThread>
#include <QTimer>

#include <algorithm>
#include <atomic>
#include <chrono>

namespace
{
using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr std::size_t EntryCount = 10000;
constexpr int EmptyCount = 100;
constexpr VelSize LargeAnswer = 10 << 20;
constexpr VelSize PieceSize = 64 << 10;
constexpr int Timeout = 60000; // milliseconds
constexpr int PulseInterval = 5; // milliseconds
/** Between two pieces, in microseconds: as on a line of about 100 Mbit a second. */
constexpr int LinePause = 5000;
constexpr quint32 UserId = 3;

/** Answers each message with the next of its texts, in a thread of its own, so that it takes no time of the window's. */
class Server : public QThread
{
public:
    Server(const std::vector<QByteArray> &answers, int pause)
        : m_answers(answers)
        , m_pause(pause)
    {
        start();
        m_isListening.acquire();
    }
    ~Server() override { wait(); }
    Q_DISABLE_COPY_MOVE(Server)

    [[nodiscard]] int port() const { return m_port; }
    /** When it began to send the last piece of the last answer. */
    [[nodiscard]] Clock::time_point lastWrite() const { return m_lastWrite; }

protected:
    void run() override
    {
        QTcpServer server;
        server.listen(QHostAddress::LocalHost);
        m_port = server.serverPort();
        m_isListening.release();
        if (!server.waitForNewConnection(Timeout))
            return;
        const std::unique_ptr<QTcpSocket> socket(server.nextPendingConnection());
        for (const QByteArray &answer : m_answers) {
            QByteArray request;
            while (!request.endsWith(VelRequestWriter::Terminator)) {
                if (!socket->waitForReadyRead(Timeout))
                    return;
                request += socket->readAll();
            }
            send(*socket, answer);
        }
        socket->waitForDisconnected(Timeout);
    }

private:
    void send(QTcpSocket &socket, const QByteArray &answer)
    {
        for (VelSize sent = 0; sent < answer.size(); sent += PieceSize) {
            if (sent > 0 && m_pause > 0)
                usleep(static_cast<unsigned long>(m_pause));
            m_lastWrite = Clock::now();
            socket.write(answer.mid(sent, PieceSize));
            while (socket.bytesToWrite() > 0 && socket.waitForBytesWritten(Timeout)) { }
        }
    }

    std::vector<QByteArray> m_answers;
    int m_pause;
    int m_port = 0;
    QSemaphore m_isListening;
    std::atomic<Clock::time_point> m_lastWrite{Clock::time_point()};
};

/** As the server has it: everybody else's are meetings that the user has accepted. */
VelEntry synchronised(const VelEntry &entry, quint32 globalid)
{
    VelEntry copy(entry);
    copy.localid = globalid; // of the device that made it
    copy.globalid = globalid;
    copy.dirty = 0;
    if (copy.user != 0) {
        VelAccount own(QStringLiteral("Anna"), {}, UserId);
        own.status = VelAccount::Accepted;
        copy.accounts.append(own);
    }
    return copy;
}

/** An answer that holds at least so many entries, and bytes; those of the calendar in turn. */
QByteArray makeAnswer(std::size_t count, VelSize bytes)
{
    VelXmlWriter writer;
    if (count > 0) {
        VelBenchmark::Document source;
        source.doc.openDocument(QUrl::fromLocalFile(VelBenchmark::calendarPath()));
        const VelEntryList all = source.doc.getEntries({}, 0, false, {});
        for (quint32 i = 0; i < count || static_cast<VelSize>(writer.text().size()) < bytes; ++i)
            writer.writeEntry(synchronised(*all[i % all.size()].getOriginal(), i + 1));
        source.doc.setModified(false);
    }
    const QByteArray action = "<action><userid>3</userid><origuserid>3</origuserid><origright>4</origright>"
                              "<synctime>later</synctime></action>";
    return "<?xml version='1.0' encoding='ISO-8859-15'?><calendar>" + action
        + QByteArray::fromStdString(writer.text()) + "</calendar>" + VelRequestWriter::Terminator;
}

const QByteArray &firstAnswer()
{
    static const QByteArray answer = makeAnswer(EntryCount, 0);
    return answer;
}

const QByteArray &largeAnswer()
{
    static const QByteArray answer = makeAnswer(1, LargeAnswer);
    return answer;
}

/** A window on the week that the calendar is about, and a server that it knows. */
class World : public QObject
{
public:
    explicit World(std::vector<QByteArray> answers, int pause = 0)
    {
        // Every window asks for the users first.
        answers.insert(answers.begin(),
                       "<calendar><account><id>3</id><name>Anna</name></account></calendar>\x1A");
        m_server = std::make_unique<Server>(answers, pause);
        QStandardPaths::setTestModeEnabled(true);
        KConfigGroup group = KSharedConfig::openConfig()->group(QStringLiteral("Preferences"));
        group.writeEntry("Server", "127.0.0.1");
        group.writeEntry("Port", m_server->port());
        group.writeEntry("User", "anna");
        VelSurroundings surroundings;
        surroundings.messages = std::make_unique<VelBenchmark::Silent>();
        surroundings.now = [] { return VelDateTime(QDate(2026, 11, 21), QTime(10, 0)); };
        surroundings.alerts = std::make_unique<VelAlertSurface>();
        window = new VelMainWindow(std::move(surroundings));
        window->resize(1280, 800);
        window->show();
        window->mainView()->setMainView(VelMainView::DayView, 7);
        connect(window->network(), &VelNetwork::merged, this, [this] { m_merged = Clock::now(); });
        finish();
        qApp->installEventFilter(this);
    }
    ~World() override
    {
        delete window;
        KSharedConfig::openConfig()->deleteGroup(QStringLiteral("Preferences")); // the others have no server
    }
    Q_DISABLE_COPY_MOVE(World)

    /** Runs until the server has been heard and what it said is painted. */
    void synchronize() const
    {
        window->slotSynchronize();
        finish();
    }
    [[nodiscard]] VelDoc &doc() const { return *window->document(); }
    /** True when a day with entries has been painted. */
    [[nodiscard]] bool isShown() const { return m_isShown; }
    [[nodiscard]] Clock::time_point lastWrite() const { return m_server->lastWrite(); }
    [[nodiscard]] Clock::time_point merged() const { return m_merged; }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        const auto *day = event->type() == QEvent::Paint ? qobject_cast<VelDay *>(watched) : nullptr;
        m_isShown = m_isShown || (day && !day->list().empty());
        return false;
    }

    VelMainWindow *window;

private:
    void finish() const
    {
        while (window->network()->isBusy())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
    }

    std::unique_ptr<Server> m_server;
    Clock::time_point m_merged;
    bool m_isShown = false;
};

/** Fills the document with what the first answer holds, all @p dirty or not, and none known to the server. */
void fill(VelDoc &doc, int dirty)
{
    VelXmlReader reader;
    reader.feed(firstAnswer().constData(), static_cast<std::size_t>(firstAnswer().size() - 1));
    if (!reader.finish())
        qFatal("unreadable");
    VelXmlContent content = reader.takeContent();
    for (auto &entry : content.entries) {
        entry->localid = 0;
        entry->globalid = 0;
        entry->dirty = dirty;
        doc.addEntry(doc.newEntry(std::move(entry)));
    }
}

struct First {
    bool isSent = false; ///< the calendar holds it all by then, and sends it
    bool isSaved = false;
    int pause = LinePause;
};

/** A large answer's last byte to the week that is painted with it; and saved, if the calendar has a file. */
void takeFirstSynchronisation(benchmark::State &state, First first)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("synced.xml"));
    for (auto _ : state) {
        const World world({firstAnswer()}, first.pause);
        if (first.isSent)
            fill(world.doc(), 1);
        if (first.isSaved && !world.doc().saveDocument(QUrl::fromLocalFile(path), true))
            state.SkipWithError("cannot save the calendar");
        world.synchronize();
        state.SetIterationTime(std::chrono::duration<double>(Clock::now() - world.lastWrite()).count());
        const std::size_t count = world.doc().getEntryCount();
        state.counters["entries"] = static_cast<double>(count);
        if (!world.isShown() || count != EntryCount || world.doc().getLocalId(EntryCount) == 0
            || world.doc().isModified() == first.isSaved)
            state.SkipWithError("the answer is not in the calendar");
    }
}
BENCHMARK_CAPTURE(takeFirstSynchronisation, untitled, First{})
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1)
    ->UseManualTime();
BENCHMARK_CAPTURE(takeFirstSynchronisation, saved, First{.isSaved = true})
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1)
    ->UseManualTime();
BENCHMARK_CAPTURE(takeFirstSynchronisation, sentAndSaved, First{.isSent = true, .isSaved = true})
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1)
    ->UseManualTime();
// The last byte is on its way when most of the answer has not been read.
BENCHMARK_CAPTURE(takeFirstSynchronisation, atOnce, First{.pause = 0})
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1)
    ->UseManualTime();

/** All of it, over the loopback; the processor time is the window's alone. */
void synchroniseNothing(benchmark::State &state)
{
    std::vector<QByteArray> answers(EmptyCount, makeAnswer(0, 0));
    answers.back().replace("later", "last");
    answers.insert(answers.begin(), firstAnswer());
    const World world(answers);
    world.synchronize();
    if (world.doc().getEntryCount() != EntryCount)
        state.SkipWithError("there is no calendar");
    for (auto _ : state)
        world.synchronize();
    if (world.doc().getSynctime() != QLatin1String("last"))
        state.SkipWithError("the server was not heard");
}
BENCHMARK(synchroniseNothing)->Unit(benchmark::kMillisecond)->Iterations(EmptyCount);

/** What a synchronisation of ours sends when everything, or nothing, is still to be sent. */
void writeRequest(benchmark::State &state, int dirty)
{
    VelBenchmark::Document document;
    fill(document.doc, dirty);
    std::size_t sent = 0;
    for (auto _ : state) {
        const VelRequest request =
            VelRequestWriter::write({VelNetTask::Sync, {}, false}, document.settings, document.doc);
        sent = request.sent.size();
        state.counters["bytes"] = static_cast<double>(request.bytes.size());
    }
    state.counters["sent"] = static_cast<double>(sent);
}
BENCHMARK_CAPTURE(writeRequest, everything, 1)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(writeRequest, nothing, 0)->Unit(benchmark::kMillisecond);

/** The longest of the gaps between ticks that end until, or after, @p moment. */
Milliseconds longestGap(const std::vector<Clock::time_point> &ticks, Clock::time_point moment, bool isAfter)
{
    Milliseconds longest{0};
    for (std::size_t i = 1; i < ticks.size(); ++i) {
        if ((ticks[i] > moment) == isAfter)
            longest = std::max(longest, Milliseconds(ticks[i] - ticks[i - 1]));
    }
    return longest;
}

/** The longest time for which a window does nothing else while ten megabytes arrive; and when they are merged. */
void receiveLargeAnswer(benchmark::State &state, int pause)
{
    for (auto _ : state) {
        const World world({largeAnswer()}, pause);
        std::vector<Clock::time_point> ticks;
        QTimer pulse;
        pulse.setTimerType(Qt::PreciseTimer);
        QObject::connect(&pulse, &QTimer::timeout, [&ticks] { ticks.push_back(Clock::now()); });
        pulse.start(PulseInterval);
        world.synchronize();
        for (const std::size_t seen = ticks.size(); ticks.size() < seen + 3;)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        // The merging begins in a gap that ends after it.
        state.SetIterationTime(longestGap(ticks, world.merged(), false).count() / 1e3);
        state.counters["ticks"] = static_cast<double>(ticks.size());
        state.counters["merging_ms"] = longestGap(ticks, world.merged(), true).count();
        state.counters["entries"] = static_cast<double>(world.doc().getEntryCount());
        if (!world.isShown())
            state.SkipWithError("the answer is not in the calendar");
    }
}
BENCHMARK_CAPTURE(receiveLargeAnswer, line, LinePause)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1)
    ->UseManualTime();
BENCHMARK_CAPTURE(receiveLargeAnswer, atOnce, 0)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1)
    ->UseManualTime();
} // namespace
