// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "document/veltransfer.h"

#include <KIO/FileCopyJob>
#include <KIO/StatJob>

#include <QFile>

namespace
{
bool copyFile(const QUrl &from, const QUrl &to)
{
    KIO::FileCopyJob *job = KIO::file_copy(from, to, -1, KIO::Overwrite | KIO::HideProgressInfo);
    return job->exec();
}
} // namespace

VelDownload::VelDownload(const QUrl &url)
{
    if (url.isLocalFile()) {
        m_path = url.toLocalFile();
        return;
    }
    m_copy = std::make_unique<QTemporaryFile>();
    if (m_copy->open() && copyFile(url, QUrl::fromLocalFile(m_copy->fileName())))
        m_path = m_copy->fileName();
}

bool velExists(const QUrl &url)
{
    if (url.isLocalFile())
        return QFile::exists(url.toLocalFile());
    return KIO::stat(url, KIO::HideProgressInfo)->exec();
}

bool velUpload(const QString &path, const QUrl &url)
{
    return copyFile(QUrl::fromLocalFile(path), url);
}
