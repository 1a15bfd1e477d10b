// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "net/velanswerreader.h"
#include "net/velrequestwriter.h"
#include "net/velunanswered.h"

#include <QObject>
#include <QSslCertificate>
#include <QStringList>
#include <QTimer>

#include <chrono>
#include <deque>
#include <memory>
#include <optional>

class QSslError;
class QSslSocket;
class VelTrust;

/**
 * A window's connection to the server: requests wait in a queue, one at a time is under way.
 *
 * It reads the document and the settings when it writes a request, and begins the exchange of a document that it sends
 * (VelDoc::beginExchange()); else it changes neither. What an answer is for,
 * the window does, and it may take its time, ask questions and run event loops: a task that was answered stays the
 * current one until finishTask() is called. Meanwhile nothing is sent, whatever the server sends or closes; further
 * requests queue up. The same holds while a receiver of failed() shows its message.
 *
 * Every task ends with taskEnded(), after taskFailed() unless it got a good answer. Signals come from the event loop or
 * from a call to the connection, never from inside the socket; a receiver of any may delete the connection.
 */
class VelConnection : public QObject
{
    Q_OBJECT
public:
    /** As the status bar shows it. */
    enum NetStatus { NoConnection = 0, Connecting = 1, Connected = 2 };

    /** What is waited for longer than this has failed. */
    struct Waits {
        std::chrono::milliseconds connecting = std::chrono::seconds(15); ///< until the computer answers
        std::chrono::milliseconds handshake =
            std::chrono::seconds(5); ///< then, until the connection is encrypted
        std::chrono::milliseconds silence =
            std::chrono::seconds(60); ///< of a server that something is due from
    };

    /** Keeps references to all three. Without @p trust only what the system trusts is trusted. */
    VelConnection(VelDoc &doc, const VelSettings &settings, VelTrust *trust = nullptr,
                  QObject *parent = nullptr);
    ~VelConnection() override;

    /**
     * Queues a request, or sends it at once when there is no other. Without a server and a user in the settings it
     * is dropped. A synchronisation is preceded by the list of users as long as there is none.
     */
    void netTask(int type, const QString &argument = {}, bool quiet = false);
    /** The receiver of answered() is done, in the slot or later: the next request may go. Else does nothing. */
    void finishTask();
    /**
     * Gives up the request under way, if any, and starts the next. Does nothing while the current task is being
     * finished: it will end by itself.
     */
    void clearNet();
    /**
     * Gives up requests of that type, those that wait and, as clearNet() does, the one under way; with a
     * synchronisation also the list of users that it waits for.
     */
    void giveUp(int type);
    /** Sends what waited for the settings to say how the server is reached. */
    void resume();
    /** How the server is reached could not be found out: fails what waits for it, with @p message. */
    void failWaiting(const QString &message);
    /** Closes the connection, as the server might. (QObject has a disconnect() of its own.) */
    void disconnectFromServer();

    /** 0 when there is no task under way. */
    [[nodiscard]] int currentType() const { return m_current.type; }
    [[nodiscard]] const QString &currentArgument() const { return m_current.argument; }
    [[nodiscard]] bool currentQuiet() const { return m_current.quiet; }
    /** What waits behind the current task. */
    [[nodiscard]] const std::deque<VelNetTask> &taskQueue() const { return m_queue; }
    [[nodiscard]] NetStatus netStatus() const { return m_netStatus; }
    /** Why the last request failed, in words for the user; empty after a good answer. */
    [[nodiscard]] QString lastFailure() const { return m_lastFailure; }
    /** True when the last connection was given up because the server is not trusted. */
    [[nodiscard]] bool isDistrusted() const { return m_isDistrusted; }
    /** True while a synchronisation has got no answer: the next one repeats it, see VelUnanswered. */
    [[nodiscard]] bool isUnanswered() const { return m_unanswered.isPending(); }
    /** True when the last synchronisation was such a repetition. */
    [[nodiscard]] bool isRepeat() const { return m_unanswered.isRepeat(); }
    /** True once the server has sent its list of users, be it empty. */
    [[nodiscard]] bool isUserListReceived() const { return m_isUserListReceived; }

