// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "formats/velforeigncontent.h"

#include <QByteArray>
#include <QString>
#include <QTimeZone>

#include <memory>
#include <string_view>

/**
 * Entries as vCalendar 1.0 text, for other calendar programs: clipboard, drag and drop, and "*.vcs" files.
 *
 * What asvCalendar() writes reads back equal, except for what the text has no room for:
 * - `localid`, `globalid`, `user`, `originalid`, `dirty` (read entries are new and dirty) and
 * `reminderfired`;
 * - `display`: 0 when read, unless another program says more (TRANSP, STATUS);
 * - `notime`: a to-do reads back as dates only, as every new one is; so does an event from 00:00 to 23:59;
 * others do not;
 * - of an attendee the id, the type, being a resource, and the difference between two unanswered states;
 * - a count of instances next to an end date, which wins; a rule that names no day where it needs one;
 * - line feeds and carriage returns in the title and in names and addresses, which become blanks;
 * - milliseconds.
 */
namespace VelVCalendar
{
/** Decimal text of @p value, filled with "0" on the left up to @p width characters. */
[[nodiscard]] QString pad(int value, int width);

/** For example 20020305T090500: no zone, seconds always. A missing date or time is written in zeros. */
[[nodiscard]] QString toISO8601(const VelDateTime &dateTime);

/**
 * Reads what toISO8601() writes, from fixed positions. A "Z" behind it marks a UTC time, which becomes the
 * wall clock of
 * @p zone; anything else behind it is ignored. Invalid for a shorter or impossible text.
 */
[[nodiscard]] VelDateTime fromISO8601(std::string_view text, const QTimeZone &zone);

/** Each line feed becomes "=0A=" and a line feed; nothing else is encoded. */
[[nodiscard]] QString encode(const QString &text);
/** Inverts encode(). */
[[nodiscard]] QString decode(const QString &text);

/**
 * The text in Latin-1, as other programs take these texts from drags and the clipboard; in UTF-8 where Latin-1 lacks a
 * character, or where readers could not tell it from UTF-8.
 */
[[nodiscard]] QByteArray toBytes(const QString &text);

/** The lines before and after the entries of one text. */
[[nodiscard]] QString vCalendarHead();
[[nodiscard]] QString vCalendarTail();

/**
 * The entry's lines, within a head and a tail of their own if @p withFrame; empty for what is neither event
 * nor to-do.
 * @p userid is the calendar's user: the owner of an entry that names none. The text goes out as UTF-8, or as toBytes()
 * gives it; readAll() recognises both.
 */
[[nodiscard]] QString asvCalendar(const VelEntry &entry, quint32 userid, bool withFrame);

/** All entries of a text, in its order. UTC times become the wall clock of @p zone. */
[[nodiscard]] VelForeignContent readAll(const QByteArray &bytes,
                                        const QTimeZone &zone = QTimeZone::systemTimeZone());

/** The first entry of a text, or null. */
[[nodiscard]] std::unique_ptr<VelEntry> fromvCalendar(const QByteArray &bytes,
                                                      const QTimeZone &zone = QTimeZone::systemTimeZone());
} // namespace VelVCalendar
