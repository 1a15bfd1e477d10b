// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "app/velrecovery.h"

#include <QCryptographicHash>
#include <QFile>
#include <QStandardPaths>

namespace VelRecovery
{
QDir folder()
{
    const QString path =
        QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + QLatin1String("/recovery");
    QDir().mkpath(path);
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return QDir(path);
}

QString fileName(const QUrl &url, const QString &window)
{
    // A name that follows from the calendar's alone is found again by a process that knows nothing else; the
    // frameworks' own recovery files go with the process that made them.
    const QString key = window + QLatin1Char('\n') + url.toString();
    const QByteArray hash = QCryptographicHash::hash(key.toUtf8(), QCryptographicHash::Sha1).toHex();
    return folder().filePath(url.fileName() + QLatin1Char('-') + QString::fromLatin1(hash.left(12))
                             + QLatin1String(".xml"));
}
} // namespace VelRecovery
