// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "views/velmonthentry.h"

#include "model/veltext.h"
#include "views/velentrytext.h"

#include <QFontMetrics>
#include <QTextOption>
#include <QTransform>

VelMonthEntry::VelMonthEntry(const VelEntryRef &ref, QDate date, const QRect &rect)
    : m_ref(ref)
    , m_date(date)
    , m_rect(rect)
{
}

bool VelMonthEntry::isOf(const VelEntry *entry) const
{
    const quint32 stored = entry->isOccurrence() ? entry->originalid : entry->localid;
    return m_ref.getOriginal()->localid == stored;
}

bool VelMonthEntry::shows(const VelEntry *entry) const
{
    return entry && isOf(entry) && m_ref.getNumber() == (entry->isOccurrence() ? entry->localid : 0);
}

const QStaticText &VelMonthEntry::text(const QFont &font, Qt::LayoutDirection direction) const
{
    if (m_text.text().isEmpty()) {
        QTextOption option;
        option.setTextDirection(direction);
        m_text.setTextFormat(Qt::PlainText);
        m_text.setTextOption(option);
        m_text.setText(fittingText(lineText(m_ref, m_date), font, m_rect.width() - 2 * Margin));
        m_text.prepare(QTransform(), font);
    }
    return m_text;
}

QString VelMonthEntry::lineText(const VelEntryRef &ref, QDate date)
{
    const QString title = VelEntryText::title(*ref.getOriginal());
    // A to-do stands where it is due, whenever it began.
    if (ref.getOriginal()->type == VelEntry::Todo)
        return title;
    if (ref.getStart().date() != date)
        return QChar(0x2026) + QLatin1Char(' ') + title;
    if (ref.getOriginal()->notime)
        return title;
    return VelText::getTime(ref.getStart().time()) + QLatin1Char(' ') + title;
}

QString VelMonthEntry::fittingText(const QString &text, const QFont &font, int width)
{
    // A character takes a pixel at least: there is no need to measure a whole novel for one line.
    const QString line = text.left(qMax(0, width)).simplified();
    return QFontMetrics(font).elidedText(line, Qt::ElideRight, width);
}
