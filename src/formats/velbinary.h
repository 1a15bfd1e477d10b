// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "model/velentry.h"

#include <QByteArray>

/**
 * The binary form of records, which the clipboard and drags carry between windows, programs and versions.
 *
 * Big-endian, with the field forms of data stream version Qt_3_3: the oldest programs that exchange it use
 * them, and they are the same in every generation of the toolkit.
 */
namespace VelBinary
{
/** All stored fields, in declaration order, occurrences left out. */
[[nodiscard]] QByteArray asByteArray(const VelEntry &entry);
/** The entry, exactly as stored, or null when the bytes are no whole entry. */
[[nodiscard]] std::unique_ptr<VelEntry> fromByteArray(const QByteArray &bytes);

[[nodiscard]] QByteArray asByteArray(const VelAccount &account);
[[nodiscard]] std::unique_ptr<VelAccount> accountFromByteArray(const QByteArray &bytes);
} // namespace VelBinary
