// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "formats/velvcalendarrule.h"

#include "formats/velvcalendar.h"
#include "model/compat.h"

#include <algorithm>
#include <charconv>

namespace
{
constexpr int DefaultCount = 2;
constexpr int LastDay = 31; // falls to the last day of shorter months

QString endText(const VelRecurrenceRule &rule)
{
    const VelDateTime end(rule.occurenddate, QTime(0, 0));
    if (end.isValid())
        return QLatin1Char(' ') + VelVCalendar::toISO8601(end);
    return QLatin1String(" #") + QString::number(rule.occurendcount);
}

QString weekdayCodes(const QVector<int> &days)
{
    QString codes;
    for (const int day : days) {
        const QString code = VelRecurrenceRule::getDayString(day);
        if (!code.isEmpty())
            codes += QLatin1Char(' ') + code;
    }
    return codes;
}

QString monthlyText(const VelRecurrenceRule &rule)
{
    if (rule.occurdays.isEmpty())
        return {};
    const QString every = QString::number(rule.occurevery);
    const int day = rule.occurdays.first();
    if (rule.occurdaynumber == 0)
        return QLatin1String("MD") + every + QLatin1Char(' ') + QString::number(day);
    const QLatin1Char sign(rule.occurdaynumber < 0 ? '-' : '+');
    return QLatin1String("MP") + every + QLatin1Char(' ') + QString::number(qAbs(rule.occurdaynumber)) + sign
        + weekdayCodes({day});
}

QString basicText(const VelRecurrenceRule &rule, QDate start)
{
    const QString every = QString::number(rule.occurevery);
    switch (rule.recurringtype) {
    case VelRecurrenceRule::Daily:
        return QLatin1Char('D') + every;
    case VelRecurrenceRule::Weekly: {
        const QString codes = weekdayCodes(rule.occurdays);
        return codes.isEmpty() ? QString() : QLatin1Char('W') + every + codes;
    }
    case VelRecurrenceRule::Monthly:
        return monthlyText(rule);
    case VelRecurrenceRule::Yearly:
        return QLatin1String("YD") + every + QLatin1Char(' ') + QString::number(start.dayOfYear());
    default:
        return {};
    }
}

std::string_view takeToken(std::string_view &text)
{
    constexpr std::string_view blanks = " \t";
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
    const std::string_view token = text.substr(0, text.find_first_of(blanks));
    text.remove_prefix(token.size());
    return token;
}

/** The whole text as a number of at most nine digits, or -1. */
int toNumber(std::string_view text)
{
    int number = -1;
    if (text.empty() || text.size() > 9 || text.front() < '0' || text.front() > '9')
        return -1;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() ? number : -1;
}

int toWeekday(std::string_view token)
{
    if (token.size() != 2)
        return 0;
    return VelRecurrenceRule::getDayNumber(QString::fromLatin1(token.data(), 2).toUpper());
}

/** A number with a sign behind it, such as "1+" or "1-"; 0 when it is none. */
int toPosition(std::string_view token)
{
    if (token.size() < 2 || (token.back() != '+' && token.back() != '-'))
        return 0;
    const int number = toNumber(token.substr(0, token.size() - 1));
    return number < 1 ? 0 : token.back() == '-' ? -number : number;
}

class RuleReader
{
public:
    RuleReader(QDate start, const QTimeZone &zone)
        : m_start(start)
        , m_zone(zone)
    {
    }

    std::optional<VelVCalendarRule::Reading> read(std::string_view text);

private:
    [[nodiscard]] bool isByWeekday() const;
    [[nodiscard]] bool isExact() const;
    [[nodiscard]] bool isExactMonth() const;
    [[nodiscard]] bool isExactYear() const;
    bool readKind(std::string_view token);
    void readToken(std::string_view token);
    bool readEnd(std::string_view token);
    void readMonthDay(std::string_view token);
    void setDays();
    void setMonthDays();

