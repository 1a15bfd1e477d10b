// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "views/velagendaprintout.h"

#include "model/veltext.h"
#include "views/veldaysource.h"
#include "views/velentrytext.h"
#include "views/velprinttext.h"

#include <KLocalizedString>

#include <QLocale>

VelAgendaPrintout::VelAgendaPrintout(const VelDaySource &source, QDate first, int days)
    : m_source(source)
    , m_first(first)
    , m_days(days)
{
}

QString VelAgendaPrintout::titleOf(QDate first, int days)
{
    if (days <= 1)
        return QLocale().toString(first, QLocale::LongFormat);
    return i18nc("from a date to a date", "%1 – %2", VelText::getDay(first),
                 VelText::getDay(first.addDays(days - 1)));
}

QString VelAgendaPrintout::title() const
{
    return titleOf(m_first, m_days);
}

void VelAgendaPrintout::addDay(QDate day)
{
    VelEntryList entries = m_source.getEntries(day);
    std::erase_if(entries, [day](const VelEntryRef &ref) { return VelPrintText::isOver(ref, day); });
    if (entries.empty())
        return;
    m_isEmpty = false;
    m_flow.addHeading(QLocale().toString(day, QLocale::LongFormat));
    // What takes the whole day first, as on the page of the day.
    for (const bool isAllDay : {true, false}) {
        for (const VelEntryRef &ref : entries) {
            if (VelPrintText::isAllDay(ref, day) != isAllDay)
                continue;
            QString text = VelPrintText::title(*ref.getOriginal());
            const QString marks = VelEntryText::marks(*ref.getOriginal());
            if (!marks.isEmpty())
                text += QLatin1String(" (") + marks + QLatin1Char(')');
            m_flow.addRow(VelPrintText::times(ref, day), text);
        }
    }
}

int VelAgendaPrintout::layOut(const QSizeF &size, const QPaintDevice *device)
{
    m_flow.clear();
    m_isEmpty = true;
    for (int i = 0; i < m_days; ++i)
        addDay(m_first.addDays(i));
    if (m_isEmpty)
        m_flow.addText(i18n("There are no entries."));
    return m_flow.layOut(size, VelPaper(device));
}
