// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "app/velconnectiontest.h"
#include "app/velmainwindow.h"
#include "app/velnetwork.h"
#include "dialogs/velpreferences.h"
#include "net/veltrust.h"

#include <KLocalizedString>

#include <QPointer>
#include <QStatusBar>

#include <algorithm>

namespace
{
constexpr int NoticeTime = 8000; // milliseconds
}

/** They are the user's: a window that kept its own would write them over these when it closes. */
void VelMainWindow::applyPreferences(const VelSettings &settings, const VelLook &look)
{
    VelSettings wanted = settings;
    const bool isOtherAccount = settings.server != m_settings.server || settings.user != m_settings.user;
    // The server may have told, or taken, these while the dialog was open.
    wanted.origUserid = isOtherAccount ? 0 : m_settings.origUserid;
    if (settings.pass == m_shownPass)
        wanted.pass = m_settings.pass;
    m_shownPass = settings.pass;
    wanted.isUntried = (isOtherAccount || m_settings.isUntried) && VelConnectionTest::triesEncryption(wanted);
    spreadPreferences(wanted, look);
}

void VelMainWindow::spreadPreferences(const VelSettings &settings, const VelLook &look)
{
    const QList<KMainWindow *> windows = memberList();
    for (KMainWindow *each : windows) {
        if (auto *window = qobject_cast<VelMainWindow *>(each))
            window->takePreferences(settings, look);
    }
    saveOptions();
}

/** The account is the user's: a window that kept an old password would fail, and write it over the new one at its end. */
void VelMainWindow::shareAccount()
{
    const QList<KMainWindow *> windows = memberList();
    for (KMainWindow *each : windows) {
        auto *window = qobject_cast<VelMainWindow *>(each);
        if (!window || window->m_settings.server != m_settings.server
            || window->m_settings.user != m_settings.user)
            continue;
        window->m_settings.pass = m_settings.pass;
        window->m_settings.origUserid = m_settings.origUserid;
        window->followAccount();
    }
    saveOptions();
}

/**
 * Nothing of a new account goes out in clear text before it is known whether its server offers better. The account is
 * stored meanwhile, and what is to be sent waits; when the server is not reached at all, until something is to be sent
 * again.
 */
void VelMainWindow::tryEncryption()
{
    const QList<KMainWindow *> windows = memberList();
    const bool isTried = std::any_of(windows.begin(), windows.end(), [](KMainWindow *each) {
        const auto *window = qobject_cast<VelMainWindow *>(each);
        return window && window->m_isTrying;
    });
    if (isTried)
        return;
    m_isTrying = true;
    slotStatusMsg(i18n("Finding out whether the server offers encryption..."));
    const auto done = [this, tried = m_settings](const VelConnectionResult &result) {
        finishTrial(tried, result);
    };
    new VelConnectionTest(m_settings, true, *m_messages, *m_trust, done, this);
}

void VelMainWindow::finishTrial(const VelSettings &tried, const VelConnectionResult &result)
{
    m_isTrying = false;
    slotStatusMsg(i18n("Ready."));
    if (!m_settings.isUntried)
        return; // the user has said how it is to be reached
    if (tried.server != m_settings.server || tried.user != m_settings.user) {
        tryEncryption();
        return;
    }
    // One that the user did not trust offers encryption, too: clear text is no way out.
    if (!result.encrypt && !result.problem.isEmpty()) {
        const QList<KMainWindow *> windows = memberList();
        const QVector<QPointer<KMainWindow>> alive(windows.begin(), windows.end());
        for (const QPointer<KMainWindow> &each : alive) { // a box may be shown, and windows closed meanwhile
            if (const auto *window = qobject_cast<VelMainWindow *>(each.data()))
                window->m_network->accountTried(result.problem);
        }
        return;
    }
    VelSettings wanted = m_settings;
    wanted.isUntried = false;
    wanted.encrypt = result.encrypt;
    wanted.port = result.port;
    spreadPreferences(wanted, m_look);
    statusBar()->showMessage(result.encrypt
                                 ? i18n("The server offers encryption: the connection is encrypted.")
                                 : i18n("The server does not offer encryption: others on the network can "
                                        "read what is sent."),
                             NoticeTime);
}

/** What stands in the open preferences and was not touched there follows what was found out meanwhile. */
void VelMainWindow::followAccount()
{
    if (!m_preferences || !m_preferences->isVisible())
        return;
    m_shownPass = m_settings.pass;
    m_preferences->follow(m_settings);
}

bool VelMainWindow::hasTrusted(const QString &server, int port) const
{
    return !m_trust->rememberedFingerprint(server, port).isEmpty();
}

void VelMainWindow::forgetCertificate(const QString &server, int port)
{
    m_trust->forget(server, port);
}
