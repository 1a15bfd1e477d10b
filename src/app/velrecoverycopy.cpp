// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "app/velrecoverycopy.h"

#include "app/velrecovery.h"
#include "document/veldoc.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QUuid>

namespace
{
const char Prefix[] = "untitled-";
const char Suffix[] = ".xml";
} // namespace

VelRecoveryCopy::VelRecoveryCopy(const QString &path)
    : m_path(path)
    , m_lock(path + QLatin1String(".lock"))
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
    const QString names = QLatin1String(Prefix) + QLatin1Char('*') + QLatin1String(Suffix);
    const QStringList files = folder.entryList({names}, QDir::Files, QDir::Time | QDir::Reversed);
    for (const QString &file : files) {
        std::unique_ptr<VelRecoveryCopy> copy(new VelRecoveryCopy(folder.filePath(file)));
        if (copy->m_lock.tryLock(0))
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
}

QDateTime VelRecoveryCopy::written() const
{
    return QFileInfo(m_path).lastModified();
}
