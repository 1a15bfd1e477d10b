// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "formats/velvcalendarline.h"

#include "formats/vellatin.h"
#include "formats/velvcalendar.h"
#include "model/compat.h"

#include <QByteArray>

#include <algorithm>
#include <array>

namespace
{
constexpr char16_t ByteOrderMark = u'\uFEFF';

/** Windows-1252 from 0x80 to 0x9F; elsewhere it is Latin-1. */
constexpr std::array<char16_t, 32> Windows1252{
    u'\u20AC', u'\u0081', u'\u201A', u'\u0192', u'\u201E', u'\u2026', u'\u2020', u'\u2021',
    u'\u02C6', u'\u2030', u'\u0160', u'\u2039', u'\u0152', u'\u008D', u'\u017D', u'\u008F',
    u'\u0090', u'\u2018', u'\u2019', u'\u201C', u'\u201D', u'\u2022', u'\u2013', u'\u2014',
    u'\u02DC', u'\u2122', u'\u0161', u'\u203A', u'\u0153', u'\u009D', u'\u017E', u'\u0178'};

QString fromWindows1252(std::string_view bytes)
{
    QString text = QString::fromLatin1(bytes.data(), static_cast<VelSize>(bytes.size()));
    for (QChar &c : text) {
        if (c.unicode() >= 0x80 && c.unicode() < 0xA0)
            c = QChar(Windows1252[c.unicode() - 0x80U]);
    }
    return text;
}

/** The toolkit drops a byte order mark in front, but within a calendar it is a character like others. */
QString fromUtf8(std::string_view bytes)
{
    const QString text = QString::fromUtf8(bytes.data(), static_cast<VelSize>(bytes.size()));
    return bytes.substr(0, 3) == "\xEF\xBB\xBF" ? QChar(ByteOrderMark) + text : text;
}

/** Null when the bytes are no UTF-8. */
QString fromValidUtf8(std::string_view bytes)
{
    const QString text = fromUtf8(bytes);
    const bool isUtf8 = !text.contains(QChar::ReplacementCharacter)
        || text.toUtf8() == QByteArray::fromRawData(bytes.data(), static_cast<VelSize>(bytes.size()));
    if (!isUtf8)
        return {};
    return text.isNull() ? QStringLiteral("") : text;
}

QString guessed(std::string_view bytes)
{
    const QString text = fromValidUtf8(bytes);
    return text.isNull() ? VelLatin::fromLatin9(bytes.data(), static_cast<VelSize>(bytes.size())) : text;
}

QString decodeCharset(std::string_view bytes, std::string_view charset)
{
    const auto is = [charset](std::string_view name) { return VelVCalendarLine::equals(charset, name); };
    if (is("ISO-8859-1") || is("LATIN1"))
        return QString::fromLatin1(bytes.data(), static_cast<VelSize>(bytes.size()));
    if (is("ISO-8859-15") || is("LATIN9"))
        return VelLatin::fromLatin9(bytes.data(), static_cast<VelSize>(bytes.size()));
    if (is("WINDOWS-1252") || is("CP1252"))
        return fromWindows1252(bytes);
    return guessed(bytes);
}

int hexValue(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return c >= 'a' && c <= 'f' ? c - 'a' + 10 : -1;
}

/** How many bytes of a line end are at the front of @p text. */
std::size_t lineEndLength(std::string_view text)
{
    if (text.substr(0, 2) == "\r\n")
        return 2;
    return !text.empty() && (text.front() == '\n' || text.front() == '\r') ? 1 : 0;
}

QString withoutBackslashes(const QString &text)
{
    QString result;
    result.reserve(text.size());
    for (VelSize i = 0; i < text.size(); ++i) {
        if (text.at(i) != QLatin1Char('\\') || i + 1 == text.size()) {
            result += text.at(i);
            continue;
        }
        const QChar c = text.at(++i);
        result += c == QLatin1Char('n') || c == QLatin1Char('N') ? QChar(QLatin1Char('\n')) : c;
    }
    return result;
}
} // namespace

