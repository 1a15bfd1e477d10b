// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "views/veldaynames.h"

#include "hub/velapp.h"
#include "hub/vellook.h"
#include "views/veldaysource.h"
#include "views/velentrytext.h"
#include "widgets/wshowntext.h"

#include <KLocalizedString>

#include <QFontMetrics>
#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>

namespace
{
constexpr int Margin = 2; // pixels around a name
constexpr int Slack = 2; // pixels: a name that just fits would be shortened
constexpr int LeastPixels = 8; // of letters that can be read
constexpr int LeastLettersAcross = 6;
constexpr int MostLettersUpwards = 12;
} // namespace

VelDayNames::VelDayNames(const VelDaySource &source, QWidget *parent)
    : QWidget(parent)
    , m_source(source)
{
    velInstallAccessibility();
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void VelDayNames::updateData(QDate date)
{
    m_date = date;
    update();
    velAccessibleChanged(this);
}

int VelDayNames::columnWidth(int width) const
{
    return width / qMax(1, m_source.getVisibleCount());
}

bool VelDayNames::isAcross(int width) const
{
    const QFontMetrics metrics(VelApp::getApp(this)->look().entryFont);
    return columnWidth(width) >= metrics.averageCharWidth() * LeastLettersAcross;
}

/** The font of entries, or from bottom to top a smaller one where columns are narrow. */
QFont VelDayNames::textFont(int width) const
{
    QFont font = VelApp::getApp(this)->look().entryFont;
    const int room = columnWidth(width) - Margin;
    if (!isAcross(width) && QFontMetrics(font).ascent() > room)
        font.setPixelSize(qMax(LeastPixels, room));
    return font;
}

int VelDayNames::heightFor(int width) const
{
    const int count = m_source.getVisibleCount();
    if (count == 0 || columnWidth(width) < LeastPixels)
        return 0;
    const QFontMetrics metrics(textFont(width));
    if (isAcross(width))
        return metrics.height() + 2 * Margin;
    int longest = 0;
    for (int column = 0; column < count; ++column)
        longest = qMax(longest, metrics.horizontalAdvance(m_source.getColumnName(column)));
    return qMin(longest, metrics.averageCharWidth() * MostLettersUpwards) + Slack + 2 * Margin;
}

/** As wide as the column below it. */
QRect VelDayNames::columnRect(int column) const
{
    const int wide = columnWidth(width());
    return QStyle::visualRect(layoutDirection(), rect(), QRect(column * wide, 0, wide, height()));
}

void VelDayNames::paintEvent(QPaintEvent *)
{
    const VelLook &look = VelApp::getApp(this)->look();
    QPainter painter(this);
    painter.fillRect(rect(), look.dayOffHour);
    painter.fillRect(0, 0, 1, height(), look.grid());
    painter.setPen(VelLook::textOn(look.dayOffHour));
    if (m_source.getVisibleCount() > 0)
        painter.setFont(textFont(width()));
    for (int column = 0; column < m_source.getVisibleCount(); ++column) {
        const QRect rect = columnRect(column);
        painter.fillRect(rect.right(), 0, 1, height(), look.grid());
        paintName(painter, rect.adjusted(1, Margin, -1, -Margin), m_source.getColumnName(column));
    }
}

void VelDayNames::paintName(QPainter &painter, const QRect &rect, const QString &name) const
{
    const QFontMetrics metrics(painter.font());
    if (isAcross(width())) {
        painter.drawText(rect, Qt::AlignCenter, metrics.elidedText(name, Qt::ElideRight, rect.width()));
        return;
    }
    painter.save();
    painter.translate(rect.left(), rect.bottom());
    painter.rotate(-90);
    painter.drawText(QRect(0, 0, rect.height(), rect.width()),
                     Qt::AlignLeft | Qt::AlignVCenter | Qt::TextDontClip,
                     metrics.elidedText(name, Qt::ElideRight, rect.height()));
    painter.restore();
}

bool VelDayNames::event(QEvent *event)
{
    if (event->type() != QEvent::ToolTip)
        return QWidget::event(event);
    const auto *help = static_cast<QHelpEvent *>(event);
    for (int column = 0; column < m_source.getVisibleCount(); ++column) {
        const QRect rect = columnRect(column);
        if (rect.contains(help->pos()))
            QToolTip::showText(help->globalPos(), WShownText::plain(m_source.getColumnName(column)), this,
                               rect);
    }
    return true;
}

QString VelDayNames::accessibleText() const
{
    return i18nc("a day, of which the persons' columns follow", "%1, attendees",
                 VelEntryText::dayName(m_date));
}

int VelDayNames::accessibleCount() const
{
    return m_source.getVisibleCount();
}

VelAccessibleItem VelDayNames::accessibleItem(int index) const
{
    return {m_source.getColumnName(index), columnRect(index), QAccessible::ColumnHeader, false};
}
