// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "document/velentryindex.h"
#include "document/velfilestate.h"
#include "document/velreminders.h"
#include "document/velstep.h"
#include "formats/velxmlreader.h"
#include "formats/velxmlwriter.h"

#include <QObject>
#include <QTimer>
#include <QUrl>

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <vector>

class VelDocView;
class VelMessages;
class VelSettings;

/**
 * The calendar that a window shows: its entries, where they are kept, and what ties them to the server.
 *
 * The document owns its entries and hands them out for reading; every change goes through it, so that what
 * finds them by day is never out of step. A pointer to an entry is valid until the entry is removed, a
 * pointer to an occurrence until its entry changes.
 */
class VelDoc : public QObject
{
    Q_OBJECT
public:
    using Today = std::function<QDate()>;
    using Now = std::function<VelDateTime()>;
    /** Local ids of entries that were touched, and copies of them as they were before; null for those that were not there. */
    using Journal = std::map<quint32, std::unique_ptr<VelEntry>>;

    /** The right from which on a calendar may be changed is one above this. */
    static constexpr int ReadRight = 2;
    static constexpr int FullRight = 4;

    /**
     * An empty, untitled calendar. Keeps references to @p messages and @p settings. Reminders go by @p now, which left
     * out stands for the clock on the wall.
     */
    VelDoc(VelMessages &messages, const VelSettings &settings, QObject *parent = nullptr,
           Today today = &QDate::currentDate, Now now = {});
    ~VelDoc() override;

    /** @name Entries */
    /// @{
    /** A new entry with a local id of its own, not yet in the document: edit it, then call addEntry(). */
    [[nodiscard]] std::unique_ptr<VelEntry> newEntry(int type, const VelDateTime &start,
                                                     const VelDateTime &end);
    /** Gives an entry made elsewhere a local id of its own. */
    [[nodiscard]] std::unique_ptr<VelEntry> newEntry(std::unique_ptr<VelEntry> entry);
    /** Takes the entry in, in place of one with the same local id, and works out its occurrences. */
    const VelEntry *addEntry(std::unique_ptr<VelEntry> entry);
    void removeEntry(quint32 localid);
    /**
     * Deletes a stored entry. One that the server knows stays as a notice to it, unless @p force; the
     * document is then marked modified.
     */
    void deleteEntry(const VelEntry *entry, bool force);
    /**
     * Lets @p change change the stored entry and works its occurrences out anew. The ids are not to be
     * changed. False when there is no such entry.
     */
    bool changeEntry(quint32 localid, const std::function<void(VelEntry &)> &change);
    /** Deletes the user's own completed to-dos; returns how many there were. */
    int purgeCompleted();

    /** The stored entry, or null. */
    [[nodiscard]] const VelEntry *getEntry(quint32 localid) const;
    /**
     * The entry itself, or for an occurrence the stored entry that it was worked out from; null when that is
     * gone.
     */
    [[nodiscard]] const VelEntry *getOriginalEntry(const VelEntry *entry) const;
    /** The local id of the entry that the server knows by @p globalid, or 0. */
    [[nodiscard]] quint32 getLocalId(quint32 globalid) const;
    [[nodiscard]] std::size_t getEntryCount() const { return m_entries.size(); }

    /**
     * Entries of @p type (0 for all, deletion notices too) and, if asked for, their occurrences, in no set
     * order.
     *
     * Without @p from all; without @p to those that touch the day @p from; else those that start or end on @p
     * from or later and start on @p to or earlier.
     */
    [[nodiscard]] VelEntryList getEntries(QDate from, int type, bool withRecurrences, QDate to) const;

    /** Another number whenever a to-do has come, gone or changed: a view of to-dos need look only then. */
    [[nodiscard]] quint64 getTodoRevision() const { return m_todoRevision; }

    /** True when nobody else owns it. */
    [[nodiscard]] bool isOwner(const VelEntry *entry) const;
    [[nodiscard]] bool isOwner(const VelAccount &account) const { return account.id == m_meta.userid; }
    /** True for what may not take place, or not with the user: it is shown apart from what surely does. */
    [[nodiscard]] bool isTentative(const VelEntry &entry) const;
    /** The date that the document goes by. */
    [[nodiscard]] QDate today() const { return m_today(); }
    /** The date and time that its reminders go by. */
    [[nodiscard]] VelDateTime now() const { return m_now(); }
    /** True when the local user may change the calendar. */
    [[nodiscard]] bool isWritable() const { return m_meta.origright > ReadRight; }
    /// @}

