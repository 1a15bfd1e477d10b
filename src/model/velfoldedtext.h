// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QStringList>

#include <optional>

/** What people type, brought to one form, so that only what they mean is left to tell apart. */
namespace VelFoldedText
{
/** Longer texts are neither a date nor a time. */
constexpr int MaximumLength = 60;

/** The numbers and the words of a text, each in their order. */
struct Pieces {
    QStringList numbers; ///< of ASCII digits
    QStringList words;
};

/**
 * In lower case, without accents and marks of direction, with ASCII digits and ordinary signs for those of other scripts
 * and widths, one blank for many, and none around it.
 */
[[nodiscard]] QString fold(const QString &text);
/**
 * The pieces of a folded text that begins with one of them; digits and letters need nothing between them. None when it
 * holds anything but letters, digits, @p separators and what other scripts have for a comma.
 */
[[nodiscard]] std::optional<Pieces> split(const QString &folded, const QString &separators);
/** The words that a date or time format of the toolkit has besides its fields, folded: "de", "uhr". */
[[nodiscard]] QStringList literalWords(const QString &format);
} // namespace VelFoldedText
