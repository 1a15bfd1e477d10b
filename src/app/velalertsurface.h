// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "dialogs/velreminderdialog.h"

#include <functional>

/** What the user wants to become of a reminder. */
struct VelReminderAnswer {
    VelReminderDialog::Result result = VelReminderDialog::Ok;
    VelReminderDialog::SnoozeTime snooze = VelReminderDialog::FiveMinutes; ///< counts for Snooze
};

/** The means by which the user is alerted. This one is silent and never gets an answer. */
class VelAlertSurface
{
public:
    using Answered = std::function<void(VelReminderAnswer)>;

    VelAlertSurface() = default;
    virtual ~VelAlertSurface() = default;
    Q_DISABLE_COPY_MOVE(VelAlertSurface)

    /** Starts the program, which is looked for as a shell would, and does not wait for it. */
    virtual void startProgram(const QString & /*program*/, const QStringList & /*arguments*/) { }
    /** Plays a local file; one that is still played stops. */
    virtual void playSound(const QString & /*file*/) { }
    /** Shows one reminder. Returns at once; calls @p answered at most once, and not after closeReminder(). */
    virtual void showReminder(const VelReminderNotice & /*notice*/, const Answered & /*answered*/) { }
    /** What is told of the reminder that is being shown has changed. */
    virtual void updateReminder(const VelReminderNotice & /*notice*/) { }
    virtual void closeReminder() { }
};
