// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "app/velalertsurface.h"
#include "app/velgivenreminders.h"

#include <QObject>

class VelDoc;
class VelSettings;

/**
 * Alerts the user when the document says that the time for a reminder has come, in the ways that the preferences
 * name, and tells the document the answer. Without a dialog there is nobody to answer: then the alert is over at once.
 *
 * While the user looks at what one alert was about, the others wait.
 *
 * Listens for the machine's waking up, too, as reminders may have become due meanwhile.
 */
class VelAlarm : public QObject
{
    Q_OBJECT
public:
    using Now = std::function<VelDateTime()>;

    /** Keeps references to all but @p now and @p given, which is for calendars that may only be read. */
    VelAlarm(VelDoc &doc, const VelSettings &settings, Now now, VelAlertSurface &surface,
             VelGivenReminders given);
    ~VelAlarm() override;

    /** The user has seen the entry that showWanted() was about: the next alert may come. */
    void resume();

Q_SIGNALS:
    /** The user wants to see the entry that they were reminded of. Alerts wait until resume(). */
    void showWanted(quint32 localid);

private Q_SLOTS:
    void slotPrepareForSleep(bool begins);

private:
    void slotAlarm(quint32 localid);
    void give(quint32 localid);
    void skipGiven();
    void slotGiven(const std::vector<quint32> &localids);
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
    VelGivenReminders m_given;
    bool m_isHeld = false;
};
