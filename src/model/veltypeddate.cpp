// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "model/veldatetime.h"
#include "model/velfoldedtext.h"
#include "model/veltyped.h"

#include <KLocalizedString>

#include <QRegularExpression>

#include <algorithm>
#include <functional>

namespace
{
constexpr int MonthCount = 12;
constexpr int WeekdayCount = 7;

/** Where a format has day, month and year. */
struct Order {
    bool isDayFirst; // before the month
    bool isYearFirst;
};

Order orderOf(QString format)
{
    static const QRegularExpression literal(QStringLiteral("'[^']*'"));
    format.remove(literal);
    const auto month = format.indexOf(QLatin1Char('M'));
    return {format.indexOf(QLatin1Char('d')) < month, format.indexOf(QLatin1Char('y')) < month};
}

/** What a text says about a day; 0 for what it does not say. */
struct Said {
    int day = 0;
    int month = 0;
    int weekday = 0;
    QString year; // as typed
};

/** The names that a month or weekday goes by. */
using Names = std::function<QStringList(int number)>;

QStringList monthNames(const QLocale &locale, int month)
{
    QStringList names;
    for (const auto format : {QLocale::LongFormat, QLocale::ShortFormat})
        names << locale.monthName(month, format) << locale.standaloneMonthName(month, format);
    return names;
}

QStringList weekdayNames(const QLocale &locale, int weekday)
{
    QStringList names;
    for (const auto format : {QLocale::LongFormat, QLocale::ShortFormat})
        names << locale.dayName(weekday, format) << locale.standaloneDayName(weekday, format);
    return names;
}

/** Abbreviated or not. */
QString withoutDot(QString name)
{
    while (name.endsWith(QLatin1Char('.')))
        name.chop(1);
    return name;
}

/** The number from 1 to @p count whose name @p word is, or is the beginning of as no other's; else 0. */
int numberOf(const QString &word, int count, const Names &names)
{
    constexpr int enough = 3; // letters to know a name by
    int begun = 0;
    bool isOnlyOne = true;
    for (int number = 1; number <= count; ++number) {
        for (const QString &each : names(number)) {
            const QString name = withoutDot(VelFoldedText::fold(each));
            if (name == word)
                return number;
            if (word.size() >= enough && name.startsWith(word)) {
                isOnlyOne = isOnlyOne && (begun == 0 || begun == number);
                begun = number;
            }
        }
    }
    return isOnlyOne ? begun : 0;
}

int monthOf(const QString &word, const QLocale &locale)
{
    return numberOf(word, MonthCount, [&locale](int month) {
        return monthNames(locale, month) + monthNames(QLocale::c(), month);
    });
}

int weekdayOf(const QString &word, const QLocale &locale)
{
    return numberOf(word, WeekdayCount, [&locale](int weekday) {
        return weekdayNames(locale, weekday) + weekdayNames(QLocale::c(), weekday);
    });
}

/** The day that a word alone stands for. */
QDate relativeDay(const QString &folded, QDate today, const QLocale &locale)
{
    const auto isWord = [&folded](const char *english, const QString &translated) {
        return folded == QLatin1String(english) || folded == VelFoldedText::fold(translated);
    };
    if (isWord("today", i18nc("typed for a date", "today")))
        return today;
    if (isWord("tomorrow", i18nc("typed for a date", "tomorrow")))
        return today.addDays(1);
    if (isWord("yesterday", i18nc("typed for a date", "yesterday")))
        return today.addDays(-1);
    const int weekday = weekdayOf(withoutDot(folded), locale);
    const int ahead = (weekday - today.dayOfWeek() + WeekdayCount - 1) % WeekdayCount + 1;
    return weekday > 0 ? today.addDays(ahead) : QDate();
}

/** The words that only link the others. */
QStringList linkWords(const QLocale &locale)
{
    return QStringList{QStringLiteral("of"), QStringLiteral("the")}
    + VelFoldedText::literalWords(locale.dateFormat(QLocale::ShortFormat))
        + VelFoldedText::literalWords(locale.dateFormat(QLocale::LongFormat));
}

/** Finds the month and the weekday among the words; false when one is neither. */
bool readWords(Said &said, const QStringList &words, const QLocale &locale)
{
    if (words.size() > 2)
        return false;
    for (const QString &word : words) {
        // With another word to come the first may be either: "mar" is a Tuesday and March.
        const bool isWeekdayFirst = words.size() == 2 && &word == &words.first();
        int weekday = isWeekdayFirst ? weekdayOf(word, locale) : 0;
        const int month = weekday == 0 ? monthOf(word, locale) : 0;
        if (weekday == 0 && month == 0)
            weekday = weekdayOf(word, locale);
        if ((weekday == 0 && month == 0) || (weekday != 0 && said.weekday != 0)
            || (month != 0 && said.month != 0))
            return false;
        (month != 0 ? said.month : said.weekday) = std::max(month, weekday);
    }
    return true;
}

/** The digits of a day beside a month by name, and perhaps of a year. */
bool readDayAndYear(Said &said, QStringList numbers, Order order)
{
    if (numbers.isEmpty() || numbers.size() > 2)
        return false;
    if (numbers.size() == 2) {
        const bool isYearFirst =
            numbers.first().size() > 2 || (order.isYearFirst && numbers.last().size() <= 2);
        said.year = isYearFirst ? numbers.takeFirst() : numbers.takeLast();
    }
    said.day = numbers.first().size() <= 2 ? numbers.first().toInt() : 0;
    return true;
}

bool readNumbers(Said &said, QStringList numbers, Order order)
{
    constexpr int isoLength = 8;
    if (numbers.size() == 1 && numbers.first().size() == isoLength) {
        const QString iso = numbers.first();
        numbers = QStringList{iso.left(4), iso.mid(4, 2), iso.right(2)};
    }
    bool isDayFirst = order.isDayFirst;
    bool isYearFirst = false;
    if (numbers.size() == 3) {
        isYearFirst = numbers.first().size() > 2 || (order.isYearFirst && numbers.last().size() <= 2);
        said.year = isYearFirst ? numbers.takeFirst() : numbers.takeLast();
        // Who turns the order of the locale round turns all of it.
        isDayFirst = !isYearFirst && (order.isYearFirst || order.isDayFirst);
    }
    if (numbers.isEmpty() || numbers.size() > 2 || numbers.first().size() > 2 || numbers.last().size() > 2)
        return false;
    said.day = (isDayFirst ? numbers.first() : numbers.last()).toInt();
    if (numbers.size() == 1)
        return true;
    said.month = (isDayFirst ? numbers.last() : numbers.first()).toInt();
    if (!isYearFirst && said.month > MonthCount && said.day <= MonthCount)
        std::swap(said.day, said.month); // only so it is a day
    return said.month > 0;
}

/** The year that the digits mean, or 0. Two are the POSIX way in the centuries around 2000. */
int yearOf(const QString &digits)
{
    constexpr int firstOfLastCentury = 69;
    const int year = digits.toInt();
    if (digits.size() == 4)
        return year;
    if (digits.size() != 2)
        return 0;
    return year + (year < firstOfLastCentury ? 2000 : 1900);
}

/** The first such day from some weeks before @p near on. */
QDate nextDay(int month, int day, QDate near)
{
    constexpr int past = 90; // days
    constexpr int leapDays = 8; // years between two of them, at most
    const QDate first = near.addDays(-past);
    for (int year = first.year(); year <= first.year() + leapDays; ++year) {
        const QDate date(year, month, day);
        if (date.isValid() && date >= first)
            return date;
    }
    return {};
}

QDate dateOf(const Said &said, QDate near)
{
    if (said.month == 0)
        return {near.year(), near.month(), said.day};
    if (said.year.isEmpty())
        return nextDay(said.month, said.day, near);
    const int year = yearOf(said.year);
    return year > 0 ? QDate(year, said.month, said.day) : QDate();
}
} // namespace

