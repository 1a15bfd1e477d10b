// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "model/velentrylist.h"

#include <QRect>
#include <QStaticText>

class QFont;

/**
 * One line of a month's cell: an entry, or an occurrence, on one of its days. A value; it owns no entry.
 */
class VelMonthEntry
{
public:
    VelMonthEntry(const VelEntryRef &ref, QDate date, const QRect &rect);

    [[nodiscard]] const VelEntryRef &ref() const { return m_ref; }
    /** The entry, or the occurrence's record, which this makes if need be. */
    [[nodiscard]] const VelEntry *getEntry() const { return m_ref.getEntry(); }
    [[nodiscard]] QDate getDate() const { return m_date; }
    /** Where the line is, in the view's coordinates. */
    [[nodiscard]] const QRect &rect() const { return m_rect; }
    /** True for a line of that entry or any of its occurrences, or of the entry that it is an occurrence of. */
    [[nodiscard]] bool isOf(const VelEntry *entry) const;
    /** True for a line of that very entry or occurrence; never for null. */
    [[nodiscard]] bool shows(const VelEntry *entry) const;

    /** The line's words, as far as they fit; worked out for the first painting and kept. */
    [[nodiscard]] const QStaticText &text(const QFont &font, Qt::LayoutDirection direction) const;

    /** Free pixels on either side of a line's words. */
    static constexpr int Margin = 4;
    /** What the line of @p ref says on @p date: the start, or an ellipsis on later days, and the title. */
    [[nodiscard]] static QString lineText(const VelEntryRef &ref, QDate date);
    /** @p text in one line of at most @p width pixels. */
    [[nodiscard]] static QString fittingText(const QString &text, const QFont &font, int width);

private:
    VelEntryRef m_ref;
    QDate m_date;
    QRect m_rect;
    mutable QStaticText m_text; // empty until it is painted
};
