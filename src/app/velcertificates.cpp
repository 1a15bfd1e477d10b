// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "app/velcertificates.h"

#include "app/velconfiguration.h"
#include "document/velmessages.h"

#include <KConfigGroup>
#include <KLocalizedString>

#include <QCryptographicHash>
#include <QLocale>
#include <QSslCertificate>

namespace
{
constexpr int MostName = 80; // characters

QString keyOf(const QString &host, int port)
{
    return host.toLower() + QLatin1Char(':') + QString::number(port);
}

KConfigGroup groupOf(const KSharedConfigPtr &config)
{
    return config->group(QStringLiteral("Certificates"));
}
} // namespace

VelCertificates::VelCertificates(VelMessages &messages)
    : m_messages(messages)
    , m_config(KSharedConfig::openConfig())
{
}

VelTrust::Verdict VelCertificates::unknownCertificate(const QString &host, int port,
                                                      const QSslCertificate &certificate,
                                                      const QStringList &problems)
{
    const QString fingerprint =
        QString::fromLatin1(certificate.digest(QCryptographicHash::Sha256).toHex(':')).toUpper();
    const QString text = i18n("The server \"%1\" cannot prove who it is:\n%2\n\n"
                              "Compare this fingerprint (SHA-256) of its certificate with the one that its "
                              "administrator tells you:\n%3\n"
                              "Issued to: %4\nValid until: %5\n\n"
                              "Trust this server from now on?",
                              keyOf(host, port), problems.join(QLatin1Char('\n')), fingerprint,
                              // In the server's own words, which must not pass for ours.
                              certificate.subjectInfo(QSslCertificate::CommonName)
                                  .join(QLatin1String(", "))
                                  .simplified()
                                  .left(MostName),
                              QLocale().toString(certificate.expiryDate().date(), QLocale::ShortFormat));
    // Not only at a wish of the user's is the server asked, and then it takes its time.
    const VelMessages::Unasked unasked(m_messages);
    const VelMessages::Answer answer = m_messages.questionYesNo(
        text, i18n("Unknown server"), i18n("Trust the server"), i18n("Do not connect"));
    return answer == VelMessages::Answer::Yes ? Verdict::Accept : Verdict::Refuse;
}

QByteArray VelCertificates::rememberedFingerprint(const QString &host, int port) const
{
    return QByteArray::fromHex(groupOf(m_config).readEntry(keyOf(host, port), QString()).toLatin1());
}

void VelCertificates::remember(const QString &host, int port, const QByteArray &fingerprint)
{
    KConfigGroup group = groupOf(m_config);
    group.writeEntry(keyOf(host, port), QString::fromLatin1(fingerprint.toHex()));
    VelConfiguration::save(*group.config());
}

void VelCertificates::forget(const QString &host, int port)
{
    KConfigGroup group = groupOf(m_config);
    group.deleteEntry(keyOf(host, port));
    group.sync();
}
