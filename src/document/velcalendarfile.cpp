// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "document/velcalendarfile.h"

#include "document/velsavefile.h"

#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>

namespace
{
Q_LOGGING_CATEGORY(fileLog, "delmasttime.file", QtWarningMsg)

constexpr qint64 PieceSize = 256 * 1024;
} // namespace

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

bool write(const QString &path, const std::function<bool(QIODevice &)> &write, const QString &like)
{
    VelSaveFile file(path);
    const bool isWritten = file.open(like) && write(file.device()) && file.commit();
    if (!isWritten)
        qCWarning(fileLog) << path << file.device().errorString();
    return isWritten;
}
} // namespace VelCalendarFile
