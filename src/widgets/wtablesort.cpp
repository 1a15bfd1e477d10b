// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "widgets/wtablesort.h"

#include <QCollator>
#include <QLocale>

#include <algorithm>
#include <numeric>

namespace
{
template <typename Key>
struct RowKey {
    Key key;
    int row;
};

int compareKeys(qint64 a, qint64 b)
{
    return a < b ? -1 : int(b < a);
}

int compareKeys(const QCollatorSortKey &a, const QCollatorSortKey &b)
{
    return a.compare(b);
}

/** The row number decides between equal keys in either direction, which makes the order a stable one. */
template <typename Key>
WRowOrder sorted(std::vector<RowKey<Key>> &rows, Qt::SortOrder order)
{
    const bool ascending = order == Qt::AscendingOrder;
    std::sort(rows.begin(), rows.end(), [ascending](const RowKey<Key> &a, const RowKey<Key> &b) {
        const int result = compareKeys(a.key, b.key);
        if (result == 0) {
            return a.row < b.row;
        }
        return ascending ? result < 0 : result > 0;
    });
    WRowOrder result(rows.size());
    std::transform(rows.begin(), rows.end(), result.begin(), [](const RowKey<Key> &row) { return row.row; });
    return result;
}

QCollator collator()
{
    QLocale locale;
    if (locale.language() == QLocale::C) {
        // The collation of the C locale is that of the bytes: no folding of case, no numbers.
        locale = QLocale(QLocale::English);
    }
    QCollator result(locale);
    result.setCaseSensitivity(Qt::CaseInsensitive);
    result.setNumericMode(true);
    return result;
}
} // namespace

WRowOrder wFillOrder(int rows)
{
    WRowOrder result(static_cast<std::size_t>(rows));
    std::iota(result.begin(), result.end(), 0);
    return result;
}

WRowOrder wOrderByNumber(const std::vector<qint64> &keys, Qt::SortOrder order)
{
    std::vector<RowKey<qint64>> rows;
    rows.reserve(keys.size());
    for (const qint64 key : keys) {
        rows.push_back({key, int(rows.size())});
    }
    return sorted(rows, order);
}

WRowOrder wOrderByText(const std::vector<QString> &keys, Qt::SortOrder order)
{
    const QCollator locale = collator();
    std::vector<RowKey<QCollatorSortKey>> rows;
    rows.reserve(keys.size());
    for (const QString &key : keys) {
        rows.push_back({locale.sortKey(key), int(rows.size())});
    }
    return sorted(rows, order);
}
