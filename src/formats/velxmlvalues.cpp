// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "formats/velxmlvalues.h"

#include <array>
#include <charconv>

namespace
{
constexpr std::string_view Blanks = " \t\r\n";

std::string_view trimmed(std::string_view text)
{
    const auto first = text.find_first_not_of(Blanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(Blanks) - first + 1);
}

template <typename Number>
Number parseNumber(std::string_view text)
{
    text = trimmed(text);
    if (text.size() > 1 && text.front() == '+' && text[1] != '-')
        text.remove_prefix(1);
    Number number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() ? number : 0;
}

/** The piece up to @p separator, which is taken off @p text together with it. */
std::string_view takePiece(std::string_view &text, char separator)
{
    const auto at = text.find(separator);
    const std::string_view piece = text.substr(0, at);
    text.remove_prefix(at == std::string_view::npos ? text.size() : at + 1);
    return piece;
}

QTime parseTime(std::string_view text)
{
    const auto colon = text.find(':');
    if (colon == std::string_view::npos || text.find(':', colon + 1) != std::string_view::npos)
        return {};
    const int hour = VelXmlValues::parseInt(text.substr(0, colon));
    const int minute = VelXmlValues::parseInt(text.substr(colon + 1));
    return QTime::isValid(hour, minute, 0) ? QTime(hour, minute) : QTime();
}
} // namespace

namespace VelXmlValues
{
int parseInt(std::string_view text)
{
    return parseNumber<int>(text);
}

quint32 parseUInt(std::string_view text)
{
    return parseNumber<quint32>(text);
}

QDate parseDate(std::string_view text)
{
    const int year = parseInt(takePiece(text, '-'));
    const int month = parseInt(takePiece(text, '-'));
    const int day = parseInt(takePiece(text, '-'));
    const QDate date = QDate::isValid(year, month, day) ? QDate(year, month, day) : QDate();
    return VelDateTime::isSupported(date) ? date : QDate();
}

VelDateTime parseDateTime(std::string_view text)
{
    const QDate date = parseDate(takePiece(text, ' '));
    return {date, parseTime(text)};
}

QVector<int> parseIntList(std::string_view text)
{
    QVector<int> list;
    while (!text.empty() && list.size() < MaximumListLength) {
        const bool endsInSeparator = text.back() == ',' && text.find(',') == text.size() - 1;
        list.append(parseInt(takePiece(text, ',')));
        if (endsInSeparator)
            list.append(0);
    }
    return list;
}

void append(std::string &out, qint64 number)
{
    std::array<char, 24> digits{};
    const auto result = std::to_chars(digits.data(), digits.data() + digits.size(), number);
    out.append(digits.data(), result.ptr);
}

void appendDate(std::string &out, QDate date)
{
    int year = 0;
    int month = 0;
    int day = 0;
    date.getDate(&year, &month, &day);
    append(out, year);
    out += '-';
    append(out, month);
    out += '-';
    append(out, day);
}

void appendDateTime(std::string &out, const VelDateTime &dateTime)
{
    appendDate(out, dateTime.date());
    const QTime time = dateTime.time();
    out += ' ';
    append(out, time.hour());
    out += ':';
    append(out, time.minute());
}

void appendIntList(std::string &out, const QVector<int> &list)
{
    for (int i = 0; i < list.size(); ++i) {
        if (i > 0)
            out += ',';
        append(out, list.at(i));
    }
}

QString toString(const VelDateTime &dateTime)
{
    std::string text;
    appendDateTime(text, dateTime);
    return QString::fromStdString(text);
}

QString toStringDate(QDate date)
{
    std::string text;
    appendDate(text, date);
    return QString::fromStdString(text);
}
} // namespace VelXmlValues
