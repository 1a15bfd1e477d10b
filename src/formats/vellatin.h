// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "model/compat.h"

#include <QByteArray>
#include <QString>

#include <string>

/**
 * ISO-8859-15, the encoding of calendar files and messages: Latin-1 but for eight places, the euro sign among
 * them. The toolkit reads it only through text codecs that not every installation has.
 */
namespace VelLatin
{
/** The character that @p byte stands for. */
[[nodiscard]] char16_t fromLatin9(unsigned char byte);
[[nodiscard]] QString fromLatin9(const char *bytes, VelSize size);

/** The byte for @p character, or -1 when the encoding lacks it. */
[[nodiscard]] int toLatin9(char16_t character);

/** Appends the text in UTF-8. */
void appendLatin9AsUtf8(std::string &out, const char *bytes, std::size_t size);
void appendLatin1AsUtf8(std::string &out, const char *bytes, std::size_t size);
} // namespace VelLatin
