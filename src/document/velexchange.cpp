// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "document/velexchange.h"

#include "document/velcalendarfile.h"
#include "document/veldoc.h"
#include "document/veltransfer.h"
#include "formats/velvcalendar.h"
#include "ical/velicalendar.h"

#include <QFile>
#include <QFileInfo>
#include <QMimeDatabase>
#include <QTemporaryFile>

namespace
{
/** More than any exchange file needs; larger ones would only fill the memory. */
constexpr qint64 LargestFile = 512LL << 20;

bool isXml(const QByteArray &bytes)
{
    // Neither of the other two ever starts so; calendar files need no declaration, and may start with a mark.
    constexpr int markSize = 3;
    return bytes.mid(bytes.startsWith("\xEF\xBB\xBF") ? markSize : 0, 64).trimmed().startsWith('<');
}

void readXml(const QString &path, VelExchange::Content &content)
{
    VelXmlContent xml;
    if (VelCalendarFile::read(path, xml) != VelCalendarFile::Result::Ok) {
        content.isReadable = false;
        return;
    }
    std::erase_if(xml.entries, [](const auto &entry) { return entry->isDeleted(); });
    for (const auto &entry : xml.entries) {
        entry->localid = 0;
        entry->globalid = 0;
    }
    content.entries = std::move(xml.entries);
}

QByteArray asVCalendar(const VelEntryList &entries, quint32 userid)
{
    QString text = VelVCalendar::vCalendarHead();
    for (const VelEntryRef &ref : entries)
        text += VelVCalendar::asvCalendar(*ref.getOriginal(), userid, false);
    text += VelVCalendar::vCalendarTail();
    return text.toUtf8();
}

QByteArray exportOf(const VelDoc &doc, const QUrl &url)
{
    VelEntryList entries = doc.getEntries(QDate(), 0, false, QDate());
    std::erase_if(entries, [](const VelEntryRef &ref) { return ref.getOriginal()->isDeleted(); });
    if (url.fileName().endsWith(QLatin1String(".ics"), Qt::CaseInsensitive))
        return VelICalendar::write(entries, doc.getUserId(), doc.today());
    return asVCalendar(entries, doc.getUserId());
}
} // namespace

namespace VelExchange
{
bool isCalendarFile(const QUrl &url)
{
    const QMimeDatabase types;
    const QMimeType type = types.mimeTypeForUrl(url);
    const auto isOneOf = [&type](QLatin1String name) {
        return type.name().compare(name, Qt::CaseInsensitive) == 0 || type.aliases().contains(name);
    };
    return isOneOf(QLatin1String("text/x-vcalendar")) || isOneOf(QLatin1String("text/calendar"));
}

bool read(const QString &path, Content &content)
{
    QFile file(path);
    // Pipes and devices may never begin, or never end.
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray bytes = file.read(LargestFile + 1);
    if (file.error() != QFileDevice::NoError)
        return false;
    content = {};
    if (bytes.size() > LargestFile) {
        content.isReadable = false;
    } else if (isXml(bytes)) {
        readXml(path, content);
    } else if (VelICalendar::isICalendar(bytes)) {
        auto result = VelICalendar::read(bytes);
        content = {std::move(result.entries), result.leftOut, result.simplified, result.isCalendar};
    } else {
        auto result = VelVCalendar::readAll(bytes);
        content = {std::move(result.entries), result.leftOut, result.simplified, true};
    }
    return true;
}

bool write(const VelDoc &doc, const QUrl &url)
{
    const QByteArray bytes = exportOf(doc, url);
    const auto writeBytes = [&bytes](QIODevice &device) { return device.write(bytes) == bytes.size(); };
    if (url.isLocalFile())
        return VelCalendarFile::write(url.toLocalFile(), writeBytes);
    QTemporaryFile copy;
    return copy.open() && writeBytes(copy) && copy.flush() && velUpload(copy.fileName(), url);
}
} // namespace VelExchange
