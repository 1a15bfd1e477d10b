// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "net/veltrust.h"
#include "net/scriptedserver.h"

#include <QProcess>
#include <QSslKey>
#include <QStandardPaths>
#include <QTest>

namespace
{
struct FakeTrust : public VelTrust {
    Verdict unknownCertificate(const QString &, int, const QSslCertificate &,
                               const QStringList &list) override
    {
        asked += list.join(QLatin1Char('|'));
        return verdict;
    }
    QByteArray rememberedFingerprint(const QString &, int) const override { return kept; }
    void remember(const QString &, int, const QByteArray &fingerprint) override { kept = fingerprint; }
    void forget(const QString &, int) override { kept.clear(); }

    QByteArray kept;
    Verdict verdict = Verdict::Refuse;
    QStringList asked;
};

struct Row {
    QByteArray certificate; ///< its name; none for a server that does not encrypt
    bool isKnownToSystem;
    QByteArray remembered; ///< name of the certificate that was accepted before
    bool accept;
    QByteArray told;
    QStringList asked; ///< the problems
};

const QByteArray Good = "S1 S2 A4 E4 . S0";
const QByteArray Untrusted = "S1 The server's certificate is not trusted, so nothing was sent. S0 X4 E4 .";
const QByteArray Changed =
    "S1 The server's certificate has changed since it was accepted. Somebody else may be "
    "answering in the server's place, so nothing was sent. S0 X4 E4 .";
} // namespace
Q_DECLARE_METATYPE(Row)

/** Encrypted connections, with certificates made for the occasion. */
class VelTrustTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        if (QStandardPaths::findExecutable(QStringLiteral("openssl")).isEmpty() || !QSslSocket::supportsSsl())
            QSKIP("no openssl here");
        QVERIFY(make("valid", "-days 30"));
        // Older programs cannot be told the times, newer ones may decline to go back.
        QVERIFY(make("expired", "-days -1")
                || make("expired", "-not_before 20200101000000Z -not_after 20210101000000Z"));
    }
    void cleanup() { QSslConfiguration::setDefaultConfiguration(m_system); }

    void shouldSendNothingToAServerThatIsNotTrusted_data()
    {
        QTest::addColumn<Row>("row");
        const auto add = [](const char *name, const Row &row) { QTest::newRow(name) << row; };
        const QString unknown = QStringLiteral("The certificate is self-signed, and untrusted");
        const QString expired = unknown + QLatin1String("|The certificate has expired");
        add("good", {"valid", true, "", false, Good, {}});
        add("good, another remembered", {"valid", true, "expired", false, Good, {}});
        add("unknown, accepted", {"valid", false, "", true, Good, {unknown}});
        add("unknown, refused", {"valid", false, "", false, Untrusted, {unknown}});
        add("nobody to ask", {"valid", false, "no seam", true, Untrusted, {}});
        add("remembered", {"valid", false, "valid", false, Good, {}});
        add("changed", {"valid", false, "expired", true, Changed, {}});
        add("expired, accepted", {"expired", false, "", true, Good, {expired}});
        add("expired, refused", {"expired", false, "", false, Untrusted, {expired}});
        add("no encryption there",
            {"",
             false,
             "",
             true,
             "S1 The server does not take part in encrypting the connection. If it offers no encryption at "
             "this "
             "port, set another port, or turn off \"Encrypt the connection\", on the page \"Server Account\" "
             "of "
             "the preferences. S0 X4 E4 .",
             {}});
    }
    void shouldSendNothingToAServerThatIsNotTrusted()
    {
        QFETCH(Row, row);
        FakeTrust trust;
        trust.kept = fingerprint(row.remembered);
        trust.verdict = row.accept ? VelTrust::Verdict::Accept : VelTrust::Verdict::Refuse;
        NetSession session(row.remembered == "no seam" ? nullptr : &trust);
        serve(session, row.certificate, row.isKnownToSystem);
        session.start({4}, {{answer(QByteArray(3 << 20, ' ')), ScriptedServer::Close}});
        if (row.certificate.isEmpty())
            session.connection->setWaits({std::chrono::minutes(1), std::chrono::milliseconds(1), {}});
        QTRY_COMPARE(session.told(), row.told);
        QCOMPARE(trust.asked, row.asked);
        QCOMPARE(session.server.requests.size(), row.told == Good ? 1 : 0);
        const bool isAccepted = row.accept && !row.asked.isEmpty();
        QCOMPARE(trust.kept, fingerprint(isAccepted ? row.certificate : row.remembered));
    }

    void shouldSayThatTheServerEncrypts()
    {
        NetSession session;
        serve(session, "valid", true);
        session.doc.settings.encrypt = false;
        session.start({4}, {});
        QTRY_VERIFY(session.told().endsWith("S0 X4 E4 ."));
        QVERIFY2(session.connection->lastFailure().contains(QLatin1String("\"Encrypt the connection\"")),
                 session.told().constData());
    }

    void shouldAskOnlyOnceByItself()
    {
        FakeTrust trust;
        NetSession session(&trust);
        serve(session, "valid", false);
        session.start({-4, -4, 4}, {});
        QTRY_COMPARE(session.log.count(QStringLiteral("X4")), 3);
        QCOMPARE(trust.asked.size(), 2);
    }

private:
    bool make(const char *name, const char *times)
    {
        const QString script =
            QStringLiteral(
                "cd %1; openssl req -new -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes"
                " -subj /CN=x -addext subjectAltName=IP:127.0.0.1 -keyout %2.key -out %2.req"
                " && openssl x509 -req -in %2.req -copy_extensions copyall -signkey %2.key -out %2 %3")
                .arg(m_folder.path(), QLatin1String(name), QLatin1String(times));
        return QProcess::execute(QStringLiteral("sh"), {QStringLiteral("-c"), script}) == 0;
    }
    QByteArray bytes(const QByteArray &name) const
    {
        return TestCalendar::fileBytes(m_folder.filePath(QString::fromLatin1(name)));
    }
    QByteArray fingerprint(const QByteArray &name) const
    {
        return name.isEmpty() ? QByteArray()
                              : QSslCertificate(bytes(name)).digest(QCryptographicHash::Sha256);
    }
    void serve(NetSession &session, const QByteArray &name, bool isKnownToSystem) const
    {
        const QSslCertificate certificate(bytes(name));
        session.doc.settings.encrypt = true;
        if (!name.isEmpty()) {
            session.server.encryption.setLocalCertificate(certificate);
            session.server.encryption.setPrivateKey(QSslKey(bytes(name + ".key"), QSsl::Ec));
        }
        QSslConfiguration system = m_system;
        if (isKnownToSystem)
            system.addCaCertificate(certificate);
        QSslConfiguration::setDefaultConfiguration(system);
    }

    const QSslConfiguration m_system = QSslConfiguration::defaultConfiguration();
    QTemporaryDir m_folder;
};

QTEST_GUILESS_MAIN(VelTrustTest)
#include "veltrusttest.moc"
