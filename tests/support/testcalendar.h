// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "document/veldoc.h"

#include <QFile>

#include <memory>

/** Short ways to the entries and files that tests are about. */
namespace TestCalendar
{
/** The day on which all tests take place, whenever they run: a Monday. */
inline QDate today()
{
    return {2026, 3, 2};
}

inline VelDateTime at(QDate day, int hour = 0, int minute = 0)
{
    return {day, QTime(hour, minute)};
}

/** A time in March 2026. */
inline VelDateTime march(int day, int hour = 0, int minute = 0)
{
    return at(QDate(2026, 3, day), hour, minute);
}

inline VelRecurrenceRule dailyRule(int every, int instances)
{
    VelRecurrenceRule rule;
    rule.recurringtype = VelRecurrenceRule::Daily;
    rule.occurevery = every;
    rule.occurendcount = instances;
    return rule;
}

inline VelRecurrenceRule weeklyRule(const QVector<int> &weekdays, int instances)
{
    VelRecurrenceRule rule = dailyRule(1, instances);
    rule.recurringtype = VelRecurrenceRule::Weekly;
    rule.occurdays = weekdays;
    return rule;
}

inline VelEntry makeEvent(const QString &title, const VelDateTime &start, const VelDateTime &end)
{
    VelEntry entry(0, VelEntry::Event, start, end);
    entry.setTitle(title);
    return entry;
}

/** A to-do for one day. */
inline VelEntry makeTodo(const QString &title, QDate day)
{
    VelEntry entry(0, VelEntry::Todo, at(day), at(day));
    entry.setTitle(title);
    return entry;
}

/** Adds a copy of @p entry under a local id of its own. */
inline const VelEntry *add(VelDoc &doc, const VelEntry &entry)
{
    return doc.addEntry(doc.newEntry(std::make_unique<VelEntry>(entry)));
}

inline const VelEntry *addEvent(VelDoc &doc, const QString &title, const VelDateTime &start,
                                const VelDateTime &end)
{
    return add(doc, makeEvent(title, start, end));
}

inline const VelEntry *addTodo(VelDoc &doc, const QString &title, QDate day)
{
    return add(doc, makeTodo(title, day));
}

/** An event that the server knows by @p globalid. */
inline const VelEntry *addSynced(VelDoc &doc, const QString &title, quint32 globalid)
{
    VelEntry entry = makeEvent(title, march(2, 10), march(2, 11));
    entry.globalid = globalid;
    entry.dirty = 0;
    return add(doc, entry);
}

/** All of the file's bytes; none when it cannot be read. */
inline QByteArray fileBytes(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/** Writes over the file without asking anybody, as another program would. */
inline bool writeBytes(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush();
}
} // namespace TestCalendar
