// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "document/velarchiver.h"

#include "document/velmessages.h"
#include "document/veltransfer.h"
#include "document/velurl.h"

#include <KLocalizedString>

#include <QFileInfo>
#include <QPointer>

#include <algorithm>
#include <map>
#include <tuple>

namespace
{
using Key = std::tuple<quint32, VelDateTime, VelDateTime, QString>;

/** The id on the server, or, without one, where to look for an equal entry. */
Key keyOf(const VelEntry &entry)
{
    if (entry.globalid != 0)
        return {entry.globalid, {}, {}, {}};
    return {0, entry.getStart(), entry.getEnd(), entry.getTitle()};
}

QUrl withSuffix(QUrl url)
{
    VelUrl::setSuffix(url, QStringLiteral(".xml"));
    return url;
}

/** Also for a file that is not there yet; an empty text when the folder is not there either. */
QString realPath(const QUrl &url)
{
    const QFileInfo file(url.toLocalFile());
    if (file.exists())
        return file.canonicalFilePath();
    const QString folder = QFileInfo(file.path()).canonicalFilePath();
    return folder.isEmpty() ? QString() : QString(folder + QLatin1Char('/') + file.fileName());
}

/** The same but for what each calendar gives an entry for itself. */
bool isSameContent(const VelEntry &a, const VelEntry &b)
{
    VelEntry first(a);
    VelEntry second(b);
    for (VelEntry *entry : {&first, &second}) {
        entry->localid = 0;
        entry->dirty = 0;
        entry->reminderfired = false;
    }
    return first == second;
}

bool isEndless(const VelRecurrenceRule &rule)
{
    return rule.recurringtype > VelRecurrenceRule::None && rule.occurendcount <= 0
        && !rule.occurenddate.isValid();
}

/** Days from the start of the entry to that of its last occurrence, however far in the future that is. */
qint64 daysToLast(const VelEntry &entry)
{
    // Occurrences as views know them stop some time after today.
    static const QDate lastDay(9999, 12, 31);
    const VelRecurrence all(entry.rule, entry.getStart().date(), entry.getSpan(), lastDay);
    return all.isEmpty() ? 0 : all.startDay(all.count()) - entry.getStart().julianDay();
}
} // namespace

VelArchiver::VelArchiver(VelDoc &calendar, VelMessages &messages, const VelSettings &settings)
    : m_calendar(calendar)
    , m_messages(messages)
    , m_archive(messages, settings, nullptr, [&calendar] { return calendar.today(); })
{
}

bool VelArchiver::isSameFile(const QUrl &a, const QUrl &b)
{
    const QUrl first = withSuffix(a);
    const QUrl second = withSuffix(b);
    if (a == b || first == second)
        return true;
    if (!first.isLocalFile() || !second.isLocalFile())
        return false;
    const QString path = realPath(first);
    return !path.isEmpty() && path == realPath(second);
}

bool VelArchiver::isOver(const VelEntry &entry, QDate limit)
{
    if (entry.isDeleted() || isEndless(entry.rule))
        return false;
    // An entry that ends before it starts is over when both are.
    const QDate end = std::max(entry.getStart(), entry.getEnd()).date();
    if (!end.isValid() || !limit.isValid() || end >= limit)
        return false;
    return entry.rule.recurringtype <= VelRecurrenceRule::None || end.addDays(daysToLast(entry)) < limit;
}

std::vector<quint32> VelArchiver::findEntries(const VelDoc &calendar, QDate limit)
{
    std::vector<quint32> found;
    const VelEntryList entries = calendar.getEntries(QDate(), 0, false, QDate());
    for (const VelEntryRef &ref : entries) {
        if (isOver(*ref.getOriginal(), limit))
            found.push_back(ref.getOriginal()->localid);
    }
    return found;
}

