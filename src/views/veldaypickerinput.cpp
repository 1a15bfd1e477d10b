// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "hub/velapp.h"
#include "model/veltext.h"
#include "model/veltyped.h"
#include "views/veldaypicker.h"
#include "views/veldaypickeritem.h"
#include "widgets/wpopupmenu.h"

#include <KLocalizedString>

#include <QAction>
#include <QContextMenuEvent>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QVBoxLayout>

namespace
{
constexpr int WheelStep = 120; // eighths of a degree, one notch of an ordinary wheel
} // namespace

QDate VelDayPicker::gridStart(QDate date, bool isMondayFirst)
{
    const QDate first(date.year(), date.month(), 1);
    return first.addDays(isMondayFirst ? 1 - first.dayOfWeek() : -first.dayOfWeek());
}

/** A date without a year is one near that which is shown. */
QDate VelDayPicker::readDate(const QString &text) const
{
    return VelTyped::readDate(text, {getToday(), m_current}, QLocale());
}

/** What a typed date means, in full, or what is wrong with it. */
QString VelDayPicker::readingOf(const QString &text) const
{
    const QDate date = readDate(text);
    if (!date.isValid())
        return VelTyped::dateProblem(text, {getToday(), m_current}, QLocale()).simplified(); // in one line
    return i18nc("weekday and date", "%1, %2", VelText::getWeekDay(date), VelText::getDay(date));
}

void VelDayPicker::nextMonth()
{
    step(m_shown.addMonths(1));
}

void VelDayPicker::prevMonth()
{
    step(m_shown.addMonths(-1));
}

void VelDayPicker::nextYear()
{
    step(m_shown.addYears(1));
}

void VelDayPicker::prevYear()
{
    step(m_shown.addYears(-1));
}

void VelDayPicker::step(QDate date)
{
    if (!VelDateTime::isSupported(date))
        return;
    setDate(date);
    Q_EMIT dateChanged(m_current);
}

void VelDayPicker::wheelEvent(QWheelEvent *event)
{
    const int angle = event->angleDelta().y();
    if (angle == 0) {
        event->ignore();
        return;
    }
    if ((angle > 0) != (m_wheelAngle > 0))
        m_wheelAngle = 0; // what is left of the other direction
    m_wheelAngle += angle;
    for (; m_wheelAngle >= WheelStep; m_wheelAngle -= WheelStep)
        prevMonth();
    for (; m_wheelAngle <= -WheelStep; m_wheelAngle += WheelStep)
        nextMonth();
    event->accept();
}

void VelDayPicker::keyPressEvent(QKeyEvent *event)
{
    const Qt::KeyboardModifiers modifiers = event->modifiers() & ~Qt::KeypadModifier;
    const int key = event->key();
    const bool chooses = key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space;
    const QDate target = cursorAfter(key, modifiers);
    if (chooses && modifiers == Qt::NoModifier)
        emitDateSelected(m_cursor);
    else if (target.isValid())
        moveCursor(target);
    else
        QWidget::keyPressEvent(event);
}

/** Where the key moves the cursor; invalid for a key that does not. */
QDate VelDayPicker::cursorAfter(int key, Qt::KeyboardModifiers modifiers) const
{
    const bool isShift = modifiers == Qt::ShiftModifier;
    if (isShift && (key == Qt::Key_PageUp || key == Qt::Key_PageDown))
        return m_cursor.addYears(key == Qt::Key_PageUp ? -1 : 1);
    if (modifiers != Qt::NoModifier)
        return {};
    const int daysToTheRight = isRightToLeft() ? -1 : 1;
    const int weekday = m_cursor.dayOfWeek();
    const int column = m_isMondayFirst ? weekday - 1 : weekday % DaysPerWeek;
    switch (key) {
    case Qt::Key_Left:
        return m_cursor.addDays(-daysToTheRight);
    case Qt::Key_Right:
        return m_cursor.addDays(daysToTheRight);
    case Qt::Key_Up:
        return m_cursor.addDays(-DaysPerWeek);
    case Qt::Key_Down:
        return m_cursor.addDays(DaysPerWeek);
    case Qt::Key_Home:
        return m_cursor.addDays(-column);
    case Qt::Key_End:
        return m_cursor.addDays(DaysPerWeek - 1 - column);
    case Qt::Key_PageUp:
        return m_cursor.addMonths(-1);
    case Qt::Key_PageDown:
        return m_cursor.addMonths(1);
    default:
        return {};
    }
}

/** Follows with the month shown. The date stays. */
void VelDayPicker::moveCursor(QDate date)
{
    if (!VelDateTime::isSupported(date))
        return;
    m_cursor = date;
    if (date.month() != m_shown.month() || date.year() != m_shown.year())
        m_shown = date;
    updateCalendar();
    if (VelDayPickerItem *item = itemOf(date)) {
        QAccessibleEvent event(item, QAccessible::Focus);
        QAccessible::updateAccessibility(&event);
    }
}

void VelDayPicker::focusInEvent(QFocusEvent *)
{
    updateDays();
}

void VelDayPicker::focusOutEvent(QFocusEvent *)
{
    updateDays();
}

void VelDayPicker::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LayoutDirectionChange)
        updateIcons();
    else if (event->type() == QEvent::FontChange)
        updateLabelSize();
}

void VelDayPicker::contextMenuEvent(QContextMenuEvent *event)
{
    if (!m_menu)
        createMenu();
    m_menu->popup(event->globalPos());
}

void VelDayPicker::createMenu()
{
    m_menu = new WPopupMenu(this);
    const VelApp *app = VelApp::getApp(this);
    if (QAction *today = app ? app->getAction(QStringLiteral("go_today")) : nullptr) {
        // In a dialog the window's own action would move what is behind it.
        if (window() == app)
            m_menu->insertAction(today, today, &QAction::trigger);
        else
            m_menu->addAction(today->icon(), today->text(), this, &VelDayPicker::goToday);
    }
    m_menu->addAction(i18n("Enter Date"), this, &VelDayPicker::enterDate);
}

void VelDayPicker::goToday()
{
    const QDate today = getToday();
    setDate(today);
    emitDateSelected(today);
}

void VelDayPicker::enterDate()
{
    auto *dialog = new QDialog(this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowTitle(i18n("Go to date"));
    auto *input = new QLineEdit(VelText::getDay(m_current), dialog);
    input->selectAll();
    auto *label = new QLabel(i18n("Enter date"), dialog);
    label->setBuddy(input);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, dialog);
    auto *layout = new QVBoxLayout(dialog);
    layout->addWidget(label);
    layout->addWidget(input);
    auto *reading = new QLabel(readingOf(input->text()), dialog);
    reading->setTextFormat(Qt::PlainText);
    layout->addWidget(reading);
    layout->addWidget(buttons);

    QPushButton *ok = buttons->button(QDialogButtonBox::Ok);
    connect(input, &QLineEdit::textChanged, this, [this, ok, reading](const QString &text) {
        ok->setEnabled(readDate(text).isValid());
        reading->setText(readingOf(text));
    });
    connect(buttons, &QDialogButtonBox::accepted, dialog, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::reject);
    connect(dialog, &QDialog::accepted, this, [this, input] { takeTyped(input->text()); });
    dialog->open();
}

void VelDayPicker::takeTyped(const QString &text)
{
    const QDate date = readDate(text); // when it is none, both do nothing
    setDate(date);
    emitDateSelected(date);
}
