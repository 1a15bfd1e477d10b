// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "views/velmainview.h"

#include "document/veldoc.h"
#include "hub/velapp.h"
#include "views/vellistview.h"

#include <KConfig>
#include <KConfigGroup>

#include <QHBoxLayout>
#include <QSplitter>

namespace
{
KConfigGroup generalOptions(const KConfig *config)
{
    return config->group(QStringLiteral("General Options"));
}
} // namespace

VelMainView::VelMainView(QWidget *parent, const KConfig *config, const QList<int> &splitter1,
                         const QList<int> &splitter2)
    : QWidget(parent)
    , m_splitter1(new QSplitter(Qt::Horizontal, this))
    , m_splitter2(new QSplitter(Qt::Vertical, m_splitter1))
    , m_listView(new VelListView(m_splitter1, VelListView::Kind::Entries, VelApp::getApp(this)->now().date()))
    , m_smallList(new VelListView(m_splitter2, VelListView::Kind::Tasks, VelApp::getApp(this)->now().date()))
    , m_date(VelApp::getApp(this)->now().date())
{
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_splitter1);
    m_listView->readConfig(config, QStringLiteral("ListView"));
    m_smallList->readConfig(config, QStringLiteral("SmallView"));
    buildSplitters(splitter1, splitter2);

    VelDoc *doc = VelApp::getDocument(this);
    doc->addView(m_smallList);
    m_smallList->updateView();
    for (VelView *view : {static_cast<VelView *>(m_listView), static_cast<VelView *>(m_smallList)})
        connect(view, &VelView::setDateInternal, this, &VelMainView::setDate);
    // The next calendar has entries with the same ids, and they are others.
    connect(doc, &VelDoc::contentsReplaced, this, [this] { getCurrentView()->clearSelectedEntry(false); });

    const KConfigGroup group = generalOptions(config);
    setMainView(group.readEntry("MainViewType", int(DayView)),
                group.readEntry("MainViewSize", int(WorkWeek)));
}

VelMainView::~VelMainView()
{
    if (VelDoc *doc = VelApp::getDocument(this)) {
        doc->removeView(m_listView);
        doc->removeView(m_smallList);
    }
}

void VelMainView::buildSplitters(const QList<int> &splitter1, const QList<int> &splitter2)
{
    m_splitter1->addWidget(m_listView);
    m_splitter1->addWidget(m_splitter2);
    m_splitter1->setStretchFactor(0, 1);
    m_splitter1->setStretchFactor(1, 0);
    m_splitter2->addWidget(m_smallList);
    for (QSplitter *splitter : {m_splitter1, m_splitter2}) {
        splitter->setOpaqueResize(true);
        splitter->setChildrenCollapsible(false);
    }
    if (splitter1.size() == m_splitter1->count())
        m_splitter1->setSizes(splitter1);
    else
        m_splitter1->setSizes({fontMetrics().averageCharWidth() * 70, fontMetrics().averageCharWidth() * 42});
    if (splitter2.size() == m_splitter2->count())
        m_splitter2->setSizes(splitter2);
}

VelView *VelMainView::viewOf(int type) const
{
    return type == ListView ? m_listView : nullptr;
}

VelView *VelMainView::getCurrentView() const
{
    return viewOf(m_viewType);
}

void VelMainView::setMainView(int type)
{
    setMainView(type, m_viewSize);
}

void VelMainView::setMainView(int type, int size)
{
    m_wantedType = type >= DayView && type <= ListView ? type : int(ListView);
    const int shownType = hasView(type) ? type : int(ListView);
    setUpdatesEnabled(false);
    m_viewSize = size == 1 || size == 7 ? size : int(WorkWeek);
    if (shownType != m_viewType)
        showOnly(shownType);
    getCurrentView()->clearSelection();
    slotDateChanged(m_date);
    VelApp::getApp(this)->setCutCopy(nullptr, false);
    setUpdatesEnabled(true);
}

void VelMainView::showOnly(int type)
{
    VelDoc *doc = VelApp::getDocument(this);
    for (const int each : {int(DayView), int(MonthView), int(ListView)}) {
        VelView *view = viewOf(each);
        if (!view)
            continue;
        view->setVisible(each == type);
        if (each == type)
            doc->addView(view);
        else
            doc->removeView(view);
    }
    m_viewType = type;
}

void VelMainView::slotDateChanged(QDate date)
{
    getCurrentView()->clearSelectedEntry(false);
    if (m_viewType == ListView)
        m_listView->setFilter(date);
}

void VelMainView::setDate(QDate date)
{
    if (!date.isValid())
        return;
    m_date = date;
    slotDateChanged(date);
}

void VelMainView::move(int steps)
{
    QDate date = m_date;
    if (m_viewType == DayView)
        date = date.addDays(qint64(steps) * (m_viewSize == WorkWeek ? 7 : m_viewSize));
    else if (m_viewType == MonthView)
        date = date.addMonths(steps);
    setDate(date);
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
    group.writeEntry("MainViewType", m_wantedType);
    group.writeEntry("MainViewSize", m_viewSize);
    m_listView->writeConfig(config, QStringLiteral("ListView"));
    m_smallList->writeConfig(config, QStringLiteral("SmallView"));
}
