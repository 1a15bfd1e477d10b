// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "document/velfilerights.h"

#include <QString>

/**
 * What tells that a file is the one that was last read or written: enough to notice that somebody else wrote or replaced
 * it, and not to mistake for that what leaves its content alone.
 */
struct VelFileState {
    /** The state of the file at @p path now, links followed; a missing file has size -1. */
    [[nodiscard]] static VelFileState of(const QString &path);

    [[nodiscard]] bool exists() const { return size >= 0; }
    /**
     * True when nobody has written to the file between the two states. A change of rights or of the number of links counts
     * for nothing; one that cannot be explained by these, with the time of writing put back, does.
     */
    [[nodiscard]] bool hasSameContent(const VelFileState &other) const;

    qint64 size = -1;
    quint64 inode = 0; ///< 0 where such numbers do not last
    qint64 modified = 0; ///< nanoseconds since 1970
    qint64 changed = 0; ///< the same, of content or rights
    quint64 links = 0;
    VelFileRights rights;
};
