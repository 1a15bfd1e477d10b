// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "document/veldoc.h"
#include "model/velsettings.h"
#include "net/velconnection.h"
#include "net/veltrust.h"

#include <KLocalizedString>

#include <QPointer>
#include <QSslConfiguration>
#include <QSslError>
#include <QSslSocket>

namespace
{
/** The most that one read takes, so that a window stays responsive while a large answer arrives. */
constexpr qint64 ReadSize = 256 << 10;
/** An answer from this size on is large. */
constexpr qint64 LargeAnswer = 1 << 20;

/** How a record of TLS begins that tells of an error; no answer in clear text can begin so. */
constexpr char TlsAlert = 0x15;

QByteArray fingerprintOf(const QSslCertificate &certificate)
{
    return certificate.digest(QCryptographicHash::Sha256);
}
} // namespace

/** True when a request can go out at once and what comes next can only be its answer. */
bool VelConnection::isOpen() const
{
    return m_socket && m_netStatus == Connected && m_socket->state() == QAbstractSocket::ConnectedState
        && m_socket->bytesAvailable() == 0;
}

void VelConnection::openSocket()
{
    dropSocket();
    m_phase = Phase::Connecting;
    m_isReused = false;
    m_isReached = false;
    m_peer = wantedPeer();
    m_socket = std::make_unique<QSslSocket>();
    m_socket->setReadBufferSize(ReadSize);
    connectSocket();
    startWaiting();
    const auto port = static_cast<quint16>(m_peer.port);
    if (m_peer.encrypt) {
        QSslConfiguration configuration = m_socket->sslConfiguration();
        configuration.setProtocol(QSsl::TlsV1_2OrLater);
        configuration.setPeerVerifyMode(QSslSocket::VerifyPeer);
        m_socket->setSslConfiguration(configuration);
        m_socket->connectToHostEncrypted(m_peer.host, port);
    } else {
        m_socket->connectToHost(m_peer.host, port);
    }
    setNetStatus(Connecting);
}

void VelConnection::connectSocket()
{
    // Queued, so that whatever a receiver does, down to deleting us, is not done inside the socket. A call may then
    // come when its socket has been replaced.
    const auto queued = [this](auto signal, void (VelConnection::*slot)()) {
        const auto call = [this, slot, number = m_socketNumber] {
            if (m_socket && number == m_socketNumber)
                (this->*slot)();
        };
        connect(m_socket.get(), signal, this, call, Qt::QueuedConnection);
    };
    if (m_peer.encrypt) {
        queued(&QSslSocket::connected, &VelConnection::slotHostReached);
        queued(&QSslSocket::encrypted, &VelConnection::slotSocketConnect);
    } else {
        queued(&QSslSocket::connected, &VelConnection::slotSocketConnect);
    }
    queued(&QSslSocket::readyRead, &VelConnection::slotSocketRead);
    queued(&QSslSocket::errorOccurred, &VelConnection::slotSocketError);
    queued(&QSslSocket::disconnected, &VelConnection::slotSocketClose);
    connect(m_socket.get(), QOverload<const QList<QSslError> &>::of(&QSslSocket::sslErrors), this,
            &VelConnection::slotSslErrors);
    const auto restart = [this] {
        if (m_waiting.isActive())
            startWaiting();
    };
    connect(m_socket.get(), &QSslSocket::bytesWritten, this, restart);
}

void VelConnection::setWaits(Waits waits)
{
    m_waits = waits;
    if (m_waiting.isActive())
        startWaiting();
}

void VelConnection::startWaiting()
{
    if (m_phase == Phase::Sent)
        m_waiting.start(m_waits.silence);
    else
        m_waiting.start(m_isReached ? m_waits.handshake : m_waits.connecting);
}

void VelConnection::dropSocket()
{
    ++m_socketNumber;
    m_suspect.reset();
    if (!m_socket)
        return;
    m_socket->disconnect(this);
    m_socket.reset();
}

void VelConnection::slotSocketConnect()
{
    if (m_phase != Phase::Connecting)
        return;
    slotSocketSend();
    setNetStatus(Connected);
}

void VelConnection::slotHostReached()
{
    if (m_phase != Phase::Connecting)
        return;
    m_isReached = true;
    startWaiting();
}

void VelConnection::slotSocketSend()
{
    VelRequest request = m_unanswered.write(m_current);
    m_sent = std::move(request.sent);
    m_reader.emplace(m_limits);
    m_phase = Phase::Sent;
    startWaiting();
    m_socket->write(request.bytes);
}

void VelConnection::slotSocketRead()
{
    const QByteArray bytes = m_socket->readAll();
    if (bytes.isEmpty())
        return;
    if (m_phase != Phase::Sent) {
        // Nobody asked for this; in a moment it would be taken for the answer to another request.
        disconnectFromServer();
        return;
    }
    if (!m_peer.encrypt && m_reader->bytesReceived() == 0 && bytes.at(0) == TlsAlert) {
        failSocket(
            i18n("The server expects an encrypted connection. Turn on \"Encrypt the connection\" on the "
                 "page \"Server Account\" of the preferences."),
            usualTelling());
        return;
    }
    startWaiting();
    switch (m_reader->feed(bytes)) {
    case VelAnswerReader::State::Complete:
        takeAnswer();
        break;
    case VelAnswerReader::State::TooLarge:
        dropSocket();
        takeAnswer();
        break;
    case VelAnswerReader::State::Incomplete:
        if (m_reader->bytesReceived() > LargeAnswer)
            Q_EMIT progress(m_reader->bytesReceived());
        break;
    }
}

