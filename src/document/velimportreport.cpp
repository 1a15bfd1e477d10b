// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "document/velimportreport.h"

#include <KLocalizedString>

#include <algorithm>

namespace
{
QString name(const QString &title)
{
    constexpr int enough = 4 * VelImportReport::MaximumLength;
    const QString text = title.left(enough).simplified();
    if (text.isEmpty())
        return i18nc("an entry without a title", "(no title)");
    return text.size() <= VelImportReport::MaximumLength
        ? text
        : text.left(VelImportReport::MaximumLength - 1) + QChar(0x2026);
}
} // namespace

VelImportReport::VelImportReport(const VelForeignContent &content)
    : m_added(static_cast<int>(content.entries.size()))
    , m_leftOut(content.leftOut)
    , m_singles(content.singles)
    , m_passedOver(content.passedOver)
    , m_simplified(content.simplified)
{
}

QString VelImportReport::text() const
{
    QStringList parts = counts();
    if (!m_simplified.isEmpty()) {
        parts.append(
            i18np("One entry repeats in a way that this calendar does not know; please check its dates:",
                  "%1 entries repeat in ways that this calendar does not know; please check their dates:",
                  m_simplified.size())
            + QLatin1Char('\n') + names(m_simplified));
    }
    return parts.join(QLatin1String("\n\n"));
}

QStringList VelImportReport::counts() const
{
    QStringList parts;
    if (m_added == 0 && m_leftOut == 0)
        parts.append(i18n("The file holds no calendar entries. Nothing was imported."));
    if (m_leftOut > 0) {
        parts.append(i18np("One entry was imported.", "%1 entries were imported.", m_added) + QLatin1Char(' ')
                     + i18np("One could not be read and was left out.",
                             "%1 could not be read and were left out.", m_leftOut));
    }
    if (m_passedOver > 0)
        parts.append(
            i18n("Parts of entries were left out, as they are larger than any calendar program writes."));
    if (m_singles > 0) {
        parts.append(
            i18np("One day at the start of a series was imported as an entry of its own, as the rule "
                  "passes over it in this calendar.",
                  "%1 days at the start of series were imported as entries of their own, as the rules "
                  "pass over them in this calendar.",
                  m_singles));
    }
    return parts;
}

QString VelImportReport::exportText(const QStringList &leftOut)
{
    if (leftOut.isEmpty())
        return {};
    return i18np("One entry was not exported, as the file cannot say its date:",
                 "%1 entries were not exported, as the file cannot say their dates:", leftOut.size())
        + QLatin1Char('\n') + names(leftOut);
}

QString VelImportReport::names(const QStringList &titles)
{
    QStringList lines;
    for (const QString &title : titles.mid(0, MaximumNames))
        lines.append(name(title));
    if (titles.size() > MaximumNames)
        lines.append(i18np("and one more", "and %1 more", titles.size() - MaximumNames));
    return lines.join(QLatin1Char('\n'));
}
