// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "views/veldayprintout.h"

#include "model/velsettings.h"
#include "model/veltext.h"
#include "views/veldaylayout.h"
#include "views/veldaysource.h"
#include "views/velprinttext.h"

#include <KLocalizedString>

#include <QGuiApplication>
#include <QLocale>
#include <QPainter>

#include <algorithm>

namespace
{
constexpr int MinutesPerHour = 60;
constexpr int HoursPerDay = VelDayLayout::HoursPerDay;
/** Millimetres between a frame and its text, and around what stands in rows and columns. */
constexpr qreal Padding = 0.8;
/** Of the room: the most that entries without times may take from the others. */
constexpr qreal BandShare = 0.25;
/** Boxes side by side beyond this are too thin for text, and working them out takes long. */
constexpr std::size_t MaximumTimed = 100;
/** Of a line: what a box of one may be too low by, and what one of more needs beyond them to look well. */
constexpr qreal Tolerance = 0.1;
/** Characters; thinner boxes break every word. */
constexpr int MinimumChars = 5;
} // namespace

VelDayPrintout::VelDayPrintout(std::unique_ptr<const VelDaySource> source, const VelSettings &settings,
                               QDate start, int days)
    : m_source(std::move(source))
    , m_workdayBegin(settings.workdayBegin)
    , m_workdayEnd(settings.workdayEnd)
    , m_start(start)
    , m_dayCount(qMax(1, days))
    , m_agenda(*m_source, start, m_dayCount)
{
}

VelDayPrintout::~VelDayPrintout() = default;

QString VelDayPrintout::title() const
{
    return m_agenda.title();
}

std::vector<VelOl> VelDayPrintout::sideBySide(const VelEntryList &entries)
{
    std::vector<VelOl> places = VelDayLayout::calcOverlaps(entries);
    std::size_t first = 0;
    while (first < entries.size()) {
        VelDateTime end = entries[first].getEnd();
        int most = places[first].overlaps;
        std::size_t next = first + 1;
        for (; next < entries.size() && entries[next].getStart() < end; ++next) {
            end = std::max(end, entries[next].getEnd());
            most = std::max(most, places[next].overlaps);
        }
        for (; first < next; ++first)
            places[first].overlaps = most;
    }
    return places;
}

std::vector<VelDayPrintout::Day> VelDayPrintout::readDays() const
{
    std::vector<Day> days;
    for (int i = 0; i < m_dayCount; ++i) {
        Day day{m_start.addDays(i), {}, {}};
        for (const VelEntryRef &ref : m_source->getEntries(day.date)) {
            if (VelPrintText::isAllDay(ref, day.date))
                day.allDay.push_back(ref);
            else if (!VelPrintText::isOver(ref, day.date))
                day.timed.push_back(ref);
        }
        days.push_back(std::move(day));
    }
    return days;
}

/**
 * The working hours and those of all entries. Of what goes on from the day before or into the next only an hour need
 * be seen: the night would make the rows too low for texts.
 */
void VelDayPrintout::setHours(const std::vector<Day> &days)
{
    const auto hourAfter = [](int minutes) { return (minutes + MinutesPerHour - 1) / MinutesPerHour; };
    const auto minutes = [](QTime time) { return time.msecsSinceStartOfDay() / 60000; };
    m_firstHour = std::min(m_workdayBegin.hour(), m_workdayEnd.hour());
    m_endHour = hourAfter(std::max(minutes(m_workdayBegin), minutes(m_workdayEnd)));
    for (const Day &day : days) {
        for (const VelEntryRef &ref : day.timed) {
            const VelPrintText::Span span = VelPrintText::span(ref, day.date);
            const bool beginsBefore = ref.getStart().date() < day.date;
            const bool goesOn = ref.getEnd().date() > day.date;
            m_firstHour = std::min(m_firstHour, (beginsBefore ? span.end - 1 : span.begin) / MinutesPerHour);
            m_endHour = std::max(m_endHour, hourAfter(goesOn ? span.begin + 1 : span.end));
        }
    }
    m_firstHour = qBound(0, m_firstHour, HoursPerDay - 1);
    m_endHour = qBound(m_firstHour + 1, m_endHour, HoursPerDay);
}

