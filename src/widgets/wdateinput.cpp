// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "widgets/wdateinput.h"

#include "model/veltext.h"
#include "model/veltyped.h"
#include "widgets/wdatepickerframe.h"

#include <QEvent>
#include <QMouseEvent>
#include <QStyleOptionComboBox>

WDateInput::WDateInput(QWidget *parent)
    : WTypedInput(parent)
    , m_clock([] { return QDate::currentDate(); })
{
    fit();
    showValue(Typed::Forget);
}

void WDateInput::fit()
{
    setLongestText(VelText::getDay(QDate(2028, 12, 28), locale()));
}

void WDateInput::setDate(QDate date, Typed typed)
{
    m_date = date;
    showValue(typed);
}

void WDateInput::enter(QDate date)
{
    setDate(date);
    Q_EMIT dateEntered(date);
}

void WDateInput::take(const QString &text)
{
    enter(VelTyped::readDate(text, {m_clock(), m_date}, locale()));
}

QString WDateInput::problemOf(const QString &text) const
{
    return VelTyped::dateProblem(text, {m_clock(), m_date}, locale());
}

QString WDateInput::valueText() const
{
    return VelText::getDay(m_date, locale());
}

void WDateInput::step(int count, bool isLarge)
{
    const QDate date = isLarge ? m_date.addMonths(count) : m_date.addDays(count);
    if (VelDateTime::isSupported(date))
        enter(date);
}

void WDateInput::showPopup()
{
    finishInput();
    if (!m_frame) {
        m_frame = new WDatePickerFrame(this);
        connect(m_frame, &WDatePickerFrame::dateChosen, this, &WDateInput::enter);
    }
    m_frame->popup(*this, m_date, m_clock());
}

void WDateInput::hidePopup()
{
    if (m_frame)
        m_frame->hide();
}

/** The base would make a list, and leave the arrow pressed while there is none. */
void WDateInput::mousePressEvent(QMouseEvent *event)
{
    QStyleOptionComboBox option;
    initStyleOption(&option);
    const auto control = style()->hitTestComplexControl(QStyle::CC_ComboBox, &option, event->pos(), this);
    if (event->button() == Qt::LeftButton && control == QStyle::SC_ComboBoxArrow)
        showPopup();
    else
        WTypedInput::mousePressEvent(event);
}

void WDateInput::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LocaleChange)
        fit();
    WTypedInput::changeEvent(event);
    if (event->type() == QEvent::EnabledChange && !isEnabled())
        hidePopup();
}

void WDateInput::hideEvent(QHideEvent *event)
{
    WTypedInput::hideEvent(event);
    hidePopup();
}
