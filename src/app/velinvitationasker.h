// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "net/velopeninvitations.h"

#include <QObject>

#include <functional>

/**
 * Keeps the invitations of a window that wait for an answer, and puts them to the user one after the other: after the first
 * synchronisation of a calendar, after one that the user asked for, and whenever the user wants to.
 */
class VelInvitationAsker : public QObject
{
    Q_OBJECT
public:
    /**
     * Shows one, which comes by itself unless the user has just opened it. May run an event loop. The answer,
     * VelAnswer::AllLater, or none when it was put off.
     */
    using Ask = std::function<std::optional<int>(const VelMerge::Question &, bool isOpened)>;

    /** Keeps a reference to @p doc. */
    VelInvitationAsker(VelDoc &doc, Ask ask);

    [[nodiscard]] int count() const { return m_open.count(); }
    /** True from the wish to ask to the end of asking. */
    [[nodiscard]] bool isAsking() const { return m_isAsking; }
    /** After a merge. When the user asked for it, or it is the calendar's first here, asks as soon as the caller is done. */
    void take(const VelMerge::Report &report, bool isAskedFor);
    /** What waits, by the wish of whoever is at the screen. Soon, so that what runs has its end first. */
    void open() { askSoon(true); }

Q_SIGNALS:
    void countChanged(int count);
    /** An answer has gone into the calendar: views and file are to follow. */
    void answered();

private:
    void askSoon(bool isOpened);
    void ask();
    bool askOne(quint32 globalid, int others);
    void forget();
    void updateCount();

    VelDoc &m_doc;
    Ask m_ask;
    VelOpenInvitations m_open;
    int m_toldCount = 0;
    bool m_isFirst = true; // no answer has come for this calendar
    bool m_isAsking = false;
    bool m_isOpened = false; // by the user, this time
};
