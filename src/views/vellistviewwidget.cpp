// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "views/vellistviewwidget.h"

#include "hub/velapp.h"
#include "widgets/wdatetimewidget.h"

#include <KLocalizedString>

#include <QDateTime>
#include <QHBoxLayout>
#include <QLabel>
#include <QSignalBlocker>

VelListViewWidget::VelListViewWidget(QDate start, QWidget *parent)
    : QWidget(parent)
    , m_start(new WDateTimeWidget(WDateTimeWidget::Kind::Date, this))
    , m_end(new WDateTimeWidget(WDateTimeWidget::Kind::Date, this))
{
    auto *layout = new QHBoxLayout(this);
    const int margin = fontMetrics().averageCharWidth();
    layout->setContentsMargins(margin, margin / 2, margin, 0);
    auto *startLabel = new QLabel(i18n("Filter start date:"), this);
    startLabel->setBuddy(m_start->getBuddy());
    auto *endLabel = new QLabel(i18n("End date:"), this);
    endLabel->setBuddy(m_end->getBuddy());
    for (QWidget *widget : {static_cast<QWidget *>(startLabel), static_cast<QWidget *>(m_start),
                            static_cast<QWidget *>(endLabel), static_cast<QWidget *>(m_end)})
        layout->addWidget(widget);
    layout->addStretch();
    m_start->setWhatsThis(i18n("The list shows the entries from this date on. Moving it keeps the end date, "
                               "unless that would lie before it."));
    m_end->setWhatsThis(i18n("The list shows the entries up to this date."));

    if (const VelApp *app = VelApp::getApp(parent)) {
        for (WDateTimeWidget *input : {m_start, m_end})
            input->setClock([app] { return app->now().date(); });
    }
    m_start->setDate(start);
    m_end->setDate(start.addDays(DefaultSpan));
    connect(m_start, &WDateTimeWidget::dateChanged, this, &VelListViewWidget::slotStartChanged);
    connect(m_end, &WDateTimeWidget::dateChanged, this, &VelListViewWidget::slotEndChanged);
}

QDate VelListViewWidget::getStart() const
{
    return m_start->getDate();
}

QDate VelListViewWidget::getEnd() const
{
    return m_end->getDate();
}

void VelListViewWidget::setFilter(QDate date)
{
    const QSignalBlocker blockStart(m_start);
    const QSignalBlocker blockEnd(m_end);
    const qint64 span = getStart().daysTo(getEnd());
    m_start->setDate(date);
    m_end->setDate(date.addDays(span));
}

void VelListViewWidget::slotStartChanged()
{
    if (getEnd() < getStart()) {
        const QSignalBlocker block(m_end);
        m_end->moveTo(m_start->getDateTime());
    }
    report();
}

void VelListViewWidget::slotEndChanged()
{
    if (getEnd() < getStart()) {
        const QSignalBlocker block(m_start);
        m_start->moveTo(m_end->getDateTime());
    }
    report();
}

void VelListViewWidget::report()
{
    Q_EMIT dateChanged(m_start->getDateTime(), m_end->getDateTime());
}
