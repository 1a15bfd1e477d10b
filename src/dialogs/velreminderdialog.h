// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "model/velentry.h"

#include <QDialog>

class QComboBox;
class QDialogButtonBox;
class QLabel;
class QPushButton;

/** What is told of a reminder. */
struct VelReminderNotice {
    VelEntry entry;
    VelDateTime now;
    int waiting = 0; ///< how many other reminders are due
    QTime workdayBegin;
};

/** Reminds of one entry, and asks what is to become of the reminder. Closed by Escape it is as with OK. */
class VelReminderDialog : public QDialog
{
    Q_OBJECT
public:
    /** What the dialog ends with. */
    enum Result { Ok = 0, Show = 1, Snooze = 2, DismissAll = 3 };
    enum SnoozeTime { FiveMinutes, QuarterHour, OneHour, Tomorrow };

    VelReminderDialog(QWidget *parent, const VelReminderNotice &notice);

    /** Tells of the entry as it is now: for when the minutes pass while nobody answers. */
    void setNotice(const VelReminderNotice &notice);
    /** How long the user wants to be left in peace. */
    [[nodiscard]] SnoozeTime getSnoozeTime() const;
    void setSnoozeTime(SnoozeTime time);

    /** The title, a line break, and statusText(). */
    [[nodiscard]] static QString reminderText(const VelEntry &entry, const VelDateTime &now);
    /** How long it is from @p now to the start, of to-dos as well. */
    [[nodiscard]] static QString statusText(const VelEntry &entry, const VelDateTime &now);
    /** What the button says that shows the entry. */
    [[nodiscard]] static QString showText(const VelEntry &entry);
    /** For example "3 more reminders are due."; empty for 0. */
    [[nodiscard]] static QString waitingText(int waiting);
    /** When a reminder that is put off at @p now rings again: tomorrow, when work begins. */
    [[nodiscard]] static VelDateTime snoozedUntil(SnoozeTime time, const VelDateTime &now,
                                                  QTime workdayBegin);

private:
    [[nodiscard]] QLayout *makeTexts();
    [[nodiscard]] QLayout *makeSnoozeRow(QTime workdayBegin);
    void makeButtons();

    QLabel *m_text;
    QLabel *m_waiting;
    QComboBox *m_snooze;
    QDialogButtonBox *m_buttons;
    QPushButton *m_show = nullptr;
    QPushButton *m_dismissAll = nullptr;
};
