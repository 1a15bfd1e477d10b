// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

/**
 * Who may read and write a file: owner, group, mode and, where there is one, the access list (POSIX 1003.1e draft 17, in
 * the form in which Linux keeps it).
 */
class VelFileRights
{
public:
    static constexpr quint32 Nobody = 0xFFFFFFFFU;

    VelFileRights() = default;

    /** Of the file at @p path, links followed; none when there is no such file. */
    [[nodiscard]] static std::optional<VelFileRights> of(const QString &path);

    /**
     * Gives these rights to the open file @p handle. Where something of it cannot be had, the owner and whoever else may
     * then use the file may do no more than before: what only some of the others might is taken from all of them. False
     * when even that fails.
     */
    [[nodiscard]] bool applyTo(int handle) const;

    bool operator==(const VelFileRights &other) const = default;

    quint32 owner = Nobody;
    quint32 group = Nobody;
    quint32 mode = 0; ///< the permission bits; with an access list those of the group are its mask
    QByteArray accessList; ///< empty for none

    /** What everybody but the owner may do, as three bits: the least that any entry of mode and access list grants. */
    [[nodiscard]] quint32 leastOfOthers() const;
};
