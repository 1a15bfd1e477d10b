// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "app/velaboutdata.h"
#include "app/velfilecommands.h"
#include "app/velmainwindow.h"
#include "app/velnetwork.h"
#include "document/velexchange.h"
#include "model/compat.h"

#include <KLocalizedString>

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QPointer>

namespace
{
/** Where the desktop names no icons, or lacks some, the toolbar would stay blank. */
void setFallbackIcons()
{
    const bool isDark = VelLook::isDark(QGuiApplication::palette());
    QIcon::setFallbackThemeName(isDark ? QStringLiteral("breeze-dark") : QStringLiteral("breeze"));
}

void openFirstWindow(const QStringList &arguments)
{
    auto *window = new VelMainWindow;
    window->showOrDock();
    const QUrl url = arguments.isEmpty()
        ? QUrl()
        : QUrl::fromUserInput(arguments.first(), QDir::currentPath(), QUrl::AssumeLocalFile);
    // The desktop hands over what other programs write, too: that is added to the calendar that was open last.
    const bool isForeign = !url.isEmpty() && VelExchange::isCalendarFile(url);
    window->openDocumentFile(isForeign ? QUrl() : url);
    if (isForeign)
        window->fileCommands()->importFile(url);
    const QPointer<VelMainWindow> alive(window);
    window->offerRecovered();
    if (alive)
        window->slotAutoSync();
}
} // namespace

int main(int argc, char **argv)
{
    velFollowScreenScale();
    QApplication application(argc, argv);
    KLocalizedString::setApplicationDomain("delmasttime");
    KAboutData about = velAboutData();
    KAboutData::setApplicationData(about);
    QApplication::setWindowIcon(VelApp::getIcon(QStringLiteral("delmasttime")));
    setFallbackIcons();

    QCommandLineParser parser;
    about.setupCommandLine(&parser);
    parser.addPositionalArgument(QStringLiteral("File"), i18n("file to open"), QStringLiteral("[File]"));
    parser.process(application);
    about.processCommandLine(&parser);

    if (application.isSessionRestored())
        kRestoreMainWindows<VelMainWindow>();
    // What was open is synchronised in its time, as if the program had run on.
    const QList<KMainWindow *> windows = KMainWindow::memberList();
    for (KMainWindow *each : windows) {
        if (auto *window = qobject_cast<VelMainWindow *>(each))
            window->network()->setAutoSyncTimer();
    }
    // A session that held none would else run without a window for ever.
    if (KMainWindow::memberList().isEmpty())
        openFirstWindow(parser.positionalArguments());
    return QApplication::exec();
}
