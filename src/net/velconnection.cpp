// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "net/velconnection.h"

#include "document/veldoc.h"
#include "model/velsettings.h"

#include <KLocalizedString>

#include <QLoggingCategory>
#include <QPointer>
#include <QSslSocket>

#include <algorithm>

Q_LOGGING_CATEGORY(netLog, "delmasttime.net", QtWarningMsg)

namespace
{
/** What the server says with the code of an error. */
enum ServerError { BadCredentials = 1, AccessDenied, Maintenance, ServerFault, Incompatible };

QString serverErrorText(int code)
{
    switch (code) {
    case BadCredentials:
        return i18n("Invalid username or password.");
    case AccessDenied:
        return i18n("Access denied.");
    case Maintenance:
        return i18n("Server temporarily unavailable due to maintenance. Try again later.");
    case ServerFault:
        return i18n("Server error. Contact the server administrator.");
    case Incompatible:
        return i18n(
            "Client version is incompatible with the server. Please upgrade client to a newer version.");
    default:
        return i18n("Unknown error: %1", QString::number(code));
    }
}
} // namespace

VelConnection::VelConnection(VelDoc &doc, const VelSettings &settings, VelTrust *trust, QObject *parent)
    : QObject(parent)
    , m_doc(doc)
    , m_settings(settings)
    , m_trust(trust)
    , m_unanswered(doc, settings)
{
    m_waiting.setSingleShot(true);
    connect(&m_waiting, &QTimer::timeout, this, &VelConnection::slotSilence);
}

VelConnection::~VelConnection()
{
    dropSocket();
}

bool VelConnection::isConfigured() const
{
    return !m_settings.server.isEmpty() && !m_settings.user.isEmpty();
}

VelConnection::Peer VelConnection::wantedPeer() const
{
    return {m_settings.server, m_settings.port, m_settings.encrypt};
}

void VelConnection::netTask(int type, const QString &argument, bool quiet)
{
    if (!isConfigured()) {
        clearNet();
        return;
    }
    if (type == VelNetTask::Sync && m_doc.getAccounts().isEmpty() && !m_isUserListReceived
        && !isUnderWay(VelNetTask::UserList)) {
        const QPointer<VelConnection> self(this);
        netTask(VelNetTask::UserList, {}, quiet); // what nobody asked for fails without a word
        if (!self)
            return;
    }
    if (m_phase == Phase::Idle && m_queue.empty() && !m_settings.isUntried) {
        startConnect({type, argument, quiet});
        return;
    }
    m_queue.push_back({type, argument, quiet});
    if (m_settings.isUntried)
        Q_EMIT trialWanted();
}

/** Asked for and not ended: a window asks for the users when it opens, and synchronises in the next moment. */
bool VelConnection::isUnderWay(int type) const
{
    return m_current.type == type || isWaiting(type);
}

bool VelConnection::isWaiting(int type) const
{
    return std::any_of(m_queue.begin(), m_queue.end(),
                       [type](const VelNetTask &task) { return task.type == type; });
}

void VelConnection::startConnect(const VelNetTask &task)
{
    m_current = task;
    if (isOpen() && m_peer == wantedPeer()) {
        m_isReused = true;
        slotSocketSend();
    } else {
        openSocket();
    }
}

void VelConnection::startNext()
{
    const QPointer<VelConnection> self(this);
    if (!isConfigured() && !m_queue.empty()) {
        if (!dropQueue() || m_phase != Phase::Idle)
            return;
    }
    if (m_queue.empty()) {
        Q_EMIT queueEmpty();
        return;
    }
    if (m_settings.isUntried) {
        Q_EMIT trialWanted();
        return;
    }
    const VelNetTask next = m_queue.front();
    m_queue.pop_front();
    startConnect(next);
}

void VelConnection::setNetStatus(NetStatus status)
{
    if (m_netStatus == status)
        return;
    m_netStatus = status;
    Q_EMIT netStatusChanged(status);
}

void VelConnection::clearNet()
{
    switch (m_phase) {
    case Phase::Idle:
        startNext();
        break;
    case Phase::Connecting:
    case Phase::Sent:
        // What the server still sends must not become the answer to the next request.
        dropSocket();
        failTask({}, Telling::Quietly);
        break;
    case Phase::Asking:
    case Phase::Held:
    case Phase::Ending:
        break;
    }
}

void VelConnection::giveUp(int type)
{
    const bool isFirst = m_current.type == type
        || (type == VelNetTask::Sync && m_current.type == VelNetTask::UserList && isWaiting(type));
    if (dropWaiting(type) && isFirst)
        clearNet();
}

void VelConnection::resume()
{
    if (m_phase == Phase::Idle && !m_queue.empty())
        startNext();
}

void VelConnection::failWaiting(const QString &message)
{
    if (m_phase != Phase::Idle || m_queue.empty())
        return;
    const bool isQuiet =
        std::all_of(m_queue.begin(), m_queue.end(), [](const VelNetTask &task) { return task.quiet; });
    if (tellFailure(message, isQuiet ? Telling::Quietly : Telling::Aloud) && dropQueue())
        startNext(); // what came meanwhile, or the end
}

void VelConnection::finishTask()
{
    if (m_phase == Phase::Held)
        endTask(true);
}

