// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "app/veldesktopalerts.h"

#include "model/compat.h"
#include "widgets/wraised.h"
#include "widgets/wshowntext.h"

#include <KLocalizedString>
#include <KNotification>

#include <QApplication>
#include <QLoggingCategory>
#include <QProcess>

namespace
{
Q_LOGGING_CATEGORY(alarmLog, "delmasttime.alarm", QtWarningMsg)

/** What a notification offers, in this order, which puts first what desktops with little room leave. */
constexpr VelReminderDialog::Result Offers[] = {VelReminderDialog::Show, VelReminderDialog::Snooze,
                                                VelReminderDialog::Ok, VelReminderDialog::DismissAll};

QString withoutMnemonic(QString text)
{
    return text.remove(QLatin1Char('&'));
}
} // namespace

VelDesktopAlerts::VelDesktopAlerts(QWidget *window)
    : m_window(window)
{
}

VelDesktopAlerts::~VelDesktopAlerts()
{
    VelDesktopAlerts::closeReminder();
}

void VelDesktopAlerts::startProgram(const QString &program, const QStringList &arguments)
{
    if (!QProcess::startDetached(program, arguments))
        qCWarning(alarmLog) << "cannot start the program for reminders:" << program << arguments;
}

void VelDesktopAlerts::playSound(const QString &file)
{
    m_sound.play(file);
}

void VelDesktopAlerts::showReminder(const VelReminderNotice &notice, const Answered &answered)
{
    closeReminder();
    auto *dialog = new VelReminderDialog(m_window, notice);
    m_dialog = dialog;
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    QObject::connect(dialog, &QDialog::finished, dialog, [this, dialog, answered](int result) {
        m_dialog.clear();
        closeNotification();
        answered({static_cast<VelReminderDialog::Result>(result), dialog->getSnoozeTime()});
    });
    auto *raised = new WRaised(dialog);
    raised->passModal();
    dialog->show();
    QApplication::alert(dialog);
    showNotification(notice);
}

void VelDesktopAlerts::showNotification(const VelReminderNotice &notice)
{
    auto *notification = new KNotification(QStringLiteral("reminder"), KNotification::Persistent);
    m_notification = notification;
    notification->setTitle(WShownText::cut(notice.entry.getTitle()));
    QStringList lines{VelReminderDialog::statusText(notice.entry, notice.now)};
    QStringList offers{withoutMnemonic(VelReminderDialog::showText(notice.entry)),
                       i18n("Remind me again in 5 minutes"), i18n("OK")};
    if (notice.waiting > 0) {
        lines.append(VelReminderDialog::waitingText(notice.waiting));
        offers.append(i18n("Dismiss all"));
    }
    notification->setText(lines.join(QLatin1Char('\n')));
    notification->setIconName(QStringLiteral("delmasttime"));
    velAddActions(*notification, offers, m_dialog, [dialog = m_dialog](int offer) {
        dialog->setSnoozeTime(VelReminderDialog::FiveMinutes);
        dialog->done(Offers[offer]);
    });
    notification->sendEvent();
}

void VelDesktopAlerts::updateReminder(const VelReminderNotice &notice)
{
    if (m_dialog)
        m_dialog->setNotice(notice);
}

void VelDesktopAlerts::closeNotification()
{
    if (m_notification)
        m_notification->close();
    m_notification.clear();
}

void VelDesktopAlerts::closeReminder()
{
    closeNotification();
    if (!m_dialog)
        return;
    QObject::disconnect(m_dialog, &QDialog::finished, nullptr, nullptr);
    m_dialog->close();
    m_dialog.clear();
}
