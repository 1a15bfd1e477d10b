// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QString>

/** What keeps passwords out of files and messages. */
namespace WSecurity
{
/**
 * The digest (RFC 1321) of a password's Latin-1 bytes, which is all that the server asks for: 32 lower-case
 * hexadecimal digits. Characters outside Latin-1 count as question marks.
 */
[[nodiscard]] QString md5(const QString &password);
} // namespace WSecurity
