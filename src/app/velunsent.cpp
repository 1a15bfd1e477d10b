// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "app/velunsent.h"

#include "document/veldoc.h"

#include <KLocalizedString>

#include <algorithm>

namespace
{
constexpr int MostTitles = 5;
constexpr int MostCharacters = 60; // of a title

QString quoted(const QString &title)
{
    QString shown = title.simplified();
    if (shown.isEmpty())
        shown = i18nc("stands for the title of an entry that has none", "(without a title)");
    if (shown.size() > MostCharacters)
        shown = shown.left(MostCharacters) + QChar(0x2026);
    return i18nc("the title of an entry in a list", "\"%1\"", shown);
}
} // namespace

namespace VelUnsent
{
bool hasAny(const VelDoc &doc)
{
    const VelEntryList all = doc.getEntries({}, VelEntry::NoType, false, {});
    return std::any_of(all.begin(), all.end(),
                       [](const VelEntryRef &entry) { return entry.getOriginal()->dirty != 0; });
}

QStringList titles(const VelDoc &doc)
{
    QStringList found;
    for (const VelEntryRef &each : doc.getEntries({}, VelEntry::NoType, false, {})) {
        const VelEntry *entry = each.getOriginal();
        if (entry->dirty != 0)
            found.append(entry->getTitle());
    }
    return found;
}

QString lossText(const QStringList &titles)
{
    QStringList named;
    for (const QString &title : titles.mid(0, MostTitles))
        named.append(quoted(title));
    const int more = int(titles.size()) - int(named.size());
    if (more > 0)
        named.append(i18ncp("at the end of a list of titles", "one more", "%1 more", more));
    return i18np("One change made here is not on the server and would be lost: %2.",
                 "%1 changes made here are not on the server and would be lost: %2.", int(titles.size()),
                 named.join(i18nc("between the titles of a list", ", ")));
}
} // namespace VelUnsent
