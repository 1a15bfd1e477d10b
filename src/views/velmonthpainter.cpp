// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "views/velmonthpainter.h"

#include "document/veldoc.h"
#include "hub/vellook.h"
#include "model/velsettings.h"
#include "model/veltext.h"
#include "views/velentrytext.h"
#include "views/velmonthlayout.h"

#include <KLocalizedString>

#include <QFontMetrics>
#include <QLocale>
#include <QPainter>
#include <QStyle>

namespace
{
constexpr int LeastHeading = 40;
constexpr int NumberMargin = 4;

QFont boldFont(QFont font)
{
    font.setBold(true);
    return font;
}

int weekdaysHeight(const VelLook &look)
{
    return QFontMetrics(look.calendarFont).height() + 4;
}

/** The calendar's font, as large as the line of an entry allows. */
QFont numberFont(const VelLook &look)
{
    QFont font = look.calendarFont;
    if (QFontMetrics(font).height() > VelMonthPainter::lineHeight(look))
        font.setPixelSize(qMax(1, QFontInfo(look.entryFont).pixelSize()));
    return font;
}

QFont moreFont(const VelLook &look)
{
    QFont font = numberFont(look);
    font.setUnderline(true);
    return font;
}

/** The longest form of the weekdays' names of which all fit into @p width. */
QLocale::FormatType weekdayForm(const QFontMetrics &metrics, int width)
{
    for (const QLocale::FormatType form : {QLocale::LongFormat, QLocale::ShortFormat}) {
        int widest = 0;
        for (int day = 1; day <= VelMonthLayout::DaysPerWeek; ++day)
            widest = qMax(widest, metrics.horizontalAdvance(QLocale().standaloneDayName(day, form)));
        if (widest <= width - NumberMargin)
            return form;
    }
    return QLocale::NarrowFormat;
}

int numberWidth(const QFont &font, const QString &number)
{
    return QFontMetrics(font).horizontalAdvance(number) + 2 * NumberMargin;
}
} // namespace

VelMonthPainter::VelMonthPainter(QPainter &painter, const VelMonthScene &scene)
    : m_painter(painter)
    , m_scene(scene)
    , m_lineHeight(lineHeight(scene.look))
    , m_numberFont(numberFont(scene.look))
{
}

int VelMonthPainter::headingHeight(const VelLook &look)
{
    const int monthHeight = QFontMetrics(boldFont(look.calendarFont)).height() + 4;
    return qMax(LeastHeading, monthHeight + weekdaysHeight(look));
}

int VelMonthPainter::lineHeight(const VelLook &look)
{
    return QFontMetrics(look.entryFont).height() + 2;
}

void VelMonthPainter::placeMore(VelMonthCell &cell, const QRect &line, const VelLook &look)
{
    const QFont font = moreFont(look);
    const int room = line.width() - numberWidth(numberFont(look), QLocale().toString(cell.date.day()));
    cell.moreText = i18nc("so many more entries of a day", "+%1", QLocale().toString(cell.hidden));
    if (numberWidth(font, cell.moreText) > room)
        cell.moreText = QStringLiteral("+");
    cell.more = line;
    cell.more.setLeft(line.right() + 1 - qBound(1, numberWidth(font, cell.moreText), qMax(1, room)));
}

void VelMonthPainter::paint(const QRect &clip)
{
    m_painter.fillRect(clip, m_scene.look.ruler()); // the heading, and what whole pixels per cell leave over
    m_painter.setLayoutDirection(m_scene.direction);
    if (clip.top() < m_scene.headingHeight)
        paintHeading();
    for (const VelMonthCell &cell : m_scene.cells) {
        if (cell.rect.intersects(clip))
            paintCell(cell);
    }
    for (const VelMonthEntry &entry : m_scene.entries) {
        if (entry.rect().intersects(clip))
            paintEntry(entry);
    }
    paintPreview();
    if (m_scene.hasFocus)
        paintFrame(m_scene.bounds, m_scene.look.highlight(), 1);
}

void VelMonthPainter::paintHeading()
{
    const VelLook &look = m_scene.look;
    const int weekdays = weekdaysHeight(look);
    m_painter.setPen(VelLook::textOn(look.ruler()));
    m_painter.setFont(boldFont(look.calendarFont));
    const QRect top(m_scene.bounds.left(), 0, m_scene.bounds.width(), m_scene.headingHeight - weekdays);
    m_painter.drawText(top, Qt::AlignCenter, VelEntryText::monthName(m_scene.month));
    m_painter.setFont(look.calendarFont);
    if (m_scene.cells.size() < VelMonthLayout::DaysPerWeek)
        return;
    const int width = m_scene.cells.front().rect.width();
    const QLocale::FormatType form = weekdayForm(m_painter.fontMetrics(), width);
    for (std::size_t column = 0; column < VelMonthLayout::DaysPerWeek; ++column) {
        const VelMonthCell &cell = m_scene.cells[column];
        const QRect rect(cell.rect.left(), top.bottom() + 1, width, weekdays);
        m_painter.drawText(rect, Qt::AlignCenter, QLocale().standaloneDayName(cell.date.dayOfWeek(), form));
    }
}

