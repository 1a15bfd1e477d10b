// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "document/velfilestate.h"

#include <QFile>

#include <sys/stat.h>
#include <sys/vfs.h>

namespace
{
constexpr qint64 NanosecondsPerSecond = 1000000000;

qint64 nanoseconds(const timespec &time)
{
    return time.tv_sec * NanosecondsPerSecond + time.tv_nsec;
}

/** File systems that run outside the kernel number files as they meet them, and the same file anew later. */
bool hasLastingNumbers(const QByteArray &path)
{
    constexpr auto outside = 0x65735546UL; // FUSE_SUPER_MAGIC
    struct statfs info {
    };
    return ::statfs(path.constData(), &info) == 0 && static_cast<unsigned long>(info.f_type) != outside;
}
} // namespace

VelFileState VelFileState::of(const QString &path)
{
    const QByteArray name = QFile::encodeName(path);
    struct stat info {
    };
    VelFileState state;
    if (::stat(name.constData(), &info) != 0)
        return state;
    state.size = info.st_size;
    state.inode = hasLastingNumbers(name) ? info.st_ino : 0;
    state.modified = nanoseconds(info.st_mtim);
    state.changed = nanoseconds(info.st_ctim);
    state.links = info.st_nlink;
    state.rights = VelFileRights::of(path).value_or(VelFileRights());
    return state;
}

bool VelFileState::hasSameContent(const VelFileState &other) const
{
    if (size != other.size || inode != other.inode || modified != other.modified)
        return false;
    return changed == other.changed || links != other.links || !(rights == other.rights);
}
