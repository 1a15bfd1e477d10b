// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "formats/velvcalendar.h"

#include "formats/velvcalendarline.h"
#include "formats/velvcalendarreader.h"
#include "formats/velvcalendarrule.h"
#include "model/compat.h"

#include <algorithm>

namespace
{
/** A text that fits on one line. */
QString oneLine(QString text)
{
    text.replace(QLatin1Char('\n'), QLatin1Char(' '));
    text.replace(QLatin1Char('\r'), QLatin1Char(' '));
    return text;
}

class EntryWriter
{
public:
    EntryWriter(const VelEntry &entry, quint32 owner)
        : m_entry(entry)
        , m_owner(owner)
    {
    }

    QString write();

private:
    bool isEvent() const { return m_entry.type == VelEntry::Event; }
    void line(QLatin1String name, const QString &value) { m_text += name + value + QLatin1Char('\n'); }
    void writeState();
    void writeReminder();
    void writeTexts();
    void writeTimes();
    void writeAttendee(const VelAccount &account);

    const VelEntry &m_entry;
    const quint32 m_owner;
    QString m_text;
};

QString EntryWriter::write()
{
    const QString component = isEvent() ? QStringLiteral("VEVENT") : QStringLiteral("VTODO");
    line(QLatin1String("BEGIN:"), component);
    writeState();
    writeReminder();
    writeTexts();
    writeTimes();
    // Deliberately without a property name: this is the line that this system's readers know.
    const QString rule = VelVCalendarRule::toText(m_entry.rule, m_entry.getStart().date());
    if (!rule.isEmpty())
        line(QLatin1String(), rule);
    for (const VelAccount &account : m_entry.accounts)
        writeAttendee(account);
    line(QLatin1String("END:"), component);
    return m_text;
}

void EntryWriter::writeState()
{
    if (isEvent())
        line(QLatin1String("CATEGORIES:"), QStringLiteral("APPOINTMENT"));
    if (m_entry.access == VelEntry::Public)
        line(QLatin1String("CLASS:"), QStringLiteral("PUBLIC"));
    else if (m_entry.access == VelEntry::Private)
        line(QLatin1String("CLASS:"), QStringLiteral("PRIVATE"));
    line(QLatin1String("PRIORITY:"), QString::number(m_entry.priority));
    if (m_entry.complete)
        line(QLatin1String("COMPLETED:"), VelVCalendar::toISO8601(m_entry.getEnd()));
}

/**
 * The lead time counts forward from the start, for the sake of this system's readers; ours takes the
 * distance.
 */
void EntryWriter::writeReminder()
{
    if (m_entry.reminder == 0)
        return;
    const VelDateTime alarm = m_entry.getStart().addSecs(60LL * m_entry.reminder);
    if (alarm.isValid())
        line(QLatin1String("DALARM:"), VelVCalendar::toISO8601(alarm) + QLatin1String(";;1;beep!"));
}

void EntryWriter::writeTexts()
{
    line(QLatin1String("SUMMARY:"), oneLine(m_entry.getTitle()));
    if (!m_entry.getDescription().isEmpty())
        line(QLatin1String("DESCRIPTION;QUOTED-PRINTABLE:"), VelVCalendar::encode(m_entry.getDescription()));
}

void EntryWriter::writeTimes()
{
    line(QLatin1String("DTSTART:"), VelVCalendar::toISO8601(m_entry.getStart()));
    line(isEvent() ? QLatin1String("DTEND:") : QLatin1String("DUE:"),
         VelVCalendar::toISO8601(m_entry.getEnd()));
}

QLatin1String statusText(int status)
{
    switch (status) {
    case VelAccount::Accepted:
        return QLatin1String("ACCEPTED");
    case VelAccount::Tentative:
        return QLatin1String("TENTATIVE");
    case VelAccount::Declined:
        return QLatin1String("DECLINED");
    default:
        return QLatin1String("NEEDS ACTION");
    }
}

void EntryWriter::writeAttendee(const VelAccount &account)
{
    // Id 0 is everybody whom the server does not know: never the owner.
    const bool isOwner = account.id != 0 && account.id == m_owner;
    const bool isOptional = account.attendee == VelAccount::OptionalAttendee;
    m_text += QLatin1String("ATTENDEE;ROLE=") + (isOwner ? QLatin1String("OWNER") : QLatin1String("ATTENDEE"))
        + QLatin1String(";STATUS=") + statusText(account.status) + QLatin1String(";EXPECT=")
        + (isOptional ? QLatin1String("FYI") : QLatin1String("REQUEST")) + QLatin1Char(':')
        + oneLine(account.name) + QLatin1String(" <") + oneLine(account.email) + QLatin1String(">\n");
}

/** True when no line of Latin-1 could be taken for another text in UTF-8. */
bool isToldFromUtf8(const QByteArray &bytes)
{
    std::string_view rest(bytes.constData(), static_cast<std::size_t>(bytes.size()));
    while (!rest.empty()) {
        const std::string_view line = rest.substr(0, rest.find('\n'));
        rest.remove_prefix(std::min(line.size() + 1, rest.size()));
        const bool isAscii = std::all_of(line.begin(), line.end(), [](char c) { return (c & 0x80) == 0; });
        if (!isAscii && VelVCalendarLine::isUtf8(line))
            return false;
    }
    return true;
}

/** The decimal number at fixed places, or -1. */
int numberAt(std::string_view text, std::size_t position, std::size_t width)
{
    int number = 0;
    for (const char c : text.substr(position, width)) {
        if (c < '0' || c > '9')
            return -1;
        number = number * 10 + (c - '0');
    }
    return number;
}
} // namespace