bool VelArchiver::open(const QUrl &url)
{
    if (isSameFile(url, m_calendar.URL())) {
        m_messages.error(i18n("You cannot archive to same file."));
        return false;
    }
    m_url = withSuffix(url);
    m_archive.newDocument();
    // The window of the calendar may be closed while a file elsewhere is waited for.
    const QPointer<VelDoc> calendar(&m_calendar);
    m_isNew = !velExists(m_url);
    if (m_isNew && calendar) {
        m_archive.setUserId(m_calendar.getUserId());
        return true;
    }
    if (!calendar || !m_archive.openDocument(m_url) || !calendar)
        return false;
    if (m_archive.getUserId() != m_calendar.getUserId()) {
        m_messages.error(i18n("Selected archive file is not yours."));
        return false;
    }
    if (!m_archive.isWritable()) {
        m_messages.error(i18n("The selected archive file may only be read."));
        return false;
    }
    return isMeantAsArchive() && calendar;
}

/** A calendar that has become an archive is not synchronised any more: nobody is to come to that by a slip. */
bool VelArchiver::isMeantAsArchive()
{
    const bool isCalendar = m_archive.getArchiveMark() == false || !m_archive.getServerAccount().isNone();
    if (!isCalendar || m_archive.isArchive())
        return true;
    return m_messages.questionYesNo(i18n("The file \"%1\" is a calendar that is synchronized with the "
                                         "server. As an archive it is not "
                                         "synchronized any more.\nDo you want to make it an archive?",
                                         m_url.fileName()),
                                    i18n("Archive"), i18n("Make it an archive"), i18n("Cancel"))
        == VelMessages::Answer::Yes;
}

/**
 * Takes what it finds out of @p candidates, as each entry of the archive stands for one of the calendar: the equal
 * one, or else another state of what the server knows.
 */
const VelEntry *VelArchiver::takeStored(const VelEntry &entry, std::vector<const VelEntry *> &candidates)
{
    auto found = std::find_if(candidates.begin(), candidates.end(), [&entry](const VelEntry *candidate) {
        return isSameContent(entry, *candidate);
    });
    if (found == candidates.end() && entry.globalid != 0)
        found = candidates.begin();
    if (found == candidates.end())
        return nullptr;
    const VelEntry *stored = *found;
    candidates.erase(found);
    return stored;
}

/** As a new entry, or in place of @p stored unless that is null: the ids of the calendar mean nothing here. */
void VelArchiver::put(const VelEntry &entry, const VelEntry *stored)
{
    auto copy = std::make_unique<VelEntry>(entry);
    copy->localid = stored ? stored->localid : 0;
    m_archive.addEntry(stored ? std::move(copy) : m_archive.newEntry(std::move(copy)));
}

bool VelArchiver::store(const std::vector<quint32> &localids)
{
    std::map<Key, std::vector<const VelEntry *>> stored;
    const VelEntryList before = m_archive.getEntries(QDate(), 0, false, QDate());
    for (const VelEntryRef &ref : before)
        stored[keyOf(*ref.getOriginal())].push_back(ref.getOriginal());
    bool hasChanged = !m_archive.isArchive();
    m_archive.setArchiveMark(true);
    for (const quint32 localid : localids) {
        const VelEntry &entry = *m_calendar.getEntry(localid);
        const VelEntry *match = takeStored(entry, stored[keyOf(entry)]);
        if (match && isSameContent(entry, *match))
            continue;
        put(entry, match);
        hasChanged = true;
    }
    // A file that was not there when the archive was begun is somebody else's by now.
    if (hasChanged && !m_archive.saveDocument(m_url, !m_isNew))
        return false;
    m_isNew = m_isNew && !hasChanged;
    return true;
}

VelArchiver::Result VelArchiver::archive(QDate limit)
{
    const std::vector<quint32> localids = findEntries(m_calendar, limit);
    if (localids.empty())
        return Result::Nothing;
    const QPointer<VelDoc> calendar(&m_calendar);
    if (!store(localids) || !calendar)
        return Result::Failed; // or the window of the calendar was closed while saving asked a question
    for (const quint32 localid : localids) {
        // Saving may have asked a question, and the calendar may have moved on meanwhile.
        if (const VelEntry *entry = m_calendar.getEntry(localid)) {
            m_calendar.deleteEntry(entry, false);
            ++m_count;
        }
    }
    return m_count > 0 ? Result::Archived : Result::Nothing;
}
