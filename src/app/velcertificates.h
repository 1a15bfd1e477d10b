// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "net/veltrust.h"

#include <KSharedConfig>

class VelMessages;

/** Asks the user about certificates that the system does not know, and remembers those that were accepted. */
class VelCertificates : public VelTrust
{
public:
    explicit VelCertificates(VelMessages &messages);

    Verdict unknownCertificate(const QString &host, int port, const QSslCertificate &certificate,
                               const QStringList &problems) override;
    [[nodiscard]] QByteArray rememberedFingerprint(const QString &host, int port) const override;
    void remember(const QString &host, int port, const QByteArray &fingerprint) override;
    void forget(const QString &host, int port) override;

private:
    VelMessages &m_messages;
    KSharedConfigPtr m_config; // all windows trust the same servers
};
