// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "model/velentry.h"

#include <QStringList>

#include <optional>

/** What those attendees get by e-mail whom the server does not know. */
struct VelInvitation {
    /** None when all attendees are on the server, or have no address. @p userid is that of the calendar. */
    [[nodiscard]] static std::optional<VelInvitation> of(const VelEntry &entry, quint32 userid);

    QStringList recipients; ///< in the order of the attendees
    QString subject; ///< the entry's title
    QString body;
    QByteArray vCalendar; ///< the entry, to be attached
};
