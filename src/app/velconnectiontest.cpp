// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "app/velconnectiontest.h"

#include "document/velmessages.h"

#include <KLocalizedString>

namespace
{
/** Somebody is waiting for it. */
VelConnection::Waits patience()
{
    VelConnection::Waits waits;
    waits.silence = waits.connecting;
    return waits;
}
} // namespace

VelConnectionTest::VelConnectionTest(const VelSettings &settings, bool isNew, VelMessages &messages,
                                     VelTrust &trust, Done done, QObject *parent)
    : QObject(parent)
    , m_settings(settings)
    , m_trust(trust)
    , m_done(std::move(done))
    , m_doc(messages, m_settings)
    , m_attempts{{settings.encrypt, settings.port}}
{
    m_settings.isUntried = false; // this is the trial
    if (isNew && triesEncryption(settings))
        m_attempts.push_back({true, EncryptedPort});
    start();
}

bool VelConnectionTest::triesEncryption(const VelSettings &settings)
{
    // At another port than the usual one there is just what the administrator says.
    return !settings.server.isEmpty() && !settings.user.isEmpty() && !settings.encrypt
        && settings.port == VelSettings().port;
}

void VelConnectionTest::start()
{
    m_settings.encrypt = m_attempts.back().encrypt;
    m_settings.port = m_attempts.back().port;
    m_attempts.pop_back();
    m_problem.clear();
    m_connection = std::make_unique<VelConnection>(m_doc, m_settings, &m_trust);
    m_connection->setWaits(patience());
    struct Outcome {
        bool isGood = false;
        bool isRefused = false; // by a server that answered
    };
    const auto outcome = std::make_shared<Outcome>();
    VelConnection *connection = m_connection.get();
    connect(connection, &VelConnection::answered, this, [outcome, connection] {
        outcome->isGood = true;
        connection->finishTask();
    });
    connect(connection, &VelConnection::failed, this,
            [this](const QString &message) { m_problem = message; });
    connect(connection, &VelConnection::closedUnanswered, this,
            [this](const QString &message) { m_problem = message; });
    connect(connection, &VelConnection::queueDropped, this, [outcome] { outcome->isRefused = true; });
    connect(
        connection, &VelConnection::taskEnded, this,
        [this, outcome] { end(outcome->isGood, outcome->isRefused); }, Qt::QueuedConnection);
    connection->netTask(VelNetTask::UserList, {}, true);
}

void VelConnectionTest::end(bool isGood, bool isRefused)
{
    // Who is not trusted does not get the password in clear text instead.
    if (!isGood && !isRefused && !m_connection->isDistrusted() && !m_attempts.empty()) {
        start();
        return;
    }
    VelConnectionResult result;
    result.encrypt = m_settings.encrypt;
    result.port = m_settings.port;
    if (!isGood)
        result.problem = m_problem;
    m_done(result);
    deleteLater();
}