    const QDate m_start;
    const QTimeZone &m_zone;
    VelRecurrenceRule m_rule;
    std::string_view m_kind;
    QVector<int> m_weekdays; // in the order of the text
    int m_numbers = 0; // tokens that are neither weekday nor end
    int m_number = -1; // the last of them, if it is one
    int m_position = 0;
    int m_monthDay = 0;
    bool m_hasEnd = false;
};

std::optional<VelVCalendarRule::Reading> RuleReader::read(std::string_view text)
{
    if (!readKind(takeToken(text)))
        return {};
    for (std::string_view token = takeToken(text); !token.empty(); token = takeToken(text))
        readToken(token);
    if (!m_hasEnd)
        m_rule.occurendcount = DefaultCount;
    setDays();
    return VelVCalendarRule::Reading{m_rule, isExact()};
}

bool RuleReader::isExact() const
{
    switch (m_rule.recurringtype) {
    case VelRecurrenceRule::Daily:
        return m_numbers == 0 && m_weekdays.isEmpty();
    case VelRecurrenceRule::Weekly:
        return m_numbers == 0;
    case VelRecurrenceRule::Monthly:
        return isExactMonth();
    default:
        return isExactYear();
    }
}

bool RuleReader::isExactMonth() const
{
    if (m_numbers > 1)
        return false;
    if (!isByWeekday())
        return m_weekdays.isEmpty() && (m_numbers == 0 || m_monthDay != 0);
    // Of a fifth weekday, where there is none, ours takes the fourth.
    return m_weekdays.size() <= 1 && m_position >= -1 && m_position <= 4
        && (m_numbers == 0 || m_position != 0);
}

bool RuleReader::isExactYear() const
{
    if (!m_weekdays.isEmpty() || m_numbers > 1)
        return false;
    return m_numbers == 0 || (m_kind == "YD" && m_number == m_start.dayOfYear())
        || (m_kind == "YM" && m_number == m_start.month());
}

bool RuleReader::isByWeekday() const
{
    return m_kind == "MP" || (m_kind == "M" && !m_weekdays.isEmpty());
}

bool RuleReader::readKind(std::string_view token)
{
    m_kind = token.substr(0, token.find_first_of("0123456789"));
    m_rule.occurevery = toNumber(token.substr(m_kind.size()));
    if (m_rule.occurevery < 1)
        return false;
    if (m_kind == "D")
        m_rule.recurringtype = VelRecurrenceRule::Daily;
    else if (m_kind == "W")
        m_rule.recurringtype = VelRecurrenceRule::Weekly;
    else if (m_kind == "M" || m_kind == "MP" || m_kind == "MD")
        m_rule.recurringtype = VelRecurrenceRule::Monthly;
    else if (m_kind == "YD" || m_kind == "YM" || m_kind == "YP")
        m_rule.recurringtype = VelRecurrenceRule::Yearly;
    return m_rule.recurringtype != VelRecurrenceRule::None;
}

void RuleReader::readToken(std::string_view token)
{
    if (readEnd(token))
        return;
    const int weekday = toWeekday(token);
    m_numbers += weekday == 0 ? 1 : 0;
    m_number = weekday == 0 ? toNumber(token) : m_number;
    if (weekday != 0) {
        if (!m_weekdays.contains(weekday))
            m_weekdays.append(weekday);
    } else if (m_position == 0 && m_weekdays.isEmpty()) {
        m_position = toPosition(token);
    }
    if (m_monthDay == 0)
        readMonthDay(token);
}

bool RuleReader::readEnd(std::string_view token)
{
    if (token.front() == '#') {
        m_rule.occurendcount = std::max(0, toNumber(token.substr(1)));
        m_hasEnd = true;
        return true;
    }
    constexpr std::size_t dateLength = 8;
    if (token.size() < dateLength)
        return false;
    const bool isDate = token.size() == dateLength;
    const VelDateTime end =
        VelVCalendar::fromISO8601(isDate ? std::string(token) + "T235959" : std::string(token), m_zone);
    if (!end.isValid())
        return false;
    m_rule.occurenddate = end.time() == QTime(0, 0) ? end.date() : end.date().addDays(1);
    m_hasEnd = true;
    return true;
}

/**
 * "15", "15+", or the last day as "1-" or "LD"; other days counted from the end have no place in a rule of
 * ours.
 */
void RuleReader::readMonthDay(std::string_view token)
{
    const int position = toPosition(token);
    const int day = position > 0 ? position : toNumber(token);
    if (position == -1 || token == "LD")
        m_monthDay = LastDay;
    else if (day >= 1 && day <= LastDay)
        m_monthDay = day;
}

void RuleReader::setDays()
{
    if (m_rule.recurringtype == VelRecurrenceRule::Monthly) {
        setMonthDays();
    } else if (m_rule.recurringtype == VelRecurrenceRule::Weekly) {
        m_rule.occurdays = m_weekdays.isEmpty() ? QVector<int>{m_start.dayOfWeek()} : m_weekdays;
        std::sort(m_rule.occurdays.begin(), m_rule.occurdays.end());
    }
}

void RuleReader::setMonthDays()
{
    if (!isByWeekday()) {
        m_rule.occurdays = {m_monthDay != 0 ? m_monthDay : m_start.day()};
        return;
    }
    m_rule.occurdaynumber = m_position != 0 ? m_position : (m_start.day() - 1) / 7 + 1;
    m_rule.occurdays = {m_weekdays.isEmpty() ? m_start.dayOfWeek() : m_weekdays.first()};
}
} // namespace

namespace VelVCalendarRule
{
QString toText(const VelRecurrenceRule &rule, QDate start)
{
    const QString basic = basicText(rule, start);
    return basic.isEmpty() ? basic : basic + endText(rule);
}

std::optional<Reading> fromText(std::string_view text, QDate start, const QTimeZone &zone)
{
    return RuleReader(start, zone).read(text);
}
} // namespace VelVCalendarRule
