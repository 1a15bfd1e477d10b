// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "views/veldayview.h"

#include "document/veldoc.h"
#include "hub/velapp.h"
#include "hub/vellook.h"
#include "model/velsettings.h"
#include "views/velcommonentry.h"
#include "views/veldayband.h"
#include "views/veldayheader.h"
#include "views/veldayhours.h"
#include "views/veldaynames.h"

#include <KLocalizedString>

#include <QContextMenuEvent>
#include <QFontMetrics>
#include <QHBoxLayout>
#include <QScrollArea>
#include <QScrollBar>
#include <QToolButton>

namespace
{
constexpr int LeastHeight = 300; // pixels
constexpr int LeastHourHeight = 34; // pixels
constexpr int HoursBeforeWork = 2;
constexpr int ScrollMargin = 10; // pixels
constexpr int MaximumBandLines = 8;
} // namespace

VelDayView::VelDayView(QWidget *parent, VelDay::Mode dayMode, const VelDaySource &source)
    : VelView(parent)
    , m_dayMode(dayMode)
    , m_source(source)
    , m_headerRow(new QWidget(this))
    , m_scrollView(new QScrollArea(this))
    , m_columnBox(new QWidget)
{
    setMinimumHeight(LeastHeight);
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(i18n("Days"));
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_headerRow);
    layout->addWidget(m_scrollView);
    buildHeaders();
    buildColumns();
    updateColors();
}

VelDayView::~VelDayView()
{
    for (VelDay *day : m_days)
        day->abandonDrag();
}

QToolButton *VelDayView::makeButton(const QString &icon)
{
    auto *button = new QToolButton(m_headerRow);
    button->setIcon(VelApp::getIcon(icon));
    button->setAutoRaise(true);
    button->setAutoRepeat(true);
    return button;
}

void VelDayView::buildHeaders()
{
    const bool isMirrored = layoutDirection() == Qt::RightToLeft;
    m_prevButton = makeButton(isMirrored ? QStringLiteral("1rightarrow") : QStringLiteral("1leftarrow"));
    m_nextButton = makeButton(isMirrored ? QStringLiteral("1leftarrow") : QStringLiteral("1rightarrow"));
    connect(m_prevButton, &QToolButton::clicked, this, &VelDayView::prevWanted);
    connect(m_nextButton, &QToolButton::clicked, this, &VelDayView::nextWanted);
    for (VelDayHeader *&header : m_headers) {
        header = new VelDayHeader(m_headerRow);
        connect(header, &VelDayHeader::dayWanted, this, &VelDayView::dayWanted);
    }
    for (VelDayBand *&band : m_bands) {
        band = new VelDayBand(this);
        band->setParent(m_headerRow);
        band->hide();
    }
    if (m_dayMode != VelDay::Planner)
        return;
    for (VelDayNames *&names : m_names)
        names = new VelDayNames(m_source, m_headerRow);
}

void VelDayView::buildColumns()
{
    m_hours = new VelDayHours(m_columnBox);
    // Known here already: the ruler and the columns look for the window when they are measured.
    m_scrollView->setWidget(m_columnBox);
    m_scrollView->setFrameShape(QFrame::NoFrame);
    m_scrollView->setFocusPolicy(Qt::NoFocus);
    m_scrollView->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_scrollView->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    auto *layout = new QHBoxLayout(m_columnBox);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_hours);
    for (VelDay *&day : m_days) {
        day = new VelDay(this, m_dayMode, m_source);
        layout->addWidget(day, 1);
        day->hide();
    }
    m_scrollView->viewport()->installEventFilter(this);
    connect(m_scrollView->verticalScrollBar(), &QScrollBar::valueChanged, this, [this] {
        finishInput();
        updateAll();
    });
}

int VelDayView::columnHeight() const
{
    // Larger fonts need taller hours, or nothing could be read in half of one.
    const int line = QFontMetrics(VelApp::getApp(this)->look().entryFont).height();
    return VelDayLayout::HoursPerDay * qMax(LeastHourHeight, line * 3 / 2);
}

void VelDayView::updateColors()
{
    for (VelDay *day : m_days)
        day->updateStyle();
    for (VelDayBand *band : m_bands)
        band->updateStyle();
    m_hours->updateGeometry();
    m_hours->update();
    layOut();
}

