// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "ical/velicalendarextras.h"

#include "formats/velvcalendar.h"

#include <KCalendarCore/Recurrence>

#include <QCryptographicHash>
#include <QStringList>
#include <QUrl>

#include <algorithm>
#include <array>

namespace
{
/** One field, as text that needs no escaping anywhere. */
struct Extra {
    const char *property;
    QString (*text)(const VelEntry &entry);
    void (*apply)(VelEntry &entry, const QString &text);
};

const QLatin1Char FieldSeparator('/');

int numberIn(const QString &text, int lowest, int highest)
{
    return std::clamp(text.toInt(), lowest, highest);
}

/** Decimal numbers joined by dots. */
QString toText(const QVector<int> &numbers)
{
    QStringList texts;
    for (const int number : numbers)
        texts.append(QString::number(number));
    return texts.join(QLatin1Char('.'));
}

QVector<int> toNumbers(const QString &text)
{
    QVector<int> numbers;
    for (const QString &number : text.split(QLatin1Char('.'))) {
        if (!number.isEmpty())
            numbers.append(number.toInt());
    }
    return numbers;
}

QString ruleText(const VelEntry &entry)
{
    const VelRecurrenceRule &rule = entry.rule;
    const QStringList fields{QString::number(rule.recurringtype),
                             QString::number(rule.occurevery),
                             toText(rule.occurdays),
                             QString::number(rule.occurdaynumber),
                             rule.occurenddate.toString(Qt::ISODate),
                             QString::number(rule.occurendcount)};
    return fields.join(FieldSeparator);
}

void applyRule(VelEntry &entry, const QString &text)
{
    const QStringList fields = text.split(FieldSeparator);
    if (fields.size() != 6)
        return;
    constexpr int many = 999999;
    constexpr int mostDays = 31;
    const QVector<int> days = toNumbers(fields.at(2));
    if (days.size() > mostDays)
        return;
    entry.rule = {numberIn(fields.at(0), VelRecurrenceRule::None, VelRecurrenceRule::Yearly),
                  numberIn(fields.at(1), 0, many),
                  days,
                  numberIn(fields.at(3), -many, many),
                  QDate::fromString(fields.at(4), Qt::ISODate),
                  numberIn(fields.at(5), 0, many)};
}

QString escaped(const QString &text)
{
    return QString::fromLatin1(QUrl::toPercentEncoding(text));
}

QString unescaped(const QString &text)
{
    return QUrl::fromPercentEncoding(text.toLatin1());
}

QString accountsText(const VelEntry &entry)
{
    QStringList fields;
    for (const VelAccount &account : entry.accounts) {
        fields += QStringList{QString::number(account.id),     QString::number(account.type),
                              QString::number(account.status), QString::number(account.attendee),
                              escaped(account.name),           escaped(account.email)};
    }
    return fields.join(FieldSeparator);
}

void applyAccounts(VelEntry &entry, const QString &text)
{
    constexpr int width = 6;
    const QStringList fields = text.isEmpty() ? QStringList() : text.split(FieldSeparator);
    if (fields.size() % width != 0)
        return;
    entry.accounts.clear();
    for (int i = 0; i < static_cast<int>(fields.size()); i += width) {
        VelAccount account(unescaped(fields.at(i + 4)), unescaped(fields.at(i + 5)), fields.at(i).toUInt());
        account.type = numberIn(fields.at(i + 1), VelAccount::NoType, VelAccount::Resource);
        account.status = numberIn(fields.at(i + 2), VelAccount::Unanswered, VelAccount::Accepted);
        account.attendee =
            numberIn(fields.at(i + 3), VelAccount::RequiredAttendee, VelAccount::ResourceAttendee);
        entry.accounts.append(account);
    }
}

VelDateTime toDateTime(const QString &text)
{
    return VelVCalendar::fromISO8601(text.toStdString(), QTimeZone::utc());
}

const std::array<Extra, 11> Extras{{
    {"X-DELMAST-SUMMARY", [](const VelEntry &e) { return escaped(e.getTitle()); },
     [](VelEntry &e, const QString &text) { e.setTitle(unescaped(text)); }},
    {"X-DELMAST-DESCRIPTION", [](const VelEntry &e) { return escaped(e.getDescription()); },
     [](VelEntry &e, const QString &text) { e.setDescription(unescaped(text)); }},
    {"X-DELMAST-ACCESS", [](const VelEntry &e) { return QString::number(e.access); },
     [](VelEntry &e, const QString &text) {
         e.access = numberIn(text, VelEntry::NoAccess, VelEntry::Private);
     }},
    {"X-DELMAST-DISPLAY", [](const VelEntry &e) { return QString::number(e.display); },
     [](VelEntry &e, const QString &text) {
         e.display = numberIn(text, VelEntry::NoDisplay, VelEntry::TentativeTime);
     }},
    {"X-DELMAST-COMPLETE", [](const VelEntry &e) { return QString::number(int(e.complete)); },
     [](VelEntry &e, const QString &text) { e.complete = text == QLatin1String("1"); }},
    {"X-DELMAST-REMINDER", [](const VelEntry &e) { return QString::number(e.reminder); },
     [](VelEntry &e, const QString &text) { e.reminder = text.toUInt(); }},
    {"X-DELMAST-USER", [](const VelEntry &e) { return QString::number(e.user); },
     [](VelEntry &e, const QString &text) { e.user = text.toUInt(); }},
    {"X-DELMAST-START", [](const VelEntry &e) { return VelVCalendar::toISO8601(e.getStart()); },
     [](VelEntry &e, const QString &text) { e.setStart(toDateTime(text)); }},
    {"X-DELMAST-END", [](const VelEntry &e) { return VelVCalendar::toISO8601(e.getEnd()); },
     [](VelEntry &e, const QString &text) { e.setEnd(toDateTime(text)); }},
    {"X-DELMAST-ACCOUNTS", accountsText, applyAccounts},
    {"X-DELMAST-RULE", ruleText, applyRule},
}};

bool isRule(const Extra &extra)
{
    return extra.apply == applyRule;
}

/** Names are left out: parameters do not keep every character of them. */
QString answersText(const VelEntry &entry)
{
    QStringList fields;
    for (const VelAccount &account : entry.accounts)
        fields +=
            QStringList{account.email, QString::number(account.status), QString::number(account.attendee)};
    return fields.join(FieldSeparator);
}

/** Of the value that a property replaces; of a rule also how many days stand beside it. */
QString checksum(const Extra &extra, const VelEntry &entry, const KCalendarCore::Incidence &incidence)
{
    QString text = extra.apply == applyAccounts ? answersText(entry) : extra.text(entry);
    if (isRule(extra)) {
        const KCalendarCore::Recurrence *recurrence = incidence.recurrence();
        const auto added = recurrence->rDates().size() + recurrence->rDateTimes().size();
        const auto removed = recurrence->exDates().size() + recurrence->exDateTimes().size();
        text += QStringLiteral("+%1-%2").arg(added).arg(removed);
    }
    constexpr int length = 8;
    return QString::fromLatin1(
        QCryptographicHash::hash(text.toUtf8(), QCryptographicHash::Sha1).toHex().left(length));
}
/** False when there is no such property, or it is out of date. */
bool apply(const Extra &extra, const KCalendarCore::Incidence &incidence, VelEntry &entry)
{
    const QString value = incidence.nonKDECustomProperty(extra.property);
    const auto separator = value.indexOf(FieldSeparator);
    if (separator < 0 || value.left(separator) != checksum(extra, entry, incidence))
        return false;
    extra.apply(entry, value.mid(separator + 1));
    return true;
}
} // namespace

namespace VelICalendarExtras
{
void write(const VelEntry &entry, const VelEntry &readBack, KCalendarCore::Incidence &incidence)
{
    for (const Extra &extra : Extras) {
        const QString text = extra.text(entry);
        if (text != extra.text(readBack))
            incidence.setNonKDECustomProperty(extra.property,
                                              checksum(extra, readBack, incidence) + FieldSeparator + text);
    }
}

void readFields(const KCalendarCore::Incidence &incidence, VelEntry &entry)
{
    for (const Extra &extra : Extras) {
        if (!isRule(extra))
            apply(extra, incidence, entry);
    }
}

bool readRule(const KCalendarCore::Incidence &incidence, VelEntry &entry)
{
    return std::any_of(Extras.begin(), Extras.end(),
                       [&](const Extra &extra) { return isRule(extra) && apply(extra, incidence, entry); });
}
} // namespace VelICalendarExtras