VelVCalendarLine::VelVCalendarLine(std::string_view line, std::size_t colon)
{
    if (colon == std::string_view::npos) {
        value = line;
        return;
    }
    const std::string_view head = line.substr(0, colon);
    const std::size_t semicolon = std::min(head.find(';'), head.size());
    name = trimmed(head.substr(0, semicolon));
    parameters = head.substr(std::min(semicolon + 1, head.size()));
    value = line.substr(std::min(colon + 1, line.size()));
}

std::string_view VelVCalendarLine::parameter(std::string_view wanted) const
{
    std::string_view rest = parameters;
    while (!rest.empty()) {
        const std::string_view one = rest.substr(0, rest.find(';'));
        rest.remove_prefix(std::min(one.size() + 1, rest.size()));
        const std::size_t equal = one.find('=');
        if (equal == std::string_view::npos || !equals(trimmed(one.substr(0, equal)), wanted))
            continue;
        std::string_view found = trimmed(one.substr(equal + 1));
        if (found.size() >= 2 && found.front() == '"' && found.back() == '"')
            found = found.substr(1, found.size() - 2);
        return found;
    }
    return {};
}

bool VelVCalendarLine::hasEncoding(std::string_view wanted) const
{
    if (equals(parameter("ENCODING"), wanted))
        return true;
    std::string_view rest = parameters;
    while (!rest.empty()) {
        const std::string_view one = rest.substr(0, rest.find(';'));
        rest.remove_prefix(std::min(one.size() + 1, rest.size()));
        if (equals(trimmed(one), wanted))
            return true;
    }
    return false;
}

bool VelVCalendarLine::isUtf8(std::string_view bytes)
{
    return !fromValidUtf8(bytes).isNull();
}

QString VelVCalendarLine::ownText() const
{
    QString text = fromValidUtf8(value);
    if (text.isNull())
        text = QString::fromLatin1(value.data(), static_cast<VelSize>(value.size()));
    return isQuotedPrintable() ? VelVCalendar::decode(text) : text;
}

QString VelVCalendarLine::text() const
{
    if (isOwn)
        return ownText();
    if (isBase64()) {
        const QByteArray bytes =
            QByteArray::fromBase64(QByteArray::fromRawData(value.data(), static_cast<VelSize>(value.size())));
        return decodeCharset({bytes.constData(), static_cast<std::size_t>(bytes.size())},
                             parameter("CHARSET"));
    }
    if (isQuotedPrintable())
        return decodeCharset(decodeQuotedPrintable(value), parameter("CHARSET"));
    const QString text = decodeCharset(value, parameter("CHARSET"));
    return hasBackslashes ? withoutBackslashes(text) : text;
}

bool VelVCalendarLine::equals(std::string_view text, std::string_view capitals)
{
    return std::equal(text.begin(), text.end(), capitals.begin(), capitals.end(),
                      [](char a, char b) { return (a >= 'a' && a <= 'z' ? a - 'a' + 'A' : a) == b; });
}

std::string_view VelVCalendarLine::trimmed(std::string_view text)
{
    constexpr std::string_view blanks = " \t";
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
    return text.substr(0, text.find_last_not_of(blanks) + 1);
}

std::string VelVCalendarLine::decodeQuotedPrintable(std::string_view text)
{
    std::string result;
    result.reserve(text.size());
    while (!text.empty()) {
        const std::size_t plain = std::min(text.find('='), text.size());
        result.append(text.substr(0, plain));
        text.remove_prefix(plain);
        if (text.empty())
            break;
        const std::size_t lineEnd = lineEndLength(text.substr(1));
        const int high = text.size() > 2 ? hexValue(text[1]) : -1;
        const int low = text.size() > 2 ? hexValue(text[2]) : -1;
        if (lineEnd > 0 || text.size() == 1) {
            text.remove_prefix(1 + lineEnd);
        } else if (high >= 0 && low >= 0) {
            result += static_cast<char>(high * 16 + low);
            text.remove_prefix(3);
        } else {
            result += '=';
            text.remove_prefix(1);
        }
    }
    return result;
}
