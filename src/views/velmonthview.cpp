// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "views/velmonthview.h"

#include "document/veldoc.h"
#include "hub/velapp.h"
#include "hub/vellook.h"
#include "model/velsettings.h"
#include "views/veldocsource.h"
#include "views/velmonthprintout.h"

#include <KLocalizedString>

#include <QPaintEvent>
#include <QPainter>
#include <QStyle>
#include <QToolButton>

#include <algorithm>
#include <utility>

namespace
{
constexpr int LeastSize = 200; // pixels
constexpr QSize ButtonSize(20, 20);
constexpr qint64 SelectionSeconds = 7200;
} // namespace

VelMonthView::VelMonthView(QWidget *parent)
    : VelView(parent)
    , m_layout(VelApp::getApp(this)->now().date())
    , m_prevButton(addButton(i18n("Previous month"), &VelMonthView::prevWanted))
    , m_nextButton(addButton(i18n("Next month"), &VelMonthView::nextWanted))
{
    velInstallAccessibility();
    setMinimumSize(LeastSize, LeastSize);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAcceptDrops(true);
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    arrange();
}

/** Page Up and Page Down do the same: the buttons need not stand in the way of the Tab key. */
QToolButton *VelMonthView::addButton(const QString &toolTip, void (VelMonthView::*wanted)())
{
    auto *button = new QToolButton(this);
    button->setToolTip(toolTip);
    button->setAccessibleName(toolTip);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::NoFocus);
    button->setCursor(Qt::ArrowCursor);
    connect(button, &QToolButton::clicked, this, wanted);
    return button;
}

void VelMonthView::setMonth(QDate date)
{
    if (!date.isValid())
        return;
    if (isTyping())
        setFocus(Qt::OtherFocusReason); // enters the new event: its line would stand over another day
    clearSelection();
    m_layout = VelMonthLayout(date);
    updateView();
}

void VelMonthView::updateView()
{
    arrange();
    const VelEntry *selected = getSelectedEntry();
    // What is not here any more is not selected either.
    if (!selected || selected->isDeleted() || selected->getStart().date() > m_layout.endDate()
        || std::max(selected->getStart(), selected->getEnd()).date() < startDate())
        clearSelectedEntry(false);
    velAccessibleChanged(this);
}

/** Fits the grid to the view's size and fonts. Its content is made anew when it is next needed. */
void VelMonthView::arrange()
{
    m_layout.setSize(size(), VelMonthPainter::headingHeight(VelApp::getApp(this)->look()));
    dropContent();
    const bool isMirrored = layoutDirection() == Qt::RightToLeft;
    m_prevButton->setIcon(
        VelApp::getIcon(isMirrored ? QStringLiteral("1rightarrow") : QStringLiteral("1leftarrow")));
    m_nextButton->setIcon(
        VelApp::getIcon(isMirrored ? QStringLiteral("1leftarrow") : QStringLiteral("1rightarrow")));
    m_prevButton->setGeometry(mirrored({QPoint(0, 0), ButtonSize}));
    m_nextButton->setGeometry(mirrored({QPoint(width() - ButtonSize.width() + 1, 0), ButtonSize}));
    update();
    const int lines = m_layout.linesPerCell(VelMonthPainter::lineHeight(VelApp::getApp(this)->look()));
    if (std::exchange(m_linesPerCell, lines) != lines)
        velAccessibleChanged(this);
}

void VelMonthView::dropContent()
{
    m_content = Content();
    m_isFilled = false;
}

const VelMonthView::Content &VelMonthView::content() const
{
    if (!m_isFilled) {
        m_content = makeContent();
        m_isFilled = true;
    }
    return m_content;
}

VelMonthView::Content VelMonthView::makeContent() const
{
    const int lineHeight = VelMonthPainter::lineHeight(VelApp::getApp(this)->look());
    Content content;
    content.lines = VelMonthEntries(document()->getEntries(startDate(), 0, true, m_layout.endDate()),
                                    m_layout, m_layout.linesPerCell(lineHeight));
    for (int day = 0; day < m_layout.dayCount(); ++day)
        content.cells.push_back(cellOf(startDate().addDays(day), content.lines));
    content.entries.reserve(content.lines.lines().size());
    for (const VelMonthEntries::Line &line : content.lines.lines())
        content.entries.emplace_back(line.ref, line.date,
                                     mirrored(m_layout.lineRect(line.date, line.line, lineHeight)));
    return content;
}