    /** @name What ties the calendar to the server */
    /// @{
    [[nodiscard]] quint32 getUserId() const { return m_meta.userid; }
    void setUserId(quint32 userid) { m_meta.userid = userid; }
    [[nodiscard]] int getOrigRight() const { return m_meta.origright; }
    [[nodiscard]] QString getSynctime() const { return m_meta.synctime; }
    void setSynctime(const QString &synctime) { m_meta.synctime = synctime; }
    /** The account that the calendar was last synchronised with; none when it never was. */
    [[nodiscard]] const VelServerAccount &getServerAccount() const { return m_meta.account; }
    void setServerAccount(const VelServerAccount &account) { m_meta.account = account; }
    /** True for what is kept aside and never synchronised, false for what is known to be none, else not set. */
    [[nodiscard]] std::optional<bool> getArchiveMark() const { return m_meta.archive; }
    void setArchiveMark(std::optional<bool> isArchive) { m_meta.archive = isArchive; }
    [[nodiscard]] bool isArchive() const { return m_meta.archive.value_or(false); }
    /** Account id to the right that this user grants it. */
    [[nodiscard]] const std::map<quint32, int> &getRights() const { return m_rights; }
    /** The users and resources that the server knows. */
    [[nodiscard]] const VelAccountList &getAccounts() const { return m_accounts; }
    /// @}

    /**
     * Takes over what a calendar file or message says of the calendar itself and of accounts and rights; what it does
     * not mention stays. Its entries are the caller's. Returns how many accounts and entries it holds.
     */
    int readXml(VelXmlContent &content);

    /**
     * @name Reminders
     *
     * One alert is given at a time: alarm() starts it, and it lasts until somebody dismisses or snoozes it; others that
     * become due wait. Every change of entries brings the schedule up to date by itself. The calendar of another user of the
     * server gives none.
     */
    /// @{
    /**
     * Finds the next alert anew and waits for it; gives it when it is overdue. For when the clock was set, or the
     * machine slept: otherwise that is noticed within a minute.
     */
    void updateAlarm();
    /** Gives the alerts whose time has come, then waits for the next: the timer's slot. */
    void slotAlarm();
    /** The entry that rings first, if any, overdue or not; the one whose alert is being given counts. */
    [[nodiscard]] std::optional<VelReminders::Alert> nextReminder() const { return m_reminders.next(); }
    /** The entry whose alert is being given, or 0. */
    [[nodiscard]] quint32 getAlarmEntry() const { return m_alarmEntry; }
    /** How many are overdue, apart from that one. */
    [[nodiscard]] int getWaitingReminders() const;
    /** Those that are overdue, with the one being given, in the order in which they ring. */
    [[nodiscard]] std::vector<quint32> getDueReminders() const { return m_reminders.due(m_now()); }
    /**
     * Has been given: the entry is marked fired and dirty, the document modified. Ends its alert. In a calendar that may
     * only be read the entry is marked fired and nothing else; see remindersGiven().
     */
    void dismissReminder(quint32 localid);
    /** The same for the one being given and all that are overdue. */
    void dismissDueReminders();
    /** Had been given before the calendar was opened: the entry is marked fired, which nobody is told of. */
    void skipReminder(quint32 localid);
    /**
     * Ends the alert, which will be given again at @p until, or, as that is not saved, after a restart. False, and the
     * alert goes on, when that time has passed or the entry is gone.
     */
    bool snoozeReminder(quint32 localid, const VelDateTime &until);
    /// @}

    /** @name Undo */
    /// @{
    /** Begins and ends what stepDone() reports as one step; see VelStepScope. */
    void beginStep(const QString &text);
    void endStep();
    /// @}

    /** @name Exchange with the server */
    /// @{
    /** What happens from now on is not in the message that is being written. Ends with another calendar, too. */
    void beginExchange();
    /** Returns what was changed since it began, as it was then. */
    Journal endExchange();
    /** True while what the user does is being recorded as one step. */
    [[nodiscard]] bool isInStep() const { return m_stepDepth > 0; }
    [[nodiscard]] bool isExchanging() const { return m_isExchanging; }
    /** Another number with each exchange: what was changed before may be known to the server. */
    [[nodiscard]] quint64 getExchangeCount() const { return m_exchangeCount; }
    /** True when the entry was changed, added or removed since the exchange began. */
    [[nodiscard]] bool isChangedSince(quint32 localid) const { return m_exchangeBefore.count(localid) != 0; }
    /** Such an entry as it was when the exchange began, or null when there was none. */
    [[nodiscard]] const VelEntry *getBefore(quint32 localid) const;
    /// @}

    /** @name Views */
    /// @{
    void addView(VelDocView *view);
    void removeView(VelDocView *view);
    /** Updates every view but @p sender and marks the document modified: the end of every change. */
    void slotUpdateAllViews(VelDocView *sender);
    /// @}

    /** @name State */
    /// @{
    [[nodiscard]] bool isModified() const { return m_modified; }
    void setModified(bool modified);
    /** True when the changes made here have been dealt with towards the server. */
    [[nodiscard]] bool isModsSynced() const { return m_modsSynced; }
    void setModsSynced(bool synced) { m_modsSynced = synced; }
    [[nodiscard]] QUrl URL() const { return m_url; }
    [[nodiscard]] bool isUntitled() const;
    /** The name of a calendar that has no file yet. */
    [[nodiscard]] static QString untitledName();
    /// @}

