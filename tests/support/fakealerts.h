// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "app/velalertsurface.h"

#include <QStringList>

/** Keeps which alerts were given, in words. The test answers. */
class FakeAlerts : public VelAlertSurface
{
public:
    void startProgram(const QString &program, const QStringList &arguments) override
    {
        given += QLatin1String("start ") + (QStringList{program} + arguments).join(QLatin1Char('|'));
    }
    void playSound(const QString &file) override { given += QLatin1String("play ") + file; }
    void showReminder(const VelReminderNotice &notice, const Answered &answered) override
    {
        given += QStringLiteral("show %1 %2").arg(notice.entry.getTitle()).arg(notice.waiting);
        answer = answered;
    }
    void updateReminder(const VelReminderNotice &notice) override { waiting = notice.waiting; }
    void closeReminder() override { answer = {}; }

    QStringList given;
    Answered answer;
    int waiting = 0;
};
