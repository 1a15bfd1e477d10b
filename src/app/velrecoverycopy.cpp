// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "app/velrecoverycopy.h"

#include "app/velrecovery.h"
#include "document/veldoc.h"
#include "document/velsavefile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QUuid>

#include <utility>

namespace
{
const char Prefix[] = "untitled-";
const char Suffix[] = ".xml";
const char LockSuffix[] = ".lock";
} // namespace

VelRecoveryCopy::VelRecoveryCopy(const QString &path)
    : m_path(path)
    , m_lock(path + QLatin1String(LockSuffix))
{
    m_lock.setStaleLockTime(0); // not by age: only when its process is gone
}

std::unique_ptr<VelRecoveryCopy> VelRecoveryCopy::create()
{
    const QString name =
        QLatin1String(Prefix) + QUuid::createUuid().toString(QUuid::WithoutBraces) + QLatin1String(Suffix);
    std::unique_ptr<VelRecoveryCopy> copy(new VelRecoveryCopy(VelRecovery::folder().filePath(name)));
    return copy->m_lock.tryLock(0) ? std::move(copy) : nullptr;
}

std::vector<std::unique_ptr<VelRecoveryCopy>> VelRecoveryCopy::findAbandoned()
{
    std::vector<std::unique_ptr<VelRecoveryCopy>> found;
    const QDir folder = VelRecovery::folder();
    const QString lock = QLatin1String(LockSuffix);
    const QString names = QLatin1String(Prefix) + QLatin1Char('*') + QLatin1String(Suffix);
    QStringList files = folder.entryList({names}, QDir::Files, QDir::Time | QDir::Reversed);
    // One that was killed before it had written anything has left no more than its lock.
    const QStringList locks = folder.entryList({names + lock}, QDir::Files);
    for (const QString &file : locks) {
        if (!files.contains(file.chopped(lock.size())))
            files.append(file.chopped(lock.size()));
    }
    for (const QString &file : std::as_const(files)) {
        std::unique_ptr<VelRecoveryCopy> copy(new VelRecoveryCopy(folder.filePath(file)));
        if (!copy->m_lock.tryLock(0))
            continue;
        VelSaveFile::sweep(copy->path());
        if (folder.exists(file))
            found.push_back(std::move(copy));
    }
    return found;
}

bool VelRecoveryCopy::write(const VelDoc &doc)
{
    return doc.writeCopy(m_path);
}

void VelRecoveryCopy::remove()
{
    QFile::remove(m_path);
    VelSaveFile::sweep(m_path);
}

QDateTime VelRecoveryCopy::written() const
{
    return QFileInfo(m_path).lastModified();
}
