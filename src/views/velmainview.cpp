// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "views/velmainview.h"

#include "document/veldoc.h"
#include "hub/velapp.h"
#include "model/velsettings.h"
#include "views/veldaypicker.h"
#include "views/veldayview.h"
#include "views/veldocsource.h"
#include "views/vellistview.h"
#include "views/velmonthview.h"

#include <KConfig>
#include <KConfigGroup>

#include <QApplication>
#include <QHBoxLayout>
#include <QLocale>
#include <QSplitter>

namespace
{
constexpr int DaysPerWeek = 7;
constexpr int MsecsPerMinute = 60000;

KConfigGroup generalOptions(const KConfig *config)
{
    return config->group(QStringLiteral("General Options"));
}

bool isMondayFirst()
{
    return QLocale().firstDayOfWeek() == Qt::Monday;
}

/** 1 = Monday to 7 = Sunday, but Sunday is 0 where it begins the week. */
int weekdayNumber(int weekday)
{
    return weekday == Qt::Sunday && !isMondayFirst() ? 0 : weekday;
}
} // namespace

VelMainView::VelMainView(QWidget *parent, const KConfig *config, const QList<int> &splitter1,
                         const QList<int> &splitter2)
    : QWidget(parent)
    , m_source(std::make_unique<VelDocSource>(*VelApp::getDocument(this)))
    , m_splitter1(new QSplitter(Qt::Horizontal, this))
    , m_splitter2(new QSplitter(Qt::Vertical, m_splitter1))
    , m_dayView(new VelDayView(m_splitter1, VelDay::Calendar, *m_source))
    , m_monthView(new VelMonthView(m_splitter1))
    , m_listView(new VelListView(m_splitter1, VelListView::Kind::Entries, VelApp::getApp(this)->now().date()))
    , m_dayPicker(new VelDayPicker(m_splitter2))
    , m_smallList(new VelListView(m_splitter2, VelListView::Kind::Tasks, VelApp::getApp(this)->now().date()))
    , m_today(VelApp::getApp(this)->now().date())
{
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_splitter1);
    m_listView->readConfig(config, QStringLiteral("ListView"));
    m_smallList->readConfig(config, QStringLiteral("SmallView"));
    buildSplitters(splitter1, splitter2);

    VelApp::getDocument(this)->addView(m_smallList);
    m_smallList->updateView();
    connectViews();
    m_dayPicker->updateColors();
    m_dayPicker->setDate(m_today);
    const KConfigGroup group = generalOptions(config);
    setMainView(group.readEntry("MainViewType", int(DayView)),
                group.readEntry("MainViewSize", int(WorkWeek)));
}

VelMainView::~VelMainView()
{
    disconnect(qApp, nullptr, this,
               nullptr); // the children go later, and the keyboard moves from one to the next
    if (VelDoc *doc = VelApp::getDocument(this)) {
        for (VelView *view : {viewOf(DayView), viewOf(MonthView), viewOf(ListView)})
            doc->removeView(view);
        doc->removeView(m_smallList);
    }
}

void VelMainView::connectViews()
{
    for (VelView *view :
         {viewOf(DayView), viewOf(MonthView), viewOf(ListView), static_cast<VelView *>(m_smallList)})
        connect(view, &VelView::setDateInternal, this, &VelMainView::setDate);
    connect(m_dayView, &VelDayView::prevWanted, this, &VelMainView::prev);
    connect(m_dayView, &VelDayView::nextWanted, this, &VelMainView::next);
    connect(m_monthView, &VelMonthView::prevWanted, this, &VelMainView::prev);
    connect(m_monthView, &VelMonthView::nextWanted, this, &VelMainView::next);
    const auto showDay = [this](QDate date) {
        setMainView(DayView, 1);
        setDate(date);
    };
    connect(m_dayView, &VelDayView::dayWanted, this, showDay);
    connect(m_monthView, &VelMonthView::dayWanted, this, showDay);
    connect(m_dayPicker, &VelDayPicker::dateChanged, this, &VelMainView::slotDateChanged);
    // The next calendar has entries with the same ids, and they are others.
    connect(VelApp::getDocument(this), &VelDoc::contentsReplaced, this, [this] {
        getCurrentView()->clearSelectedEntry(false);
        m_smallList->clearSelectedEntry(false);
        m_dayView->release();
    });
    connect(qApp, &QApplication::focusChanged, this, &VelMainView::slotFocusChanged);
    m_minuteTimer.setSingleShot(true);
    connect(&m_minuteTimer, &QTimer::timeout, this, &VelMainView::tick);
    tick();
}

void VelMainView::buildSplitters(const QList<int> &splitter1, const QList<int> &splitter2)
{
    for (VelView *view : {viewOf(DayView), viewOf(MonthView), viewOf(ListView)})
        m_splitter1->addWidget(view);
    m_splitter1->addWidget(m_splitter2);
    m_splitter2->addWidget(m_dayPicker);
    m_splitter2->addWidget(m_smallList);
    for (int i = 0; i < m_splitter1->count(); ++i)
        m_splitter1->setStretchFactor(i, i < m_splitter1->count() - 1 ? 1 : 0);
    m_splitter2->setStretchFactor(0, 0);
    m_splitter2->setStretchFactor(1, 1);
    for (QSplitter *splitter : {m_splitter1, m_splitter2}) {
        splitter->setOpaqueResize(true);
        splitter->setChildrenCollapsible(false);
    }
    const int side = qMax(m_dayPicker->sizeHint().width(), fontMetrics().averageCharWidth() * 38);
    if (splitter1.size() == m_splitter1->count())
        m_splitter1->setSizes(splitter1);
    else
        m_splitter1->setSizes({side * 3, side * 3, side * 3, side});
    if (splitter2.size() == m_splitter2->count())
        m_splitter2->setSizes(splitter2);
}

