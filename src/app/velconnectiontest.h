// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "document/veldoc.h"
#include "hub/velapp.h"
#include "model/velsettings.h"
#include "net/velconnection.h"

#include <functional>
#include <vector>

/**
 * Tries whether a server can be reached and knows the user, by asking for its list of users. Nothing of the window's own
 * calendar or connection is touched. Deletes itself when it is done.
 */
class VelConnectionTest : public QObject
{
    Q_OBJECT
public:
    using Done = std::function<void(const VelConnectionResult &)>;

    /** The usual number of the encrypted port. */
    static constexpr int EncryptedPort = 7071;

    /** True for a new account of which nothing says how its server is to be reached. */
    [[nodiscard]] static bool triesEncryption(const VelSettings &settings);

    /**
     * @p settings name the server; with @p isNew, and the usual port, an encrypted connection is tried first.
     * Calls @p done later, once, unless @p parent goes before.
     */
    VelConnectionTest(const VelSettings &settings, bool isNew, VelMessages &messages, VelTrust &trust,
                      Done done, QObject *parent);

private:
    struct Attempt {
        bool encrypt;
        int port;
    };

    void start();
    void end(bool isGood, bool isRefused);

    VelSettings m_settings;
    VelTrust &m_trust;
    Done m_done;
    VelDoc m_doc; // an empty one, for the connection to write its request from
    std::vector<Attempt> m_attempts; // the next one last
    std::unique_ptr<VelConnection> m_connection;
    QString m_problem;
};
