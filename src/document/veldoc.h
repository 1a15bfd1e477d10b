// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "document/velentryindex.h"
#include "document/velfilestate.h"
#include "formats/velxmlreader.h"
#include "formats/velxmlwriter.h"

#include <QObject>
#include <QUrl>

#include <functional>
#include <map>
#include <memory>
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

    /** The right from which on a calendar may be changed is one above this. */
    static constexpr int ReadRight = 2;
    static constexpr int FullRight = 4;

    /** An empty, untitled calendar. Keeps references to @p messages and @p settings. */
    VelDoc(VelMessages &messages, const VelSettings &settings, QObject *parent = nullptr,
           Today today = &QDate::currentDate);
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
     * they are.
     */
    [[nodiscard]] bool writeCopy(const QString &path) const;
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
    /** The list of accounts was replaced. */
    void accountsChanged();

private:
    struct Stored {
        std::unique_ptr<VelEntry> entry;
        VelEntryIndex::Slot slot;
    };

    void deleteContents();
    void noteChange(const VelEntry &entry);
    [[nodiscard]] quint32 takeLocalId();
    void takeEntries(std::vector<std::unique_ptr<VelEntry>> entries);
    const VelEntry *store(std::unique_ptr<VelEntry> entry, QDate today);
    bool readContent(const QString &path, VelXmlContent &content);
    bool load(const QString &source, const QUrl &url);
    [[nodiscard]] static VelFileState stateOf(const QUrl &url);
    void setUrl(const QUrl &url, const VelFileState &state);
    [[nodiscard]] bool writeTo(QIODevice &device) const;
    [[nodiscard]] bool writeFile(const QUrl &url) const;
    bool mayReplace(const QUrl &url, bool overwrite);

    VelMessages &m_messages;
    const VelSettings &m_settings;
    Today m_today;

    std::map<quint32, Stored> m_entries; // by local id, which is also the order in files
    VelEntryIndex m_index;
    std::map<quint32, quint32> m_globalMap; // global id to local id; may hold pairs of entries that are gone
    VelCalendarMeta m_meta;
    VelAccountList m_accounts;
    std::map<quint32, int> m_rights;
    quint32 m_nextLocalId = 1;
    quint64 m_todoRevision = 1;

    std::vector<VelDocView *> m_views;
    QUrl m_url;
    VelFileState m_fileState; // of the document's file when it was last read or written
    bool m_modified = false;
    bool m_modsSynced = true;
    bool m_declinedOverwrite = false;
};
