// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "formats/velvcalendarsource.h"

#include <algorithm>

namespace
{
constexpr auto npos = std::string_view::npos;
constexpr std::string_view OwnProduct = "-//Ulmacor/Delmast Time";
/** A line feed as this system writes it, before the end of a line. */
constexpr std::string_view OwnLineFeed = "=0A=";

bool isLineEnd(char c)
{
    return c == '\n' || c == '\r';
}

bool isBlank(char c)
{
    return c == ' ' || c == '\t';
}

bool isBase64Digit(char c)
{
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '+' || c == '/'
        || c == '=';
}
} // namespace

VelVCalendarSource::VelVCalendarSource(const QByteArray &bytes)
    : m_bytes(bytes)
    , m_rest(m_bytes.constData(), static_cast<std::size_t>(m_bytes.size()))
{
    constexpr std::string_view mark = "\xEF\xBB\xBF";
    if (m_rest.substr(0, mark.size()) == mark)
        m_rest.remove_prefix(mark.size());
}

bool VelVCalendarSource::next(VelVCalendarLine &line)
{
    do {
        if (m_rest.empty())
            return false;
        m_current = takeLine();
    } while (m_current.empty());
    m_colon = {};
    m_tooLong = m_current.size() > MaximumLength;
    m_quotedPrintable = false;
    m_base64 = false;
    examineHead();
    while (!m_rest.empty() && isContinued(peekLine()))
        append(takeLine());
    line = VelVCalendarLine(m_tooLong ? m_current.substr(0, MaximumLength) : m_current,
                            m_colon.unquoted != npos ? m_colon.unquoted : m_colon.first);
    line.isTooLong = m_tooLong;
    examineFrame(line);
    line.hasBackslashes = m_version2;
    line.isOwn = m_own;
    return true;
}

/** Who has written what comes now, and by which rules. */
void VelVCalendarSource::examineFrame(const VelVCalendarLine &line)
{
    const std::string_view value = VelVCalendarLine::trimmed(line.value);
    if (line.is("BEGIN") && VelVCalendarLine::equals(value, "VCALENDAR"))
        m_own = false;
    if (line.is("PRODID")) {
        m_own = !m_version2 && value.substr(0, OwnProduct.size()) == OwnProduct;
        m_ownReturns = m_endsInReturn;
    }
    if (line.is("VERSION")) {
        m_version2 = value == "2.0";
        m_own = m_own && !m_version2;
    }
}

std::size_t VelVCalendarSource::position() const
{
    return static_cast<std::size_t>(m_bytes.size()) - m_rest.size();
}

std::string_view VelVCalendarSource::peekLine() const
{
    if (!m_own)
        return m_rest.substr(
            0,
            static_cast<std::size_t>(std::find_if(m_rest.begin(), m_rest.end(), isLineEnd) - m_rest.begin()));
    std::string_view line = m_rest.substr(0, m_rest.find('\n'));
    if (m_ownReturns && !line.empty() && line.back() == '\r')
        line.remove_suffix(1);
    return line;
}

/** What follows @p line, which is at the front, and its end. */
std::string_view VelVCalendarSource::afterLine(std::string_view line) const
{
    const std::string_view rest = m_rest.substr(line.size());
    return rest.substr(rest.substr(0, 2) == "\r\n" ? 2 : std::min<std::size_t>(1, rest.size()));
}

std::string_view VelVCalendarSource::takeLine()
{
    const std::string_view line = peekLine();
    m_endsInReturn = m_rest.substr(line.size(), 2) == "\r\n";
    m_rest = afterLine(line);
    return line;
}

/**
 * A description that itself ends in what stands for a line feed would swallow the start behind it, which is always there:
 * so the first of two starts is a line of the description, and one alone is none.
 */
bool VelVCalendarSource::isOwnContinued(std::string_view next) const
{
    constexpr std::string_view start = "DTSTART:";
    if (!m_quotedPrintable || !m_current.ends_with(OwnLineFeed))
        return false;
    return !next.starts_with(start) || next.ends_with(OwnLineFeed) || afterLine(next).starts_with(start);
}

bool VelVCalendarSource::isContinued(std::string_view next) const
{
    if (m_own)
        return isOwnContinued(next);
    if (m_quotedPrintable && m_current.back() == '=')
        return true;
    if (!next.empty() && isBlank(next.front()))
        return true;
    return m_base64 && !next.empty() && std::all_of(next.begin(), next.end(), isBase64Digit);
}

void VelVCalendarSource::append(std::string_view text)
{
    const bool isSoftBreak = m_quotedPrintable && m_current.back() == '=';
    if (!isSoftBreak && m_version2 && !m_base64)
        text.remove_prefix(1);
    if (m_current.data() != m_joined.data())
        m_joined.assign(m_current.substr(0, MaximumLength));
    if (m_joined.size() + text.size() + 1 > MaximumLength) {
        m_tooLong = true;
        appendTail(text);
    } else {
        if (isSoftBreak)
            m_joined += '\n';
        m_joined.append(text);
    }
    m_current = m_joined;
    examineHead();
}

/** What is left out must not hide whether the value goes on, which its last bytes tell. */
void VelVCalendarSource::appendTail(std::string_view text)
{
    std::string tail(OwnLineFeed.size(), '.');
    tail.append(text.substr(text.size() - std::min(text.size(), OwnLineFeed.size())));
    m_joined.resize(std::min(m_joined.size(), MaximumLength - OwnLineFeed.size()));
    m_joined.append(tail, tail.size() - OwnLineFeed.size());
}

/** The encoding decides where a value ends, so it must be known as soon as the colon is there. */
void VelVCalendarSource::examineHead()
{
    if (m_colon.unquoted != npos)
        return;
    m_colon.find(m_current);
    if (m_colon.unquoted == npos)
        return;
    const VelVCalendarLine line(m_current, m_colon.unquoted);
    m_quotedPrintable = line.isQuotedPrintable();
    m_base64 = line.isBase64();
}

void VelVCalendarSource::Colon::find(std::string_view text)
{
    for (; seen < text.size() && unquoted == npos; ++seen) {
        if (text[seen] == '"')
            inQuotes = !inQuotes;
        if (text[seen] != ':')
            continue;
        if (first == npos)
            first = seen;
        if (!inQuotes)
            unquoted = seen;
    }
}
