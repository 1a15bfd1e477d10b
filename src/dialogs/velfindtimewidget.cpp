// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogs/velfindtimewidget.h"

#include "hub/velapp.h"
#include "model/velsettings.h"
#include "widgets/wdatetimewidget.h"

#include <KLocalizedString>

#include <QAccessible>
#include <QCheckBox>
#include <QComboBox>
#include <QFrame>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpinBox>

using Kind = WDateTimeWidget::Kind;
using Unit = VelFreeTimeSearch::Unit;

namespace
{
constexpr int MaximumLength = 99;
constexpr int SecondsPerHour = 3600;
constexpr int HoursPerDay = 24;

void explainAs(QWidget *widget, const QString &text)
{
    widget->setToolTip(text);
    widget->setWhatsThis(text);
}

/** The label stands for its input on a screen reader, too. */
QLabel *labelOf(QWidget *input, const QString &text)
{
    auto *label = new QLabel(text, input->parentWidget());
    label->setBuddy(input->focusProxy() ? input->focusProxy() : input); // it passes over what leads on
    return label;
}
} // namespace

VelFindTimeWidget::VelFindTimeWidget(VelFreeTimeSearch::Source &source, const VelEntry &entry,
                                     QWidget *parent)
    : QWidget(parent)
    , m_search(source)
    , m_length(new QSpinBox(this))
    , m_unit(new QComboBox(this))
    , m_begin(new WDateTimeWidget(Kind::Time, this))
    , m_end(new WDateTimeWidget(Kind::Time, this))
    , m_from(new WDateTimeWidget(Kind::Date, this))
    , m_workDays(new QCheckBox(i18n("Working days only"), this))
    , m_find(new QPushButton(i18n("&Find next"), this))
    , m_proposedStart(new WDateTimeWidget(Kind::DateTime, this))
    , m_proposedEnd(new WDateTimeWidget(Kind::DateTime, this))
    , m_status(new QLabel(this))
    , m_busy(new QLabel(this))
{
    makeInputs();
    makeLayout();
    explain();
    setEntry(entry);
    connect(m_find, &QPushButton::clicked, this, &VelFindTimeWidget::slotFind);
    connect(m_workDays, &QCheckBox::clicked, this, &VelFindTimeWidget::workDaysClicked);
    for (const WDateTimeWidget *input : {m_proposedStart, m_proposedEnd})
        connect(input, &WDateTimeWidget::dateChanged, this, &VelFindTimeWidget::proposalChanged);
}

void VelFindTimeWidget::makeInputs()
{
    const VelSettings &settings = *VelApp::getSettings(this);
    m_length->setRange(0, MaximumLength);
    m_unit->addItems({i18n("hour(s)"), i18n("day(s)")});
    m_unit->setAccessibleName(i18n("Unit of the length"));
    for (WDateTimeWidget *input : {m_from, m_proposedStart, m_proposedEnd})
        input->setClock([this] { return VelApp::getApp(this)->now().date(); });
    m_begin->setTime(settings.workdayBegin);
    m_end->setTime(settings.workdayEnd);
    m_workDays->setChecked(true);
    m_status->setTextFormat(Qt::PlainText);
    m_status->setAlignment(Qt::AlignCenter);
    m_status->setWordWrap(true);
    m_status->setObjectName(QStringLiteral("status"));
    m_busy->setTextFormat(Qt::PlainText);
    m_busy->setWordWrap(true);
    m_busy->setObjectName(QStringLiteral("busy"));
}

void VelFindTimeWidget::makeLayout()
{
    auto *length = new QHBoxLayout;
    length->addWidget(m_length);
    length->addWidget(m_unit);
    auto *line = new QFrame(this);
    line->setFrameShape(QFrame::HLine);
    line->setFrameShadow(QFrame::Sunken);

    auto *search = new QHBoxLayout;
    search->addWidget(m_workDays);
    search->addWidget(m_status, 1);
    search->addWidget(m_find);

    auto *layout = new QGridLayout(this);
    layout->setContentsMargins(0, 0, 0, layout->contentsMargins().bottom()); // the dialog has margins
    layout->addWidget(labelOf(m_length, i18n("Find free time for")), 0, 0);
    layout->addLayout(length, 0, 1);
    layout->addWidget(labelOf(m_begin, i18n("Begin earliest at")), 0, 2);
    layout->addWidget(m_begin, 0, 3);
    layout->addWidget(labelOf(m_from, i18n("Start search from")), 1, 0);
    layout->addWidget(m_from, 1, 1);
    layout->addWidget(labelOf(m_end, i18n("End latest by")), 1, 2);
    layout->addWidget(m_end, 1, 3);
    layout->addWidget(line, 2, 0, 1, 4);
    layout->addLayout(search, 3, 0, 1, 4);
    layout->addWidget(labelOf(m_proposedStart, i18n("Proposed appointment starts at")), 4, 0, 1, 2);
    layout->addWidget(m_proposedStart, 4, 2, 1, 2);
    layout->addWidget(labelOf(m_proposedEnd, i18n(" Ends at")), 5, 0, 1, 2);
    layout->addWidget(m_proposedEnd, 5, 2, 1, 2);
    layout->addWidget(m_busy, 6, 0, 1, 4);
    layout->setColumnStretch(1, 1);
    layout->setColumnStretch(3, 1);
}

