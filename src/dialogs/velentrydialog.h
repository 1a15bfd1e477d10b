// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "dialogs/velentryform.h"

#include <QDialog>

#include <functional>
#include <memory>

class QCheckBox;
class QComboBox;
class QDialogButtonBox;
class QFormLayout;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class QSpinBox;
class QTabWidget;
class VelAddressBook;
class VelApp;
class VelDoc;
class VelEntryRecurDialog;
class VelFindTimeDialog;
class VelPeoplePage;
class VelReminderWidget;
class WDateTimeWidget;

/**
 * The entry editor: creates or edits one event or to-do task.
 *
 * It works on a copy; OK and Apply write that into the calendar. The caller holds the edit lock while it is open, so
 * that nothing else changes the entry meanwhile.
 */
class VelEntryDialog : public QDialog
{
    Q_OBJECT
public:
    /** Told of each entry that was written: those outside the server want to know. */
    using Written = std::function<void(const VelEntry &)>;

    /**
     * @p entry is a new one that VelDoc::newEntry() made, or a copy of a stored one, which @p isNew tells apart. @p app
     * knows the colleagues, @p book everybody else.
     */
    VelEntryDialog(VelApp &app, VelAddressBook &book, const VelEntry &entry, bool isNew, Written written);
    ~VelEntryDialog() override;

    /** Sets both times, as the meeting planner proposes them. */
    void setDateTime(const QDateTime &start, const QDateTime &end);
    /** What the controls say. */
    [[nodiscard]] VelEntryForm form() const;
    [[nodiscard]] const VelEntry &entry() const { return m_entry; }

    /**
     * Checks the controls and writes them into the calendar. False, after a message, when something is wrong; the dialog
     * may be gone then.
     */
    bool updateData();

public Q_SLOTS:
    void slotOk();
    void slotApply();
    void slotCancel();
    /** Lets the user plan the meeting: the planner is made when first asked for and kept. */
    void slotFindDialog();

protected:
    /** Returns when the user has closed the planner. */
    virtual void runFindDialog(VelFindTimeDialog &dialog);
    void reject() override { slotCancel(); }

private:
    void makeLayout();
    void makeTimes(QFormLayout *layout);
    void makeEventControls(QFormLayout *layout);
    void makeTodoControls(QFormLayout *layout);
    void makeButtons();
    void explain();
    void fill(const VelEntryForm &form);
    [[nodiscard]] bool finishInput();
    void abandon();
    void store(const VelEntryForm &written);
    [[nodiscard]] bool isEvent() const { return m_entry.type == VelEntry::Event; }
    [[nodiscard]] QString sizeName() const;
    void slotAccountsReady();
    void slotNoTime(bool notime);
    void slotRecurring(bool recurring);
    void slotRecurDialog();
    void slotStartChanged(const QDateTime &oldStart, const QDateTime &newStart);
    void showRecurrence();

    VelApp &m_app;
    VelDoc &m_doc;
    VelAddressBook &m_book;
    Written m_written;
    VelEntry m_entry;
    bool m_isStored;

    QLineEdit *m_title = nullptr;
    QString m_shownTitle; // what the input made of the entry's
    WDateTimeWidget *m_start = nullptr;
    WDateTimeWidget *m_end = nullptr;
    QCheckBox *m_noTimes = nullptr;
    QPlainTextEdit *m_description = nullptr;
    VelReminderWidget *m_reminder = nullptr;
    QDialogButtonBox *m_buttons = nullptr;
    // Of events only:
    QTabWidget *m_pages = nullptr;
    QCheckBox *m_recurring = nullptr;
    QPushButton *m_setRecurrence = nullptr;
    QLabel *m_recurrenceText = nullptr;
    QComboBox *m_access = nullptr;
    QComboBox *m_display = nullptr;
    VelEntryRecurDialog *m_recurDialog = nullptr;
    VelPeoplePage *m_people = nullptr;
    VelFindTimeDialog *m_findDialog = nullptr;
    // Of to-dos only:
    QCheckBox *m_complete = nullptr;
    QSpinBox *m_priority = nullptr;
};
