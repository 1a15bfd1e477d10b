// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QString>
#include <QTemporaryFile>
#include <QUrl>

#include <memory>

/**
 * A local file that stands for a URL: the file itself when it is local, else a copy that goes with this
 * object.
 */
class VelDownload
{
public:
    /** Fetches what is not local, and waits for it. */
    explicit VelDownload(const QUrl &url);

    /** The local file; it need not exist, above all when the download failed. */
    [[nodiscard]] QString path() const { return m_path; }

private:
    QString m_path;
    std::unique_ptr<QTemporaryFile> m_copy;
};

/** True when there is something at @p url, wherever it is. Waits for the answer. */
[[nodiscard]] bool velExists(const QUrl &url);

/** Copies the local file @p path to the remote @p url and waits for it. False when it could not be written.
 */
[[nodiscard]] bool velUpload(const QString &path, const QUrl &url);