namespace VelVCalendar
{
QString pad(int value, int width)
{
    return QString::number(value).rightJustified(width, QLatin1Char('0'));
}

QString toISO8601(const VelDateTime &dateTime)
{
    const QDate date = dateTime.date();
    const QTime time = dateTime.time();
    const bool hasDate = date.isValid();
    const bool hasTime = time.isValid();
    return pad(hasDate ? date.year() : 0, 4) + pad(hasDate ? date.month() : 0, 2)
        + pad(hasDate ? date.day() : 0, 2) + QLatin1Char('T') + pad(hasTime ? time.hour() : 0, 2)
        + pad(hasTime ? time.minute() : 0, 2) + pad(hasTime ? time.second() : 0, 2);
}

VelDateTime fromISO8601(std::string_view text, const QTimeZone &zone)
{
    constexpr std::size_t length = 15;
    if (text.size() < length || text[8] != 'T')
        return {};
    const QDate date(numberAt(text, 0, 4), numberAt(text, 4, 2), numberAt(text, 6, 2));
    const QTime time(numberAt(text, 9, 2), numberAt(text, 11, 2), numberAt(text, 13, 2));
    const VelDateTime wallClock(date, time);
    if (!wallClock.isValid())
        return {};
    if (text.size() == length || text[length] != 'Z')
        return wallClock;
    return VelDateTime::fromQDateTime(wallClock.toQDateTime().toTimeZone(zone));
}

QString encode(const QString &text)
{
    return QString(text).replace(QLatin1Char('\n'), QLatin1String("=0A=\n"));
}

QString decode(const QString &text)
{
    return QString(text).replace(QLatin1String("=0A=\n"), QLatin1String("\n"));
}

QByteArray toBytes(const QString &text)
{
    const bool isLatin1 = std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < 0x100; });
    const QByteArray bytes = isLatin1 ? text.toLatin1() : QByteArray();
    return isLatin1 && isToldFromUtf8(bytes) ? bytes : text.toUtf8();
}

QString vCalendarHead()
{
    return QStringLiteral("BEGIN:VCALENDAR\nPRODID:-//Ulmacor/Delmast Time 1.0//EN\nVERSION:1.0\n");
}

QString vCalendarTail()
{
    return QStringLiteral("END:VCALENDAR\n");
}

QString asvCalendar(const VelEntry &entry, quint32 userid, bool withFrame)
{
    if (entry.type != VelEntry::Event && entry.type != VelEntry::Todo)
        return {};
    const QString lines = EntryWriter(entry, entry.user != 0 ? entry.user : userid).write();
    return withFrame ? vCalendarHead() + lines + vCalendarTail() : lines;
}

VelForeignContent readAll(const QByteArray &bytes, const QTimeZone &zone)
{
    VelVCalendarReader reader(bytes, zone);
    while (reader.readSome(static_cast<std::size_t>(bytes.size()))) { }
    return reader.takeContent();
}

std::unique_ptr<VelEntry> fromvCalendar(const QByteArray &bytes, const QTimeZone &zone)
{
    constexpr std::size_t pieceSize = 4096;
    VelVCalendarReader reader(bytes, zone);
    while (reader.content().entries.empty() && reader.readSome(pieceSize)) { }
    VelForeignContent content = reader.takeContent();
    return content.entries.empty() ? nullptr : std::move(content.entries.front());
}
} // namespace VelVCalendar