namespace VelTyped
{
QDate readDate(const QString &text, const Days &days, const QLocale &locale)
{
    if (text.size() > VelFoldedText::MaximumLength)
        return {};
    QString folded = VelFoldedText::fold(text);
    const QDate relative = relativeDay(folded, days.today, locale);
    if (VelDateTime::isSupported(relative))
        return relative;
    static const QRegularExpression ordinal(QStringLiteral("(?<=\\d)(st|nd|rd|th)\\b"));
    auto pieces = VelFoldedText::split(folded.remove(ordinal), QStringLiteral(" ./,-'\u2019"));
    if (!pieces)
        return {};
    const QStringList links = linkWords(locale);
    const auto isLink = [&links](const QString &word) { return links.contains(word); };
    pieces->words.erase(std::remove_if(pieces->words.begin(), pieces->words.end(), isLink),
                        pieces->words.end());
    Said said;
    if (!readWords(said, pieces->words, locale))
        return {};
    const bool isRead = said.month > 0
        ? readDayAndYear(said, pieces->numbers, orderOf(locale.dateFormat(QLocale::LongFormat)))
        : readNumbers(said, pieces->numbers, orderOf(locale.dateFormat(QLocale::ShortFormat)));
    const QDate date = isRead ? dateOf(said, days.near) : QDate();
    const bool isThatWeekday = said.weekday == 0 || said.weekday == date.dayOfWeek();
    return VelDateTime::isSupported(date) && isThatWeekday ? date : QDate();
}
} // namespace VelTyped
