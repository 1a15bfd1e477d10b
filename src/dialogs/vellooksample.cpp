// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogs/vellooksample.h"

#include "model/veltext.h"
#include "views/veldayentry.h"

#include <KLocalizedString>

#include <QFontMetrics>
#include <QPainter>
#include <QStyle>

namespace
{
constexpr int FirstHour = 8; // of those that are shown
constexpr int HourCount = 5;
constexpr int WorkFirst = 1; // of them
constexpr int Margin = 4; // pixels around texts
// Hours since the first that is shown.
constexpr qreal SelectionFrom = 3.5;
constexpr qreal SelectionTo = 4.5;

VelEntry makeEntry(const QString &title)
{
    const VelDateTime start(QDate(2000, 1, 3), QTime(FirstHour, 0));
    VelEntry entry(0, VelEntry::Event, start, start.addSecs(60 * 60));
    entry.setTitle(title);
    return entry;
}
} // namespace

VelLookSample::VelLookSample(QWidget *parent)
    : QWidget(parent)
    , m_look(VelLook::defaults(palette()))
    , m_entries{makeEntry(i18n("Meeting")), makeEntry(i18n("Tentative")), makeEntry(i18n("Selected"))}
{
    setAccessibleName(i18n("Sample of the colours and fonts"));
    setSizePolicy(QSizePolicy::MinimumExpanding, QSizePolicy::MinimumExpanding);
}

void VelLookSample::setLook(const VelLook &look)
{
    m_look = look;
    update();
}

QSize VelLookSample::minimumSizeHint() const
{
    const QFontMetrics metrics = fontMetrics();
    return {metrics.averageCharWidth() * 30, metrics.height() * (2 + HourCount * 3 / 2)};
}

QSize VelLookSample::sizeHint() const
{
    const QFontMetrics metrics = fontMetrics();
    return {metrics.averageCharWidth() * 44, metrics.height() * (2 + HourCount * 2)};
}

/** A font larger than the sample's room is cut off, so that the dialog keeps its size. */
int VelLookSample::headerHeight() const
{
    return qMin(QFontMetrics(m_look.calendarFont).height() + 2 * Margin, height() / 3);
}

int VelLookSample::hourHeight() const
{
    return (height() - headerHeight()) / HourCount;
}

QRect VelLookSample::mirrored(const QRect &rect) const
{
    return QStyle::visualRect(layoutDirection(), this->rect(), rect);
}

QRect VelLookSample::place(qreal left, qreal right, qreal from, qreal to) const
{
    const int ruler =
        QFontMetrics(m_look.calendarFont).horizontalAdvance(VelText::getHour(FirstHour + HourCount))
        + 3 * Margin;
    const int begin = qMin(ruler, width() / 2);
    const int room = width() - begin;
    const QPoint topLeft(begin + qRound(left * room), headerHeight() + qRound(from * hourHeight()));
    const QPoint bottomRight(begin + qRound(right * room) - 1,
                             headerHeight() + qRound(to * hourHeight()) - 1);
    return mirrored(QRect(topLeft, bottomRight));
}

void VelLookSample::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), m_look.ruler());
    paintHours(painter);
    paintRuler(painter);
    paintHeader(painter);
    paintEntries(painter);
}

void VelLookSample::paintHeader(QPainter &painter) const
{
    const QRect header(0, 0, width(), headerHeight());
    painter.fillRect(header, m_look.grid());
    painter.fillRect(header.adjusted(1, 1, -1, -1), m_look.highlight());
    painter.setFont(m_look.calendarFont);
    painter.setPen(VelLook::textOn(m_look.highlight()));
    painter.drawText(header, Qt::AlignCenter, VelText::getWeekDay(Qt::Monday));
}

void VelLookSample::paintRuler(QPainter &painter) const
{
    painter.setFont(m_look.calendarFont);
    for (int hour = 0; hour < HourCount; ++hour) {
        const QRect column = mirrored(place(0, 1, hour, hour + 1));
        const QRect row(0, column.top(), column.left(), column.height());
        painter.fillRect(mirrored(QRect(row.topLeft(), QSize(row.width(), 1))), m_look.grid());
        painter.setPen(VelLook::textOn(m_look.ruler()));
        painter.drawText(mirrored(row.adjusted(0, 0, -Margin, 0)),
                         int(QStyle::visualAlignment(layoutDirection(), Qt::AlignRight)) | Qt::AlignVCenter,
                         VelText::getHour(FirstHour + hour));
    }
}

void VelLookSample::paintHours(QPainter &painter) const
{
    for (int hour = 0; hour < HourCount; ++hour) {
        const bool isSecond = (hour - WorkFirst) % 2 != 0;
        const QColor working = isSecond ? m_look.dayHour2() : m_look.dayHour;
        painter.fillRect(place(0, 1, hour, hour + 1), hour < WorkFirst ? m_look.dayOffHour : working);
    }
    painter.fillRect(place(0, 1, SelectionFrom, SelectionTo), m_look.selection);
    painter.setPen(QPen(m_look.halfHour(), 1, Qt::DashLine));
    for (int hour = 0; hour < HourCount; ++hour) {
        const QRect row = place(0, 1, hour, hour + 1);
        painter.fillRect(row.left(), row.top(), row.width(), 1, m_look.grid());
        if (hour >= WorkFirst)
            painter.drawLine(row.left(), row.center().y(), row.right(), row.center().y());
    }
    painter.fillRect(mirrored(QRect(mirrored(place(0, 1, 0, 1)).left(), 0, 1, height())), m_look.grid());
}

void VelLookSample::paintEntries(QPainter &painter) const
{
    const VelDayStyle style(m_look, this);
    const std::array<QRect, 3> places{place(0.02, 0.49, 0.5, 2), place(0.51, 0.98, 1, 2.5),
                                      place(0.02, 0.49, 2, 3)};
    painter.setFont(style.font);
    for (std::size_t i = 0; i < m_entries.size(); ++i) {
        const VelDayEntry entry(VelEntryRef(&m_entries[i]), places[i], true, i == 1);
        entry.paint(painter, style, i == 2, 0);
    }
}