/** Divides the page: ruler and columns, and from top to bottom heads, all-day entries, hours, legend. */
void VelDayPrintout::setGrid(const std::vector<Day> &days)
{
    const qreal pad = m_paper.mm(Padding);
    m_rulerWidth = 0;
    for (int hour = 0; hour < HoursPerDay; ++hour)
        m_rulerWidth = qMax(m_rulerWidth, m_paper.textWidth(VelPaper::Small, VelText::getHour(hour)));
    m_rulerWidth += 3 * pad;

    std::size_t most = 0;
    for (const Day &day : days)
        most = std::max(most, day.allDay.size());
    const qreal line = m_paper.lineHeight(VelPaper::Small) + pad;
    const auto room = qMax(1, int(m_size.height() * BandShare / line));
    m_bandTop = 2 * m_paper.lineHeight(VelPaper::Strong) + 2 * pad;
    m_gridTop = m_bandTop + qMin(room, int(most)) * line + (most > 0 ? pad : 0);
    m_gridBottom = m_size.height() - m_paper.lineHeight(VelPaper::Small) - 2 * pad;
}

qreal VelDayPrintout::yOf(int minute) const
{
    const int first = m_firstHour * MinutesPerHour;
    const int last = m_endHour * MinutesPerHour;
    const qreal share = qreal(qBound(first, minute, last) - first) / (last - first);
    return m_gridTop + share * (m_gridBottom - m_gridTop);
}

QRectF VelDayPrintout::columnRect(int column, qreal top, qreal bottom) const
{
    const qreal width = (m_size.width() - m_rulerWidth) / m_dayCount;
    return {m_rulerWidth + column * width, top, width, bottom - top};
}

void VelDayPrintout::addRuler()
{
    const qreal pad = m_paper.mm(Padding);
    for (int hour = m_firstHour; hour < m_endHour; ++hour) {
        m_labels.push_back(
            {{0, yOf(hour * MinutesPerHour), m_rulerWidth - pad, m_paper.lineHeight(VelPaper::Small)},
             VelText::getHour(hour),
             VelPaper::Small,
             Qt::AlignRight});
    }
}

void VelDayPrintout::addHead(const Day &day, int column)
{
    const qreal line = m_paper.lineHeight(VelPaper::Strong);
    const qreal pad = m_paper.mm(Padding);
    const QRectF rect = columnRect(column, 0, line).adjusted(pad, pad, -pad, pad);
    const QString date =
        VelText::getMonth(day.date, true) + QLatin1Char(' ') + QLocale().toString(day.date.day());
    const QStringList lines{VelText::getWeekDay(day.date), date};
    for (int i = 0; i < lines.size(); ++i)
        m_labels.push_back({rect.translated(0, i * line),
                            m_paper.elided(VelPaper::Strong, lines.at(i), rect.width()), VelPaper::Strong,
                            Qt::AlignHCenter});
}

void VelDayPrintout::addAllDay(const Day &day, int column)
{
    const qreal pad = m_paper.mm(Padding);
    const qreal line = m_paper.lineHeight(VelPaper::Small);
    const QRectF rect = columnRect(column, m_bandTop, m_bandTop + line).adjusted(pad, pad, -pad, pad);
    const int count = int(day.allDay.size());
    const int room = int((m_gridTop - m_bandTop) / (line + pad));
    const int shown = count <= room ? count : room - 1;
    for (int i = 0; i < shown; ++i) {
        const VelEntryRef &ref = day.allDay[std::size_t(i)];
        const QString marks = VelPrintText::marks(*ref.getOriginal());
        m_hasMarks = m_hasMarks || !marks.isEmpty();
        const QString text =
            QString(VelPrintText::title(*ref.getOriginal()) + QLatin1Char(' ') + marks).trimmed();
        const QString fitting = m_paper.elided(VelPaper::Small, text, rect.width() - 2 * pad);
        m_isComplete = m_isComplete && fitting == text;
        m_boxes.push_back(
            {rect.translated(0, i * (line + pad)), {fitting}, m_source->isTentative(*ref.getOriginal())});
    }
    if (shown < count) {
        m_isComplete = false;
        m_labels.push_back({rect.translated(0, shown * (line + pad)),
                            i18nc("so many more entries", "+%1", count - shown), VelPaper::Small,
                            Qt::AlignLeft});
    }
}

void VelDayPrintout::addTimed(const Day &day, int column)
{
    VelEntryList entries = day.timed;
    if (entries.size() > MaximumTimed) {
        entries.erase(entries.begin() + MaximumTimed, entries.end());
        m_isComplete = false;
    }
    const std::vector<VelOl> places = sideBySide(entries);
    const qreal pad = m_paper.mm(Padding);
    const QRectF rect = columnRect(column, m_gridTop, m_gridBottom).adjusted(pad, 0, -pad, 0);
    for (std::size_t i = 0; i < entries.size(); ++i)
        addBox(entries[i], day, places[i], rect);
}

