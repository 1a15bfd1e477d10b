// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "document/velurl.h"

#include <QDir>
#include <QFileInfo>

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
} // namespace VelUrl
