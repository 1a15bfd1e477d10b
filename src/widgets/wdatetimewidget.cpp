// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "widgets/wdatetimewidget.h"

#include "widgets/wdatepickerframe.h"
#include "widgets/wtimeinput.h"

#include <KDateComboBox>
#include <KLocalizedString>

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QSignalBlocker>

namespace
{
/** Before anybody has set a day. */
const QDate FirstDay(2000, 1, 1);

QDateTime toTheMinute(const QDate &date, const QTime &time)
{
    return QDateTime(date, QTime(time.hour(), time.minute()), Qt::UTC);
}

/** The input of a day with our own calendar below it. */
class DateInput : public KDateComboBox
{
public:
    using KDateComboBox::KDateComboBox;

    void showPopup() override
    {
        if (!m_frame) {
            m_frame = new WDatePickerFrame(this);
            connect(m_frame, &WDatePickerFrame::dateChosen, this, [this](QDate date) {
                setDate(date);
                Q_EMIT dateEntered(date);
            });
        }
        m_frame->popup(*this, date());
    }
    void hidePopup() override
    {
        if (m_frame)
            m_frame->hide();
    }

protected:
    void changeEvent(QEvent *event) override
    {
        KDateComboBox::changeEvent(event);
        if (event->type() == QEvent::EnabledChange && !isEnabled())
            hidePopup();
    }
    void hideEvent(QHideEvent *event) override
    {
        KDateComboBox::hideEvent(event);
        hidePopup();
    }

private:
    WDatePickerFrame *m_frame = nullptr; // made when it is first wanted
};
} // namespace

WDateTimeWidget::WDateTimeWidget(Kind kind, QWidget *parent)
    : QWidget(parent)
    , m_value(toTheMinute(FirstDay, QTime(0, 0)))
    , m_dateInput(new DateInput(this))
{
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_dateInput);
    m_dateInput->setAccessibleName(i18n("Date"));
    m_dateInput->installEventFilter(this);
    connect(m_dateInput, &KDateComboBox::dateEntered, this, &WDateTimeWidget::takeInput);
    if (kind != Kind::Date) {
        addTimeInput();
    }
    hideDate(kind == Kind::Time);
    showValue();
}

WDateTimeWidget::~WDateTimeWidget()
{
    // An input that loses the focus by going still tells what was typed, when nobody is left to take it.
    m_dateInput->disconnect(this);
    if (m_timeInput)
        m_timeInput->disconnect(this);
}

void WDateTimeWidget::addTimeInput()
{
    m_timeInput = new WTimeInput(this);
    layout()->addWidget(m_timeInput);
    m_timeInput->setAccessibleName(i18n("Time"));
    m_timeInput->installEventFilter(this);
    connect(m_timeInput, &WTimeInput::timeEntered, this, &WDateTimeWidget::takeInput);
}

void WDateTimeWidget::hideDate(bool hide)
{
    m_dateInput->setHidden(hide);
    // A label's mnemonic must lead to an input that is there.
    setFocusProxy(hide && m_timeInput ? static_cast<QWidget *>(m_timeInput) : m_dateInput);
}

void WDateTimeWidget::hideTime(bool hide)
{
    if (m_timeInput) {
        m_timeInput->setHidden(hide);
    }
}

void WDateTimeWidget::setDate(const QDate &date)
{
    setDateTime(QDateTime(date, m_value.time(), Qt::UTC));
}

void WDateTimeWidget::setTime(const QTime &time)
{
    // A date-time would make midnight of a time that is none.
    if (time.isValid()) {
        setDateTime(QDateTime(m_value.date(), time, Qt::UTC));
    }
}

void WDateTimeWidget::setDateTime(const QDateTime &dateTime)
{
    const QDateTime before = m_value;
    if (dateTime.isValid()) {
        m_value = toTheMinute(dateTime.date(), m_timeInput ? dateTime.time() : QTime(0, 0));
    }
    showValue();
    if (m_value != before) {
        Q_EMIT dateChanged(before, m_value);
    }
}

void WDateTimeWidget::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LocaleChange) {
        showValue();
    }
}

/** The inputs say nothing of a typed text that they leave standing: it is taken when it should be complete.
 */
bool WDateTimeWidget::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::FocusOut) {
        takeInput();
    } else if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            takeInput();
        }
    }
    return QWidget::eventFilter(watched, event);
}

/** Only what was typed: a text that is shown may say less than the value, the century perhaps. */
void WDateTimeWidget::finishInput()
{
    if (m_dateInput->lineEdit()->isModified() || (m_timeInput && m_timeInput->lineEdit()->isModified()))
        takeInput();
}

void WDateTimeWidget::takeInput()
{
    const QDate date = m_dateInput->date();
    const QTime time = m_timeInput ? m_timeInput->time() : m_value.time();
    setDateTime(
        QDateTime(date.isValid() ? date : m_value.date(), time.isValid() ? time : m_value.time(), Qt::UTC));
}

void WDateTimeWidget::showValue()
{
    const QSignalBlocker dateBlocker(m_dateInput);
    m_dateInput->setDate(m_value.date());
    if (m_timeInput) {
        const QSignalBlocker timeBlocker(m_timeInput);
        m_timeInput->setTime(m_value.time());
    }
}
