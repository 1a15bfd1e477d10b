// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "net/velanswerreader.h"

#include "net/velrequestwriter.h"

VelAnswerReader::VelAnswerReader()
    : VelAnswerReader(Limits())
{
}

VelAnswerReader::VelAnswerReader(Limits limits)
    : m_limits(limits)
    , m_reader(std::make_unique<VelXmlReader>())
{
}

void VelAnswerReader::fail(const QString &message)
{
    m_error = QStringLiteral("XML error [%1,%2]: %3")
                  .arg(m_reader->errorLine())
                  .arg(m_reader->errorColumn())
                  .arg(message);
    m_reader.reset();
}

VelAnswerReader::State VelAnswerReader::feed(const QByteArray &read)
{
    m_bytes += read.size();
    const bool isComplete = read.endsWith(VelRequestWriter::Terminator);
    const auto size = static_cast<std::size_t>(isComplete ? read.size() - 1 : read.size());
    const bool isTooLong = m_bytes > m_limits.bytes;
    if (m_reader && !isTooLong && !m_reader->feed(read.constData(), size))
        fail(m_reader->errorMessage());
    const bool hasTooMany = m_reader && m_reader->recordCount() > m_limits.records;
    if (isTooLong || hasTooMany) {
        if (m_reader)
            fail(isTooLong ? QStringLiteral("answer too long") : QStringLiteral("too many entries"));
        return State::TooLarge;
    }
    return isComplete ? State::Complete : State::Incomplete;
}

std::optional<VelXmlContent> VelAnswerReader::takeContent()
{
    if (m_reader && !m_reader->finish())
        fail(m_reader->errorMessage());
    if (!m_reader)
        return {};
    return m_reader->takeContent();
}
