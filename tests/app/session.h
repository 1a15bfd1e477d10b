// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "app/velfilechooser.h"
#include "app/velmainwindow.h"
#include "hub/velprintout.h"
#include "support/fakealerts.h"
#include "support/fakemessages.h"
#include "support/testcalendar.h"
#include "views/vellistview.h"
#include "views/velmainview.h"

#include <KConfigGroup>
#include <KSharedConfig>

#include <QAction>
#include <QPointer>

/** The day on which these tests take place. */
inline QDate testDay()
{
    return {2026, 11, 16};
}

/** Names the files that the test wants chosen. */
class FakeFiles : public VelFileChooser
{
public:
    QUrl getOpenUrl(const QString &, const QString &) override { return choose(); }
    QUrl getSaveUrl(const QString &, const QString &, const QUrl &proposal, QString *) override
    {
        proposed = proposal;
        return choose();
    }
    QUrl choice;
    QUrl proposed; // by the program
    std::function<void()> whileChoosing;

private:
    [[nodiscard]] QUrl choose() const
    {
        const QUrl chosen = choice; // this may go with its window
        if (const auto wait = whileChoosing)
            wait();
        return chosen;
    }
};

/** Asks the test at each piece whether it wants more. */
class FakeProgress : public VelProgress
{
public:
    explicit FakeProgress(const std::function<bool()> &wanted)
        : m_wanted(wanted)
    {
    }
    bool show(int) override { return !m_wanted || m_wanted(); }

private:
    const std::function<bool()> m_wanted;
};

/** Keeps what would be mailed. */
class FakeMailer : public VelMailer
{
public:
    void compose(const VelInvitation &invitation) override { sent.push_back(invitation); }
    std::vector<VelInvitation> sent;
};

/** The window with its session functions open to the test. */
class Window : public VelMainWindow
{
public:
    using VelMainWindow::queryClose;
    using VelMainWindow::readProperties;
    using VelMainWindow::saveProperties;
    using VelMainWindow::VelMainWindow;
};

/** A window and the world around it. */
class Session
{
public:
    Session()
    {
        auto ownMessages = std::make_unique<FakeMessages>();
        auto ownFiles = std::make_unique<FakeFiles>();
        auto ownMailer = std::make_unique<FakeMailer>();
        auto ownAlerts = std::make_unique<FakeAlerts>();
        messages = ownMessages.get();
        files = ownFiles.get();
        mailer = ownMailer.get();
        alerts = ownAlerts.get();
        VelSurroundings world;
        world.messages = std::move(ownMessages);
        world.files = std::move(ownFiles);
        world.mailer = std::move(ownMailer);
        world.alerts = std::move(ownAlerts);
        world.now = [] { return TestCalendar::at(testDay(), 10); };
        world.print = [this](VelPrintout &printout) {
            printed.append(printout.title());
            if (whilePrinting)
                whilePrinting();
        };
        world.chooseArchive = [this](const VelArchiveChoice &usual) -> std::optional<VelArchiveChoice> {
            const VelArchiveChoice choice{usual.date, files->getOpenUrl({}, {})};
            return choice.url.isEmpty() ? std::nullopt : std::optional(choice);
        };
        world.progress = [this](const QString &) { return std::make_unique<FakeProgress>(whileReading); };
        world.edit = [this](VelEntryDialog &dialog) {
            if (edit)
                edit(dialog);
        };
        world.ask = [this](const VelMerge::Question &question) -> std::optional<int> {
            asked.append(question.text());
            return ask ? ask(question) : VelAccount::Accepted;
        };
        world.askPassword = [this](const QString &old) -> std::optional<QString> {
            oldPassword = old;
            return newPassword;
        };
        window = new Window(std::move(world));
        window->show();
    }
    /** One that shows the list, of which most of these tests use the rows. */
    static Session withList()
    {
        KSharedConfig::openConfig()->group(QStringLiteral("General Options")).writeEntry("MainViewType", 2);
        return Session();
    }
    ~Session() { delete window; }
    Q_DISABLE_COPY_MOVE(Session)

    void trigger(const char *action) { window->getAction(QLatin1String(action))->trigger(); }
    [[nodiscard]] bool isEnabled(const char *action) const
    {
        return window->getAction(QLatin1String(action))->isEnabled();
    }
    [[nodiscard]] VelListView *list() const { return window->mainView()->listView(); }
    [[nodiscard]] VelListView *tasks() const { return window->mainView()->smallList(); }
    [[nodiscard]] VelDoc &doc() const { return *window->document(); }
    void open(const QString &path) { window->openDocumentFile(QUrl::fromLocalFile(path)); }
    void choose(const QString &path) { files->choice = QUrl::fromLocalFile(path); }

    FakeMessages *messages;
    FakeFiles *files;
    FakeMailer *mailer;
    FakeAlerts *alerts;
    QStringList printed;
    std::function<void()> whilePrinting;
    std::function<bool()> whileReading; // a file for an import, at each piece; false stops it
    std::function<void(VelEntryDialog &)> edit; // what the user does in the editor
    QStringList asked; // by a synchronisation
    std::function<std::optional<int>(const VelMerge::Question &)> ask; // else everything is accepted
    QString oldPassword; // digest that the password dialog was given
    std::optional<QString> newPassword;
    QPointer<Window> window;
};
