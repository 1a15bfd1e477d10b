// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "document/veldrag.h"

#include "document/velexchange.h"
#include "document/veltransfer.h"
#include "formats/velbinary.h"
#include "formats/velvcalendar.h"

#include <QUrl>

#include <algorithm>
#include <utility>

namespace
{
const QLatin1String VCalendarType("text/x-vcalendar");
const QLatin1String EntryType("application/delmasttime-entry");
const QLatin1String PlainType("text/plain");

bool isType(const QString &mime, QLatin1String type)
{
    return mime.compare(type, Qt::CaseInsensitive) == 0;
}

QUrl firstCalendarFile(const QMimeData *source)
{
    if (!source->hasUrls())
        return {};
    const QList<QUrl> urls = source->urls();
    const auto found = std::find_if(urls.begin(), urls.end(), &VelExchange::isCalendarFile);
    return found == urls.end() ? QUrl() : *found;
}

bool isUsable(const std::unique_ptr<VelEntry> &entry)
{
    return entry && entry->isValid() && (entry->type == VelEntry::Event || entry->type == VelEntry::Todo);
}

std::vector<std::unique_ptr<VelEntry>> onlyUsable(std::vector<std::unique_ptr<VelEntry>> entries)
{
    std::erase_if(entries, [](const auto &entry) { return !isUsable(entry); });
    return entries;
}
} // namespace

VelDrag::VelDrag(const VelEntry &entry, quint32 userid)
    : m_entry(VelBinary::asByteArray(entry))
    , m_vCalendar(VelVCalendar::asvCalendar(entry, userid, true))
{
}

bool VelDrag::provides(const QString &mime) const
{
    return isType(mime, VCalendarType) || isType(mime, EntryType) || isType(mime, PlainType);
}

QByteArray VelDrag::encodedData(const QString &mime) const
{
    return isType(mime, EntryType) ? m_entry : VelVCalendar::toBytes(m_vCalendar);
}

QStringList VelDrag::formats() const
{
    return {VCalendarType, EntryType, PlainType};
}

QVariant VelDrag::retrieveData(const QString &mime, VelVariantType) const
{
    if (!provides(mime))
        return {};
    // As a text, so that the toolkit encodes it as each receiver wants it.
    if (isType(mime, PlainType))
        return m_vCalendar;
    return encodedData(mime);
}

bool VelDrag::canDecode(const QMimeData *source)
{
    return source
        && (source->hasFormat(VCalendarType) || source->hasFormat(EntryType)
            || !firstCalendarFile(source).isEmpty());
}

bool VelDrag::takeCut(const QMimeData *source)
{
    const auto *own = qobject_cast<const VelDrag *>(source);
    return own && std::exchange(own->m_isCut, false);
}

std::unique_ptr<VelEntry> VelDrag::decode(const QMimeData *source)
{
    std::vector<std::unique_ptr<VelEntry>> entries = decodeAll(source);
    return entries.empty() ? nullptr : std::move(entries.front());
}

std::vector<std::unique_ptr<VelEntry>> VelDrag::decodeAll(const QMimeData *source)
{
    if (!source)
        return {};
    if (source->hasFormat(EntryType)) {
        std::vector<std::unique_ptr<VelEntry>> entries;
        entries.push_back(VelBinary::fromByteArray(source->data(EntryType)));
        entries = onlyUsable(std::move(entries));
        if (!entries.empty())
            return entries;
        // Broken, or of a program to come: the text may still be good.
    }
    if (source->hasFormat(VCalendarType))
        return onlyUsable(VelVCalendar::readAll(source->data(VCalendarType)).entries);
    const QUrl url = firstCalendarFile(source);
    if (url.isEmpty())
        return {};
    const VelDownload file(url);
    VelForeignContent content;
    if (!VelExchange::read(file.path(), content))
        return {};
    return onlyUsable(std::move(content.entries));
}
