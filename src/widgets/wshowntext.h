// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QString>

/** Texts from outside, which may be of any length and hold anything, as they are shown. */
namespace WShownText
{
/** Characters; nobody reads more of a title, and laying out a longer text keeps everybody waiting. */
constexpr int Most = 1000;

/** The first @p most characters, with dots where there are more. */
[[nodiscard]] QString cut(const QString &text, int most = Most);
/**
 * For boxes and tool tips, which show as rich text whatever looks like such: the text so that all of its characters
 * are shown as they are.
 */
[[nodiscard]] QString plain(const QString &text);
} // namespace WShownText
