// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QByteArray>
#include <QStringList>

class QSslCertificate;

/**
 * Whom the user trusts beside the authorities that the system knows: asks, and keeps what was answered.
 *
 * A server is a host and a port. The fingerprint of a certificate is the SHA-256 digest of its DER form.
 */
class VelTrust
{
public:
    enum class Verdict { Accept, Refuse };

    VelTrust() = default;
    virtual ~VelTrust() = default;
    Q_DISABLE_COPY_MOVE(VelTrust)

    /**
     * Asks whether to trust a certificate that the system does not; @p problems say why, in words. May run an event
     * loop. What it answers is remembered by the caller.
     */
    virtual Verdict unknownCertificate(const QString &host, int port, const QSslCertificate &certificate,
                                       const QStringList &problems) = 0;
    /** Of the certificate that was accepted for the server; empty when there is none. Must not run an event loop. */
    [[nodiscard]] virtual QByteArray rememberedFingerprint(const QString &host, int port) const = 0;
    virtual void remember(const QString &host, int port, const QByteArray &fingerprint) = 0;
    /** The next connection asks again. */
    virtual void forget(const QString &host, int port) = 0;
};
