// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "net/velrequestwriter.h"

#include <optional>

/**
 * What synchronisations have sent that was never answered.
 *
 * The server may have taken it, or not. So the next synchronisation sends the same entries again, as they were: to a server
 * that has them already they are what it knows, while an edited one would be a second entry. What was done to them since
 * stays in the journal of the exchange (VelDoc::beginExchange()), which goes on until an answer has been merged, and is sent
 * after that.
 */
class VelUnanswered
{
public:
    /** Keeps references to both. */
    VelUnanswered(VelDoc &doc, const VelSettings &settings);

    /** The message for @p task. A synchronisation begins an exchange, or repeats what is unanswered. */
    [[nodiscard]] VelRequest write(const VelNetTask &task);
    /** The server has refused what was sent last, and so did not take it; what that repeated is as unknown as before. */
    void refuse();

    /** True when the next synchronisation is to repeat. Ends with the exchange, and with another account. */
    [[nodiscard]] bool isPending() const;
    /** True when the last synchronisation that was written repeated another: what changed since is still to be sent. */
    [[nodiscard]] bool isRepeat() const { return m_isRepeat; }

private:
    struct Sent {
        VelSentEntries entries;
        quint64 exchange = 0; ///< VelDoc::getExchangeCount()
        QString server;
        QString user;
    };

    VelDoc &m_doc;
    const VelSettings &m_settings;
    std::optional<Sent> m_sent;
    bool m_isRepeat = false;
};
