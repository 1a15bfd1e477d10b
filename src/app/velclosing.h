// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

/**
 * What has to happen before a window may go, after its file has been saved: the rule, apart from the window that follows it.
 *
 * What was changed reaches the server first. Requests that change something there come to their end, while those that only
 * ask for something keep no window. Where the server alone keeps the calendar, nothing that it has not taken is lost unasked.
 */
class VelClosing
{
public:
    /** How things stand when the window is asked to go. */
    struct Situation {
        bool isKeptByServer = false; ///< there is no file: what is not sent goes with the window
        bool hasUnsent = false;
        bool maySend = false; ///< a synchronisation can be started
        bool isUnderWay = false; ///< a request that waitsFor() names
        bool mayWait =
            true; ///< false at the end of the desktop's session, and when the server refuses the calendar
    };

    enum class Step {
        Send, ///< starts a synchronisation; then ask again
        Wait, ///< the window stays until what is under way has ended; then ask again
        AskToWait, ///< the user wants it to go while it waits
        AskAboutLoss, ///< what is unsent would be lost
        Go
    };

    /** True for a request, one of VelNetTask::Type, that changes something on the server. */
    [[nodiscard]] static bool waitsFor(int type);

    [[nodiscard]] Step next(const Situation &situation);
    /** True from the first Wait on. */
    [[nodiscard]] bool isWaiting() const { return m_isWaiting; }
    /** True when what is still unsent was sent, to no effect. */
    [[nodiscard]] bool hasSent() const { return m_hasSent; }
    /** The window does not go after all. */
    void stay() { *this = {}; }

private:
    bool m_isWaiting = false;
    bool m_hasSent = false;
    bool m_isSending = false; // since the last step
};
