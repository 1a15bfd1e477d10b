// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "document/velexchange.h"

#include "document/velcalendarfile.h"
#include "document/veldoc.h"
#include "document/velexchangereader.h"
#include "document/veltransfer.h"
#include "document/velurl.h"
#include "formats/velvcalendar.h"
#include "ical/velicalendar.h"

#include <QMimeDatabase>
#include <QTemporaryDir>
#include <QTemporaryFile>

namespace
{
const QLatin1String VCalendarSuffix(".vcs");
const QLatin1String ICalendarSuffix(".ics");
const QLatin1String CalendarSuffix(".xml");

bool hasSuffix(const QUrl &url, QLatin1String suffix)
{
    return url.fileName().endsWith(suffix, Qt::CaseInsensitive);
}

QByteArray asVCalendar(const VelEntryList &entries, quint32 userid)
{
    QString text = VelVCalendar::vCalendarHead();
    for (const VelEntryRef &ref : entries)
        text += VelVCalendar::asvCalendar(*ref.getOriginal(), userid, false);
    text += VelVCalendar::vCalendarTail();
    return text.toUtf8();
}

QByteArray exportOf(const VelDoc &doc, const QUrl &url, QStringList &leftOut)
{
    VelEntryList entries = doc.getEntries(QDate(), 0, false, QDate());
    std::erase_if(entries, [](const VelEntryRef &ref) { return ref.getOriginal()->isDeleted(); });
    if (hasSuffix(url, ICalendarSuffix))
        return VelICalendar::write(entries, doc.getUserId(), doc.today(), &leftOut);
    return asVCalendar(entries, doc.getUserId());
}

bool writeCalendar(const VelDoc &doc, const QUrl &url)
{
    if (url.isLocalFile())
        return doc.writeCopy(url.toLocalFile());
    const QTemporaryDir folder;
    const QString copy = folder.filePath(QStringLiteral("copy"));
    return folder.isValid() && doc.writeCopy(copy) && velUpload(copy, url);
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

bool read(const QString &path, VelForeignContent &content)
{
    VelExchangeReader reader(path);
    if (!reader.isOpen())
        return false;
    while (reader.readSome()) { }
    content = reader.takeContent();
    return true;
}

QUrl withSuffix(const QUrl &url, const QString &pattern)
{
    QLatin1String suffix = VCalendarSuffix;
    for (const QLatin1String known : {VCalendarSuffix, ICalendarSuffix, CalendarSuffix}) {
        if (hasSuffix(url, known))
            return url;
        if (pattern == QLatin1Char('*') + known)
            suffix = known;
    }
    QUrl result = url;
    VelUrl::setSuffix(result, suffix);
    return result;
}

Written write(const VelDoc &doc, const QUrl &url)
{
    if (hasSuffix(url, CalendarSuffix))
        return {writeCalendar(doc, url), {}};
    Written written;
    const QByteArray bytes = exportOf(doc, url, written.leftOut);
    const auto writeBytes = [&bytes](QIODevice &device) { return device.write(bytes) == bytes.size(); };
    if (url.isLocalFile()) {
        written.isWritten = VelCalendarFile::write(url.toLocalFile(), writeBytes);
        return written;
    }
    QTemporaryFile copy;
    written.isWritten = copy.open() && writeBytes(copy) && copy.flush() && velUpload(copy.fileName(), url);
    return written;
}
} // namespace VelExchange
