// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "document/velurl.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace
{
/** The one name of what may have many. */
QUrl canonical(const QUrl &url)
{
    if (!url.isLocalFile())
        return url.adjusted(QUrl::NormalizePathSegments | QUrl::RemovePassword | QUrl::RemoveFragment);
    const QFileInfo file(url.toLocalFile());
    const QString path = file.canonicalFilePath();
    if (!path.isEmpty())
        return QUrl::fromLocalFile(path);
    // It is not there, but the folder where it was may be.
    const QString folder = QFileInfo(file.absolutePath()).canonicalFilePath();
    return QUrl::fromLocalFile(folder.isEmpty() ? QDir::cleanPath(file.absoluteFilePath())
                                                : QDir(folder).filePath(file.fileName()));
}
} // namespace

namespace VelUrl
{
void setSuffix(QUrl &url, const QString &suffix)
{
    if (!url.fileName().endsWith(suffix))
        url.setPath(url.path() + suffix);
}

bool isSameFile(const QUrl &a, const QUrl &b)
{
    return !a.isRelative() && !b.isRelative() && canonical(a) == canonical(b);
}

QUrl inDocuments(const QString &name)
{
    QString base = name.trimmed();
    base.replace(QLatin1Char('/'), QLatin1Char('-'));
    if (base.startsWith(QLatin1Char('.')))
        base[0] = QLatin1Char('_'); // else it would be hidden
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    const QDir folder(QDir(documents).exists() ? documents : QDir::homePath());
    QString file = base + QLatin1String(".xml");
    for (int number = 2; folder.exists(file); ++number)
        file = base + QLatin1Char(' ') + QString::number(number) + QLatin1String(".xml");
    return QUrl::fromLocalFile(folder.filePath(file));
}
} // namespace VelUrl