void VelDayView::setRange(QDate start, int days)
{
    finishInput();
    for (VelDay *day : m_days)
        day->abandonDrag();
    m_numDays = qBound(1, days, MaximumDays);
    for (int i = 0; i < MaximumDays; ++i) {
        VelDay *day = m_days[static_cast<std::size_t>(i)];
        VelDayHeader *header = m_headers[static_cast<std::size_t>(i)];
        if (i < m_numDays) {
            day->updateData(start.addDays(i));
            header->updateData(start.addDays(i));
        } else {
            releaseDay(static_cast<std::size_t>(i));
        }
        day->setVisible(i < m_numDays);
        header->setVisible(i < m_numDays);
        m_bands[static_cast<std::size_t>(i)]->setVisible(i < m_numDays && m_dayMode == VelDay::Calendar);
    }
    updateBands();
    layOut();
    if (!m_keepSelection)
        clearSelection();
    else if (hasSelection())
        updateAll();
    m_prevButton->setToolTip(m_numDays == 1 ? i18n("Previous day") : i18n("Previous week"));
    m_nextButton->setToolTip(m_numDays == 1 ? i18n("Next day") : i18n("Next week"));
}

void VelDayView::releaseDay(std::size_t index)
{
    m_days[index]->release();
    m_bands[index]->updateData(m_days[index]->date(), {}, 1);
}

void VelDayView::release()
{
    for (std::size_t i = 0; i < m_days.size(); ++i)
        releaseDay(i);
}

void VelDayView::updateView()
{
    for (int i = 0; i < m_numDays; ++i)
        m_days[static_cast<std::size_t>(i)]->updateData();
    updateBands();
}

void VelDayView::updateAll()
{
    for (int i = 0; i < m_numDays; ++i)
        m_days[static_cast<std::size_t>(i)]->update();
}

void VelDayView::updateNow()
{
    updateAll();
    for (VelDayHeader *header : m_headers)
        header->update();
}

void VelDayView::updateAllEntries(const VelEntry *entry)
{
    for (int i = 0; i < m_numDays; ++i) {
        m_days[static_cast<std::size_t>(i)]->updateAllEntries(entry);
        m_bands[static_cast<std::size_t>(i)]->updateAllEntries(entry);
    }
}

/** The bands share the entries of the columns below them. */
void VelDayView::updateBands()
{
    if (m_dayMode != VelDay::Calendar) {
        updateNames();
        return;
    }
    // A sixth of the height at most: the hours are what the view is for.
    const int lines = qBound(2, height() / (6 * m_bands.front()->lineHeight()), MaximumBandLines);
    for (int i = 0; i < m_numDays; ++i) {
        const VelDay *day = m_days[static_cast<std::size_t>(i)];
        m_bands[static_cast<std::size_t>(i)]->updateData(day->date(), day->list(), lines);
    }
    placeHeaders();
}

void VelDayView::updateNames()
{
    for (int i = 0; i < MaximumDays; ++i) {
        VelDayNames *names = m_names[static_cast<std::size_t>(i)];
        names->setVisible(i < m_numDays);
        names->updateData(m_days[static_cast<std::size_t>(i)]->date());
    }
    placeHeaders();
}

VelCommonEntry &VelDayView::commonEntry()
{
    if (!m_commonEntry)
        m_commonEntry = new VelCommonEntry(this);
    return *m_commonEntry;
}

VelDay *VelDayView::dayOf(QDate date) const
{
    for (int i = 0; i < m_numDays; ++i) {
        if (m_days[static_cast<std::size_t>(i)]->date() == date)
            return m_days[static_cast<std::size_t>(i)];
    }
    return nullptr;
}

void VelDayView::changeTimes(const VelEntry &entry, const VelDayDrag::Times &times)
{
    const QDate first = qMin(entry.getStart(), times.start).date();
    const QDate last = qMax(entry.getEnd(), times.end).date();
    document()->changeEntry(entry.localid, [&times](VelEntry &changed) {
        changed.setStart(times.start);
        changed.setEnd(times.end);
    });
    document()->slotUpdateAllViews(this);
    for (int i = 0; i < m_numDays; ++i) {
        VelDay *day = m_days[static_cast<std::size_t>(i)];
        if (day->date() >= first && day->date() <= last)
            day->updateData();
    }
    updateBands();
}

void VelDayView::offerNew()
{
    if (!hasSelection())
        moveSlot(0, 0, false);
    VelDay *day = dayOf(m_selection.start().date());
    if (!day)
        return;
    const QRect row = day->rowRect(m_selection.start().time());
    m_scrollView->ensureVisible(day->x(), day->y() + row.center().y(), 0, row.height());
    offerNewEntry(QRect(day->mapTo(this, row.topLeft()), row.size()));
}

