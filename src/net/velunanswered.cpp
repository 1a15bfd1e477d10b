// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "net/velunanswered.h"

#include "document/veldoc.h"
#include "model/velsettings.h"

VelUnanswered::VelUnanswered(VelDoc &doc, const VelSettings &settings)
    : m_doc(doc)
    , m_settings(settings)
{
}

VelRequest VelUnanswered::write(const VelNetTask &task)
{
    if (task.type != VelNetTask::Sync)
        return VelRequestWriter::write(task, m_settings, m_doc);
    m_isRepeat = isPending();
    if (m_isRepeat)
        return VelRequestWriter::write(task, m_settings, m_doc, &m_sent->entries);
    VelRequest request = VelRequestWriter::write(task, m_settings, m_doc);
    m_doc.beginExchange();
    m_sent = {request.sent, m_doc.getExchangeCount(), m_settings.server, m_settings.user};
    return request;
}

void VelUnanswered::refuse()
{
    if (!m_isRepeat)
        m_sent.reset();
}

bool VelUnanswered::isPending() const
{
    return m_sent && !m_sent->entries.empty() && m_doc.isExchanging()
        && m_sent->exchange == m_doc.getExchangeCount() && m_sent->server == m_settings.server
        && m_sent->user == m_settings.user;
}
