// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QString>

/** One request to the server that waits for its turn. */
struct VelNetTask {
    enum Type {
        None = 0,
        Sync = 1,
        UserList = 2, ///< 3 is kept free
        UserBusy = 4,
        GetUserRights = 5,
        SetUserRights = 6,
        ChangePass = 7,
        GetEntries = 8
    };

    int type = None;
    QString argument; ///< goes into the body of the message as it is
    bool quiet = false; ///< failures are not shown
    QString told = {}; ///< a failure that the user was shown while this waited

    /** The name that the message bears, empty for a number that has none. */
    [[nodiscard]] static QString nameOf(int type)
    {
        switch (type) {
        case Sync:
            return QStringLiteral("sync");
        case UserList:
            return QStringLiteral("userlist");
        case UserBusy:
            return QStringLiteral("userbusy");
        case GetUserRights:
            return QStringLiteral("getuserrights");
        case SetUserRights:
            return QStringLiteral("setuserrights");
        case ChangePass:
            return QStringLiteral("changepass");
        case GetEntries:
            return QStringLiteral("getentries");
        default:
            return {};
        }
    }
};
