// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "views/velentrytext.h"

#include "model/veltext.h"
#include "widgets/wshowntext.h"

#include <KLocalizedString>

#include <QLocale>
#include <QStringList>

namespace
{
QString moment(const VelDateTime &time, QDate day, bool notime)
{
    if (notime)
        return VelText::getDay(time.date());
    return time.date() == day ? VelText::getTime(time.time()) : VelText::getDateTime(time);
}
} // namespace

namespace VelEntryText
{
QString title(const VelEntry &entry)
{
    const QString title = WShownText::cut(entry.getTitle());
    return title.trimmed().isEmpty() ? i18n("Without a title") : title;
}

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
    QStringList words;
    if (entry.access == VelEntry::Private)
        words.append(i18nc("of an entry", "private"));
    if (entry.isTentative())
        words.append(i18nc("of an entry", "tentative"));
    if (entry.isRecurring())
        words.append(i18nc("of an entry", "recurring"));
    if (entry.reminder > 0)
        words.append(
            i18nc("of an entry; the lead time", "reminder %1", VelReminder::toString(entry.reminder)));
    if (entry.type == VelEntry::Todo)
        words.append(entry.complete ? i18nc("of an entry", "completed task") : i18nc("of an entry", "task"));
    return words.join(i18nc("between the properties of an entry", ", "));
}

QString describe(const VelEntryRef &entry, QDate day)
{
    QStringList parts{title(*entry.getOriginal()), dayName(day), times(entry, day),
                      marks(*entry.getOriginal())};
    parts.removeAll(QString());
    return parts.join(QLatin1String(", "));
}

QString toolTip(const VelEntryRef &entry, QDate day, const QString &owner)
{
    QString text = QLatin1String("<b>") + title(*entry.getOriginal()).toHtmlEscaped() + QLatin1String("</b>");
    const auto addLine = [&text](const QString &line) {
        if (!line.isEmpty())
            text += QLatin1String("<br>") + line.toHtmlEscaped();
    };
    addLine(times(entry, day));
    addLine(marks(*entry.getOriginal()));
    addLine(WShownText::cut(owner));
    return text;
}

QString dayName(QDate day)
{
    return QLocale().toString(day, QLocale::LongFormat);
}

QString monthName(QDate month)
{
    QLocale locale;
    locale.setNumberOptions(QLocale::OmitGroupSeparator);
    return i18nc("month and year", "%1 %2", VelText::getMonth(month, true), locale.toString(month.year()));
}
} // namespace VelEntryText