void VelMonthPainter::paintCell(const VelMonthCell &cell)
{
    const bool isSelected = cell.date == m_scene.selectedDay;
    const QColor background = isSelected ? m_scene.look.selection : cell.background;
    m_painter.fillRect(cell.rect, background);
    m_painter.setPen(m_scene.look.grid());
    // Right and bottom edge in the cell, the others in its neighbours: lines of one pixel.
    m_painter.drawRect(cell.rect.adjusted(-1, -1, -1, -1));
    paintNumber(cell);
    if (cell.hidden > 0) {
        m_painter.setPen(VelLook::textOn(background));
        m_painter.setFont(moreFont(m_scene.look));
        m_painter.drawText(cell.more, Qt::AlignCenter, cell.moreText);
    }
}

QColor VelMonthPainter::numberColor(const VelMonthCell &cell, const QColor &ground) const
{
    if (m_scene.settings.isRedDay(cell.date))
        return m_scene.look.red();
    if (cell.date == m_scene.today)
        return VelLook::textOn(ground);
    if (cell.date == m_scene.selectedDay)
        return VelLook::textOn(m_scene.look.selection);
    return VelLook::mixed(VelLook::textOn(ground), ground, cell.isInMonth ? 1 : 0.65);
}

void VelMonthPainter::paintNumber(const VelMonthCell &cell)
{
    const VelLook &look = m_scene.look;
    const bool isToday = cell.date == m_scene.today;
    const bool isRed = m_scene.settings.isRedDay(cell.date);
    const QString number = QLocale().toString(cell.date.day());
    m_painter.setFont(isToday ? boldFont(m_numberFont) : m_numberFont);
    const int width = numberWidth(m_painter.font(), number);
    const QRect line(cell.rect.left() + 1, cell.rect.top() + 1, cell.rect.width() - 3, m_lineHeight - 2);
    const QRect place =
        QStyle::visualRect(m_scene.direction, line, {line.topLeft(), QSize(width, line.height())});
    // Red cannot be read on every colour: it keeps a patch of the cell's own, with a frame when it is today's.
    const bool needsPatch = isToday || (isRed && cell.date == m_scene.selectedDay);
    const QColor ground = isToday && !isRed ? look.highlight() : cell.background;
    if (needsPatch) {
        m_painter.setRenderHint(QPainter::Antialiasing);
        m_painter.setPen(isToday ? QPen(look.highlight(), 2) : QPen(Qt::NoPen));
        m_painter.setBrush(ground);
        m_painter.drawRoundedRect(isToday ? place.adjusted(1, 1, -1, -1) : place, 4, 4);
        m_painter.setBrush(Qt::NoBrush);
        m_painter.setRenderHint(QPainter::Antialiasing, false);
    }
    m_painter.setPen(numberColor(cell, ground));
    m_painter.drawText(place, Qt::AlignCenter, number);
}

void VelMonthPainter::paintEntry(const VelMonthEntry &entry)
{
    const VelLook &look = m_scene.look;
    const VelEntry &original = *entry.ref().getOriginal();
    const QRect box = entry.rect().adjusted(1, 0, -1, -1);
    m_painter.fillRect(box, m_scene.doc.isTentative(original) ? look.tentative : look.entryBackground);
    const QStaticText &text = entry.text(look.entryFont, m_scene.direction);
    const QSizeF size = text.size();
    const qreal left = m_scene.direction == Qt::RightToLeft
        ? entry.rect().right() + 1 - VelMonthEntry::Margin - size.width()
        : entry.rect().left() + VelMonthEntry::Margin;
    const QPointF place(left, box.top() + (box.height() - size.height()) / 2);
    m_painter.setPen(look.entryText);
    m_painter.setFont(look.entryFont);
    m_painter.drawStaticText(place, text);
    if (original.complete) {
        // Not by the font: the toolkit draws that line elsewhere when words run from right to left.
        const qreal middle = place.y() + size.height() / 2;
        m_painter.drawLine(QPointF(left, middle), QPointF(left + size.width(), middle));
    }
    if (entry.shows(m_scene.selectedEntry))
        paintFrame(box, look.red(), 2);
}

void VelMonthPainter::paintPreview()
{
    const VelMonthPreview &preview = m_scene.preview;
    if (!preview.date.isValid())
        return;
    const VelLook &look = m_scene.look;
    paintFrame(preview.cell.adjusted(0, 0, -1, -1), look.red(), 2);
    if (preview.text.isEmpty())
        return;
    const QRect box = preview.rect.adjusted(1, 0, -1, -1);
    const QRect inner = box.adjusted(VelMonthEntry::Margin, 0, -VelMonthEntry::Margin, 0);
    m_painter.fillRect(box, look.entryBackground);
    m_painter.setPen(look.entryText);
    m_painter.setFont(look.entryFont);
    m_painter.drawText(inner, Qt::AlignVCenter | Qt::AlignLeading | Qt::TextSingleLine,
                       VelMonthEntry::fittingText(preview.text, look.entryFont, inner.width()));
    paintFrame(box, look.highlight(), 1);
}

void VelMonthPainter::paintFrame(const QRect &rect, const QColor &color, int width)
{
    for (int inset = 0; inset < width; ++inset) {
        m_painter.setPen(color);
        m_painter.drawRect(rect.adjusted(inset, inset, -inset - 1, -inset - 1));
    }
}
