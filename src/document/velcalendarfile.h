// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "formats/velxmlreader.h"
#include "formats/velxmlwriter.h"

#include <QString>

#include <functional>

/** Reads and writes calendar files on the local disk. */
namespace VelCalendarFile
{
enum class Result { Ok, CannotOpen, CannotRead };

/** Reads all of @p path into @p content, which is untouched unless the result is Ok. */
[[nodiscard]] Result read(const QString &path, VelXmlContent &content);

/**
 * Replaces @p path by what @p write writes. Atomic and durable: after a crash, a full disk or a power cut the
 * old file or the new one is there, whole. It keeps the rights of the file that it replaces; a new one gets those of the
 * file @p like, or, when there is none, is for owner and group at most. False when it could not be written; the old file
 * is still there then.
 */
[[nodiscard]] bool write(const QString &path, const std::function<bool(QIODevice &)> &write,
                         const QString &like = {});
} // namespace VelCalendarFile
