// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "document/veldoc.h"

#include "document/veldocview.h"
#include "model/velsettings.h"

#include <KLocalizedString>

#include <algorithm>

namespace
{
/** A programming error: said, and gone on from. */
void warnUnless(bool condition, const char *expression, int line)
{
    if (!condition)
        qWarning("ASSERT: \"%s\" in %s (%d)", expression, "veldoc", line);
}
} // namespace

VelDoc::VelDoc(VelMessages &messages, const VelSettings &settings, QObject *parent, Today today, Now now)
    : QObject(parent)
    , m_messages(messages)
    , m_settings(settings)
    , m_today(std::move(today))
    , m_now(now ? std::move(now) : [] { return VelDateTime::fromQDateTime(QDateTime::currentDateTime()); })
{
    m_url.setPath(untitledName());
    initAlarm();
}

VelDoc::~VelDoc() = default;

void VelDoc::deleteContents()
{
    m_index.clear();
    m_reminders.clear();
    m_entries.clear();
    m_stepBefore.clear();
    endExchange();
    ++m_todoRevision;
    m_modified = false;
    m_modsSynced = true;
    m_meta = {};
    m_nextLocalId = 1;
    m_declinedOverwrite = false;
    endAlarm();
    requestAlarmUpdate();
    Q_EMIT contentsReplaced();
}

quint32 VelDoc::takeLocalId()
{
    // 0 means "none", and a file may have used up the highest ids.
    while (m_nextLocalId == 0 || m_entries.count(m_nextLocalId) != 0)
        ++m_nextLocalId;
    return m_nextLocalId++;
}

std::unique_ptr<VelEntry> VelDoc::newEntry(int type, const VelDateTime &start, const VelDateTime &end)
{
    return std::make_unique<VelEntry>(takeLocalId(), type, start, end);
}

std::unique_ptr<VelEntry> VelDoc::newEntry(std::unique_ptr<VelEntry> entry)
{
    warnUnless(entry->localid == 0, "e->localid==0", 47);
    entry->localid = takeLocalId();
    return entry;
}

const VelEntry *VelDoc::addEntry(std::unique_ptr<VelEntry> entry)
{
    warnUnless(entry->localid != 0, "e->localid!=0", 52);
    record(entry->localid);
    removeEntry(entry->localid);
    return store(std::move(entry), m_today());
}

const VelEntry *VelDoc::store(std::unique_ptr<VelEntry> entry, QDate today)
{
    if (entry->globalid != 0)
        m_globalMap[entry->globalid] = entry->localid;
    entry->updRecurrence(today);
    const quint32 localid = entry->localid;
    const auto position = m_entries.emplace_hint(m_entries.end(), localid, Stored{std::move(entry), {}});
    Stored &stored = position->second;
    insertInIndex(stored);
    return stored.entry.get();
}

void VelDoc::insertInIndex(Stored &stored)
{
    m_index.insert(*stored.entry, stored.slot);
    if (stored.entry->type == VelEntry::Todo)
        ++m_todoRevision;
    if (m_reminders.insert(*stored.entry))
        requestAlarmUpdate();
}

void VelDoc::removeFromIndex(Stored &stored)
{
    m_index.remove(*stored.entry, stored.slot);
    if (stored.entry->type == VelEntry::Todo)
        ++m_todoRevision;
    if (m_reminders.remove(*stored.entry))
        requestAlarmUpdate();
}

void VelDoc::removeEntry(quint32 localid)
{
    const auto found = m_entries.find(localid);
    if (found == m_entries.end())
        return;
    record(localid);
    removeFromIndex(found->second);
    m_entries.erase(found);
}

void VelDoc::deleteEntry(const VelEntry *entry, bool force)
{
    if (entry->globalid != 0 && !force) {
        changeEntry(entry->localid, [](VelEntry &deleted) {
            deleted.type = VelEntry::Deleted;
            deleted.dirty = 1;
        });
        setModified(true);
    } else if (entry->localid != 0) {
        removeEntry(entry->localid);
    }
}

bool VelDoc::changeEntry(quint32 localid, const std::function<void(VelEntry &)> &change)
{
    const auto found = m_entries.find(localid);
    if (found == m_entries.end())
        return false;
    record(localid);
    VelEntry &entry = *found->second.entry;
    removeFromIndex(found->second);
    change(entry);
    entry.localid = localid;
    entry.updRecurrence(m_today());
    insertInIndex(found->second);
    return true;
}

int VelDoc::purgeCompleted()
{
    std::vector<const VelEntry *> completed;
    for (const auto &[localid, stored] : m_entries) {
        if (stored.entry->type == VelEntry::Todo && stored.entry->complete && isOwner(stored.entry.get()))
            completed.push_back(stored.entry.get());
    }
    {
        const VelStepScope step(this, i18nc("what was done", "Purge To-Do Tasks"));
        for (const VelEntry *entry : completed)
            deleteEntry(entry, false);
    }
    if (!completed.empty())
        slotUpdateAllViews(nullptr);
    return static_cast<int>(completed.size());
}

const VelEntry *VelDoc::getEntry(quint32 localid) const
{
    const auto found = m_entries.find(localid);
    return found == m_entries.end() ? nullptr : found->second.entry.get();
}

