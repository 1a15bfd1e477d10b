// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "app/velinvitationasker.h"
#include "app/velnetwork.h"
#include "model/wsecurity.h"
#include "net/scriptedserver.h"
#include "session.h"

#include <KSqueezedTextLabel>

#include <QLabel>
#include <QStatusBar>
#include <QTest>

/** The user list, which every window asks for first. */
inline const QByteArray Users = "<account><id>3</id><name>Anna</name><type>1</type></account>"
                                "<account><id>9</id><name>Bert</name><type>1</type></account>";

inline void forgetPreferences()
{
    const KSharedConfigPtr config = KSharedConfig::openConfig();
    const QStringList groups = config->groupList();
    for (const QString &group : groups)
        config->deleteGroup(group);
}

/** A window that knows a server, which has sent the list of users. */
struct NetWindow {
    explicit NetWindow(const std::vector<ScriptedServer::Step> &script = {})
    {
        // The head must not make this the calendar of somebody else, nor read-only.
        server.script = {{answer("<action><userid>9</userid><origright>0</origright></action>" + Users)}};
        server.script.insert(server.script.end(), script.begin(), script.end());
        KConfigGroup group = KSharedConfig::openConfig()->group(QStringLiteral("Preferences"));
        group.writeEntry("Server", "127.0.0.1");
        group.writeEntry("Port", int(server.serverPort()));
        group.writeEntry("User", "anna");
        group.writeEntry("Pass", WSecurity::md5(QStringLiteral("old")));
        group.writeEntry("AutoSync", true);
        session = std::make_unique<Session>();
    }
    [[nodiscard]] bool isReady() const
    {
        return QTest::qWaitFor([this] {
            return !session->window->network()->isBusy() && !session->window->invitations()->isAsking();
        });
    }
    /** Runs a synchronisation to its end. */
    [[nodiscard]] bool synchronize() const
    {
        if (!isReady())
            return false;
        session->trigger("synchronize");
        return isReady();
    }
    /** The same for one that nobody asked for. */
    [[nodiscard]] bool synchronizeByItself() const
    {
        session->window->slotAutoSync();
        return isReady();
    }
    [[nodiscard]] QString status() const
    {
        return session->window->statusBar()->findChild<QLabel *>()->text();
    }
    /** The notice that stands before the status for a while. */
    [[nodiscard]] QString passing() const { return session->window->statusBar()->currentMessage(); }
    [[nodiscard]] QString warning() const
    {
        return session->window->findChild<KSqueezedTextLabel *>(QStringLiteral("SyncWarning"))->fullText();
    }
    [[nodiscard]] const VelEntry *meeting() const
    {
        return session->doc().getEntry(session->doc().getLocalId(77));
    }

    ScriptedServer server;
    std::unique_ptr<Session> session;
};