VelView *VelMainView::viewOf(int type) const
{
    switch (type) {
    case DayView:
        return m_dayView;
    case MonthView:
        return m_monthView;
    case ListView:
        return m_listView;
    default:
        return nullptr;
    }
}

VelView *VelMainView::getCurrentView() const
{
    return viewOf(m_viewType);
}

VelView *VelMainView::getCommandView() const
{
    return m_isInTasks ? m_smallList : getCurrentView();
}

/** Menus, bars and other windows take the keyboard only to give it back. */
void VelMainView::slotFocusChanged(QWidget *, QWidget *now)
{
    if (!now || !isAncestorOf(now) || m_isInTasks == m_smallList->isAncestorOf(now))
        return;
    m_isInTasks = !m_isInTasks;
    Q_EMIT commandViewChanged();
}

bool VelMainView::hasInput() const
{
    return getCurrentView()->hasInput();
}

void VelMainView::finishInput()
{
    getCurrentView()->finishInput();
}

void VelMainView::setMainView(int type)
{
    setMainView(type, m_viewSize);
}

void VelMainView::setMainView(int type, int size)
{
    setUpdatesEnabled(false);
    m_viewSize = size == 1 || size == DaysPerWeek ? size : int(WorkWeek);
    const int shownType = viewOf(type) ? type : int(DayView);
    if (shownType != m_viewType)
        showOnly(shownType);
    getCurrentView()->clearSelection();
    slotDateChanged(getDate());
    VelApp::getApp(this)->setCutCopy(nullptr, false);
    setUpdatesEnabled(true);
}

void VelMainView::showOnly(int type)
{
    VelDoc *doc = VelApp::getDocument(this);
    const bool hadFocus = m_viewType != NoView && getCurrentView()->isAncestorOf(focusWidget());
    m_viewType = type;
    for (const int each : {int(DayView), int(MonthView), int(ListView)}) {
        VelView *view = viewOf(each);
        view->setVisible(each == type);
        if (each == type)
            doc->addView(view);
        else
            doc->removeView(view);
    }
    if (type != DayView)
        m_dayView->release();
    if (hadFocus || !focusWidget())
        getCurrentView()->setFocus(Qt::OtherFocusReason);
}

QDate VelMainView::weekStart(QDate date)
{
    return date.addDays(isMondayFirst() ? Qt::Monday - date.dayOfWeek() : -weekdayNumber(date.dayOfWeek()));
}

int VelMainView::getWorkWeek(const VelSettings &settings, QDate &date)
{
    const int first = settings.getFirstWorkingDay();
    date = date.addDays(weekdayNumber(first) - weekdayNumber(date.dayOfWeek()));
    return settings.getLastWorkingDay() - first + 1;
}

void VelMainView::slotDateChanged(QDate date)
{
    getCurrentView()->clearSelectedEntry(false);
    int days = 0;
    if (m_viewType == MonthView) {
        m_monthView->setMonth(date);
    } else if (m_viewType == ListView) {
        m_listView->setFilter(date);
    } else {
        days = m_viewSize;
        if (m_viewSize == WorkWeek)
            days = getWorkWeek(*VelApp::getSettings(this), date);
        else if (m_viewSize == DaysPerWeek)
            date = weekStart(date);
        m_dayView->setRange(date, days);
    }
    m_dayPicker->setHighlight(date, days);
}

QDate VelMainView::getDate() const
{
    return m_dayPicker->getDate();
}

void VelMainView::setDate(QDate date)
{
    if (!VelDateTime::isSupported(date))
        return;
    m_dayPicker->setDate(date);
    slotDateChanged(date);
}

void VelMainView::move(int steps)
{
    QDate date = getDate();
    if (m_viewType == DayView)
        date = date.addDays(qint64(steps) * (m_viewSize == WorkWeek ? DaysPerWeek : m_viewSize));
    else if (m_viewType == MonthView)
        date = date.addMonths(steps);
    setDate(date);
}

/** Each minute: moves the line that shows the time, and at midnight what marks today. */
void VelMainView::tick()
{
    const VelDateTime now = VelApp::getApp(this)->now();
    if (m_viewType == DayView)
        m_dayView->updateNow();
    if (now.date() != m_today) {
        m_today = now.date();
        m_dayPicker->updateToday();
        m_monthView->update();
    }
    m_minuteTimer.start(MsecsPerMinute - now.time().msecsSinceStartOfDay() % MsecsPerMinute);
}

bool VelMainView::event(QEvent *event)
{
    // Before it is first shown, when fonts and style are known.
    if (event->type() == QEvent::Polish && (m_viewType == DayView || m_viewType == MonthView))
        setMainView(m_viewType, m_viewSize);
    return QWidget::event(event);
}

void VelMainView::updateColors()
{
    m_dayPicker->updateColors();
    m_dayView->updateColors();
    m_monthView->updateView();
}

QList<int> VelMainView::getSplitter1Sizes() const
{
    return m_splitter1->sizes();
}

QList<int> VelMainView::getSplitter2Sizes() const
{
    return m_splitter2->sizes();
}

void VelMainView::writeConfig(KConfig *config) const
{
    KConfigGroup group = config->group(QStringLiteral("General Options"));
    group.writeEntry("MainViewType", m_viewType);
    group.writeEntry("MainViewSize", m_viewSize);
    m_listView->writeConfig(config, QStringLiteral("ListView"));
    m_smallList->writeConfig(config, QStringLiteral("SmallView"));
}