VelMonthCell VelMonthView::cellOf(QDate date, const VelMonthEntries &lines) const
{
    const VelLook &look = VelApp::getApp(this)->look();
    VelMonthCell cell;
    cell.date = date;
    cell.rect = getRect(date);
    cell.count = lines.count(date);
    cell.hidden = lines.hidden(date);
    cell.isInMonth = m_layout.isInMonth(date);
    cell.background = entryBackground(date);
    if (cell.hidden > 0) {
        VelMonthPainter::placeMore(cell, m_layout.lineRect(date, 0, VelMonthPainter::lineHeight(look)), look);
        cell.more = mirrored(cell.more);
    }
    return cell;
}

QRect VelMonthView::mirrored(const QRect &rect) const
{
    return QStyle::visualRect(layoutDirection(), this->rect(), rect);
}

QDate VelMonthView::getDate(const QPoint &point) const
{
    return m_layout.getDate(QStyle::visualPos(layoutDirection(), rect(), point));
}

QRect VelMonthView::getRect(int row, int column) const
{
    return mirrored(m_layout.getRect(row, column));
}

QRect VelMonthView::getRect(QDate date) const
{
    return mirrored(m_layout.getRect(date));
}

QRect VelMonthView::freeLine(QDate date) const
{
    const int lineHeight = VelMonthPainter::lineHeight(VelApp::getApp(this)->look());
    const int fitting = qMax(1, m_layout.linesPerCell(lineHeight));
    return mirrored(m_layout.lineRect(date, qMin(content().lines.shown(date) + 1, fitting), lineHeight));
}

QColor VelMonthView::entryBackground(QDate date) const
{
    const VelLook &look = VelApp::getApp(this)->look();
    return m_layout.isInMonth(date) ? look.dayHour : look.dayOffHour;
}

void VelMonthView::updateAllEntries(const VelEntry *entry)
{
    if (!m_isFilled)
        return; // all of it will be painted anyway
    for (const VelMonthEntry &line : m_content.entries) {
        if (line.isOf(entry))
            update(line.rect());
    }
}

void VelMonthView::clearSelection()
{
    if (m_selectedDay.isValid())
        update(getRect(m_selectedDay));
    m_selectedDay = QDate();
}

VelDateTime VelMonthView::getSelectionStart() const
{
    return hasSelection() ? VelDateTime(m_selectedDay, VelApp::getSettings(this)->workdayBegin)
                          : VelDateTime();
}

VelDateTime VelMonthView::getSelectionEnd() const
{
    return getSelectionStart().addSecs(SelectionSeconds);
}

void VelMonthView::paintEvent(QPaintEvent *event)
{
    const VelApp *app = VelApp::getApp(this);
    const VelMonthScene scene{.look = app->look(),
                              .settings = *app->settings(),
                              .doc = *document(),
                              .cells = cells(),
                              .entries = entries(),
                              .preview = m_preview,
                              .bounds = rect(),
                              .direction = layoutDirection(),
                              .headingHeight = VelMonthPainter::headingHeight(app->look()),
                              .month = month(),
                              .today = app->now().date(),
                              .selectedDay = m_selectedDay,
                              .selectedEntry = getSelectedEntry(),
                              .hasFocus = hasFocus()};
    QPainter painter(this);
    VelMonthPainter(painter, scene).paint(event->rect());
}

void VelMonthView::resizeEvent(QResizeEvent *)
{
    arrange();
}

/** A view that is hidden may not hear of changes, and its entries may go meanwhile. */
void VelMonthView::hideEvent(QHideEvent *event)
{
    if (!event->spontaneous())
        dropContent();
}

void VelMonthView::changeEvent(QEvent *event)
{
    VelView::changeEvent(event);
    const QEvent::Type type = event->type();
    if (type == QEvent::FontChange || type == QEvent::StyleChange || type == QEvent::LayoutDirectionChange
        || type == QEvent::PaletteChange || type == QEvent::LocaleChange)
        arrange();
}

std::unique_ptr<VelPrintout> VelMonthView::makePrintout() const
{
    return std::make_unique<VelMonthPrintout>(std::make_unique<VelDocSource>(*document()), m_layout.month());
}