void VelFindTimeWidget::explain()
{
    for (QWidget *widget : {static_cast<QWidget *>(m_length), static_cast<QWidget *>(m_unit)})
        explainAs(widget, i18n("Planned appointment length in hours or days."));
    explainAs(m_begin, i18n("Earliest starting time for the meeting."));
    explainAs(m_end, i18n("Latest ending time for the meeting."));
    explainAs(m_from, i18n("First date to look for a suitable time."));
    explainAs(m_workDays, i18n("When checked, the meeting is planned on working days only."));
    explainAs(m_find, i18n("Find next free appointment time."));
    // Both are texts of the start, as users know it; the end has none of its own.
    m_proposedStart->setToolTip(i18n("Start time for the proposed appointment."));
    m_proposedStart->setWhatsThis(i18n("Ending time for the proposed appointment."));
}

void VelFindTimeWidget::setEntry(const VelEntry &entry)
{
    const qint64 hours = entry.getStart().secsTo(entry.getEnd()) / SecondsPerHour;
    const bool isDays = hours >= HoursPerDay;
    m_length->setValue(static_cast<int>(isDays ? hours / HoursPerDay : hours));
    m_unit->setCurrentIndex(isDays ? int(Unit::Days) : int(Unit::Hours));
    m_from->setDate(entry.getStart().date());
    setProposal(entry.getStart().toQDateTime(), entry.getEnd().toQDateTime());
}

bool VelFindTimeWidget::isWorkDays() const
{
    return m_workDays->isChecked();
}

QDateTime VelFindTimeWidget::getStart() const
{
    return m_proposedStart->getDateTime();
}

QDateTime VelFindTimeWidget::getEnd() const
{
    return m_proposedEnd->getDateTime();
}

VelFreeTimeSearch::Terms VelFindTimeWidget::terms() const
{
    VelFreeTimeSearch::Terms terms;
    terms.length = m_length->value();
    terms.unit = static_cast<Unit>(m_unit->currentIndex());
    terms.begin = m_begin->getTime();
    terms.end = m_end->getTime();
    terms.from = m_from->getDate();
    terms.isWorkDaysOnly = isWorkDays();
    terms.proposedStart = VelDateTime::fromQDateTime(getStart());
    terms.proposedEnd = VelDateTime::fromQDateTime(getEnd());
    return terms;
}

QString VelFindTimeWidget::finishInput()
{
    WDateTimeWidget *unreadable = nullptr;
    for (WDateTimeWidget *input : {m_begin, m_end, m_from, m_proposedStart, m_proposedEnd}) {
        if (!input->finishInput() && !unreadable)
            unreadable = input;
    }
    if (!unreadable)
        return {};
    unreadable->focusProblem();
    return unreadable->getProblem();
}

void VelFindTimeWidget::slotFind()
{
    const bool wasFocused = m_find->hasFocus();
    if (!finishInput().isEmpty())
        return;
    m_isFocusTaken = wasFocused;
    m_find->setEnabled(false);
    showStatus({});
    take(m_search.find(terms(), VelApp::getApp(this)->now().date()));
}

void VelFindTimeWidget::slotContinue()
{
    if (isSearching())
        take(m_search.resume(terms(), VelApp::getApp(this)->now().date()));
}

void VelFindTimeWidget::take(const VelFreeTimeSearch::Outcome &outcome)
{
    if (outcome.result == VelFreeTimeSearch::Result::Proposal) {
        m_from->moveTo(outcome.start.toQDateTime());
        setProposal(outcome.start.toQDateTime(), outcome.end.toQDateTime());
    }
    if (!isSearching())
        enableFind();
}

/** A button that is disabled loses the focus, and the next press of the same key would go elsewhere. */
void VelFindTimeWidget::enableFind()
{
    m_find->setEnabled(true);
    if (std::exchange(m_isFocusTaken, false))
        m_find->setFocus();
}

void VelFindTimeWidget::stop()
{
    m_search.stop();
    enableFind();
}

/** Both at once: nobody shall see the new start with the old end. */
void VelFindTimeWidget::setProposal(const QDateTime &start, const QDateTime &end)
{
    {
        const QSignalBlocker startBlocker(m_proposedStart);
        const QSignalBlocker endBlocker(m_proposedEnd);
        m_proposedStart->setDateTime(start);
        m_proposedEnd->setDateTime(end);
    }
    Q_EMIT proposalChanged();
}

void VelFindTimeWidget::slotSelectionChanged(const QDateTime &start, const QDateTime &end)
{
    if (start.isValid() && end.isValid())
        setProposal(start, end);
}

void VelFindTimeWidget::showStatus(const QString &text)
{
    if (text == m_status->text())
        return;
    m_status->setText(text);
    if (text.isEmpty())
        return;
    QAccessibleEvent event(m_status, QAccessible::Alert);
    QAccessible::updateAccessibility(&event);
}

void VelFindTimeWidget::showBusy(const QString &text)
{
    m_busy->setText(text);
}

/** Return takes what was typed; it would else press the default button and close the planner. */
void VelFindTimeWidget::keyPressEvent(QKeyEvent *event)
{
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter)
        QWidget::keyPressEvent(event);
}
