// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "app/velalertsurface.h"
#include "app/velclosing.h"
#include "app/velconfiguration.h"
#include "app/velfilechooser.h"
#include "app/velfilecommands.h"
#include "app/velmailer.h"
#include "dialogs/veladdressbook.h"
#include "document/velmessages.h"
#include "hub/velapp.h"
#include "net/velmerge.h"

#include <QPointer>
#include <QTimer>

#include <functional>
#include <memory>
#include <optional>

class QLabel;
class QToolButton;
class VelActions;
class VelEntryDialog;
class VelEntryInfo;
class VelInvitationAsker;
class VelAlarm;
class VelMainView;
class VelNetwork;
class VelOnlineWidget;
class VelPreferences;
class VelRecoveryCopy;
class VelRemoteCalendarDialog;
class VelSyncBar;
class VelSyncGuard;
class VelTray;
class VelTrust;
class VelUndo;
class VelUnsent;

/** What a window asks of the world, so that a test can be that world. Null members stand for the usual. */
struct VelSurroundings {
    std::unique_ptr<VelMessages> messages;
    std::unique_ptr<VelFileChooser> files;
    std::unique_ptr<VelMailer> mailer;
    std::unique_ptr<VelAddressBook> addressBook;
    /** Drives the editor in place of its event loop. */
    std::function<void(VelEntryDialog &)> edit = {};
    std::function<VelDateTime()> now;
    std::function<void(VelPrintout &)> print = {}; ///< takes what is to be printed, in place of the dialogs
    /** Chooses what to archive, in place of the dialog. */
    std::function<std::optional<VelArchiveChoice>(const VelArchiveChoice &)> chooseArchive = {};
    VelProgress::Maker progress = {}; ///< in place of the dialog
    std::unique_ptr<VelAlertSurface> alerts = {};
    /** Asks for the new password, given the old digest; none when that was cancelled. In place of the dialog. */
    std::function<std::optional<QString>(const QString &)> askPassword = {};
    /** Answers an invitation that came with a synchronisation, in place of the viewer. */
    std::function<std::optional<int>(const VelMerge::Question &)> ask = {};
};

/** The main window: one calendar, its views, and every command. Deletes itself when it is closed. */
class VelMainWindow : public VelApp
{
    Q_OBJECT
public:
    explicit VelMainWindow(VelSurroundings surroundings = {});
    ~VelMainWindow() override;

    [[nodiscard]] VelDoc *document() const override { return m_doc; }
    [[nodiscard]] const VelSettings *settings() const override { return &m_settings; }
    [[nodiscard]] const VelLook &look() const override { return m_look; }
    [[nodiscard]] VelMessages &messages() override { return *m_messages; }
    [[nodiscard]] VelDateTime now() const override { return m_now(); }
    [[nodiscard]] QDate today() const { return m_now().date(); }
    void informChanges(const VelEntry &entry) override;
    void showEntryDialog(const VelEntry &entry, bool isNew) override;
    int showEntryInfo(const VelEntry &entry, VelAnswer::Mode mode, const QString &text = {}) override;
    void printOut(VelPrintout &printout) override;
    void netTask(int type, const QString &argument, bool quiet) override;
    [[nodiscard]] const VelEntry *getReceivedEntry(quint32 globalid) const override;
    void testConnection(const VelSettings &settings,
                        const std::function<void(const VelConnectionResult &)> &done) override;
    [[nodiscard]] bool hasTrusted(const QString &server, int port) const override;
    void forgetCertificate(const QString &server, int port) override;
    void setCutCopy(const VelEntry *selected, bool isSelected) override;
    void setEditLock(bool locked) override;
    /** True while somebody holds the lock, a synchronisation runs, the window waits to close, or nothing may be changed. */
    [[nodiscard]] bool isEditLocked() const;
    [[nodiscard]] bool mayEdit() const override;
    void slotStatusMsg(const QString &text) override;

    [[nodiscard]] VelMainView *mainView() const { return m_view; }
    [[nodiscard]] VelFileCommands *fileCommands() const { return m_fileCommands.get(); }
    [[nodiscard]] VelNetwork *network() const { return m_network.get(); }
    [[nodiscard]] VelInvitationAsker *invitations() const { return m_invitations.get(); }
    void setNetStatus(int status);

