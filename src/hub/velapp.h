// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "document/velanswer.h"
#include "model/velaccount.h"
#include "model/veldatetime.h"

#include <KXmlGuiWindow>

#include <QIcon>

#include <functional>
#include <memory>
#include <vector>

class VelDoc;
class VelEntry;
class VelEntryList;
class VelMessages;
class VelPrintout;
class VelSettings;
struct VelLook;

/** Entries that came from the server and are not of the calendar. Who looks at them holds them. */
using VelReceivedEntries = std::shared_ptr<const std::vector<std::unique_ptr<VelEntry>>>;

/** How an attempt to reach a server went. */
struct VelConnectionResult {
    QString problem; ///< empty when the server answered and knows the user
    bool encrypt = false; ///< the server was reached encrypted
    int port = 0;
};

/**
 * The window as views and dialogs see it: everything that they may ask of it, and nothing else.
 *
 * Each window has one calendar. The lookups walk from any widget up to its own window, so that several
 * windows live side by side in one process.
 */
class VelApp : public KXmlGuiWindow
{
    Q_OBJECT
public:
    using KXmlGuiWindow::KXmlGuiWindow;

    /** The window that @p widget is in, or null. */
    [[nodiscard]] static VelApp *getApp(const QWidget *widget);
    /** The calendar of that window, or null. */
    [[nodiscard]] static VelDoc *getDocument(const QWidget *widget);
    /** The preferences of that window, or null. */
    [[nodiscard]] static const VelSettings *getSettings(const QWidget *widget);

    /** The program's own icon of that name, or else the desktop's. */
    [[nodiscard]] static QIcon getIcon(const QString &name);
    /** The same as a small picture, sharp on the screen that @p widget is on. */
    [[nodiscard]] static QPixmap getPixmap(const QString &name, const QWidget *widget);

    [[nodiscard]] virtual VelDoc *document() const = 0;
    [[nodiscard]] virtual const VelSettings *settings() const = 0;
    [[nodiscard]] virtual const VelLook &look() const = 0;
    /** What the clock on the wall shows. */
    [[nodiscard]] virtual VelDateTime now() const = 0;
    /** Where questions and errors go. */
    [[nodiscard]] virtual VelMessages &messages() = 0;

    /** The users and resources that the server knows. */
    [[nodiscard]] const VelAccountList &getAccounts() const;
    /** The display name of the account, empty for one that is not known. */
    [[nodiscard]] QString getAccountName(quint32 id) const;

    /**
     * Queues a request to the server: @p type is one of VelNetTask::Type, @p argument what the request carries in its
     * body, already in the form of messages. A quiet one fails without a word. Does nothing unless a server and a user
     * are set.
     */
    virtual void netTask(int type, const QString &argument, bool quiet) = 0;
    /**
     * Asks the server for its users and resources if none are known: see accountsReady(). @p quiet is for those who have
     * something else in mind, and can do without.
     */
    void requestAccounts(bool quiet = false);
    /**
     * Tries whether the server that @p settings name can be reached, encrypted first for a new account, and knows the
     * user. Calls @p done once, later, unless the window goes before.
     */
    virtual void testConnection(const VelSettings &settings,
                                const std::function<void(const VelConnectionResult &)> &done) = 0;
    /** True when the user has accepted a certificate of that server that the system does not know. */
    [[nodiscard]] virtual bool hasTrusted(const QString &server, int port) const = 0;
    /** Makes the next connection to that server ask about its certificate again. */
    virtual void forgetCertificate(const QString &server, int port) = 0;
    /** The entry that the server was last asked for by that id and sent, or null. Valid until the next is asked for. */
    [[nodiscard]] virtual const VelEntry *getReceivedEntry(quint32 globalid) const = 0;

    /** An action of the window by name, or null. */
    [[nodiscard]] QAction *getAction(const QString &name) const;

    /** Enables Cut, Copy and Delete as the entry that is selected (null for none) allows. */
    virtual void setCutCopy(const VelEntry *selected, bool isSelected) = 0;
    /** While on, nothing in the calendar may be changed from outside the holder of the lock. */
    virtual void setEditLock(bool locked) = 0;
    /** True when the user may change the calendar now: their rights suffice and it is not locked. */
    [[nodiscard]] virtual bool mayEdit() const = 0;
    /** Asks whether to write to those attendees of the entry whom the server does not know, if there are any. */
    virtual void informChanges(const VelEntry &entry) = 0;
    /**
     * Opens the editor on a copy of @p entry: a stored one, or with @p isNew one that VelDoc::newEntry() made and that
     * gets into the calendar only with OK.
     */
    virtual void showEntryDialog(const VelEntry &entry, bool isNew) = 0;
    /**
     * Shows an entry to be read, or an invitation to be answered, and returns the answer given, which is then noted in
     * the calendar: a value of VelAccount::Status, or 0. Entries of the calendar may be gone afterwards. @p text tells
     * what has happened to the entry.
     */
    virtual int showEntryInfo(const VelEntry &entry, VelAnswer::Mode mode, const QString &text = {}) = 0;
    /** Lets the user look at the pages and print them. */
    virtual void printOut(VelPrintout &printout) = 0;
    /** Tells that Paste may have become possible or impossible. */
    virtual void slotClipboardChanged() = 0;
    /** The stored entry that is being dragged out of one of this window's views, or 0. */
    [[nodiscard]] quint32 getDraggedEntry() const { return m_draggedEntry; }
    void setDraggedEntry(quint32 localid) { m_draggedEntry = localid; }

    /** Shows @p text in the first field of the status bar. */
    virtual void slotStatusMsg(const QString &text) = 0;

Q_SIGNALS:
    /** The list of users and resources has been replaced. */
    void accountsReady();
    /**
     * Busy times have come that were asked for with @p argument, by whomever: entries whose `user` tells whose time they
     * take.
     */
    void taskUserBusyReady(const VelReceivedEntries &entries, const QString &argument);
    /** The rights to the user's own calendar have come: see VelDoc::getRights(). */
    void rightsReady();
    /** An entry that was asked for has come: see getReceivedEntry(). */
    void entriesReceived();
    /** The request of that type and argument got no answer, or an error for one. */
    void netTaskFailed(int type, const QString &argument);

private:
    quint32 m_draggedEntry = 0;
};
