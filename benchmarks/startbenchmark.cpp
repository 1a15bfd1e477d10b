// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

/**
 * @file
 * Measures how long the program takes from its start to the first painted week of a calendar: starts itself several
 * times and prints the median.
 */

#include "app/velaboutdata.h"
#include "app/velmainwindow.h"
#include "model/compat.h"
#include "views/velday.h"

#include <KLocalizedString>

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace
{
constexpr int Rounds = 9;
constexpr int Timeout = 60000; // milliseconds

/** Ends the program once a day with entries has been painted. */
class FirstPaint : public QObject
{
public:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        const auto *day = qobject_cast<VelDay *>(watched);
        if (day && event->type() == QEvent::Paint && !day->list().empty())
            QTimer::singleShot(0, QCoreApplication::instance(), [] { QCoreApplication::quit(); });
        return false;
    }
};

int runOnce(int &argc, char **argv)
{
    velFollowScreenScale();
    QApplication application(argc, argv);
    QStandardPaths::setTestModeEnabled(true);
    KLocalizedString::setApplicationDomain("delmasttime");
    KAboutData::setApplicationData(velAboutData());
    QApplication::setWindowIcon(VelApp::getIcon(QStringLiteral("delmasttime")));
    FirstPaint painted;
    application.installEventFilter(&painted);
    VelSurroundings surroundings;
    surroundings.alerts = std::make_unique<VelAlertSurface>(); // nobody is there to answer
    auto *window = new VelMainWindow(std::move(surroundings));
    window->showOrDock();
    window->openDocumentFile(QUrl::fromLocalFile(QFile::decodeName(argv[2])));
    QApplication::exec();
    std::_Exit(0); // closing is not what is measured
}
} // namespace

int main(int argc, char **argv)
{
    if (argc == 3 && qstrcmp(argv[1], "--once") == 0)
        return runOnce(argc, argv);
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s CALENDAR.xml\n", argv[0]);
        return 2;
    }
    const QCoreApplication application(argc, argv);
    std::vector<qint64> times;
    for (int round = 0; round < Rounds; ++round) {
        QElapsedTimer timer;
        timer.start();
        QProcess process;
        process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process.start(QCoreApplication::applicationFilePath(),
                      {QStringLiteral("--once"), QCoreApplication::arguments().at(1)});
        if (!process.waitForFinished(Timeout) || process.exitCode() != 0)
            return 1;
        times.push_back(timer.elapsed());
    }
    std::sort(times.begin(), times.end());
    std::printf("start to the first painted week: median %lld ms of %d starts (%lld to %lld)\n",
                static_cast<long long>(times[Rounds / 2]), Rounds, static_cast<long long>(times.front()),
                static_cast<long long>(times.back()));
    return 0;
}
