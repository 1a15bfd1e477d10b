// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "widgets/wtimeinput.h"

#include "model/veltext.h"
#include "model/veltyped.h"

#include <QAbstractItemView>
#include <QEvent>
#include <QLineEdit>
#include <QSignalBlocker>

namespace
{
constexpr int MinutesPerHour = 60;
constexpr int SecondsPerMinute = 60;
constexpr int TimeCount = 24 * MinutesPerHour / WTimeInput::Interval;

QTime timeAt(int row)
{
    const int minutes = row * WTimeInput::Interval;
    return {minutes / MinutesPerHour, minutes % MinutesPerHour};
}
} // namespace

WTimeInput::WTimeInput(QWidget *parent)
    : WTypedInput(parent)
{
    setMaxVisibleItems(MinutesPerHour / Interval * 4);
    connect(this, QOverload<int>::of(&QComboBox::activated), this, [this](int row) { enter(timeAt(row)); });
    fit();
    showValue(Typed::Forget);
}

void WTimeInput::fit()
{
    setLongestText(VelText::getTime(QTime(22, 58), locale()));
}

void WTimeInput::setTime(QTime time, Typed typed)
{
    m_time = time;
    showValue(typed);
}

void WTimeInput::enter(QTime time)
{
    setTime(time);
    Q_EMIT timeEntered(time);
}

void WTimeInput::take(const QString &text)
{
    enter(VelTyped::readTime(text, locale()));
}

QString WTimeInput::problemOf(const QString &text) const
{
    return VelTyped::timeProblem(text, locale());
}

QString WTimeInput::valueText() const
{
    return VelText::getTime(m_time, locale());
}

void WTimeInput::step(int count, bool isLarge)
{
    enter(m_time.addSecs(count * (isLarge ? MinutesPerHour : Interval) * SecondsPerMinute));
}

/** Leaves the text alone: a list that gets its first row would show that. */
void WTimeInput::fillList()
{
    const QSignalBlocker blocker(this);
    const QSignalBlocker lineBlocker(lineEdit());
    const QString text = currentText();
    const bool wasModified = lineEdit()->isModified();
    for (int row = 0; row < TimeCount; ++row)
        addItem(VelText::getTime(timeAt(row), locale()));
    setCurrentIndex(-1);
    lineEdit()->setText(text);
    lineEdit()->setModified(wasModified);
}

void WTimeInput::showPopup()
{
    finishInput();
    if (count() == 0)
        fillList();
    WTypedInput::showPopup();
    const int row = QTime(0, 0).secsTo(m_time) / SecondsPerMinute / Interval;
    const QModelIndex now = model()->index(row, modelColumn());
    view()->setCurrentIndex(now);
    view()->scrollTo(now, QAbstractItemView::PositionAtCenter);
}

void WTimeInput::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LocaleChange) {
        const QSignalBlocker blocker(this);
        clear();
        fit();
    }
    WTypedInput::changeEvent(event);
}