    /** Counts for a wait that has begun, too. */
    void setWaits(Waits waits);
    void setAnswerLimits(VelAnswerReader::Limits limits) { m_limits = limits; }

Q_SIGNALS:
    void netStatusChanged(int status);
    /** So much of a large answer has come. */
    void progress(qint64 bytes);
    /**
     * A good answer, and for a synchronisation the entries that were sent. The content is the receiver's. Exactly one
     * receiver has to call finishTask().
     */
    void answered(int type, const std::shared_ptr<VelXmlContent> &content, const VelSentEntries &sent);
    /**
     * @p message is for the user, unless @p quiet. May come before answered(), too: see the code 0. What waited when a
     * failure was told, and then fails in the same way, is quiet about it.
     */
    void failed(const QString &message, bool quiet);
    /** In place of failed() where the server closed the connection instead of answering: nobody has to confirm that. */
    void closedUnanswered(const QString &message);
    /**
     * The server refused with an error, so that what waited is dropped, or the settings name no server any more.
     * Followed by taskFailed() for each of those that waited.
     */
    void queueDropped();
    /** Comes alone for one that never got its turn. */
    void taskFailed(int type, const QString &argument);
    /** The task is over; it is still the current one, so that a request made now waits behind all others. */
    void taskEnded(int type);
    /** A request waits until it is known how the server is reached: see VelSettings::isUntried and resume(). */
    void trialWanted();
    /** Nothing is under way and nothing waits. */
    void queueEmpty();
    /** The user may not see the calendar any more. Comes last, and tells it instead of failed(), which is quiet about it. */
    void accessDenied(bool quiet);

private:
    enum class Phase {
        Idle, ///< no current task
        Connecting,
        Asking, ///< whether to trust the server
        Sent, ///< the request is with the socket; an answer is due
        Held, ///< the answer is with the receiver
        Ending ///< the end is being told
    };
    struct Peer {
        QString host;
        int port = 0;
        bool encrypt = false;
        bool operator==(const Peer &other) const = default;
    };
    /** How the user gets to know of a failure. */
    enum class Telling { Aloud, Quietly, Closed };
    /** A certificate that the system does not trust. */
    struct Suspect {
        QSslCertificate certificate;
        QStringList problems;
        bool isChanged = false; ///< another one is remembered for the server
    };

    // velconnection.cpp: the queue
    void startConnect(const VelNetTask &task);
    void startNext();
    bool dropQueue();
    bool dropWaiting(int type);
    [[nodiscard]] bool isWaiting(int type) const;
    [[nodiscard]] bool isUnderWay(int type) const;
    [[nodiscard]] bool isAwaited() const;
    void setNetStatus(NetStatus status);
    void failTask(const QString &message, Telling telling);
    bool tellFailure(const QString &message, Telling telling);
    void endTask(bool isGood);
    void takeAnswer();
    bool tellServerError(int code);
    void endRefused(int code, bool quiet);
    [[nodiscard]] bool isConfigured() const;
    [[nodiscard]] Peer wantedPeer() const;

    // velconnectionsocket.cpp: the socket
    void openSocket();
    void connectSocket();
    void startWaiting();
    void dropSocket();
    void slotSocketConnect();
    void slotSocketSend();
    void slotSocketRead();
    void slotSocketError();
    void slotSocketClose();
    void slotHostReached();
    void slotSslErrors(const QList<QSslError> &errors);
    void slotSilence();
    void failSocket(const QString &message, Telling telling);
    [[nodiscard]] Telling usualTelling() const;
    void askTrust();
    [[nodiscard]] bool isOpen() const;
    [[nodiscard]] QString socketErrorText() const;
    [[nodiscard]] QString closedText() const;

    VelDoc &m_doc;
    const VelSettings &m_settings;
    VelTrust *m_trust;

    std::deque<VelNetTask> m_queue;
    VelNetTask m_current;
    Phase m_phase = Phase::Idle;
    NetStatus m_netStatus = NoConnection;
    QString m_lastFailure;
    bool m_isUserListReceived = false;
    bool m_isDistrusted = false;

    std::unique_ptr<QSslSocket> m_socket; // a new one for every connection
    quint64 m_socketNumber = 0; // tells what comes from an earlier one
    Peer m_peer; // of the socket
    bool m_isReused = false; // the request went out on a connection that had served another
    bool m_isReached = false; // the computer has answered, and may have its own idea of encryption
    std::optional<Peer> m_understood; // who last sent a good answer
    std::optional<Suspect> m_suspect;
    QByteArray m_refused; // fingerprint that the user declined since the program started
    Waits m_waits;
    QTimer m_waiting;

    std::optional<VelAnswerReader> m_reader;
    VelAnswerReader::Limits m_limits;
    VelSentEntries m_sent;
    VelUnanswered m_unanswered;
};
