// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QString>
#include <QtGlobal>

#include <vector>

/** Row numbers in the order in which the rows are to be shown. */
using WRowOrder = std::vector<int>;

/** The rows in the order in which they were filled in. */
[[nodiscard]] WRowOrder wFillOrder(int rows);

/** The rows ordered by their numbers. Equal ones keep their fill order, ascending and descending. */
[[nodiscard]] WRowOrder wOrderByNumber(const std::vector<qint64> &keys, Qt::SortOrder order);

/**
 * The rows ordered by their texts as people of the current locale expect it: capital letters do not count and
 * "Week 9" comes before "Week 10". Equal ones keep their fill order, ascending and descending.
 */
[[nodiscard]] WRowOrder wOrderByText(const std::vector<QString> &keys, Qt::SortOrder order);
