// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "net/velmerge.h"

#include "model/velreplay.h"

#include <KLocalizedString>

#include <algorithm>
#include <utility>

namespace
{
/** True when nothing but the mark of an alert that was given differs. */
bool isSameButFired(const VelEntry &a, const VelEntry &b)
{
    VelEntry copy(a);
    copy.reminderfired = b.reminderfired;
    copy.dirty = b.dirty;
    return copy == b;
}
} // namespace

QString VelMerge::Question::text() const
{
    switch (kind) {
    case Kind::Invitation:
        return i18n("Request for new appointment");
    case Kind::Changed:
        return i18n("Appointment has changed");
    case Kind::Cancelled:
        return i18n("Appointment has been cancelled by the organizer.");
    case Kind::Removed:
        return i18n("Appointment organizer has removed you from the attendees.");
    }
    return {};
}

VelMerge::VelMerge(VelDoc &doc, VelXmlContent content, const VelSentEntries &sent, quint32 ownUserid)
    : m_doc(doc)
    , m_sentOrder(sent)
    , m_sent(sent.begin(), sent.end())
    , m_isTotal(content.totalsync && !content.error) // of a broken one nobody knows what it would have named
    , m_synctime(std::exchange(content.synctime, std::nullopt))
{
    std::vector<std::unique_ptr<VelEntry>> entries;
    entries.swap(content.entries);
    m_doc.readXml(content);
    m_isMine =
        m_doc.getOrigRight() == VelDoc::FullRight && (ownUserid == 0 || ownUserid == m_doc.getUserId());
    m_report.isTotal = m_isTotal;
    m_steps.resize(entries.size());
    for (std::size_t i = 0; i < entries.size(); ++i) {
        m_steps[i].localid = findLocal(*entries[i]);
        m_report.named.insert(entries[i]->globalid);
        m_steps[i].entry = std::move(entries[i]);
    }
    dropRepeated();
    for (Step &step : m_steps) {
        if (step.entry)
            plan(step);
    }
}

/**
 * The local id that an entry came with is that of the device which made it, perhaps another one: it counts only for what was
 * sent from here and had no number on the server until now.
 */
quint32 VelMerge::findLocal(const VelEntry &entry) const
{
    const quint32 localid = entry.localid;
    const VelEntry *sent = m_doc.isChangedSince(localid) ? m_doc.getBefore(localid) : m_doc.getEntry(localid);
    if (sent && m_sent.count(localid) != 0 && (sent->globalid == 0 || sent->globalid == entry.globalid))
        return localid;
    return entry.globalid != 0 ? m_doc.getLocalId(entry.globalid) : 0;
}

void VelMerge::dropRepeated()
{
    std::unordered_map<quint32, Step *> byLocal;
    std::unordered_map<quint32, Step *> byGlobal;
    for (auto step = m_steps.rbegin(); step != m_steps.rend(); ++step) {
        const quint32 globalid = step->entry->globalid;
        const auto sameLocal = step->localid != 0 ? byLocal.find(step->localid) : byLocal.end();
        const auto sameGlobal = globalid != 0 ? byGlobal.find(globalid) : byGlobal.end();
        Step *later = sameLocal != byLocal.end() ? sameLocal->second
            : sameGlobal != byGlobal.end()       ? sameGlobal->second
                                                 : nullptr;
        if (later)
            step->entry.reset();
        // Which one it is here, perhaps only the first of them says.
        if (later && later->localid == 0)
            later->localid = step->localid;
        Step *kept = later ? later : &*step;
        byLocal.emplace(step->localid, kept);
        byGlobal.emplace(globalid, kept);
    }
}

void VelMerge::plan(Step &step)
{
    const VelEntry &entry = *step.entry;
    if (!m_doc.isOwner(&entry))
        planForeign(step);
    else
        step.action = entry.isDeleted() ? Action::Delete : Action::Store;
}

void VelMerge::planForeign(Step &step)
{
    const VelEntry &entry = *step.entry;
    const VelEntry *local = m_isTotal ? nullptr : m_doc.getEntry(step.localid);
    if (local && local->isDeleted())
        local = nullptr;
    const VelAccount *own = entry.accounts.get(m_doc.getUserId());
    if (!own || entry.isDeleted() || own->status == VelAccount::Declined) {
        step.action = Action::Delete;
        if (local && !own)
            m_notices.push_back({Kind::Removed, *local});
        else if (local && entry.isDeleted() && own->status != VelAccount::Unanswered)
            m_notices.push_back({Kind::Cancelled, *local});
    } else if (m_isMine && own->status == VelAccount::Unanswered && !isAnsweredSince(step.localid)) {
        leaveOpen(Kind::Invitation, entry);
    } else {
        step.action = Action::Store;
        if (m_isMine && local && (local->getStart() != entry.getStart() || local->getEnd() != entry.getEnd()))
            leaveOpen(Kind::Changed, entry);
    }
}

void VelMerge::leaveOpen(Kind kind, const VelEntry &entry)
{
    m_report.open.push_back({kind, entry});
}

/** What the server cannot know yet. */
bool VelMerge::isAnsweredSince(quint32 localid) const
{
    const VelEntry *current = m_doc.getEntry(localid);
    if (!current || !m_doc.isChangedSince(localid))
        return false;
    const VelEntry *before = m_doc.getBefore(localid);
    const int status = current->getAccountStatus(m_doc.getUserId());
    return status != VelAccount::Unanswered
        && (!before || before->getAccountStatus(m_doc.getUserId()) != status);
}

