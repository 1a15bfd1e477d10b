// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "model/veldatetime.h"

#include <QVector>

#include <string>
#include <string_view>

/**
 * The forms of numbers, dates and lists in calendar files and messages. Readers never fail: what is no number
 * is 0, what is no date is an invalid one.
 */
namespace VelXmlValues
{
/** A decimal number, blanks around it allowed; 0 when it is none or does not fit. */
[[nodiscard]] int parseInt(std::string_view text);
[[nodiscard]] quint32 parseUInt(std::string_view text);

/** Year-month-day; an impossible date is null. */
[[nodiscard]] QDate parseDate(std::string_view text);
/** A date, one blank and hour:minute; a part that is missing or impossible is missing in the result. */
[[nodiscard]] VelDateTime parseDateTime(std::string_view text);
/** More values than this are no list of days any more; they are left out. */
constexpr int MaximumListLength = 1000;

/** Decimal numbers joined by ",". */
[[nodiscard]] QVector<int> parseIntList(std::string_view text);

void append(std::string &out, qint64 number);
/** For example 2002-3-5. */
void appendDate(std::string &out, QDate date);
/** For example 2002-3-5 9:5; seconds are not kept. */
void appendDateTime(std::string &out, const VelDateTime &dateTime);
void appendIntList(std::string &out, const QVector<int> &list);

[[nodiscard]] QString toString(const VelDateTime &dateTime);
[[nodiscard]] QString toStringDate(QDate date);
} // namespace VelXmlValues