    /**
     * Opens @p url, or, when it is empty, the calendar that was open when the program last ended. What another window shows
     * already is brought up there.
     */
    void openDocumentFile(const QUrl &url);
    /** Asks what is to become of calendars without a file that a sudden end of the program has left behind. */
    void offerRecovered();
    /** Shows the window, or, when it was docked when the program last ended, only its icon in the tray. */
    void showOrDock();
    /** Hides the window behind its icon in the system tray; does nothing where there is no tray. */
    void dock();
    /** Writes the options of the window and the preferences. */
    void saveOptions();
    /** Follows changed preferences: colours and fonts, timers, and everything that is painted. */
    void updateAll();

public Q_SLOTS:
    void slotFileNewWindow();
    void slotFileNew();
    void slotFileOpen();
    void slotFileOpenRecent(const QUrl &url);
    void slotFileRemote();
    /** Opens the calendar of that user of the server in a window of its own, unless one shows it. Returns that window. */
    VelMainWindow *openRemote(quint32 userid);
    /**
     * Makes this window, which is to be empty, that of the calendar of another user, and asks the server for it. Until that
     * has come nothing can be entered: nobody would know whose it is to be.
     */
    void fetchCalendarOf(quint32 userid);
    void slotFileSave();
    void slotFileSaveAs();
    void slotFileImport();
    void slotFileExport();
    void slotFileArchive();
    void slotFileClose();
    void slotFilePrint();
    /** Closes all windows, until the user wants to keep one. */
    void slotFileQuit();
    void slotEditCut();
    void slotEditCopy();
    void slotEditPaste();
    void slotEditDelete();
    void slotGoToday();
    void slotViewToolBar();
    void slotViewStatusBar();
    void slotView1Day();
    void slotView5Day();
    void slotView7Day();
    void slotViewMonth();
    void slotViewList();
    void slotNewEntry();
    void slotNewTodo();
    void slotEditEntry();
    void slotViewEntry();
    void slotPurgeCompleted();
    void slotSynchronize();
    void slotStopSynchronizing();
    /** What the program does with its first window: see VelNetwork::synchronizeAtStart(). */
    void slotAutoSync();
    /** Asks about the invitations that wait. */
    void slotAnswerInvitations();
    void slotChangePass();
    void slotPreferences();
    void slotAccels();
    void slotToolbar();
    void slotClipboardChanged() override;
    void slotAutoSave();
    /** Brings the window to the front; one that was about to close stays. */
    void bringUp();
    /** Brings the window to the front and goes to the date of the entry. */
    void slotShowEntry(quint32 localid);

protected:
    bool queryClose() override;
    void changeEvent(QEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void saveProperties(KConfigGroup &group) override;
    void readProperties(const KConfigGroup &group) override;

private:
    void initStatusBar();
    void initDocument();
    [[nodiscard]] std::unique_ptr<VelProgress> makeProgress(const QString &text);
    void initAlarm();
    void initUndo();
    void initNetwork();
    void connectNetwork();
    [[nodiscard]] bool isInUse() const;
    void initInvitations();
    void showOpenInvitations(int count);
    void tellOutcome(const VelMerge::Report &report);
    void keepChanges();
    void initRecovery();
    void keepRecoveryCopy();
    void dropRecoveryCopy();
    [[nodiscard]] VelMainWindow *windowForRecovered();
    void recover(std::unique_ptr<VelRecoveryCopy> copy);
    void initView(const VelWindowOptions &options);
    void readOptions(const VelWindowOptions &options);
    [[nodiscard]] VelWindowOptions currentOptions() const;
    void saveOptions(const VelWindowOptions &options);
    void buildGui();
    void rebuildGui();
    void setAutoSaveTimer();
    void applyPreferences(const VelSettings &settings, const VelLook &look);
    void spreadPreferences(const VelSettings &settings, const VelLook &look);
    void tryEncryption();
    void finishTrial(const VelSettings &tried, const VelConnectionResult &result);
    void followAccount();
    void takePreferences(const VelSettings &settings, const VelLook &look);
    [[nodiscard]] QString captionText() const;
    [[nodiscard]] QUrl proposeFile() const;
    void updateCaption();
    void updateEditActions();
    void saveByItself();
    [[nodiscard]] QString idleText() const;
    void initSyncGuard();
    void noteSynchronized(const VelMerge::Report &report);
    void finishMerge(const VelMerge::Report &report);
    // velmainwindowclosing.cpp: what becomes of the window, and of others
    [[nodiscard]] VelClosing::Situation closingSituation() const;
    [[nodiscard]] bool mayClose();
    [[nodiscard]] bool mayCloseNow();
    [[nodiscard]] bool mayLose();
    [[nodiscard]] bool saveUnsent();
    [[nodiscard]] bool mayReplaceCalendar();
    [[nodiscard]] QString lossReason() const;
    void waitToClose();
    void closeWhenDone();
    void stay();
    void slotDenied(bool quiet);
    void closeDenied();
    void showWarning(const QString &text);
    [[nodiscard]] static QList<QPointer<VelMainWindow>> openWindows();
    [[nodiscard]] VelMainWindow *find(const std::function<bool(const VelMainWindow &)> &isMeant) const;
    [[nodiscard]] bool showElsewhere(const QUrl &url);
    [[nodiscard]] bool showsCalendarOf(quint32 userid) const;
    void shareAccount();
    void addRecentFile(const QUrl &url);
    [[nodiscard]] bool isRemote() const;
    [[nodiscard]] std::optional<int> askAbout(const VelMerge::Question &question, bool isUnasked);
    [[nodiscard]] std::optional<int> runEntryInfo(const VelEntry &entry, VelAnswer::Mode mode,
                                                  const QString &text, bool mayAnswer, bool isUnasked = false,
                                                  int others = 0);
    bool applyAnswer(quint32 localid, int answer);
    [[nodiscard]] QDate dayOfNew() const;
    [[nodiscard]] bool isStored(const VelEntry &entry) const;
    [[nodiscard]] std::optional<VelArchiveChoice> chooseArchive(const VelArchiveChoice &usual);

    VelSettings m_settings;
    VelLook m_look;
    std::unique_ptr<VelMessages> m_messages;
    std::unique_ptr<VelFileChooser> m_files;
    std::unique_ptr<VelMailer> m_mailer;
    std::unique_ptr<VelAddressBook> m_addressBook; // made when the editor first needs it
    std::function<void(VelEntryDialog &)> m_edit;
    std::function<VelDateTime()> m_now;
    std::function<void(VelPrintout &)> m_print;
    std::function<std::optional<VelArchiveChoice>(const VelArchiveChoice &)> m_chooseArchive;
    VelProgress::Maker m_progress;
    std::unique_ptr<VelAlertSurface> m_alerts;
    std::unique_ptr<VelAlarm> m_alarm;
    VelDoc *m_doc = nullptr;
    VelMainView *m_view = nullptr;
    VelPreferences *m_preferences = nullptr;
    QString m_shownPass; // digest that the preferences were given
    QLabel *m_statusText = nullptr;
    VelOnlineWidget *m_onlineWidget = nullptr;
    VelSyncBar *m_syncBar = nullptr;
    std::unique_ptr<VelActions> m_actions;
    std::unique_ptr<VelFileCommands> m_fileCommands;
    std::unique_ptr<VelTray> m_tray;
    std::unique_ptr<VelUndo> m_undo;
    std::unique_ptr<VelTrust> m_trust;
    std::unique_ptr<VelSyncGuard> m_syncGuard;
    std::unique_ptr<VelNetwork> m_network;
    std::unique_ptr<VelInvitationAsker> m_invitations;
    QToolButton *m_openInvitations = nullptr; // in the status bar, while there are any
    VelNotTaken m_notTaken;
    std::unique_ptr<VelRecoveryCopy> m_recovery; // of a calendar without a file; null when none is needed
    std::function<std::optional<QString>(const QString &)> m_askPassword;
    std::function<std::optional<int>(const VelMerge::Question &)> m_ask;
    VelRemoteCalendarDialog *m_remoteDialog = nullptr; // made when it is first needed
    QPointer<VelEntryInfo> m_entryInfo; // goes with the window too
    QTimer m_autoSaveTimer;
    int m_lockHolders = 0; // an open editor, an entry in the hand of the mouse
    bool m_isDenied = false; // the server has refused the calendar, and the window is about to go
    bool m_isUnfilled = false; // with the colleague's calendar that it is for
    bool m_hasFailedToFill = false;
    bool m_isTrying = false; // whether the server offers encryption
    bool m_isSavingByItself = false;
    bool m_savesOptions = true; // when it closes
    VelClosing m_closing;
    std::unique_ptr<VelUnsent> m_unsent;
    bool m_autoSaveFailed = false; // and the user has been told
};