void VelConnection::disconnectFromServer()
{
    if (m_phase == Phase::Connecting || m_phase == Phase::Sent) {
        clearNet();
    } else if (m_socket) {
        dropSocket();
        setNetStatus(NoConnection);
    }
}

/** Ends the current task, after a message if there is one. */
void VelConnection::failTask(const QString &message, Telling telling)
{
    m_phase = Phase::Ending;
    m_waiting.stop();
    // A synchronisation waits for the list of users. What keeps that away would only be found once more.
    const int follower = m_current.type == VelNetTask::UserList ? VelNetTask::Sync : VelNetTask::None;
    const bool isWanted = std::any_of(m_queue.begin(), m_queue.end(), [follower](const VelNetTask &task) {
        return task.type == follower && !task.quiet;
    });
    if (telling == Telling::Quietly && isWanted)
        telling = Telling::Aloud;
    if (tellFailure(message, telling) && dropWaiting(follower))
        endTask(false);
}

/** False when a receiver has deleted the connection. */
bool VelConnection::tellFailure(const QString &message, Telling telling)
{
    if (message.isEmpty())
        return true;
    const QPointer<VelConnection> self(this);
    m_lastFailure = message;
    const bool isTold = m_current.told == message;
    if (telling == Telling::Aloud && !isTold) {
        for (VelNetTask &task : m_queue)
            task.told = message;
    }
    if (telling == Telling::Closed)
        Q_EMIT closedUnanswered(message);
    else
        Q_EMIT failed(message, isTold || telling == Telling::Quietly);
    return self;
}

void VelConnection::endTask(bool isGood)
{
    m_phase = Phase::Ending;
    const QPointer<VelConnection> self(this);
    const int type = m_current.type;
    const QString argument = m_current.argument;
    if (!m_socket)
        setNetStatus(NoConnection);
    if (self && !isGood)
        Q_EMIT taskFailed(type, argument);
    if (self)
        Q_EMIT taskEnded(type);
    if (!self)
        return;
    m_current = {};
    m_sent.clear();
    m_reader.reset();
    m_phase = Phase::Idle;
    startNext();
}

void VelConnection::takeAnswer()
{
    m_phase = Phase::Held;
    m_waiting.stop();
    std::optional<VelXmlContent> read = m_reader->takeContent();
    // Without its head it is no answer: it may be that of something in between.
    if (!read || (m_current.type == VelNetTask::Sync && !read->hasAction)) {
        qCWarning(netLog).noquote() << (read ? QStringLiteral("answer without an action")
                                             : m_reader->errorText());
        failTask(i18n("Error receiving data from server."), Telling::Aloud);
        return;
    }
    const auto content = std::make_shared<VelXmlContent>(std::move(*read));
    const VelSentEntries sent = std::move(m_sent);
    if (content->error && !tellServerError(*content->error))
        return;
    m_lastFailure.clear();
    m_understood = m_peer;
    m_isUserListReceived = m_isUserListReceived || m_current.type == VelNetTask::UserList;
    Q_EMIT answered(m_current.type, content, sent);
}

/** True when somebody waits for the current task, or for one that fails with it. */
bool VelConnection::isAwaited() const
{
    return !m_current.quiet
        || std::any_of(m_queue.begin(), m_queue.end(), [](const VelNetTask &task) { return !task.quiet; });
}

/**
 * Tells what the server complains about. True when the answer is to be processed all the same: only what a code of
 * its own stands for makes it void. Then, and only then, is the connection sure to be still there.
 */
bool VelConnection::tellServerError(int code)
{
    const QPointer<VelConnection> self(this);
    m_phase = Phase::Ending;
    const QString message = serverErrorText(code);
    const bool quiet = code > 0 ? !isAwaited() : m_current.quiet;
    m_lastFailure = message;
    Q_EMIT failed(message, quiet || code == AccessDenied);
    if (!self)
        return false;
    if (code > 0) {
        if (m_current.type == VelNetTask::Sync)
            m_unanswered.refuse();
        endRefused(code, quiet);
        return false;
    }
    m_phase = Phase::Held;
    return true;
}

/** False when a receiver has deleted the connection. */
bool VelConnection::dropQueue()
{
    const QPointer<VelConnection> self(this);
    const std::deque<VelNetTask> dropped = std::exchange(m_queue, {});
    Q_EMIT queueDropped();
    for (const VelNetTask &task : dropped) {
        if (self)
            Q_EMIT taskFailed(task.type, task.argument);
    }
    return self;
}

/** The same of those of one type, which are not served any more. */
bool VelConnection::dropWaiting(int type)
{
    const auto isKept = [type](const VelNetTask &task) { return task.type != type; };
    const auto firstDropped = std::stable_partition(m_queue.begin(), m_queue.end(), isKept);
    const std::deque<VelNetTask> dropped(firstDropped, m_queue.end());
    m_queue.erase(firstDropped, m_queue.end());
    const QPointer<VelConnection> self(this);
    for (const VelNetTask &task : dropped) {
        if (self)
            Q_EMIT taskFailed(task.type, task.argument);
    }
    return self;
}

void VelConnection::endRefused(int code, bool quiet)
{
    const QPointer<VelConnection> self(this);
    dropSocket();
    if (dropQueue())
        endTask(false);
    if (self && code == AccessDenied)
        Q_EMIT accessDenied(quiet);
}
