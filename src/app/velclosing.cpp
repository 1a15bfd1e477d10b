// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "app/velclosing.h"

#include "model/velnettask.h"

#include <utility>

bool VelClosing::waitsFor(int type)
{
    return type == VelNetTask::Sync || type == VelNetTask::SetUserRights || type == VelNetTask::ChangePass;
}

VelClosing::Step VelClosing::next(const Situation &situation)
{
    const bool isAtStake = situation.isKeptByServer && situation.hasUnsent;
    const bool isSending = std::exchange(m_isSending, false);
    if (situation.mayWait && situation.isUnderWay)
        return std::exchange(m_isWaiting, true) && !isSending ? Step::AskToWait : Step::Wait;
    // Of what a file keeps, the next start sends what came too late for the request that was waited for.
    const bool isDue = situation.hasUnsent && !m_hasSent && (isAtStake || !m_isWaiting);
    if (situation.mayWait && situation.maySend && isDue) {
        m_hasSent = m_isSending = true;
        return Step::Send;
    }
    return isAtStake ? Step::AskAboutLoss : Step::Go;
}
