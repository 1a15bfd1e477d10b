// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "app/velinvitationasker.h"

#include <QPointer>
#include <QTimer>

#include <utility>

VelInvitationAsker::VelInvitationAsker(VelDoc &doc, Ask ask)
    : m_doc(doc)
    , m_ask(std::move(ask))
{
    connect(&doc, &VelDoc::contentsReplaced, this, &VelInvitationAsker::forget);
    // One may have been answered, or deleted, where it stands in the calendar.
    connect(&doc, &VelDoc::stepDone, this, [this] {
        m_open.prune(m_doc);
        updateCount();
    });
}

void VelInvitationAsker::forget()
{
    m_isFirst = true;
    m_open.clear();
    updateCount();
}

void VelInvitationAsker::updateCount()
{
    if (std::exchange(m_toldCount, count()) != count())
        Q_EMIT countChanged(count());
}

void VelInvitationAsker::take(const VelMerge::Report &report, bool isAskedFor)
{
    m_open.take(report, m_doc);
    updateCount();
    const bool isFirst = std::exchange(m_isFirst, false);
    if (isAskedFor || isFirst)
        askSoon(false);
}

void VelInvitationAsker::askSoon(bool isOpened)
{
    if (count() == 0 || m_isAsking)
        return;
    m_isAsking = true;
    m_isOpened = isOpened;
    QTimer::singleShot(0, this, &VelInvitationAsker::ask);
}

void VelInvitationAsker::ask()
{
    const QPointer<VelInvitationAsker> self(this);
    const std::vector<quint32> ids = m_open.ids();
    for (std::size_t i = 0; i < ids.size(); ++i) {
        if (!askOne(ids[i], int(ids.size() - i) - 1))
            break;
    }
    if (!self)
        return;
    m_isAsking = false;
    updateCount();
}

/** False when no more are to be asked. */
bool VelInvitationAsker::askOne(quint32 globalid, int others)
{
    std::optional<VelMerge::Question> question = m_open.question(globalid, m_doc);
    if (!question)
        return true; // it has been answered, or has gone, meanwhile
    question->others = others;
    const QPointer<VelInvitationAsker> self(this);
    const std::optional<int> answer = m_ask(*question, m_isOpened);
    if (!self || answer == VelAnswer::AllLater)
        return false;
    const bool hasChanged = answer && m_open.answer(m_doc, globalid, *answer);
    updateCount();
    if (hasChanged)
        Q_EMIT answered();
    return self;
}
