// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QDateTime>
#include <QString>
#include <QUrl>
#include <QVector>

/**
 * The user's preferences, and the calendar rules that depend on them. Colours and fonts live in VelLook.
 *
 * Field defaults are those of a client without any configuration.
 */
class VelSettings
{
public:
    /** True on Sundays. No table of holidays is consulted. */
    [[nodiscard]] bool isRedDay(QDate date) const { return date.dayOfWeek() == Qt::Sunday; }
    [[nodiscard]] bool isWorkingDay(QDate date) const { return m_workdays.contains(date.dayOfWeek()); }
    /**
     * On a working day, from the hour in which work begins up to the hour in which it ends; minutes do not
     * count.
     */
    [[nodiscard]] bool isWorkingHour(QDate date, QTime time) const;
    [[nodiscard]] bool isWorkingHour(const QDateTime &dateTime) const;
    /** 1 = Monday to 7 = Sunday. */
    [[nodiscard]] int getFirstWorkingDay() const { return m_workdays.first(); }
    [[nodiscard]] int getLastWorkingDay() const { return m_workdays.last(); }

    /**
     * The number of the week as this calendar counts: 0 to 53, deliberately not that of ISO 8601 in every
     * year.
     * @p isMondayFirst tells whether the locale's week starts on Monday.
     */
    [[nodiscard]] static int weekOfYear(QDate date, bool isMondayFirst);
    /** The same in the user's locale. */
    [[nodiscard]] static int weekOfYear(QDate date);

    /**
     * Takes weekday numbers in any order, drops what is none, and falls back to Monday to Friday when none is
     * left.
     */
    void setWorkdays(const QVector<int> &days);
    [[nodiscard]] const QVector<int> &getWorkdays() const { return m_workdays; }

    /** Takes over the account on the server, and how it is reached. */
    void takeAccount(const VelSettings &other);

    int interval = 30; ///< minutes, the grid step of the day views and the planner

    QTime workdayBegin{9, 0};
    QTime workdayEnd{17, 0};

    QString user; ///< on the server
    QString pass; ///< MD5 digest of the password, 32 lower-case hexadecimal digits; never the password
    quint32 origUserid = 0;
    QString server;
    int port = 7070;
    bool encrypt = false; ///< TLS to the server
    bool isUntried =
        false; ///< whether the server offers encryption is to be found out before anything is sent

    bool autoSave = true;
    int autoSaveInterval = 10; ///< minutes
    bool autoSaveSync = true;
    bool autoSync = true;
    int autoSyncInterval = 10; ///< minutes
    bool dock = false;

    QUrl archiveFile;

    bool doReminderDialog = true;
    bool doReminderSound = false;
    bool doReminderExec = false;
    QUrl reminderSound;
    QUrl reminderExec;
    int reminderDefault = 10; ///< minutes

private:
    QVector<int> m_workdays{1, 2, 3, 4, 5}; // ascending, never empty
};