const VelEntry *VelDoc::getOriginalEntry(const VelEntry *entry) const
{
    return entry->isOccurrence() ? getEntry(entry->originalid) : entry;
}

quint32 VelDoc::getLocalId(quint32 globalid) const
{
    const auto found = m_globalMap.find(globalid);
    if (found == m_globalMap.end())
        return 0;
    // The pair outlives its entry, and a reset.
    const VelEntry *entry = getEntry(found->second);
    return entry && entry->globalid == globalid ? found->second : 0;
}

VelEntryList VelDoc::getEntries(QDate from, int type, bool withRecurrences, QDate to) const
{
    VelEntryList list;
    if (from.isValid()) {
        const auto first = static_cast<qint32>(from.toJulianDay());
        if (to.isValid())
            m_index.find(first, static_cast<qint32>(to.toJulianDay()), {type, withRecurrences}, list);
        else
            m_index.find(first, {type, withRecurrences}, list);
        return list;
    }
    list.reserve(m_entries.size());
    for (const auto &[localid, stored] : m_entries) {
        const VelEntry *entry = stored.entry.get();
        if (type != 0 && entry->type != type)
            continue;
        list.emplace_back(entry);
        const VelRecurrence &recurrence = entry->getRecurrence();
        for (quint32 number = 1; withRecurrences && number <= recurrence.count(); ++number)
            list.emplace_back(entry, number, recurrence.startDay(number));
    }
    return list;
}

bool VelDoc::isTentative(const VelEntry &entry) const
{
    if (isOwner(&entry))
        return entry.isTentative() || entry.display == VelEntry::Free;
    return entry.getAccountStatus(m_meta.userid) == VelAccount::Tentative;
}

bool VelDoc::isOwner(const VelEntry *entry) const
{
    return entry->user == 0 || entry->user == m_meta.userid;
}

void VelDoc::beginStep(const QString &text)
{
    if (m_stepDepth++ == 0)
        m_stepText = text;
}

void VelDoc::record(quint32 localid)
{
    recordForExchange(localid);
    if (m_stepDepth == 0 || m_stepBefore.count(localid) != 0)
        return;
    const VelEntry *entry = getEntry(localid);
    m_stepBefore.emplace(localid, entry ? std::make_unique<VelEntry>(*entry) : nullptr);
}

void VelDoc::recordForExchange(quint32 localid)
{
    if (!m_isExchanging || m_exchangeBefore.count(localid) != 0)
        return;
    const VelEntry *entry = getEntry(localid);
    m_exchangeBefore.emplace(localid, entry ? std::make_unique<VelEntry>(*entry) : nullptr);
}

void VelDoc::beginExchange()
{
    endExchange();
    m_isExchanging = true;
    ++m_exchangeCount;
}

VelDoc::Journal VelDoc::endExchange()
{
    m_isExchanging = false;
    return std::exchange(m_exchangeBefore, {});
}

const VelEntry *VelDoc::getBefore(quint32 localid) const
{
    const auto found = m_exchangeBefore.find(localid);
    return found == m_exchangeBefore.end() ? nullptr : found->second.get();
}

void VelDoc::endStep()
{
    if (--m_stepDepth > 0)
        return;
    std::vector<VelStep::Change> changes;
    for (Journal touched = std::exchange(m_stepBefore, {}); auto &[localid, before] : touched) {
        const VelEntry *after = getEntry(localid);
        if (before && after ? *before == *after : !before && !after)
            continue;
        changes.push_back({std::move(before), after ? std::make_unique<VelEntry>(*after) : nullptr});
    }
    if (!changes.empty())
        Q_EMIT stepDone(std::make_shared<VelStep>(m_stepText, m_exchangeCount, std::move(changes)));
}

void VelDoc::addView(VelDocView *view)
{
    if (std::find(m_views.begin(), m_views.end(), view) == m_views.end())
        m_views.push_back(view);
}

void VelDoc::removeView(VelDocView *view)
{
    std::erase(m_views, view);
}

void VelDoc::slotUpdateAllViews(VelDocView *sender)
{
    const std::vector<VelDocView *> views = m_views;
    for (VelDocView *view : views) {
        // One before it may have closed it.
        const bool isStillThere = std::find(m_views.begin(), m_views.end(), view) != m_views.end();
        if (view != sender && isStillThere)
            view->updateView();
    }
    setModified(true);
}

void VelDoc::setModified(bool modified)
{
    if (modified != m_modified)
        Q_EMIT modifiedChanged(modified);
    m_modified = modified;
    if (modified)
        m_modsSynced = false;
}

bool VelDoc::isUntitled() const
{
    return m_url.fileName() == untitledName();
}

QString VelDoc::untitledName()
{
    return i18nc("name of a calendar without a file", "Untitled");
}

VelFileState VelDoc::stateOf(const QUrl &url)
{
    return url.isLocalFile() ? VelFileState::of(url.toLocalFile()) : VelFileState();
}

void VelDoc::setUrl(const QUrl &url, const VelFileState &state)
{
    m_url = url;
    m_fileState = state;
    m_declinedOverwrite = false;
    Q_EMIT urlChanged(url);
}
