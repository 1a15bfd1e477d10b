// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "views/velprinttext.h"

#include "model/veltext.h"
#include "widgets/wshowntext.h"

#include <KLocalizedString>

namespace
{
constexpr int MinutesPerDay = 24 * 60;
constexpr int MsecsPerMinute = 60000;

int minuteOf(QTime time)
{
    return time.isValid() ? time.msecsSinceStartOfDay() / MsecsPerMinute : 0;
}

QString privateMark()
{
    return i18nc("one letter for a private entry on paper", "P");
}

QString repeatingMark()
{
    return i18nc("one letter for a repeating entry on paper", "R");
}

QString reminderMark()
{
    return i18nc("one letter for an entry with a reminder on paper", "A");
}
} // namespace

namespace VelPrintText
{
QString title(const VelEntry &entry)
{
    const QString text = WShownText::cut(entry.getTitle()).simplified();
    return text.isEmpty() ? i18nc("in place of the title of an entry", "(no title)") : text;
}

Span span(const VelEntryRef &ref, QDate day)
{
    const VelDateTime start = ref.getStart();
    const VelDateTime end = ref.getEnd();
    const int begin = start.date() < day ? 0 : minuteOf(start.time());
    return {begin, qMax(begin, end.date() > day ? MinutesPerDay : minuteOf(end.time()))};
}

bool isOver(const VelEntryRef &ref, QDate day)
{
    const VelEntry &entry = *ref.getOriginal();
    return entry.type != VelEntry::Todo && !entry.notime && ref.getStart().date() < day
        && span(ref, day).end == 0;
}

bool isAllDay(const VelEntryRef &ref, QDate day)
{
    return ref.getOriginal()->notime || (ref.getStart().date() < day && ref.getEnd().date() > day);
}

QString times(const VelEntryRef &ref, QDate day)
{
    const VelDateTime start = ref.getStart();
    const VelDateTime end = ref.getEnd();
    const bool beginsBefore = start.date() < day;
    const bool goesOn = end.date() > day;
    if (isAllDay(ref, day))
        return i18nc("in place of the times of an entry", "All day");
    if (start == end)
        return VelText::getTime(start.time());
    const QString from = beginsBefore ? QStringLiteral("…") : VelText::getTime(start.time());
    const QString to = goesOn ? QStringLiteral("…") : VelText::getTime(end.time());
    return i18nc("from a time to a time", "%1–%2", from, to);
}

QString marks(const VelEntry &entry)
{
    QString letters;
    if (entry.access == VelEntry::Private)
        letters += privateMark();
    if (entry.isRecurring())
        letters += repeatingMark();
    if (entry.reminder > 0)
        letters += reminderMark();
    return letters.isEmpty() ? letters : QString(QLatin1Char('[') + letters + QLatin1Char(']'));
}

QString legend()
{
    return i18nc("what the marks on paper mean", "[%1] private   [%2] repeating   [%3] with a reminder",
                 privateMark(), repeatingMark(), reminderMark());
}
} // namespace VelPrintText
