// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "formats/velxmlwriter.h"

#include "formats/vellatin.h"
#include "formats/velxmlvalues.h"

namespace
{
constexpr std::size_t PieceSize = 1 << 20;

/** What XML 1.0 calls a Char (section 2.2), of one UTF-16 unit that is no surrogate. */
bool isAllowed(char16_t c)
{
    return c >= 0x20 ? c < 0xFFFE : c == u'\t' || c == u'\n' || c == u'\r';
}

void appendReference(std::string &out, char32_t character)
{
    out += "&#";
    VelXmlValues::append(out, character);
    out += ';';
}

/** The units that are not plain text: escaped, referred to, or left out. */
void appendSpecial(std::string &out, char16_t c)
{
    switch (c) {
    case u'&':
        out += "&amp;";
        return;
    case u'<':
        out += "&lt;";
        return;
    case u'>':
        out += "&gt;";
        return;
    case u'\r':
        appendReference(out, c);
        return;
    default:
        break;
    }
    if (!isAllowed(c))
        return;
    const int byte = VelLatin::toLatin9(c);
    if (byte >= 0)
        out += static_cast<char>(byte);
    else
        appendReference(out, c);
}

bool isPlain(char16_t c)
{
    return (c >= 0x20 && c < 0x80 && c != u'&' && c != u'<' && c != u'>') || c == u'\n';
}
} // namespace

VelXmlWriter::VelXmlWriter(QIODevice *device)
    : m_device(device)
{
    if (m_device)
        m_out.reserve(PieceSize + PieceSize / 4);
}

void VelXmlWriter::appendEscaped(std::string &out, const QString &text)
{
    const QChar *const units = text.constData();
    const VelSize size = text.size();
    for (VelSize i = 0; i < size; ++i) {
        const char16_t c = units[i].unicode();
        if (isPlain(c)) {
            out += static_cast<char>(c);
        } else if (!QChar::isSurrogate(c)) {
            appendSpecial(out, c);
        } else if (QChar::isHighSurrogate(c) && i + 1 < size && units[i + 1].isLowSurrogate()) {
            appendReference(out, QChar::surrogateToUcs4(units[i], units[i + 1]));
            ++i;
        }
    }
}

void VelXmlWriter::number(const char *open, qint64 value, const char *close)
{
    m_out += open;
    VelXmlValues::append(m_out, value);
    m_out += close;
}

void VelXmlWriter::textElement(const char *open, const QString &text, const char *close)
{
    m_out += open;
    appendEscaped(m_out, text);
    m_out += close;
}

void VelXmlWriter::writeHead()
{
    m_out += "<?xml version = '1.0' encoding = 'ISO-8859-15' ?>\n<calendar>\n";
}

void VelXmlWriter::writeMeta(const VelCalendarMeta &meta)
{
    m_out += "<meta>\n";
    number(" <userid>", meta.userid, "</userid>\n");
    number(" <origright>", meta.origright, "</origright>\n");
    textElement(" <synctime>", meta.synctime, "</synctime>\n");
    if (meta.archive)
        number(" <archive>", *meta.archive ? 1 : 0, "</archive>\n");
    if (!meta.account.isNone()) {
        textElement(" <server>", meta.account.server, "</server>\n");
        textElement(" <user>", meta.account.user, "</user>\n");
    }
    m_out += "</meta>\n";
}

void VelXmlWriter::writeAccount(const VelAccount &account)
{
    number(" <account>\n  <id>", account.id, "</id>\n");
    textElement("  <name>", account.name, "</name>\n");
    if (!account.email.isEmpty())
        textElement("  <email>", account.email, "</email>\n");
    if (account.type != 0)
        number("  <type>", account.type, "</type>\n");
    if (account.status != 0)
        number("  <status>", account.status, "</status>\n");
    if (account.attendee != 0)
        number("  <attendee>", account.attendee, "</attendee>\n");
    m_out += " </account>\n";
    flushIfLarge();
}

void VelXmlWriter::writeEntry(const VelEntry &entry)
{
    if (entry.isOccurrence())
        return;
    number("<entry>\n <localid>", entry.localid, "</localid>\n");
    number(" <globalid>", entry.globalid, "</globalid>\n");
    number(" <dirty>", entry.dirty, "</dirty>\n");
    textElement(" <title>", entry.getTitle(), "</title>\n");
    m_out += " <start>";
    VelXmlValues::appendDateTime(m_out, entry.getStart());
    m_out += "</start>\n <end>";
    VelXmlValues::appendDateTime(m_out, entry.getEnd());
    m_out += "</end>\n";
    number(" <type>", entry.type, "</type>\n");
    if (entry.user != 0)
        number(" <user>", entry.user, "</user>\n");
    if (entry.type > 0)
        writeDetails(entry);
    for (const VelAccount &account : entry.accounts)
        writeAccount(account);
    m_out += "</entry>\n";
    flushIfLarge();
}

void VelXmlWriter::writeDetails(const VelEntry &entry)
{
    if (!entry.getDescription().isEmpty())
        textElement(" <description>", entry.getDescription(), "</description>\n");
    if (entry.access > 0)
        number(" <access>", entry.access, "</access>\n");
    if (entry.display > 0)
        number(" <display>", entry.display, "</display>\n");
    if (entry.priority > 0)
        number(" <priority>", entry.priority, "</priority>\n");
    if (entry.notime)
        m_out += " <notime>1</notime>\n";
    if (entry.complete)
        m_out += " <complete>1</complete>\n";
    if (entry.reminder != 0)
        number(" <reminder>", entry.reminder, "</reminder>\n");
    if (entry.reminderfired)
        m_out += " <reminderfired>1</reminderfired>\n";
    writeRule(entry.rule);
}

void VelXmlWriter::writeRule(const VelRecurrenceRule &rule)
{
    if (rule.recurringtype > 0)
        number(" <recurringtype>", rule.recurringtype, "</recurringtype>\n");
    if (rule.occurevery > 0)
        number(" <occurevery>", rule.occurevery, "</occurevery>\n");
    if (!rule.occurdays.isEmpty()) {
        m_out += " <occurdays>";
        VelXmlValues::appendIntList(m_out, rule.occurdays);
        m_out += "</occurdays>\n";
    }
    if (rule.occurdaynumber != 0)
        number(" <occurdaynumber>", rule.occurdaynumber, "</occurdaynumber>\n");
    if (rule.occurenddate.isValid()) {
        m_out += " <occurenddate>";
        VelXmlValues::appendDate(m_out, rule.occurenddate);
        m_out += "</occurenddate>\n";
    }
    if (rule.occurendcount > 0)
        number(" <occurendcount>", rule.occurendcount, "</occurendcount>\n");
}

void VelXmlWriter::writeTail()
{
    m_out += "</calendar>\n";
}

void VelXmlWriter::flushIfLarge()
{
    if (m_device && m_out.size() >= PieceSize)
        m_failed = !flush() || m_failed;
}

bool VelXmlWriter::flush()
{
    if (!m_device)
        return true;
    const auto size = static_cast<qint64>(m_out.size());
    m_failed = m_device->write(m_out.data(), size) != size || m_failed;
    m_out.clear();
    return !m_failed;
}
