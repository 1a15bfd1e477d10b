// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "document/testdoc.h"
#include "net/velconnection.h"

#include <QHostAddress>
#include <QSslConfiguration>
#include <QSslSocket>
#include <QTcpServer>
#include <QTimer>

/** Does for each request, whatever it says, the next thing that the test ordered; then it is silent. */
class ScriptedServer : public QTcpServer
{
public:
    enum Then { Keep, Close, Reset };
    struct Step {
        QByteArray answer;
        Then then = Keep;
        int piece = 1 << 30; ///< bytes that are sent at a time
    };

    ScriptedServer() { listen(QHostAddress::LocalHost); }
    /** Sends something that nobody asked for. */
    void say(const QByteArray &bytes) { m_last->write(bytes); }

    std::deque<Step> script;
    QList<QByteArray> requests;
    int connections = 0;
    QSslConfiguration encryption; ///< null for none

protected:
    void incomingConnection(qintptr descriptor) override
    {
        ++connections;
        auto *socket = m_last = new QSslSocket(this);
        socket->setSocketDescriptor(descriptor);
        connect(socket, &QSslSocket::readyRead, this, [this, socket] {
            m_request += socket->readAll();
            if (!m_request.endsWith('\x1A'))
                return;
            requests.append(std::exchange(m_request, {}));
            if (script.empty())
                return;
            play(socket, script.front());
            script.pop_front();
        });
        if (encryption.isNull())
            return;
        socket->setSslConfiguration(encryption);
        socket->startServerEncryption();
    }

private:
    void play(QSslSocket *socket, const Step &step)
    {
        socket->write(step.answer.left(step.piece));
        socket->flush();
        const Step rest{step.answer.mid(step.piece), step.then, step.piece};
        if (!rest.answer.isEmpty())
            QTimer::singleShot(0, socket, [this, socket, rest] { play(socket, rest); });
        else if (step.then == Close)
            socket->disconnectFromHost();
        else if (step.then == Reset)
            socket->abort();
    }

    QSslSocket *m_last = nullptr;
    QByteArray m_request;
};

/**
 * A connection, the server at its other end, and all that was told of it. Of the calendar's entries one is new, one is
 * known to the server, and one is known and was deleted here.
 */
struct NetSession {
    explicit NetSession(VelTrust *trust = nullptr)
        : connection(std::make_unique<VelConnection>(doc, doc.settings, trust))
    {
        doc.settings.server = QStringLiteral("127.0.0.1");
        doc.settings.port = server.serverPort();
        doc.settings.user = QStringLiteral("anna\x1A <ä€>");
        doc.settings.pass = QStringLiteral("d41d8");
        doc.setUserId(4000000000);
        TestCalendar::addEvent(doc, QStringLiteral("€\x1A Ж"), TestCalendar::march(2, 9),
                               TestCalendar::march(2, 10));
        TestCalendar::addSynced(doc, QStringLiteral("known"), 8);
        doc.deleteEntry(TestCalendar::addSynced(doc, QStringLiteral("gone"), 9), false);
        connection->setAnswerLimits({16 << 20, 5});
        const auto on = [this](auto signal, const char *text) {
            QObject::connect(connection.get(), signal, [this, text](auto... number) {
                QString line = QLatin1String(text);
                ((line += QString::number(number)), ...);
                note(line);
            });
        };
        on(&VelConnection::netStatusChanged, "S");
        QObject::connect(connection.get(), &VelConnection::taskFailed,
                         [this](int type) { note(QStringLiteral("X%1").arg(type)); });
        on(&VelConnection::taskEnded, "E");
        on(&VelConnection::queueDropped, "dropped");
        on(&VelConnection::queueEmpty, ".");
        on(&VelConnection::accessDenied, "denied");
        QObject::connect(connection.get(), &VelConnection::failed, [this](const QString &text, bool quiet) {
            note(quiet ? QStringLiteral("(%1)").arg(text) : text);
        });
        QObject::connect(connection.get(), &VelConnection::closedUnanswered, [this](const QString &text) {
            note(text.contains(QLatin1String("Encrypt")) ? QStringLiteral("closed?")
                                                         : QStringLiteral("closed"));
        });
        const auto take = [this](int type, const auto &content, const VelSentEntries &entries) {
            received = content;
            sent = entries;
            note(QStringLiteral("A%1").arg(type));
            if (connection && !isHolding)
                connection->finishTask();
        };
        QObject::connect(connection.get(), &VelConnection::answered, take);
    }

    void note(const QString &text)
    {
        log += text;
        if (log.size() == deleteAfter)
            connection.reset();
    }
    [[nodiscard]] QByteArray told() const { return log.join(QLatin1Char(' ')).toUtf8(); }
    /** Queues tasks of these types, quiet ones if they are negative. */
    void start(const QVector<int> &types, const std::deque<ScriptedServer::Step> &steps,
               const QString &argument = {})
    {
        server.script = steps;
        for (auto type = types.begin(); connection && type != types.end(); ++type)
            connection->netTask(qAbs(*type), argument, *type < 0);
    }

    TestCalendar::TestDoc doc;
    ScriptedServer server;
    std::unique_ptr<VelConnection> connection;
    QStringList log; ///< S status, A answered, X failed, E ended, "." queue empty; messages, quiet ones in ()
    int deleteAfter = 0; ///< so many lines of the log
    bool isHolding = false; ///< finishTask() is left to the test
    std::shared_ptr<VelXmlContent> received;
    VelSentEntries sent;
};

/** A server's answer that holds @p content. */
inline QByteArray answer(const QByteArray &content = {})
{
    return "<?xml version='1.0' encoding='ISO-8859-15'?><calendar>" + content + "</calendar>\x1A";
}
