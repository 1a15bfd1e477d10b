// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "widgets/wdatetimewidget.h"

#include "widgets/wdateinput.h"
#include "widgets/wtimeinput.h"

#include <KLocalizedString>

#include <QAccessible>
#include <QEvent>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QTimer>
#include <QVBoxLayout>

#include <chrono>

using namespace std::chrono_literals;
using Typed = WTypedInput::Typed;

namespace
{
QDateTime toTheMinute(const QDate &date, const QTime &time)
{
    return QDateTime(date, QTime(time.hour(), time.minute()), Qt::UTC);
}
} // namespace

WDateTimeWidget::WDateTimeWidget(Kind kind, QWidget *parent)
    : QWidget(parent)
    , m_dateInput(new WDateInput(this))
{
    m_value = toTheMinute(m_dateInput->getDate(), QTime(0, 0));
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    auto *row = new QHBoxLayout;
    layout->addLayout(row);
    m_dateInput->setAccessibleName(i18n("Date"));
    connect(m_dateInput, &WDateInput::dateEntered, this, &WDateTimeWidget::takeInput);
    if (kind != Kind::Date)
        addTimeInput();
    for (WTypedInput *input : inputs()) {
        row->addWidget(input);
        connect(input, &WTypedInput::problemChanged, this, &WDateTimeWidget::slotProblem);
    }
    hideDate(kind == Kind::Time);
}

WDateTimeWidget::~WDateTimeWidget()
{
    // An input that loses the focus by going still tells what was typed, when nobody is left to take it.
    for (WTypedInput *input : inputs())
        input->disconnect(this);
}

void WDateTimeWidget::addTimeInput()
{
    m_timeInput = new WTimeInput(this);
    m_timeInput->setAccessibleName(i18n("Time"));
    connect(m_timeInput, &WTimeInput::timeEntered, this, &WDateTimeWidget::takeInput);
}

QList<WTypedInput *> WDateTimeWidget::inputs() const
{
    QList<WTypedInput *> inputs{m_dateInput};
    if (m_timeInput)
        inputs.append(m_timeInput);
    return inputs;
}

void WDateTimeWidget::hideDate(bool hide)
{
    m_dateInput->setHidden(hide);
    // A label's mnemonic must lead to an input that is there.
    setFocusProxy(hide && m_timeInput ? static_cast<QWidget *>(m_timeInput) : m_dateInput);
    slotProblem();
}

void WDateTimeWidget::hideTime(bool hide)
{
    if (m_timeInput) {
        m_timeInput->setHidden(hide);
        slotProblem();
    }
}

void WDateTimeWidget::setClock(const std::function<QDate()> &clock)
{
    m_dateInput->setClock(clock);
}

void WDateTimeWidget::setDate(const QDate &date)
{
    setDateTime(QDateTime(date, m_value.time(), Qt::UTC));
}

void WDateTimeWidget::setTime(const QTime &time)
{
    // A date-time would make midnight of a time that is none.
    if (time.isValid())
        setDateTime(QDateTime(m_value.date(), time, Qt::UTC));
}

void WDateTimeWidget::setDateTime(const QDateTime &dateTime)
{
    set(dateTime, Typed::Forget);
}

void WDateTimeWidget::moveTo(const QDateTime &dateTime)
{
    set(dateTime, Typed::Keep);
}

void WDateTimeWidget::set(const QDateTime &dateTime, Typed typed)
{
    const QDateTime before = m_value;
    if (dateTime.isValid())
        m_value = toTheMinute(dateTime.date(), m_timeInput ? dateTime.time() : QTime(0, 0));
    m_dateInput->setDate(m_value.date(), typed);
    if (m_timeInput)
        m_timeInput->setTime(m_value.time(), typed);
    if (m_value != before)
        Q_EMIT dateChanged(before, m_value);
}

void WDateTimeWidget::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::EnabledChange)
        slotProblem();
}

bool WDateTimeWidget::finishInput()
{
    for (WTypedInput *input : inputs()) {
        if (!input->isHidden() && input->isEnabled())
            input->finishInput();
    }
    return getProblem().isEmpty();
}

QString WDateTimeWidget::getProblem() const
{
    for (const WTypedInput *input : inputs()) {
        if (!input->isHidden() && input->isEnabled() && !input->getProblem().isEmpty())
            return input->getProblem();
    }
    return {};
}

void WDateTimeWidget::focusProblem()
{
    for (WTypedInput *input : inputs()) {
        if (input->isHidden() || input->getProblem().isEmpty())
            continue;
        input->setFocus();
        input->lineEdit()->selectAll();
        return;
    }
}

/** One of the two may wait to be corrected while the other is taken. */
void WDateTimeWidget::takeInput()
{
    const QTime time = m_timeInput ? m_timeInput->getTime() : m_value.time();
    moveTo(QDateTime(m_dateInput->getDate(), time, Qt::UTC));
}

void WDateTimeWidget::slotProblem()
{
    if (!m_isProblemLeft && (m_problem || !getProblem().isEmpty()))
        showProblem();
    Q_EMIT problemChanged();
}

void WDateTimeWidget::showProblem()
{
    // The button that is being pressed must not move away below the pointer.
    if (QGuiApplication::mouseButtons() != Qt::NoButton) {
        QTimer::singleShot(50ms, this, &WDateTimeWidget::showProblem);
        return;
    }
    if (!m_problem) {
        m_problem = new QLabel(this);
        m_problem->setTextFormat(Qt::PlainText);
        layout()->addWidget(m_problem);
    }
    const QString problem = getProblem();
    m_problem->setText(problem);
    m_problem->setVisible(!problem.isEmpty());
    if (problem.isEmpty())
        return;
    QAccessibleEvent event(m_problem, QAccessible::Alert);
    QAccessible::updateAccessibility(&event);
}
