// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "formats/velxmlreader.h"

/** The records that the golden files in data/ hold, made without any reader. */
namespace GoldenRecords
{
/** golden.xml */
[[nodiscard]] VelXmlContent calendar();
/** entry.hex */
[[nodiscard]] VelEntry binaryEntry();
/** account.hex */
[[nodiscard]] VelAccount binaryAccount();
} // namespace GoldenRecords
