// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "net/velopeninvitations.h"

#include "document/velanswer.h"

#include <algorithm>

namespace
{
bool isOver(const VelEntry &entry, QDate today)
{
    return !entry.isRecurring() && entry.getEnd().date() < today;
}
} // namespace

std::vector<quint32> VelOpenInvitations::ids() const
{
    std::vector<std::pair<VelDateTime, quint32>> sorted;
    sorted.reserve(m_items.size());
    for (const auto &[globalid, item] : m_items)
        sorted.emplace_back(item.question.entry.getStart(), globalid);
    std::sort(sorted.begin(), sorted.end());
    std::vector<quint32> ids;
    ids.reserve(sorted.size());
    for (const auto &[start, globalid] : sorted)
        ids.push_back(globalid);
    return ids;
}

std::optional<int> VelOpenInvitations::statusIn(const VelDoc &doc, quint32 globalid)
{
    const VelEntry *entry = doc.getEntry(doc.getLocalId(globalid));
    if (!entry)
        return {};
    return entry->isDeleted() ? int(VelEntry::Deleted) : entry->getAccountStatus(doc.getUserId());
}

void VelOpenInvitations::take(const VelMerge::Report &report, const VelDoc &doc)
{
    prune(doc);
    std::erase_if(m_items, [&report, &doc](const Items::value_type &each) {
        if (each.second.question.kind == VelMerge::Kind::Changed)
            return false;
        const bool isNamed = report.named.count(each.first) != 0;
        return isNamed || report.isTotal || isOver(each.second.question.entry, doc.today());
    });
    for (const VelMerge::Question &question : report.open) {
        // Without a number nobody would know what is answered.
        if (const quint32 globalid = question.entry.globalid)
            m_items.insert_or_assign(globalid, Item{question, statusIn(doc, globalid)});
    }
}

void VelOpenInvitations::prune(const VelDoc &doc)
{
    std::erase_if(m_items, [&doc](const Items::value_type &each) {
        return statusIn(doc, each.first) != each.second.status;
    });
}

std::optional<VelMerge::Question> VelOpenInvitations::question(quint32 globalid, const VelDoc &doc) const
{
    const auto found = m_items.find(globalid);
    if (found == m_items.end())
        return {};
    VelMerge::Question question = found->second.question;
    const VelEntry *stored = doc.getEntry(doc.getLocalId(globalid));
    if (question.kind == VelMerge::Kind::Changed && stored)
        question.entry = *stored;
    question.entry.updRecurrence(doc.today());
    return question;
}

bool VelOpenInvitations::answer(VelDoc &doc, quint32 globalid, int answer)
{
    prune(doc);
    const auto found = m_items.find(globalid);
    if (found == m_items.end())
        return false;
    const VelMerge::Question question = found->second.question;
    if (question.kind == VelMerge::Kind::Invitation && answer == VelAccount::Unanswered)
        return false;
    const bool isSame = found->second.status == answer;
    m_items.erase(found);
    if (question.kind == VelMerge::Kind::Invitation)
        return storeAnswered(doc, question.entry, answer);
    return !isSame && VelAnswer::apply(doc, doc.getLocalId(globalid), answer);
}

bool VelOpenInvitations::storeAnswered(VelDoc &doc, const VelEntry &invitation, int answer)
{
    auto entry = std::make_unique<VelEntry>(invitation);
    VelAccount *own = entry->accounts.get(doc.getUserId());
    if (!own)
        return false;
    own->status = answer;
    const VelEntry *current = doc.getEntry(doc.getLocalId(invitation.globalid));
    if (current && current->reminderfired && current->reminder == entry->reminder)
        entry->reminderfired = true;
    entry->localid = current ? current->localid : 0;
    entry->dirty = 1;
    if (answer == VelAccount::Declined)
        entry->type = VelEntry::Deleted; // the server is to hear of it
    if (!current)
        entry = doc.newEntry(std::move(entry));
    doc.addEntry(std::move(entry));
    return true;
}
