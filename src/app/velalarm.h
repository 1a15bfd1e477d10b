// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "app/velalertsurface.h"

#include <QObject>

class VelDoc;
class VelSettings;

/**
 * Alerts the user when the document says that the time for a reminder has come, in the ways that the preferences
 * name, and tells the document the answer. Without a dialog there is nobody to answer: then the alert is over at once.
 *
 * Listens for the machine's waking up, too, as reminders may have become due meanwhile.
 */
class VelAlarm : public QObject
{
    Q_OBJECT
public:
    using Now = std::function<VelDateTime()>;

    /** Keeps references to all but @p now. */
    VelAlarm(VelDoc &doc, const VelSettings &settings, Now now, VelAlertSurface &surface);
    ~VelAlarm() override;

Q_SIGNALS:
    /** The user wants to see the entry that they were reminded of. */
    void showWanted(quint32 localid);

private Q_SLOTS:
    void slotPrepareForSleep(bool begins);

private:
    void slotAlarm(quint32 localid);
    void slotAlarmUpdated();
    void slotAnswered(quint32 localid, const VelReminderAnswer &answer);
    void startProgram();
    void playSound();
    void watchSleep();
    [[nodiscard]] VelReminderNotice notice(const VelEntry &entry) const;

    VelDoc &m_doc;
    const VelSettings &m_settings;
    Now m_now;
    VelAlertSurface &m_surface;
};
