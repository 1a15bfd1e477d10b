// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "hub/velapp.h"
#include "net/velconnection.h"
#include "net/velmerge.h"

#include <QTimer>

#include <functional>
#include <optional>

/**
 * What one window has to do with the server: when it synchronises, what becomes of the answers, and how long the calendar is
 * locked meanwhile. The connection itself, and the merging, are classes of their own.
 */
class VelNetwork : public QObject
{
    Q_OBJECT
public:
    /** All of these must outlive this. */
    struct Context {
        VelDoc &doc;
        VelSettings &settings;
        VelMessages &messages;
        VelTrust &trust;
        std::function<bool()> isInUse; ///< somebody is at work on an entry
        std::function<void()> lockChanged; ///< isSynchronizing() is another
        std::function<void(const QString &)> status;
        /** Shows what the user must know or answer, see VelMerge::setAnswer(). May run an event loop. */
        std::function<std::optional<int>(const VelMerge::Question &)> ask;
    };

    /** An automatic synchronisation that finds the calendar locked tries again after so many milliseconds. */
    static constexpr int LockedRetry = 1000;

    explicit VelNetwork(Context context);
    ~VelNetwork() override;

    /** True when a server and a user are set. */
    [[nodiscard]] bool hasAccount() const;
    void netTask(int type, const QString &argument, bool quiet);
    /** That the preferences name no server or no user. */
    void tellNoAccount();
    void slotSynchronize();
    void slotAutoSync();
    /** Waits for the next automatic synchronisation, or not, as the preferences say now. */
    void setAutoSyncTimer();
    /** Sends the digest of a new password, which replaces the one in the settings when the server takes it. */
    void changePassword(const QString &digest);
    /** Synchronises no more by itself. */
    void stop();

    [[nodiscard]] bool isSynchronizing() const { return m_isSynchronizing; }
    /** True while a request is under way. */
    [[nodiscard]] bool isBusy() const { return m_connection.currentType() != 0; }
    /** Why the last request failed, empty when it did not. */
    [[nodiscard]] QString lastFailure() const { return m_connection.lastFailure(); }
    [[nodiscard]] const VelEntry *getReceivedEntry(quint32 globalid) const;

Q_SIGNALS:
    void netStatusChanged(int status);
    /** The window's own signals of these names follow. */
    void accountsReady();
    void taskUserBusyReady(const VelReceivedEntries &entries, const QString &argument);
    void rightsReady();
    void entriesReceived();
    void netTaskFailed(int type, const QString &argument);
    /** An answer has been brought into the calendar: views and file are to follow. */
    void merged(const VelMerge::Report &report);
    /** The settings hold another password, or number of the user. */
    void settingsChanged();
    void passwordChanged();
    /** Nothing is under way and nothing waits. */
    void idle();
    /** The user may not see this calendar any more. */
    void accessDenied();

private:
    void startSync(const QString &text, bool quiet);
    void endSync();
    void take(int type, const std::shared_ptr<VelXmlContent> &content, const VelSentEntries &sent);
    void takeSync(VelXmlContent &content, const VelSentEntries &sent);
    void takeOther(int type, VelXmlContent &content);
    void tellFailure(const QString &message, bool quiet);

    Context m_context;
    VelConnection m_connection;
    QTimer m_autoSyncTimer;
    std::vector<std::unique_ptr<VelEntry>> m_received; // entries that were asked for one by one
    bool m_isSynchronizing = false; // from the wish to the end of the request
    bool m_isStopped = false;
    bool m_hasShownProgress = false;
};
