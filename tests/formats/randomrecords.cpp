// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "formats/randomrecords.h"

#include <array>

namespace
{
/** What readers and writers of XML are known to trip over. */
QString trap(quint32 number)
{
    static const std::array<QString, 14> Traps{
        QStringLiteral("]]>"),    QStringLiteral("&amp;"),
        QStringLiteral("&#x41;"), QStringLiteral("<![CDATA["),
        QStringLiteral("<!--"),   QStringLiteral("</"),
        QStringLiteral("\r\n"),   QStringLiteral("\r"),
        QStringLiteral("\n\n"),   QStringLiteral("\t"),
        QStringLiteral("  "),     QStringLiteral("€Š\u00A4"),
        QStringLiteral("\uFEFF"), QStringLiteral("\uFDD0\u0085\u2028")};
    return Traps[number % Traps.size()];
}
} // namespace

RandomRecords::RandomRecords(quint32 seed, Form form)
    : m_random(seed)
    , m_form(form)
{
}

quint32 RandomRecords::anyId()
{
    static constexpr std::array<quint32, 6> Corners{0, 1, 0x7FFFFFFF, 0x80000000, 3000000000, 0xFFFFFFFF};
    return oneIn(2) ? Corners[below(Corners.size())] : m_random.generate();
}

QString RandomRecords::text(quint32 mostPieces)
{
    QString made;
    for (quint32 left = below(mostPieces + 1); left > 0; --left)
        appendPiece(made);
    return made;
}

void RandomRecords::appendPiece(QString &text)
{
    switch (below(7)) {
    case 0:
        text += QChar(0x80 + below(0x80));
        break;
    case 1:
        text += QChar(0x100 + below(0xD800 - 0x100));
        break;
    case 2:
        text += QChar(0xE000 + below(0xFFFE - 0xE000));
        break;
    case 3: {
        const char32_t character = 0x10000 + below(0x100000);
        text += QString::fromUcs4(&character, 1);
        break;
    }
    case 4:
        text += trap(below(100));
        break;
    case 5:
        appendForbidden(text);
        break;
    default:
        text += QChar(0x20 + below(0x5F));
        break;
    }
}

void RandomRecords::appendForbidden(QString &text)
{
    static constexpr std::array<ushort, 10> Forbidden{0, 1, 8, 0xB, 0xC, 0x1A, 0x1F, 0xFFFE, 0xFFFF, 0xDC00};
    const quint32 which = below(Forbidden.size() + 1);
    if (m_form == Form::Given)
        text += which < Forbidden.size() ? QChar(Forbidden[which]) : QChar(0xD83D);
    // Parts the halves of a pair that would otherwise come together by chance.
    text += QLatin1Char('x');
}

QDate RandomRecords::date()
{
    const qint64 first = QDate(1, 1, 1).toJulianDay();
    const qint64 days = QDate(9999, 12, 31).toJulianDay() - first + 1;
    return QDate::fromJulianDay(first + below(static_cast<quint32>(days)));
}

VelDateTime RandomRecords::dateTime()
{
    constexpr int msecsPerMinute = 60 * 1000;
    const QDate day = date();
    int msecs = oneIn(3) ? 0 : static_cast<int>(below(24 * 60 * msecsPerMinute));
    if (m_form == Form::Kept)
        msecs -= msecs % msecsPerMinute;
    return {day, QTime::fromMSecsSinceStartOfDay(msecs)};
}

VelAccount RandomRecords::account()
{
    VelAccount made;
    made.id = anyId();
    made.name = QLatin1Char('n') + text(8);
    made.email = text(4);
    made.type = smallInt();
    made.status = anyInt();
    made.attendee = smallInt() - 2;
    return made;
}

VelRecurrenceRule RandomRecords::rule()
{
    VelRecurrenceRule made;
    made.recurringtype = smallInt();
    made.occurevery = smallInt();
    for (quint32 left = below(4); left > 0; --left)
        made.occurdays.append(anyInt());
    made.occurdaynumber = anyInt();
    const QDate end = date();
    if (oneIn(2))
        made.occurenddate = end;
    made.occurendcount = smallInt();
    return made;
}

void RandomRecords::addDetails(VelEntry &entry, bool isKept)
{
    VelEntry made = entry;
    const QString description = text(30);
    made.setStored(entry.getTitle(), description, entry.getStart(), entry.getEnd());
    made.access = smallInt();
    made.display = smallInt();
    made.priority = smallInt();
    made.notime = oneIn(2);
    made.complete = oneIn(2);
    made.reminder = anyId();
    made.reminderfired = oneIn(2);
    made.rule = rule();
    if (isKept)
        entry = made;
}

VelEntry RandomRecords::entry()
{
    static constexpr std::array<int, 5> Types{VelEntry::Event, VelEntry::Todo, VelEntry::Deleted,
                                              VelEntry::NoType, 77};
    VelEntry made;
    made.localid = anyId();
    made.globalid = anyId();
    made.dirty = anyInt();
    made.user = anyId();
    made.type = Types[below(Types.size())];
    const QString title = text(10);
    const VelDateTime start = dateTime();
    const VelDateTime end = dateTime();
    made.setStored(title, QString(), start, end);
    addDetails(made, made.type > 0 || m_form == Form::Given);
    for (quint32 left = below(4); left > 0; --left)
        made.accounts.append(account());
    return made;
}

VelXmlContent RandomRecords::calendar()
{
    VelXmlContent content;
    content.userid = anyId();
    content.origright = anyInt();
    content.synctime = text(10);
    content.accounts.emplace();
    for (quint32 left = 1 + below(4); left > 0; --left)
        content.accounts->append(account());
    for (quint32 left = below(12); left > 0; --left)
        content.entries.push_back(std::make_unique<VelEntry>(entry()));
    return content;
}