bool VelMerge::removesEntries() const
{
    if (!m_isTotal)
        return false;
    std::unordered_set<quint32> named;
    for (const Step &step : m_steps)
        named.insert(step.localid);
    const VelEntryList all = m_doc.getEntries({}, 0, false, {});
    return std::any_of(all.begin(), all.end(), [&named](const VelEntryRef &each) {
        const VelEntry &entry = *each.getOriginal();
        const bool isNew = entry.globalid == 0 && entry.dirty != 0;
        return !entry.isDeleted() && !isNew && named.count(entry.localid) == 0;
    });
}

VelMerge::Report VelMerge::apply()
{
    // Another calendar has been opened meanwhile: the answer is not about this one.
    if (!m_doc.isExchanging())
        return {};
    m_before = m_doc.endExchange();
    findNotTaken();
    if (m_isTotal)
        removeUnnamed();
    for (Step &step : m_steps) {
        if (!step.entry)
            continue;
        if (step.action == Action::Delete)
            remove(step.localid);
        else if (step.action == Action::Store)
            store(step);
    }
    m_report.hasChanged = !m_report.merged.empty();
    m_report.hasUnsent = hasUnsent();
    if (m_synctime)
        m_doc.setSynctime(*m_synctime);
    return std::move(m_report);
}

const VelEntry *VelMerge::before(quint32 localid) const
{
    const auto found = m_before.find(localid);
    return found == m_before.end() ? nullptr : found->second.get();
}

/** True for a change that somebody would miss. */
bool VelMerge::isEditedSince(const VelEntry &current) const
{
    if (m_before.count(current.localid) == 0)
        return false;
    const VelEntry *old = before(current.localid);
    return !old || !isSameButFired(*old, current);
}

void VelMerge::findNotTaken()
{
    std::unordered_map<quint32, const VelEntry *> came;
    for (const Step &step : m_steps) {
        if (step.entry && m_sent.count(step.localid) != 0)
            came.emplace(step.localid, step.entry.get());
    }
    for (const quint32 localid : m_sentOrder) {
        const VelEntry *sent = m_before.count(localid) != 0 ? before(localid) : m_doc.getEntry(localid);
        if (!sent)
            continue;
        const auto found = came.find(localid);
        if (found != came.end()) {
            if (!VelNotTaken::isTaken(*sent, *found->second, m_doc.getUserId()))
                m_report.notTaken.push_back(
                    {*sent,
                     found->second->isDeleted() ? VelNotTaken::Fate::Deleted : VelNotTaken::Fate::Replaced});
        } else if (!m_isTotal || sent->globalid == 0) {
            m_report.notTaken.push_back({*sent, VelNotTaken::Fate::Unsent});
        } else if (!sent->isDeleted()) {
            m_report.notTaken.push_back({*sent, VelNotTaken::Fate::Deleted});
        }
    }
}

void VelMerge::store(Step &step)
{
    std::unique_ptr<VelEntry> entry = std::move(step.entry);
    const VelEntry *current = m_doc.getEntry(step.localid);
    const VelEntry *old = before(step.localid);
    if (current && !old && m_before.count(step.localid) != 0)
        return; // has come here by another way since, and is still to be sent
    const bool isGoneSince = !current && old;
    entry->localid = current || isGoneSince ? step.localid : 0;
    entry->dirty = 0;
    if (isGoneSince) {
        // The server is to hear of it.
        entry->type = VelEntry::Deleted;
        entry->dirty = 1;
    }
    if (current)
        entry = putOver(std::move(entry), *current);
    if (current && *entry == *current)
        return;
    m_report.received += m_sent.count(step.localid) == 0 ? 1 : 0;
    const bool isNew = entry->localid == 0;
    if (isNew)
        entry = m_doc.newEntry(std::move(entry));
    m_report.merged.push_back({entry->isDeleted() ? Merged::Deleted
                                   : isNew        ? Merged::Added
                                                  : Merged::Replaced,
                               entry->localid});
    m_doc.addEntry(std::move(entry));
}

/** What the user did meanwhile goes on top of what came. */
std::unique_ptr<VelEntry> VelMerge::putOver(std::unique_ptr<VelEntry> entry, const VelEntry &current)
{
    if (const VelEntry *old = before(current.localid)) {
        entry = VelReplay::replayed(*entry, *old, current);
        entry->dirty = 1;
    } else if (current.reminderfired && current.reminder == entry->reminder) {
        entry->reminderfired = true; // it has rung here, whatever others know of that
    }
    return entry;
}

void VelMerge::remove(quint32 localid)
{
    const VelEntry *current = m_doc.getEntry(localid);
    if (!current)
        return;
    if (!current->isDeleted() && m_doc.isOwner(current) && isEditedSince(*current)) {
        // Deleted elsewhere and edited here: whoever edited it still wants it.
        auto kept = std::make_unique<VelEntry>(*current);
        kept->globalid = 0;
        kept->dirty = 1;
        m_report.merged.push_back({Merged::Replaced, kept->localid});
        m_doc.addEntry(std::move(kept));
        return;
    }
    m_report.merged.push_back({Merged::Deleted, localid});
    m_doc.deleteEntry(current, true);
}

/** Whatever a total synchronisation does not name is not in the calendar any more, unless the server never knew it. */
void VelMerge::removeUnnamed()
{
    std::unordered_set<quint32> named;
    for (const Step &step : m_steps)
        named.insert(step.localid);
    const VelEntryList all = m_doc.getEntries({}, 0, false, {});
    for (const VelEntryRef &each : all) {
        const VelEntry &entry = *each.getOriginal();
        const bool isNew = entry.globalid == 0 && entry.dirty != 0;
        if (!isNew && named.count(entry.localid) == 0)
            remove(entry.localid);
    }
}

bool VelMerge::hasUnsent() const
{
    const VelEntryList all = m_doc.getEntries({}, 0, false, {});
    return std::any_of(all.begin(), all.end(),
                       [](const VelEntryRef &entry) { return entry.getOriginal()->dirty != 0; });
}
