// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "app/velgivenreminders.h"

#include "document/veldoc.h"

#include <algorithm>

namespace
{
/** By its file, or else by whose it is. */
QString nameOf(const VelDoc &doc)
{
    return doc.isUntitled() ? QStringLiteral("user %1").arg(doc.getUserId())
                            : doc.URL().toString(QUrl::RemovePassword);
}

const VelDateTime &momentOf(const VelEntry &entry)
{
    return entry.type == VelEntry::Todo ? entry.getEnd() : entry.getStart();
}

/** The moment first: what is long past is told by that alone. */
QString textOf(const VelEntry &entry)
{
    const VelDateTime &moment = momentOf(entry);
    const QString id = (entry.globalid != 0 ? QStringLiteral("g%1").arg(entry.globalid)
                                            : QStringLiteral("l%1").arg(entry.localid));
    return moment.date().toString(Qt::ISODate) + moment.time().toString(QStringLiteral("Thh:mm "))
        + QString::number(entry.reminder) + QLatin1Char(' ') + id;
}

bool isLongPast(QDate date, const VelDateTime &now)
{
    return !date.isValid() || date.addDays(VelGivenReminders::KeptDays) < now.date();
}

/** Also what is no such text. */
bool isLongPast(const QString &text, const VelDateTime &now)
{
    return isLongPast(QDate::fromString(text.section(QLatin1Char('T'), 0, 0), Qt::ISODate), now);
}
} // namespace

VelGivenReminders::VelGivenReminders(KConfigGroup group)
    : m_group(std::move(group))
{
}

bool VelGivenReminders::isGiven(const VelDoc &doc, const VelEntry &entry, const VelDateTime &now) const
{
    return isLongPast(momentOf(entry).date(), now)
        || m_group.readEntry(nameOf(doc), QStringList()).contains(textOf(entry));
}

void VelGivenReminders::add(const VelDoc &doc, const std::vector<quint32> &localids, const VelDateTime &now)
{
    const QString name = nameOf(doc);
    QStringList names = m_group.keyList();
    if (!names.contains(name))
        names.append(name);
    for (const QString &each : names) {
        const QStringList before = m_group.readEntry(each, QStringList());
        QStringList texts = before;
        for (const quint32 localid : localids) {
            const VelEntry *entry = each == name ? doc.getEntry(localid) : nullptr;
            if (entry)
                texts.append(textOf(*entry));
        }
        texts.erase(std::remove_if(texts.begin(), texts.end(),
                                   [&now](const QString &text) { return isLongPast(text, now); }),
                    texts.end());
        if (texts.isEmpty())
            m_group.deleteEntry(each);
        else if (texts != before)
            m_group.writeEntry(each,
                               QStringList(texts.mid(std::max(0, int(texts.size()) - MostPerCalendar))));
    }
    m_group.sync();
}
