// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "document/velcalendarfile.h"

#include "document/velfilestate.h"

#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QSaveFile>

#include <fcntl.h>
#include <unistd.h>

namespace
{
Q_LOGGING_CATEGORY(fileLog, "delmasttime.file", QtWarningMsg)

constexpr qint64 PieceSize = 256 * 1024;

/** A renamed file survives a power cut only when its folder has reached the disk too. */
void syncFolderOf(const QString &path)
{
    const QByteArray folder = QFile::encodeName(QFileInfo(path).canonicalPath()); // of what a link points to
    const int handle = ::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (handle < 0)
        return;
    ::fsync(handle);
    ::close(handle);
}
} // namespace

VelFileState VelFileState::of(const QString &path)
{
    const QFileInfo info(path);
    return info.exists() ? VelFileState{info.size(), info.lastModified()} : VelFileState{};
}

namespace VelCalendarFile
{
Result read(const QString &path, VelXmlContent &content)
{
    QFile file(path);
    // Pipes and devices may never begin, or never end.
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return Result::CannotOpen;
    VelXmlReader reader;
    QByteArray piece(PieceSize, Qt::Uninitialized);
    bool readable = true;
    qint64 size = 0;
    while (readable && (size = file.read(piece.data(), piece.size())) > 0)
        readable = reader.feed(piece.constData(), static_cast<std::size_t>(size));
    if (!readable || size < 0 || !reader.finish()) {
        qCWarning(fileLog) << path << reader.errorMessage() << "line" << reader.errorLine() << "column"
                           << reader.errorColumn();
        return Result::CannotRead;
    }
    content = reader.takeContent();
    return Result::Ok;
}

bool write(const QString &path, const std::function<bool(QIODevice &)> &write)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    if (!write(file) || !file.flush() || ::fsync(file.handle()) != 0) {
        qCWarning(fileLog) << path << file.errorString();
        file.cancelWriting();
        return false;
    }
    if (!file.commit())
        return false;
    syncFolderOf(path);
    return true;
}
} // namespace VelCalendarFile
