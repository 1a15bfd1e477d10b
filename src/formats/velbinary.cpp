// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "formats/velbinary.h"

#include <QDataStream>
#include <QIODevice>

namespace
{
void prepare(QDataStream &stream)
{
    stream.setVersion(QDataStream::Qt_3_3);
    stream.setByteOrder(QDataStream::BigEndian);
}

/**
 * Date and milliseconds of the day, each as 32 bits. Written out here because the stream's own form of that
 * version cannot tell midnight from no time.
 */
void writeDateTime(QDataStream &stream, const VelDateTime &dateTime)
{
    const QTime time = dateTime.time();
    stream << dateTime.date() << quint32(time.isValid() ? time.msecsSinceStartOfDay() : 0);
}

VelDateTime readDateTime(QDataStream &stream)
{
    QDate date;
    quint32 msecs = 0;
    stream >> date >> msecs;
    constexpr quint32 msecsPerDay = 24U * 60 * 60 * 1000;
    if (!VelDateTime::isSupported(date) || msecs >= msecsPerDay)
        return {};
    return {date, QTime::fromMSecsSinceStartOfDay(static_cast<int>(msecs))};
}

/** A null text is written as an empty one, so that equal records give equal bytes. */
QString solid(const QString &text)
{
    return text.isNull() ? QStringLiteral("") : text;
}

void writeAccount(QDataStream &stream, const VelAccount &account)
{
    stream << account.id << solid(account.name) << solid(account.email) << qint32(account.type)
           << qint32(account.status) << qint32(account.attendee);
}

VelAccount readAccount(QDataStream &stream)
{
    VelAccount account;
    stream >> account.id >> account.name >> account.email >> account.type >> account.status
        >> account.attendee;
    return account;
}

/** Reads a count and so many members; stops when the bytes do. */
template <typename List, typename Read>
void readList(QDataStream &stream, List &list, Read read)
{
    quint32 count = 0;
    stream >> count;
    for (quint32 i = 0; i < count && stream.status() == QDataStream::Ok; ++i)
        list.append(read(stream));
}

bool readFlag(QDataStream &stream)
{
    qint32 value = 0;
    stream >> value;
    return value != 0;
}

qint32 readInt(QDataStream &stream)
{
    qint32 value = 0;
    stream >> value;
    return value;
}

void writeRule(QDataStream &stream, const VelRecurrenceRule &rule)
{
    stream << qint32(rule.recurringtype) << qint32(rule.occurevery) << quint32(rule.occurdays.size());
    for (const int day : rule.occurdays)
        stream << qint32(day);
    stream << qint32(rule.occurdaynumber) << rule.occurenddate << qint32(rule.occurendcount);
}

void readRule(QDataStream &stream, VelRecurrenceRule &rule)
{
    stream >> rule.recurringtype >> rule.occurevery;
    readList(stream, rule.occurdays, readInt);
    stream >> rule.occurdaynumber >> rule.occurenddate >> rule.occurendcount;
    if (!VelDateTime::isSupported(rule.occurenddate))
        rule.occurenddate = {};
}
} // namespace

namespace VelBinary
{
QByteArray asByteArray(const VelEntry &entry)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    prepare(stream);
    stream << entry.localid << entry.globalid << entry.user << qint32(entry.dirty) << solid(entry.getTitle());
    writeDateTime(stream, entry.getStart());
    writeDateTime(stream, entry.getEnd());
    stream << qint32(entry.type) << solid(entry.getDescription()) << qint32(entry.access)
           << qint32(entry.display) << qint32(entry.priority) << qint32(entry.notime)
           << qint32(entry.complete) << entry.reminder << qint32(entry.reminderfired)
           << quint32(entry.accounts.size());
    for (const VelAccount &account : entry.accounts)
        writeAccount(stream, account);
    writeRule(stream, entry.rule);
    stream << entry.originalid;
    return bytes;
}

std::unique_ptr<VelEntry> fromByteArray(const QByteArray &bytes)
{
    QDataStream stream(bytes);
    prepare(stream);
    auto entry = std::make_unique<VelEntry>();
    QString title;
    QString description;
    stream >> entry->localid >> entry->globalid >> entry->user >> entry->dirty >> title;
    const VelDateTime start = readDateTime(stream);
    const VelDateTime end = readDateTime(stream);
    stream >> entry->type >> description >> entry->access >> entry->display >> entry->priority;
    entry->notime = readFlag(stream);
    entry->complete = readFlag(stream);
    stream >> entry->reminder;
    entry->reminderfired = readFlag(stream);
    readList(stream, entry->accounts, readAccount);
    readRule(stream, entry->rule);
    stream >> entry->originalid;
    if (stream.status() != QDataStream::Ok)
        return nullptr;
    entry->setStored(title, description, start, end);
    return entry;
}

QByteArray asByteArray(const VelAccount &account)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    prepare(stream);
    writeAccount(stream, account);
    return bytes;
}

std::unique_ptr<VelAccount> accountFromByteArray(const QByteArray &bytes)
{
    QDataStream stream(bytes);
    prepare(stream);
    auto account = std::make_unique<VelAccount>(readAccount(stream));
    return stream.status() == QDataStream::Ok ? std::move(account) : nullptr;
}
} // namespace VelBinary