void VelDayView::ensureVisible(const VelDay *day, QPoint point)
{
    QScrollBar *bar = m_scrollView->verticalScrollBar();
    const int y = day->mapTo(m_scrollView->viewport(), point).y();
    const int margin = ScrollMargin + bar->singleStep();
    if (y > m_scrollView->viewport()->height() - margin)
        bar->setValue(bar->value() + bar->singleStep());
    else if (y < margin)
        bar->setValue(bar->value() - bar->singleStep());
}

void VelDayView::showEvent(QShowEvent *event)
{
    VelView::showEvent(event);
    for (QToolButton *button : {m_prevButton, m_nextButton})
        button->setMaximumWidth(button->sizeHint().width());
    layOut();
    scrollToWork();
}

/** Once: where the user scrolls to later stays. */
void VelDayView::scrollToWork()
{
    if (m_hasScrolledToWork)
        return;
    m_hasScrolledToWork = true;
    const int hours = VelApp::getSettings(this)->workdayBegin.hour() - HoursBeforeWork;
    if (hours > 0)
        m_scrollView->verticalScrollBar()->setValue(columnHeight() / VelDayLayout::HoursPerDay * hours);
}

void VelDayView::resizeEvent(QResizeEvent *event)
{
    VelView::resizeEvent(event);
    updateBands();
    layOut();
}

bool VelDayView::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Resize)
        layOut();
    return VelView::eventFilter(watched, event);
}

void VelDayView::layOut()
{
    const int width = m_scrollView->viewport()->width();
    if (width > 0)
        m_columnBox->resize(width, columnHeight());
    m_scrollView->verticalScrollBar()->setSingleStep(columnHeight() / VelDayLayout::HoursPerDay / 2);
    m_columnBox->layout()->activate();
    placeHeaders();
}

/** How much of the last column the next button covers, which is wider than the scroll bar below it. */
int VelDayView::getLastColumnSize() const
{
    const int bar =
        m_scrollView->verticalScrollBar()->isVisible() ? m_scrollView->verticalScrollBar()->width() : 0;
    return qMax(0, m_nextButton->sizeHint().width() - bar);
}

/** Pixels below the headings that the bands take, or the names of persons. */
int VelDayView::stripHeight() const
{
    int lines = 0;
    int names = 0;
    for (std::size_t i = 0; i < static_cast<std::size_t>(m_numDays); ++i) {
        lines = qMax(lines, m_bands[i]->lineCount());
        if (m_names[i])
            names = qMax(names, m_names[i]->heightFor(m_days[i]->width()));
    }
    return lines == 0 ? names : lines * m_bands.front()->lineHeight() + 1;
}

/** Each heading over its column, with the band below it; the last heading makes room for the button. */
void VelDayView::placeHeaders()
{
    int height = 0;
    for (int i = 0; i < m_numDays; ++i)
        height = qMax(height, m_headers[static_cast<std::size_t>(i)]->sizeHint().height());
    const int bandHeight = stripHeight();
    m_headerRow->setFixedHeight(height + bandHeight);
    const bool isMirrored = layoutDirection() == Qt::RightToLeft;
    const int taken = getLastColumnSize() + 2;
    bool isLong = true;
    for (int i = 0; i < m_numDays; ++i) {
        const VelDay *day = m_days[static_cast<std::size_t>(i)];
        QRect rect(day->x() + m_scrollView->viewport()->x(), 0, day->width(), height);
        m_bands[static_cast<std::size_t>(i)]->setGeometry(rect.left(), height, rect.width(), bandHeight);
        if (VelDayNames *names = m_names[static_cast<std::size_t>(i)])
            names->setGeometry(rect.left(), height, rect.width(), bandHeight);
        if (i == m_numDays - 1)
            rect.adjust(isMirrored ? taken : 0, 0, isMirrored ? 0 : -taken, 0);
        m_headers[static_cast<std::size_t>(i)]->setGeometry(rect);
        isLong = isLong && m_headers[static_cast<std::size_t>(i)]->isLongFitting(rect.width());
    }
    for (VelDayHeader *header : m_headers)
        header->setShort(!isLong);
    const QSize next = m_nextButton->sizeHint();
    const QSize prev(qMin(m_hours->width(), m_prevButton->sizeHint().width()), next.height());
    const int top = (height - next.height()) / 2;
    m_prevButton->setGeometry(QRect(QPoint(isMirrored ? width() - prev.width() : 0, top), prev));
    m_nextButton->setGeometry(QRect(QPoint(isMirrored ? 0 : width() - next.width(), top), next));
}
