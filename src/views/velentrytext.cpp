// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "views/velentrytext.h"

#include "model/veltext.h"

#include <KLocalizedString>

#include <QLocale>

namespace
{
QString titleOf(const VelEntry &entry)
{
    return entry.getTitle().isEmpty() ? i18n("Without a title") : entry.getTitle();
}

QString moment(const VelDateTime &time, QDate day, bool notime)
{
    if (notime)
        return VelText::getDay(time.date());
    return time.date() == day ? VelText::getTime(time.time()) : VelText::getDateTime(time);
}
} // namespace

namespace VelEntryText
{
QString times(const VelEntryRef &entry, QDate day)
{
    const bool notime = entry.getOriginal()->notime;
    const VelDateTime start = entry.getStart();
    const VelDateTime end = entry.getEnd();
    if (notime && start.date() == end.date())
        return start.date() == day ? QString() : VelText::getDay(start.date());
    if (start == end)
        return moment(start, day, notime);
    return i18nc("from one time to another", "%1 to %2", moment(start, day, notime),
                 moment(end, day, notime));
}

QString marks(const VelEntry &entry)
{
    QString text;
    const auto add = [&text](const QString &mark) { text += QLatin1String(", ") + mark; };
    if (entry.access == VelEntry::Private)
        add(i18nc("of an entry", "private"));
    if (entry.isTentative())
        add(i18nc("of an entry", "tentative"));
    if (entry.isRecurring())
        add(i18nc("of an entry", "recurring"));
    if (entry.reminder > 0)
        add(i18nc("of an entry", "reminder %1", VelReminder::toString(entry.reminder)));
    if (entry.complete)
        add(i18nc("of a task", "completed"));
    return text;
}

QString describe(const VelEntryRef &entry, QDate day)
{
    const QString span = times(entry, day);
    QString text = titleOf(*entry.getOriginal()) + QLatin1String(", ") + dayName(day);
    if (!span.isEmpty())
        text += QLatin1String(", ") + span;
    return text + marks(*entry.getOriginal());
}

QString toolTip(const VelEntryRef &entry, QDate day, const QString &owner)
{
    QString text =
        QLatin1String("<b>") + titleOf(*entry.getOriginal()).toHtmlEscaped() + QLatin1String("</b>");
    const auto addLine = [&text](const QString &line) {
        if (!line.isEmpty())
            text += QLatin1String("<br>") + line.toHtmlEscaped();
    };
    addLine(times(entry, day));
    addLine(marks(*entry.getOriginal()).mid(2));
    addLine(owner);
    return text;
}

QString dayName(QDate day)
{
    return QLocale().toString(day, QLocale::LongFormat);
}
} // namespace VelEntryText