    /** @name Files. Failures are told through the messages; what was open then stays open. */
    /// @{
    bool newDocument();
    void closeDocument();
    /**
     * Begins anew, in the same file, with these entries: the calendar is as one that was never synchronised. Local ids are
     * kept. Modified afterwards.
     */
    void restart(std::vector<std::unique_ptr<VelEntry>> entries);
    /** Saves changes, or asks whether to. True when the caller may go on: nothing would be lost unasked. */
    bool saveModified();
    bool openDocument(const QUrl &url);
    /**
     * Reads @p source in place of the calendar's own file, which @p url names. For recovery copies: the
     * document is modified afterwards.
     */
    bool recoverDocument(const QString &source, const QUrl &url);
    /**
     * Without @p overwrite asks before it replaces a file. Asks, too, before it undoes what somebody else
     * saved.
     */
    bool saveDocument(const QUrl &url, bool overwrite);
    /** Saves to the calendar's own file without a word. False when it cannot, or somebody else changed the file. */
    bool saveQuietly();
    /**
     * Writes a copy to the local file @p path and says nothing; the document's own file and state stay as
     * they are. Whoever may not read that file may not read a new copy. @p asArchive marks it as one.
     */
    [[nodiscard]] bool writeCopy(const QString &path, bool asArchive = false) const;
    /** True when saving without being asked for would only bring the question back that the user declined. */
    [[nodiscard]] bool hasDeclinedOverwrite() const { return m_declinedOverwrite; }
    /// @}

Q_SIGNALS:
    /** Sent just before isModified() changes. */
    void modifiedChanged(bool modified);
    /** Another calendar has taken the place of the one that was open. Comes before the views are updated. */
    void contentsReplaced();
    void urlChanged(const QUrl &url);
    /** The calendar that was opened may, or may not, only be read. */
    void editLockWanted(bool locked);
    /** The user wants to save a calendar that has no file yet. Answer before returning. */
    void saveAsWanted();
    /** The user has changed entries and may want to take that back. Not sent for a step that came to nothing. */
    void stepDone(const std::shared_ptr<VelStep> &step);
    /** The list of accounts was replaced. */
    void accountsChanged();
    /** The time for the entry's reminder has come: see dismissReminder() and snoozeReminder(). */
    void alarm(quint32 localid);
    /** Sent each minute while an alert is being given, and when what it tells may have changed. */
    void alarmUpdated();
    /** The alert that was being given has been answered, or its entry or reminder is gone. */
    void alarmEnded();
    /** Of a calendar that may only be read: nothing is sent to the server or waits to be saved. */
    void remindersGiven(const std::vector<quint32> &localids);

private:
    struct Stored {
        std::unique_ptr<VelEntry> entry;
        VelEntryIndex::Slot slot;
    };

    void deleteContents();
    void record(quint32 localid);
    void recordForExchange(quint32 localid);
    void insertInIndex(Stored &stored);
    void removeFromIndex(Stored &stored);
    void initAlarm();
    void requestAlarmUpdate();
    void armAlarm();
    void endAlarm();
    [[nodiscard]] bool hasReminders() const;
    [[nodiscard]] std::optional<VelReminders::Alert> dueReminder() const;
    bool markFired(quint32 localid);
    void keepGiven(const std::vector<quint32> &localids);
    [[nodiscard]] quint32 takeLocalId();
    void takeEntries(std::vector<std::unique_ptr<VelEntry>> entries);
    const VelEntry *store(std::unique_ptr<VelEntry> entry, QDate today);
    bool readContent(const QString &path, VelXmlContent &content);
    bool load(const QString &source, const QUrl &url);
    [[nodiscard]] static VelFileState stateOf(const QUrl &url);
    void setUrl(const QUrl &url, const VelFileState &state);
    [[nodiscard]] bool writeTo(QIODevice &device, const VelCalendarMeta &meta) const;
    [[nodiscard]] bool writeFile(const QUrl &url) const;
    bool mayReplace(const QUrl &url, bool overwrite);

    VelMessages &m_messages;
    const VelSettings &m_settings;
    Today m_today;
    Now m_now;

    std::map<quint32, Stored> m_entries; // by local id, which is also the order in files
    VelEntryIndex m_index;
    VelReminders m_reminders;
    std::map<quint32, quint32> m_globalMap; // global id to local id; may hold pairs of entries that are gone
    VelCalendarMeta m_meta;
    VelAccountList m_accounts;
    std::map<quint32, int> m_rights;
    quint32 m_nextLocalId = 1;
    quint64 m_todoRevision = 1;

    int m_stepDepth = 0;
    QString m_stepText;
    Journal m_stepBefore; // what the step has touched
    quint64 m_exchangeCount = 0;
    bool m_isExchanging = false;
    Journal m_exchangeBefore; // the same for the exchange

    QTimer m_alarmTimer{this};
    quint32 m_alarmEntry = 0; // whose alert is being given
    bool m_isInAlarm = false;
    bool m_isAlarmRequested = false;

    std::vector<VelDocView *> m_views;
    QUrl m_url;
    VelFileState m_fileState; // of the document's file when it was last read or written
    bool m_modified = false;
    bool m_modsSynced = true;
    bool m_declinedOverwrite = false;
};
