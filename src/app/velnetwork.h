// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "hub/velapp.h"
#include "net/velconnection.h"
#include "net/velmerge.h"
#include "net/velsyncrecord.h"

#include <QTimer>

#include <functional>
#include <optional>

/**
 * What one window has to do with the server: when it synchronises, what becomes of the answers, and how long the calendar is
 * locked meanwhile. The connection itself, and the merging, are classes of their own.
 *
 * A synchronisation that somebody asked for locks the calendar from the wish to its end, and can be stopped. One that runs by
 * itself locks it only while its answer is taken in; what changes before is kept, and sent with the next. An answer that finds
 * somebody at work on an entry waits for the end of that.
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
        std::function<void()> lockChanged; ///< isLocking(), or isStoppable(), is another
        std::function<void(const QString &)> status; ///< takes the place of a passing notice
        std::function<void()> ready; ///< the status is over; a passing notice stays to be read
        /** Shows what the user must know. May run an event loop. */
        std::function<void(const VelMerge::Question &)> tell;
        std::function<VelDateTime()> now;
        /** Whether the calendar belongs to the account at all. May ask @p byHand or not, and run an event loop. */
        std::function<bool(bool byHand)> maySync;
        /** Keeps a copy of the calendar, of which entries are about to be taken away. False when that failed. */
        std::function<bool()> keepCopy;
    };

    /** An automatic synchronisation that finds the calendar locked tries again after so many milliseconds. */
    static constexpr int LockedRetry = 1000;
    /** So often an answer that waits looks whether it may be taken in, where nobody calls release(). */
    static constexpr int HeldRetry = 250;

    explicit VelNetwork(Context context);
    ~VelNetwork() override;

    /** True when a server and a user are set. */
    [[nodiscard]] bool hasAccount() const;
    void netTask(int type, const QString &argument, bool quiet);
    /** That the preferences name no server or no user. */
    void tellNoAccount();
    void slotSynchronize();
    /** One that nobody asked for. A calendar that was never synchronised is left alone, see synchronizeAtStart(). */
    void slotAutoSync();
    /**
     * slotAutoSync() of the window with which the program starts: here an empty calendar, too, becomes that of the user,
     * now or later. In any other window it would be there twice.
     */
    void synchronizeAtStart();
    /** Gives up a synchronisation that somebody asked for. What it has sent counts as not answered. */
    void stopSynchronizing();
    /** Somebody may have finished their work on an entry: an answer that waits for it is taken in, later. */
    void release();
    /** Waits for the next automatic synchronisation, or not, as the preferences say now. */
    void setAutoSyncTimer();
    /** Sends the digest of a new password, which replaces the one in the settings when the server takes it. */
    void changePassword(const QString &digest);
    /** The settings say how the server is reached, or, with a @p problem, that could not be found out. */
    void accountTried(const QString &problem = {});
    /** Synchronises now and without a word, whatever the preferences say of what happens by itself. */
    void sendChanges();
    /** Synchronises no more by itself, until somebody has done so by hand with success, or names another account. */
    void stop();
    void resume();

    [[nodiscard]] bool isSynchronizing() const { return m_isSynchronizing; }
    /** True while nothing in the calendar may be changed. */
    [[nodiscard]] bool isLocking() const { return m_isByHand || m_isMerging; }
    /** True while somebody waits for the synchronisation that runs, and no other follows it at once. */
    [[nodiscard]] bool isAskedFor() const { return m_isByHand && !m_isWantedAgain && !m_hasMoreToSend; }
    /** True while stopSynchronizing() does something. */
    [[nodiscard]] bool isStoppable() const { return m_isByHand && !m_isMerging; }
    /** True while a request is under way, or an answer waits to be taken in. */
    [[nodiscard]] bool isBusy() const
    {
        return m_connection.currentType() != 0 || m_waiting.has_value() || m_isMerging;
    }
    /** Why the last request failed, empty when it did not. */
    [[nodiscard]] QString lastFailure() const { return m_connection.lastFailure(); }
    /** True while a request that changes something on the server is under way or waits, or its answer does. */
    [[nodiscard]] bool isChanging() const;
    [[nodiscard]] const VelEntry *getReceivedEntry(quint32 globalid) const;

Q_SIGNALS:
    void netStatusChanged(int status);
    /** The window's own signals of these names follow. */
    void accountsReady();
    void taskUserBusyReady(const VelReceivedEntries &entries, const QString &argument);
    void rightsReady();
    void entriesReceived();
    void netTaskFailed(int type, const QString &argument);
    /** Something that passes, and needs no confirmation. */
    void noticed(const QString &text);
    /** What is to be seen until a synchronisation succeeds, empty for nothing. */
    void warningChanged(const QString &text);
    /** An answer has been brought into the calendar: views and file are to follow. */
    void merged(const VelMerge::Report &report);
    /** The settings hold another password, or number of the user. */
    void settingsChanged();
    void passwordChanged();
    /** One synchronisation is over, well or not. */
    void syncEnded();
    /** One request is over, or never had its turn. */
    void taskEnded();
    /** Something is to be sent, and it is not known yet whether the server offers encryption. */
    void trialWanted();
    /** Nothing is under way and nothing waits. */
    void idle();
    /** The user may not see this calendar any more. This is the only signal of it; unless @p quiet somebody waits for it. */
    void accessDenied(bool quiet);

private:
    /** The answer to a synchronisation, before anything of it is looked at. */
    struct Answer {
        std::shared_ptr<VelXmlContent> content;
        VelSentEntries sent;
    };

    void connectConnection();
    [[nodiscard]] bool mayRunByItself() const;
    [[nodiscard]] QString stoppedText() const;
    void startIfAllowed(const QString &text, bool quiet);
    void startSync(const QString &text, bool quiet);
    void endSync();
    void failSync();
    void noteOutcome();
    void putOff(const Answer &answer);
    void takeIn(const Answer &answer);
    void takeWaiting();
    void endWaiting();
    void take(int type, const std::shared_ptr<VelXmlContent> &content, const VelSentEntries &sent);
    [[nodiscard]] bool mayRemove();
    void takeSync(VelXmlContent &content, const VelSentEntries &sent);
    void takeOther(int type, VelXmlContent &content);
    void tellFailure(const QString &message, bool quiet);

    Context m_context;
    VelConnection m_connection;
    QTimer m_autoSyncTimer;
    std::vector<std::unique_ptr<VelEntry>> m_received; // entries that were asked for one by one
    bool m_isSynchronizing = false; // from the wish to the end of the request
    bool m_isByHand = false; // and somebody waits for it
    bool m_isWantedAgain = false; // by somebody who found one running by itself
    bool m_isMerging = false;
    bool m_isGivenUp = false;
    bool m_isStartWindow = false;
    std::optional<Answer> m_waiting; // for whoever is at work on an entry
    QTimer m_waitingTimer;
    VelSyncRecord m_record;
    VelSyncRecord::Outcome m_outcome = VelSyncRecord::Outcome::Undecided; // of the one that runs
    bool m_isStopped = false;
    bool m_hasMoreToSend = false; // than what had to be repeated first
    bool m_hasShownProgress = false;
};
