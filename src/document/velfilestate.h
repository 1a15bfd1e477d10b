// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QDateTime>
#include <QString>

/**
 * What tells that a file is the one that was last read or written: enough to notice that somebody else wrote
 * it.
 */
struct VelFileState {
    /** The state of the file at @p path now; a missing file has size -1. */
    [[nodiscard]] static VelFileState of(const QString &path);

    bool operator==(const VelFileState &other) const = default;

    qint64 size = -1;
    QDateTime modified;
};
