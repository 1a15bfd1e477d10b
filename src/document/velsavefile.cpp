// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "document/velsavefile.h"

#include <QFileInfo>
#include <QRandomGenerator>

#include <cerrno>
#include <ctime>
#include <memory>
#include <string_view>

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{
constexpr std::string_view Suffix = ".delmast-saving";
constexpr std::string_view Letters = "abcdefghijklmnopqrstuvwxyz0123456789";
constexpr std::size_t RandomLength = 6;
constexpr int LongestName = 200; // bytes of the file's own name in that of the new one: names end at 255
constexpr int MostLinks = 40; // one after the other, as the kernel counts
constexpr int MostTries = 100;

constexpr unsigned OwnerOnly = 0600;
constexpr unsigned OwnerAndGroup = 0660;

/** What a link leads to, also when that is not there. */
QString targetOf(const QString &path)
{
    QFileInfo file(path);
    for (int links = 0; file.isSymLink() && links < MostLinks; ++links)
        file.setFile(file.symLinkTarget());
    return file.filePath();
}

QByteArray folderOf(const QString &path)
{
    return QFile::encodeName(QFileInfo(path).path());
}

/** What the names of all new files for @p path begin with. */
QByteArray prefixOf(const QString &path)
{
    return '.' + QFile::encodeName(QFileInfo(path).fileName()).left(LongestName) + '.';
}

QByteArray randomName(const QString &path)
{
    QByteArray name = folderOf(path) + '/' + prefixOf(path);
    for (std::size_t i = 0; i < RandomLength; ++i)
        name += Letters[QRandomGenerator::global()->bounded(static_cast<quint32>(Letters.size()))];
    return name.append(Suffix.data(), static_cast<int>(Suffix.size()));
}

bool isLeftoverName(std::string_view name, std::string_view prefix)
{
    if (name.size() != prefix.size() + RandomLength + Suffix.size() || name.substr(0, prefix.size()) != prefix
        || name.substr(name.size() - Suffix.size()) != Suffix)
        return false;
    const std::string_view random = name.substr(prefix.size(), RandomLength);
    return random.find_first_not_of(Letters) == std::string_view::npos;
}

/** True for a file of this user that nobody writes any more. The lock goes with the handle. */
bool isAbandoned(int handle)
{
    struct stat info {
    };
    return ::fstat(handle, &info) == 0 && S_ISREG(info.st_mode) && info.st_uid == ::geteuid()
        && std::time(nullptr) - info.st_mtim.tv_sec > VelSaveFile::YoungestLeftover
        && ::flock(handle, LOCK_EX | LOCK_NB) == 0;
}

void sweepOne(const QByteArray &path)
{
    const int handle = ::open(path.constData(), O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (handle < 0)
        return;
    if (isAbandoned(handle))
        ::unlink(path.constData());
    ::close(handle);
}

/** A renamed file survives a power cut only when its folder has reached the disk too. */
void syncFolder(const QByteArray &folder)
{
    const int handle = ::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (handle < 0)
        return;
    ::fsync(handle);
    ::close(handle);
}
} // namespace

VelSaveFile::VelSaveFile(const QString &path)
    : m_path(targetOf(path))
{
}

VelSaveFile::~VelSaveFile()
{
    if (!m_newPath.isEmpty())
        ::unlink(m_newPath.constData());
}

bool VelSaveFile::create(unsigned mode)
{
    for (int tries = 0; tries < MostTries; ++tries) {
        const QByteArray path = randomName(m_path);
        const int handle = ::open(path.constData(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode);
        if (handle < 0 && errno == EEXIST)
            continue;
        if (handle < 0)
            return false;
        // Not every file system has locks; where none are, only the age protects it.
        ::flock(handle, LOCK_EX | LOCK_NB);
        m_newPath = path;
        return m_file.open(handle, QIODevice::ReadWrite | QIODevice::Unbuffered,
                           QFileDevice::AutoCloseHandle);
    }
    return false;
}

bool VelSaveFile::open(const QString &like)
{
    const QFileInfo old(m_path);
    if (m_path.isEmpty() || old.isSymLink() || (old.exists() && !(old.isFile() && old.isWritable())))
        return false;
    m_rights = VelFileRights::of(old.exists() || like.isEmpty() ? m_path : like);
    return create(m_rights ? OwnerOnly : OwnerAndGroup);
}

bool VelSaveFile::commit()
{
    const bool isReady = m_file.flush() && (!m_rights || m_rights->applyTo(m_file.handle()))
        && ::fsync(m_file.handle()) == 0
        && ::rename(m_newPath.constData(), QFile::encodeName(m_path).constData()) == 0;
    if (!isReady)
        return false;
    m_newPath.clear();
    m_file.close();
    syncFolder(folderOf(m_path));
    sweep(m_path);
    return true;
}

void VelSaveFile::sweep(const QString &path)
{
    const QString target = targetOf(path);
    const QByteArray folder = folderOf(target);
    const QByteArray prefix = prefixOf(target);
    const std::unique_ptr<DIR, int (*)(DIR *)> entries(::opendir(folder.constData()), &::closedir);
    while (const dirent *entry = entries ? ::readdir(entries.get()) : nullptr) {
        const std::string_view name = entry->d_name;
        if (isLeftoverName(name, {prefix.constData(), static_cast<std::size_t>(prefix.size())}))
            sweepOne(folder + '/' + QByteArray(entry->d_name));
    }
}