QString VelConnection::socketErrorText() const
{
    if (m_socket->error() == QAbstractSocket::HostNotFoundError
        || m_socket->state() == QAbstractSocket::HostLookupState)
        return i18n("Host name not found.");
    if (m_netStatus == Connected)
        return i18n("Error reading data from the server.");
    if (m_isReached)
        return i18n(
            "The server does not take part in encrypting the connection. If it offers no encryption at "
            "this port, set another port, or turn off \"Encrypt the connection\", on the page \"Server "
            "Account\" of the preferences.");
    return i18n("Cannot connect to server.");
}

QString VelConnection::closedText() const
{
    // Of one that was never understood, and says nothing at all, clear text may be what it does not bear.
    const bool mayWantEncryption =
        !m_peer.encrypt && m_reader->bytesReceived() == 0 && m_understood != m_peer;
    return mayWantEncryption ? i18n("The server closed the connection. Perhaps it wants \"Encrypt the "
                                    "connection\" in the preferences.")
                             : i18n("The server closed the connection without an answer.");
}

void VelConnection::slotSocketError()
{
    const bool isClosed = m_socket->error() == QAbstractSocket::RemoteHostClosedError;
    if (m_suspect && m_phase == Phase::Connecting)
        askTrust();
    else if (!isClosed || m_netStatus != Connected)
        failSocket(socketErrorText(), usualTelling());
    else if (m_socket->state() == QAbstractSocket::UnconnectedState)
        slotSocketClose();
}

VelConnection::Telling VelConnection::usualTelling() const
{
    return m_current.quiet ? Telling::Quietly : Telling::Aloud;
}

/** The connection is lost, and with it the request that is under way. */
void VelConnection::failSocket(const QString &message, Telling telling)
{
    dropSocket();
    if (m_phase == Phase::Connecting || m_phase == Phase::Sent)
        failTask(message, telling);
    else
        setNetStatus(NoConnection);
}

void VelConnection::slotSocketClose()
{
    // The last bytes may have come with the end.
    const QPointer<VelConnection> self(this);
    const quint64 number = m_socketNumber;
    if (m_socket->bytesAvailable() > 0)
        slotSocketRead();
    if (!self || number != m_socketNumber)
        return;
    // A server that ends idle connections may do so in the very moment in which one is used again.
    if (m_phase == Phase::Sent && m_isReused && m_reader->bytesReceived() == 0)
        openSocket();
    else if (m_phase == Phase::Sent)
        failSocket(closedText(), Telling::Closed);
    else
        failSocket(socketErrorText(), usualTelling());
}

/** Waited too long, for the connection or for the server. */
void VelConnection::slotSilence()
{
    failSocket(socketErrorText(), usualTelling());
}

void VelConnection::slotSslErrors(const QList<QSslError> &errors)
{
    Suspect suspect;
    suspect.certificate = m_socket->peerCertificate();
    if (suspect.certificate.isNull())
        return;
    const QByteArray remembered =
        m_trust ? m_trust->rememberedFingerprint(m_peer.host, m_peer.port) : QByteArray();
    if (!remembered.isEmpty() && remembered == fingerprintOf(suspect.certificate)) {
        m_socket->ignoreSslErrors();
        return;
    }
    suspect.isChanged = !remembered.isEmpty();
    for (const QSslError &error : errors)
        suspect.problems.append(error.errorString());
    // The handshake fails now. Asking comes afterwards, as the server would not wait for the answer.
    m_suspect = std::move(suspect);
}

void VelConnection::askTrust()
{
    const Suspect suspect = std::move(*m_suspect);
    const Peer peer = m_peer;
    dropSocket();
    m_waiting.stop();
    m_isDistrusted = true;
    if (suspect.isChanged) {
        failTask(i18n("The server's certificate has changed since it was accepted. Somebody else may be "
                      "answering in the server's place, so nothing was sent."),
                 usualTelling());
        return;
    }
    const QByteArray fingerprint = fingerprintOf(suspect.certificate);
    const QPointer<VelConnection> self(this);
    auto verdict = VelTrust::Verdict::Refuse;
    // What goes on by itself does not repeat a question that was answered.
    if (m_trust && !(m_current.quiet && m_refused == fingerprint)) {
        m_phase = Phase::Asking;
        verdict = m_trust->unknownCertificate(peer.host, peer.port, suspect.certificate, suspect.problems);
        if (!self)
            return;
    }
    if (verdict == VelTrust::Verdict::Accept) {
        m_isDistrusted = false;
        m_trust->remember(peer.host, peer.port, fingerprint);
        openSocket();
    } else {
        m_refused = fingerprint;
        failTask(i18n("The server's certificate is not trusted, so nothing was sent."), usualTelling());
    }
}
