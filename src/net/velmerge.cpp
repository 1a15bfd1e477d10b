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

VelMerge::VelMerge(VelDoc &doc, VelXmlContent content, const VelSentEntries &sent)
    : m_doc(doc)
    , m_sent(sent.begin(), sent.end())
    , m_isTotal(content.totalsync)
    , m_synctime(std::exchange(content.synctime, std::nullopt))
{
    std::vector<std::unique_ptr<VelEntry>> entries;
    entries.swap(content.entries);
    m_doc.readXml(content);
    m_steps.resize(entries.size());
    for (std::size_t i = 0; i < entries.size(); ++i) {
        m_steps[i].entry = std::move(entries[i]);
        plan(m_steps[i], i);
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

void VelMerge::plan(Step &step, std::size_t index)
{
    const VelEntry &entry = *step.entry;
    step.localid = findLocal(entry);
    if (!m_doc.isOwner(&entry))
        planForeign(step, index);
    else
        step.action = entry.isDeleted() ? Action::Delete : Action::Store;
}

void VelMerge::planForeign(Step &step, std::size_t index)
{
    const VelEntry &entry = *step.entry;
    const VelEntry *local = m_isTotal ? nullptr : m_doc.getEntry(step.localid);
    if (local && local->isDeleted())
        local = nullptr;
    const VelAccount *own = entry.accounts.get(m_doc.getUserId());
    const bool isMine = m_doc.getOrigRight() == VelDoc::FullRight; // else it is somebody else's to answer
    if (!own || entry.isDeleted() || own->status == VelAccount::Declined) {
        step.action = Action::Delete;
        if (local && !own)
            ask(Kind::Removed, *local, index);
        else if (local && entry.isDeleted() && own->status != VelAccount::Unanswered)
            ask(Kind::Cancelled, *local, index);
    } else if (isMine && own->status == VelAccount::Unanswered) {
        ask(Kind::Invitation, entry, index);
    } else if (isMine && local
               && (local->getStart() != entry.getStart() || local->getEnd() != entry.getEnd())) {
        ask(Kind::Changed, entry, index);
    } else {
        step.action = Action::Store;
    }
}

void VelMerge::ask(Kind kind, const VelEntry &entry, std::size_t index)
{
    m_questions.push_back({kind, entry, index});
    m_questions.back().entry.updRecurrence(m_doc.today());
    // Until somebody answers.
    m_steps[index].isPutOff = m_questions.back().mode() == VelAnswer::Invitation;
}

void VelMerge::setAnswer(const Question &question, std::optional<int> answer)
{
    Step &step = m_steps[question.index];
    step.isPutOff = !answer && question.mode() == VelAnswer::Invitation;
    VelAccount *own = step.entry ? step.entry->accounts.get(m_doc.getUserId()) : nullptr;
    if (question.mode() != VelAnswer::Invitation || !answer || !own)
        return;
    const int status = *answer == VelAccount::Unanswered ? own->status : *answer;
    step.isPutOff = status == VelAccount::Unanswered;
    if (step.isPutOff)
        return;
    step.action = status == VelAccount::Declined ? Action::StoreDeclined
        : status != own->status                  ? Action::StoreAnswered
                                                 : Action::Store;
    own->status = status;
}

VelMerge::Report VelMerge::apply()
{
    // Another calendar has been opened meanwhile: the answer is not about this one.
    if (!m_doc.isExchanging())
        return {};
    m_before = m_doc.endExchange();
    if (m_isTotal)
        removeUnnamed();
    for (Step &step : m_steps) {
        // One before it may have brought it into the calendar.
        if (step.localid == 0 && step.entry->globalid != 0)
            step.localid = m_doc.getLocalId(step.entry->globalid);
        if (step.isPutOff)
            ++m_report.open;
        else if (step.action == Action::Delete)
            remove(step);
        else
            store(step);
    }
    m_report.hasChanged = m_isTotal || !m_steps.empty();
    markSent();
    m_report.hasUnsent = hasUnsent();
    // With the old one the server sends again what has not been answered.
    if (m_synctime && m_report.open == 0)
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

void VelMerge::store(Step &step)
{
    std::unique_ptr<VelEntry> entry = std::move(step.entry);
    const VelEntry *current = m_doc.getEntry(step.localid);
    const bool isGoneSince = !current && before(step.localid);
    entry->localid = current || isGoneSince ? step.localid : 0;
    entry->dirty = step.action == Action::Store ? 0 : 1;
    if (isGoneSince || step.action == Action::StoreDeclined) {
        // The server is to hear of it.
        entry->type = VelEntry::Deleted;
        entry->dirty = 1;
    }
    m_report.received += m_sent.count(step.localid) == 0 ? 1 : 0;
    const bool isNew = entry->localid == 0;
    if (isNew)
        entry = m_doc.newEntry(std::move(entry));
    m_report.merged.push_back({entry->isDeleted() ? Merged::Deleted
                                   : isNew        ? Merged::Added
                                                  : Merged::Replaced,
                               entry->localid});
    if (current && !entry->isDeleted())
        storeOver(std::move(entry), *current);
    else
        m_doc.addEntry(std::move(entry));
}

/** What the user did meanwhile goes on top of what came. */
void VelMerge::storeOver(std::unique_ptr<VelEntry> entry, const VelEntry &current)
{
    const VelEntry *old = before(current.localid);
    if (old) {
        entry = VelReplay::replayed(*entry, *old, current);
        entry->dirty = 1;
    } else if (current.reminderfired && current.reminder == entry->reminder) {
        entry->reminderfired = true; // it has rung here, whatever others know of that
    }
    m_doc.addEntry(std::move(entry));
}

void VelMerge::remove(const Step &step)
{
    const VelEntry *current = m_doc.getEntry(step.localid);
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
    m_report.merged.push_back({Merged::Deleted, step.localid});
    m_doc.deleteEntry(current, true);
}

/** Whatever a total synchronisation does not name is not in the calendar any more. */
void VelMerge::removeUnnamed()
{
    std::unordered_set<quint32> named;
    for (const Step &step : m_steps)
        named.insert(step.localid);
    const VelEntryList all = m_doc.getEntries({}, 0, false, {});
    for (const VelEntryRef &each : all) {
        if (named.count(each.getOriginal()->localid) != 0)
            continue;
        Step step;
        step.localid = each.getOriginal()->localid;
        remove(step);
    }
}

/** The server has taken what it does not mention. What has no number there yet was not taken. */
void VelMerge::markSent()
{
    for (const Step &step : m_steps) {
        if (!step.isPutOff)
            m_sent.erase(step.localid);
    }
    for (const quint32 localid : m_sent) {
        const VelEntry *current = m_doc.getEntry(localid);
        if (!current || m_before.count(localid) != 0 || current->globalid == 0)
            continue;
        if (current->isDeleted())
            m_doc.removeEntry(localid);
        else
            m_doc.changeEntry(localid, [](VelEntry &entry) { entry.dirty = 0; });
        m_report.hasChanged = true;
    }
}

bool VelMerge::hasUnsent() const
{
    const VelEntryList all = m_doc.getEntries({}, 0, false, {});
    return std::any_of(all.begin(), all.end(),
                       [](const VelEntryRef &entry) { return entry.getOriginal()->dirty != 0; });
}
