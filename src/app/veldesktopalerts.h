// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "app/velalertsurface.h"
#include "app/velsound.h"

#include <QPointer>

class KNotification;

/**
 * Alerts through the desktop: a dialog of @p window with a notification beside it, which offers the same, so that one
 * can answer while the window is out of sight. The dialog blocks nothing and leaves the keyboard where it is.
 */
class VelDesktopAlerts : public VelAlertSurface
{
public:
    explicit VelDesktopAlerts(QWidget *window);
    ~VelDesktopAlerts() override;

    /** A failure is logged. */
    void startProgram(const QString &program, const QStringList &arguments) override;
    void playSound(const QString &file) override;
    void showReminder(const VelReminderNotice &notice, const Answered &answered) override;
    void updateReminder(const VelReminderNotice &notice) override;
    void closeReminder() override;

private:
    void showNotification(const VelReminderNotice &notice);
    void closeNotification();

    QWidget *m_window;
    VelSound m_sound;
    QPointer<VelReminderDialog> m_dialog;
    QPointer<KNotification> m_notification;
};