void VelDayPrintout::addBox(const VelEntryRef &ref, const Day &day, const VelOl &place, const QRectF &column)
{
    const VelPrintText::Span span = VelPrintText::span(ref, day.date);
    const qreal width = column.width() / (place.overlaps + 1);
    const qreal top = yOf(span.begin);
    const qreal height = qMax(yOf(span.end) - top, m_paper.mm(Padding));
    // An entry without length may begin where the axis ends.
    const QRectF rect(column.left() + place.column * width, qMin(top, column.bottom() - height), width,
                      height);
    m_boxes.push_back(
        {rect, boxLines(ref, day.date, rect.size()), m_source->isTentative(*ref.getOriginal())});
}

/** Times and title; where they have no room the title alone, as the place of the box tells the times. */
QStringList VelDayPrintout::boxLines(const VelEntryRef &ref, QDate day, const QSizeF &size)
{
    const QString marks = VelPrintText::marks(*ref.getOriginal());
    m_hasMarks = m_hasMarks || !marks.isEmpty();
    const QString title =
        QString(VelPrintText::title(*ref.getOriginal()) + QLatin1Char(' ') + marks).trimmed();
    const qreal lines = size.height() / m_paper.lineHeight(VelPaper::Small);
    const int room = lines < 1 ? int(lines + Tolerance) : qMax(1, int(lines - Tolerance));
    const qreal width = size.width() - 2 * m_paper.mm(Padding);
    const QString widest(MinimumChars, QLatin1Char('x'));
    if (room > 0 && width >= m_paper.textWidth(VelPaper::Small, widest)) {
        const QString whole = VelPrintText::times(ref, day) + QLatin1Char(' ') + title;
        const VelWrapped wrapped = m_paper.wrapped(VelPaper::Small, whole, width, room);
        if (wrapped.isComplete)
            return wrapped.lines;
        m_isComplete = false;
        return m_paper.wrapped(VelPaper::Small, title, width, room).lines;
    }
    m_isComplete = false;
    return {};
}

int VelDayPrintout::layOut(const QSizeF &size, const QPaintDevice *device)
{
    m_paper = VelPaper(device);
    m_size = size;
    m_boxes.clear();
    m_labels.clear();
    m_hasMarks = false;
    m_isComplete = true;
    const std::vector<Day> days = readDays();
    setHours(days);
    setGrid(days);
    addRuler();
    for (int column = 0; column < m_dayCount; ++column) {
        const Day &day = days[std::size_t(column)];
        addHead(day, column);
        addAllDay(day, column);
        addTimed(day, column);
    }
    if (m_hasMarks)
        m_labels.push_back({{0, m_size.height() - m_paper.lineHeight(VelPaper::Small), m_size.width(),
                             m_paper.lineHeight(VelPaper::Small)},
                            VelPrintText::legend(),
                            VelPaper::Small,
                            Qt::AlignLeft});
    return m_isComplete ? 1 : 1 + m_agenda.layOut(size, device);
}

void VelDayPrintout::paintGrid(QPainter &painter) const
{
    painter.setPen(m_paper.faintPen());
    for (int hour = m_firstHour + 1; hour < m_endHour; ++hour) {
        const qreal y = yOf(hour * MinutesPerHour);
        painter.drawLine(QPointF(0, y), QPointF(m_size.width(), y));
    }
    painter.setPen(m_paper.pen());
    painter.setBrush(Qt::NoBrush);
    const qreal half = painter.pen().widthF() / 2;
    painter.drawRect(QRectF(0, 0, m_size.width(), m_gridBottom).adjusted(half, half, -half, -half));
    for (const qreal y : {m_bandTop, m_gridTop})
        painter.drawLine(QPointF(0, y), QPointF(m_size.width(), y));
    for (int column = 0; column < m_dayCount; ++column) {
        const QRectF rect = VelPaper::mirrored(columnRect(column, 0, m_gridBottom), m_size.width());
        const qreal x = QGuiApplication::isRightToLeft() ? rect.right() : rect.left();
        painter.drawLine(QPointF(x, 0), QPointF(x, m_gridBottom));
    }
}

void VelDayPrintout::paintPage(QPainter &painter, int page) const
{
    if (page > 0) {
        m_agenda.paintPage(painter, page - 1);
        return;
    }
    paintGrid(painter);
    const qreal pad = m_paper.mm(Padding);
    for (const Box &box : m_boxes) {
        const QRectF rect = VelPaper::mirrored(box.rect, m_size.width());
        painter.setPen(m_paper.pen(box.isDashed ? Qt::DashLine : Qt::SolidLine));
        painter.setBrush(Qt::white);
        painter.drawRect(rect);
        m_paper.drawLines(painter, VelPaper::Small, rect.adjusted(pad, 0, -pad, 0), box.lines);
    }
    for (const Label &label : m_labels)
        m_paper.drawText(painter, label.face, VelPaper::mirrored(label.rect, m_size.width()), label.text,
                         label.alignment);
}
