// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "formats/velxmlreader.h"

#include <QByteArray>

/** Bytes to records and back in one step, and what is different about two of them. */
namespace XmlTesting
{
/** What is in tests/formats/data/@p name. Ends the program when there is no such file. */
[[nodiscard]] QByteArray dataFile(const QString &name);

/** The bytes that a file of hexadecimal digits stands for; blanks do not count, "#" begins a comment. */
[[nodiscard]] QByteArray hexFile(const QString &name);

/** @p elements in a calendar that declares UTF-8. */
[[nodiscard]] QByteArray calendarOf(const QByteArray &elements);

/** What @p bytes hold, fed in pieces of @p pieceSize; nothing when reading failed. */
[[nodiscard]] std::optional<VelXmlContent> readInPieces(const QByteArray &bytes, int pieceSize);
[[nodiscard]] std::optional<VelXmlContent> read(const QByteArray &bytes);

/** The calendar file of @p content; meta fields that are not set have their defaults. */
[[nodiscard]] QByteArray write(const VelXmlContent &content);

/** The first place where the two differ, with what surrounds it there; empty when they are equal. */
[[nodiscard]] QString difference(const QByteArray &actual, const QByteArray &expected);
[[nodiscard]] QString difference(const VelXmlContent &actual, const VelXmlContent &expected);
} // namespace XmlTesting
