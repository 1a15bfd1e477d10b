// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "widgets/wtypedinput.h"

#include "widgets/wdatepickerframe.h"

#include <QAction>
#include <QFocusEvent>
#include <QLineEdit>
#include <QStyle>
#include <QStyleOptionComboBox>
#include <QWheelEvent>

namespace
{
constexpr int WheelStep = 120; // eighths of a degree, one notch of an ordinary wheel

/** The user is to come back and type on. */
bool isPassing(Qt::FocusReason reason)
{
    return reason == Qt::PopupFocusReason || reason == Qt::ActiveWindowFocusReason;
}
} // namespace

WTypedInput::WTypedInput(QWidget *parent)
    : QComboBox(parent)
{
    setEditable(true);
    setInsertPolicy(NoInsert);
    setCompleter(nullptr); // it would add to what is typed
    connect(lineEdit(), &QLineEdit::textEdited, this, [this](const QString &text) {
        if (!m_problem.isEmpty() && problemOf(text).isEmpty())
            setProblem({});
    });
}

bool WTypedInput::isTyped() const
{
    return lineEdit()->isModified();
}

bool WTypedInput::finishInput()
{
    if (!isTyped())
        return true;
    const QString text = currentText();
    setProblem(problemOf(text));
    if (!m_problem.isEmpty())
        return false;
    take(text);
    return true;
}

void WTypedInput::showValue(Typed typed)
{
    if (typed == Typed::Keep && isTyped())
        return;
    lineEdit()->setText(valueText());
    setProblem({});
}

void WTypedInput::setLongestText(const QString &longest)
{
    m_longest = longest;
    updateGeometry();
}

QSize WTypedInput::sizeHint() const
{
    return sizeFor(style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this));
}

QSize WTypedInput::minimumSizeHint() const
{
    return sizeFor(0);
}

/** With the longest text and room for a mark of that width beside it. */
QSize WTypedInput::sizeFor(int mark) const
{
    const int margins = fontMetrics().averageCharWidth();
    const QSize contents(fontMetrics().horizontalAdvance(m_longest) + margins + mark, fontMetrics().height());
    QStyleOptionComboBox option;
    initStyleOption(&option);
    const int width = style()->sizeFromContents(QStyle::CT_ComboBox, &option, contents, this).width();
    return {width, QComboBox::sizeHint().height()};
}

void WTypedInput::setProblem(const QString &problem)
{
    if (problem == m_problem)
        return;
    m_problem = problem;
    updateMark();
    Q_EMIT problemChanged();
}

/** By the colour of the text and, for who does not tell colours apart, by a sign. */
void WTypedInput::updateMark()
{
    const bool isMarked = !m_problem.isEmpty();
    if (isMarked && !m_mark)
        m_mark = lineEdit()->addAction(style()->standardIcon(QStyle::SP_MessageBoxWarning, nullptr, this),
                                       QLineEdit::TrailingPosition);
    if (m_mark)
        m_mark->setVisible(isMarked);
    QPalette colors;
    if (isMarked) {
        m_mark->setToolTip(QStringLiteral("<p>%1</p>").arg(m_problem.toHtmlEscaped()));
        colors.setColor(QPalette::Text, WDatePickerFrame::dayOffColor(palette().color(QPalette::Text)));
    }
    lineEdit()->setPalette(colors);
    setAccessibleDescription(m_problem);
}

void WTypedInput::changeEvent(QEvent *event)
{
    QComboBox::changeEvent(event);
    if (event->type() == QEvent::LocaleChange)
        showValue(Typed::Keep);
    else if (event->type() == QEvent::PaletteChange && !m_problem.isEmpty())
        updateMark();
}

void WTypedInput::focusOutEvent(QFocusEvent *event)
{
    if (!isPassing(event->reason()))
        finishInput();
    QComboBox::focusOutEvent(event);
}

void WTypedInput::keyPressEvent(QKeyEvent *event)
{
    const Qt::KeyboardModifiers modifiers = event->modifiers() & ~Qt::KeypadModifier;
    const int key = event->key();
    const bool isUp = key == Qt::Key_Up || key == Qt::Key_PageUp;
    if (modifiers == Qt::NoModifier && (isUp || key == Qt::Key_Down || key == Qt::Key_PageDown)) {
        stepFromTyped(isUp ? 1 : -1, key == Qt::Key_PageUp || key == Qt::Key_PageDown);
        return;
    }
    if (key == Qt::Key_Return || key == Qt::Key_Enter)
        finishInput();
    QComboBox::keyPressEvent(event);
}

void WTypedInput::wheelEvent(QWheelEvent *event)
{
    const int angle = event->angleDelta().y();
    if ((angle > 0) != (m_wheelAngle > 0))
        m_wheelAngle = 0; // what is left of the other direction
    m_wheelAngle += angle;
    const int count = m_wheelAngle / WheelStep;
    m_wheelAngle -= count * WheelStep;
    if (count != 0)
        stepFromTyped(count, false);
    event->accept();
}

/** A text that cannot be read is nothing to step from. */
void WTypedInput::stepFromTyped(int count, bool isLarge)
{
    if (!finishInput())
        return;
    step(count, isLarge);
    lineEdit()->selectAll();
}
