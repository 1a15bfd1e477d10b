// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "document/velfilerights.h"

#include <QFile>
#include <QtEndian>

#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace
{
constexpr char AccessListName[] = "system.posix_acl_access";

// The form of an access list: a version, then entries of tag, permissions and id.
constexpr int HeadSize = 4;
constexpr int EntrySize = 8;
constexpr quint16 OwnerTag = 0x01;

constexpr quint32 PermissionBits = 0777;
constexpr quint32 ClassBits = 7;
constexpr int GroupShift = 3;

QByteArray accessListOf(const QByteArray &path)
{
    const ssize_t size = ::getxattr(path.constData(), AccessListName, nullptr, 0);
    if (size <= 0)
        return {};
    QByteArray list(static_cast<int>(size), Qt::Uninitialized);
    // One that has grown between the two is not read; the file is about to be another anyway.
    return ::getxattr(path.constData(), AccessListName, list.data(), static_cast<std::size_t>(size)) == size
        ? list
        : QByteArray();
}

/** Takes away what the folder gives to new files by itself. */
bool removeAccessList(int handle)
{
    return ::fgetxattr(handle, AccessListName, nullptr, 0) <= 0
        || ::fremovexattr(handle, AccessListName) == 0;
}

bool setAccessList(int handle, const QByteArray &list)
{
    return ::fsetxattr(handle, AccessListName, list.constData(), static_cast<std::size_t>(list.size()), 0)
        == 0;
}

bool isOfGroup(int handle, quint32 group)
{
    struct stat info {
    };
    return ::fstat(handle, &info) == 0 && info.st_gid == group;
}
} // namespace

std::optional<VelFileRights> VelFileRights::of(const QString &path)
{
    const QByteArray name = QFile::encodeName(path);
    struct stat info {
    };
    if (::stat(name.constData(), &info) != 0)
        return std::nullopt;
    VelFileRights rights;
    rights.owner = info.st_uid;
    rights.group = info.st_gid;
    rights.mode = info.st_mode & PermissionBits;
    rights.accessList = accessListOf(name);
    return rights;
}

quint32 VelFileRights::leastOfOthers() const
{
    quint32 least = mode & (mode >> GroupShift) & ClassBits;
    for (int at = HeadSize; at + EntrySize <= accessList.size(); at += EntrySize) {
        const auto tag = qFromLittleEndian<quint16>(accessList.constData() + at);
        if (tag != OwnerTag)
            least &= qFromLittleEndian<quint16>(accessList.constData() + at + sizeof tag);
    }
    return least;
}

bool VelFileRights::applyTo(int handle) const
{
    // Only root may give a file away; the group may be one of the user's own.
    const bool isOwnedAsBefore = ::fchown(handle, owner, group) == 0 || ::fchown(handle, Nobody, group) == 0;
    const bool isSameGroup = isOwnedAsBefore || isOfGroup(handle, group);
    if (isSameGroup && !accessList.isEmpty() && setAccessList(handle, accessList))
        return ::fchmod(handle, mode) == 0;
    if (isSameGroup && accessList.isEmpty())
        return removeAccessList(handle) && ::fchmod(handle, mode) == 0;
    // With another group, or on a file system that keeps no lists, the same bits would be for others.
    const quint32 least = leastOfOthers();
    const quint32 ownerBits = mode & (ClassBits << (2 * GroupShift));
    return removeAccessList(handle) && ::fchmod(handle, ownerBits | (least << GroupShift) | least) == 0;
}
