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

VelUnsent::VelUnsent(VelDoc &doc)
    : m_doc(doc)
{
}

bool VelUnsent::hasAny() const
{
    const VelEntryList all = m_doc.getEntries({}, VelEntry::NoType, false, {});
    return !m_overruled.empty() || std::any_of(all.begin(), all.end(), [](const VelEntryRef &entry) {
        return entry.getOriginal()->dirty != 0;
    });
}

QStringList VelUnsent::titles() const
{
    QStringList found;
    for (const VelEntry &entry : m_overruled)
        found.append(entry.getTitle());
    for (const VelEntryRef &each : m_doc.getEntries({}, VelEntry::NoType, false, {})) {
        const VelEntry *entry = each.getOriginal();
        if (entry->dirty != 0)
            found.append(entry->getTitle());
    }
    return found;
}

std::vector<quint32> VelUnsent::addOverruled()
{
    std::vector<quint32> added;
    for (const VelEntry &each : m_overruled) {
        if (each.isDeleted())
            continue;
        auto copy = std::make_unique<VelEntry>(each);
        copy->localid = copy->globalid = copy->user = 0;
        copy->dirty = 1;
        added.push_back(m_doc.addEntry(m_doc.newEntry(std::move(copy)))->localid);
    }
    return added;
}

QString VelUnsent::lossText() const
{
    const QStringList all = titles();
    QStringList named;
    for (const QString &title : all.mid(0, MostTitles))
        named.append(quoted(title));
    const int more = int(all.size()) - int(named.size());
    if (more > 0)
        named.append(i18ncp("at the end of a list of titles", "one more", "%1 more", more));
    return i18np("One change made here is not on the server and would be lost: %2.",
                 "%1 changes made here are not on the server and would be lost: %2.", int(all.size()),
                 named.join(i18nc("between the titles of a list", ", ")));
}
