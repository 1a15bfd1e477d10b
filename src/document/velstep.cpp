// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "document/velstep.h"

#include "document/veldoc.h"
#include "model/velreplay.h"

namespace
{
bool isAlive(const VelEntry *entry)
{
    return entry && !entry->isDeleted();
}

/** Puts entries of one document from one state of a step to its other. */
class Replay
{
public:
    Replay(VelDoc &doc, bool isExact)
        : m_doc(doc)
        , m_isExact(isExact)
    {
    }

    /** Returns the id of the entry, or 0 when there was nothing left to do. */
    quint32 run(VelEntry *from, VelEntry *to)
    {
        const quint32 localid = from ? from->localid : to->localid;
        const VelEntry *current = m_doc.getEntry(localid);
        if (from && to && current)
            absorbAlert(*current, *from, *to);
        const bool isDone = to ? put(from, *to, current) : remove(*from, current);
        return isDone ? localid : 0;
    }

private:
    /** An alert that was given meanwhile must not be given again, whichever way the step goes. */
    static void absorbAlert(const VelEntry &current, VelEntry &from, VelEntry &to)
    {
        if (!current.reminderfired || from.reminderfired)
            return;
        from.reminderfired = true;
        to.reminderfired = to.reminderfired || to.reminder == from.reminder;
    }

    bool remove(const VelEntry &from, const VelEntry *current)
    {
        if (!isAlive(current))
            return false;
        // What the step deleted, or added, without a notice to the server.
        const bool isForGood = !from.isDeleted() && from.globalid != 0;
        m_doc.deleteEntry(current, isForGood);
        return true;
    }

    bool put(const VelEntry *from, const VelEntry &to, const VelEntry *current)
    {
        if (!isAlive(current))
            return bringBack(from, to, current);
        if (!from || !isAlive(from))
            return false; // somebody else has brought it back
        const bool isUntouched = m_isExact && *current == *from;
        if (to.isDeleted() && !isUntouched)
            return remove(to, current);
        std::unique_ptr<VelEntry> result = VelReplay::replayed(*current, *from, to);
        result->dirty = isUntouched ? to.dirty : 1;
        m_doc.addEntry(std::move(result));
        return true;
    }

    /** @p current is null, or the notice of a deletion. */
    bool bringBack(const VelEntry *from, const VelEntry &to, const VelEntry *current)
    {
        if (isAlive(from) || to.isDeleted())
            return false; // the step is not what deleted it
        auto result = std::make_unique<VelEntry>(to);
        if (current && (!from || !m_isExact))
            result->globalid = current->dirty ? current->globalid : 0; // the server has forgotten it
        else if (!current && from)
            result->globalid = 0;
        if (!current && m_doc.getLocalId(result->globalid) != 0)
            return false; // has come back by itself
        if (!m_isExact || !from != !current || (current && !(*current == *from)))
            result->dirty = 1;
        m_doc.addEntry(std::move(result));
        return true;
    }

    VelDoc &m_doc;
    bool m_isExact;
};
} // namespace

VelStep::VelStep(QString text, quint64 exchange, std::vector<Change> changes)
    : m_text(std::move(text))
    , m_exchange(exchange)
    , m_changes(std::move(changes))
{
}

std::vector<quint32> VelStep::undo(VelDoc &doc)
{
    Replay replay(doc, doc.getExchangeCount() == m_exchange);
    std::vector<quint32> changed;
    for (const Change &change : m_changes) {
        if (const quint32 localid = replay.run(change.after.get(), change.before.get()))
            changed.push_back(localid);
    }
    return changed;
}

std::vector<quint32> VelStep::redo(VelDoc &doc)
{
    Replay replay(doc, doc.getExchangeCount() == m_exchange);
    std::vector<quint32> changed;
    for (const Change &change : m_changes) {
        if (const quint32 localid = replay.run(change.before.get(), change.after.get()))
            changed.push_back(localid);
    }
    return changed;
}

VelStepScope::VelStepScope(VelDoc *doc, const QString &text)
    : m_doc(doc)
{
    doc->beginStep(text);
}

VelStepScope::~VelStepScope()
{
    if (m_doc)
        m_doc->endStep();
}
