// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "model/velfoldedtext.h"
#include "model/veltext.h"
#include "model/veltyped.h"

#include <KLocalizedString>

#include <QRegularExpression>

namespace
{
constexpr int Noon = 12;

enum class Half { Unsaid, Morning, Afternoon };

/** Takes @p word from one of the ends of @p folded, if it is there. */
bool takeWord(QString &folded, const QString &word)
{
    if (word.isEmpty())
        return false;
    if (folded.endsWith(word))
        folded.chop(word.size());
    else if (folded.startsWith(word))
        folded.remove(0, word.size());
    else
        return false;
    folded = folded.trimmed();
    return true;
}

/** Takes the word for the half of the day from the folded text. */
Half takeHalf(QString &folded, const QLocale &locale)
{
    const QString morning = VelFoldedText::fold(locale.amText());
    const QString afternoon = VelFoldedText::fold(locale.pmText());
    if (morning != afternoon && takeWord(folded, afternoon))
        return Half::Afternoon;
    if (morning != afternoon && takeWord(folded, morning))
        return Half::Morning;
    static const QRegularExpression english(QStringLiteral("(?<=\\d)[ .]*([ap])(?:\\.? ?m)?\\.?$"));
    const QRegularExpressionMatch match = english.match(folded);
    if (!match.hasMatch())
        return Half::Unsaid;
    folded.truncate(match.capturedStart());
    return match.captured(1) == QLatin1String("a") ? Half::Morning : Half::Afternoon;
}

/** The hour from 0 to 23 that is meant, or -1. */
int hourOf(int hour, Half half)
{
    if (half == Half::Unsaid)
        return hour;
    if (hour > Noon)
        return half == Half::Afternoon ? hour : -1; // "14:30 pm" says it twice
    return hour % Noon + (half == Half::Afternoon ? Noon : 0);
}

bool isTimeWord(const QString &word, const QLocale &locale)
{
    static const QStringList usual = {QStringLiteral("h"), QStringLiteral("uhr"), QStringLiteral("min"),
                                      QStringLiteral("o"), QStringLiteral("clock")};
    if (usual.contains(word))
        return true;
    return VelFoldedText::literalWords(locale.timeFormat(QLocale::ShortFormat)).contains(word)
        || VelFoldedText::literalWords(locale.timeFormat(QLocale::LongFormat)).contains(word);
}

/** A long text is no time, and shall not fill the sentence about it. */
QString excerpt(const QString &text)
{
    constexpr int usual = 24;
    return text.size() > usual ? text.left(usual) + QStringLiteral("...") : text;
}
} // namespace

namespace VelTyped
{
QTime readTime(const QString &text, const QLocale &locale)
{
    if (text.size() > VelFoldedText::MaximumLength)
        return {};
    QString folded = VelFoldedText::fold(text);
    const Half half = takeHalf(folded, locale);
    const auto pieces = VelFoldedText::split(folded, QStringLiteral(" :.,'\u2019"));
    if (!pieces)
        return {};
    for (const QString &word : pieces->words) {
        if (!isTimeWord(word, locale))
            return {};
    }
    QStringList numbers = pieces->numbers;
    const int length = numbers.isEmpty() ? 0 : int(numbers.first().size());
    if (numbers.size() == 1 && (length == 3 || length == 4))
        numbers = QStringList{numbers.first().left(length - 2), numbers.first().right(2)};
    int values[] = {0, 0, 0};
    if (numbers.isEmpty() || numbers.size() > 3)
        return {};
    for (int place = 0; place < int(numbers.size()); ++place) {
        if (numbers.at(place).size() > 2)
            return {};
        values[place] = numbers.at(place).toInt();
    }
    const int hour = hourOf(values[0], half);
    return QTime::isValid(hour, values[1], values[2]) ? QTime(hour, values[1]) : QTime();
}

QString timeProblem(const QString &text, const QLocale &locale)
{
    if (readTime(text, locale).isValid())
        return {};
    const QString example = VelText::getTime(QTime(14, 30), locale);
    if (text.trimmed().isEmpty())
        return i18n("Please type a time, such as %1.", example);
    return i18n("\"%1\" is not a time.\nPlease type one such as %2.", excerpt(text), example);
}

QString dateProblem(const QString &text, const Days &days, const QLocale &locale)
{
    if (readDate(text, days, locale).isValid())
        return {};
    const QString example = VelText::getDay(days.today, locale);
    if (text.trimmed().isEmpty())
        return i18n("Please type a date, such as %1.", example);
    return i18n("\"%1\" is not a date.\nPlease type one such as %2.", excerpt(text), example);
}
} // namespace VelTyped
