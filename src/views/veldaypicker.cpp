// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "views/veldaypicker.h"

#include "hub/velapp.h"
#include "hub/vellook.h"
#include "model/velsettings.h"
#include "model/veltext.h"
#include "views/veldaypickeritem.h"

#include <KLocalizedString>

#include <QGridLayout>
#include <QLabel>
#include <QLocale>
#include <QToolButton>

#include <algorithm>

namespace
{
constexpr int ColumnCount = 1 + VelDayPicker::DaysPerWeek;
constexpr int FirstWeekRow = 4;

bool isSameMonth(QDate a, QDate b)
{
    return a.month() == b.month() && a.year() == b.year();
}

void colorWindow(QWidget *widget, const QColor &background)
{
    QPalette palette = widget->palette();
    palette.setColor(QPalette::Window, background);
    palette.setColor(QPalette::WindowText, VelLook::textOn(background));
    widget->setPalette(palette);
}
} // namespace

VelDayPicker::VelDayPicker(QWidget *parent)
    : QWidget(parent)
    , m_isMondayFirst(QLocale().firstDayOfWeek() == Qt::Monday)
    , m_monthLabel(new QLabel(this))
{
    velInstallAccessibility();
    setAutoFillBackground(true);
    setFocusPolicy(Qt::StrongFocus);
    auto *layout = new QGridLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    addHeading(layout);
    addLine(layout, 1);
    addWeekdays(layout);
    addLine(layout, 3);
    addCells(layout);
    updateIcons();
    updateLabelSize();
    updateColors();
    setDate(getToday());
}

void VelDayPicker::addHeading(QGridLayout *layout)
{
    createButton(PrevYear, i18n("Previous year"), &VelDayPicker::prevYear);
    createButton(PrevMonth, i18n("Previous month"), &VelDayPicker::prevMonth);
    createButton(NextMonth, i18n("Next month"), &VelDayPicker::nextMonth);
    createButton(NextYear, i18n("Next year"), &VelDayPicker::nextYear);
    m_monthLabel->setAlignment(Qt::AlignCenter);
    m_monthLabel->setWordWrap(true);

    auto *heading = new QHBoxLayout;
    heading->setSpacing(0);
    heading->addWidget(m_buttons[PrevYear]);
    heading->addWidget(m_buttons[PrevMonth]);
    heading->addWidget(m_monthLabel, 10);
    heading->addWidget(m_buttons[NextMonth]);
    heading->addWidget(m_buttons[NextYear]);
    layout->addLayout(heading, 0, 0, 1, ColumnCount);
}

void VelDayPicker::createButton(Step step, const QString &toolTip, void (VelDayPicker::*slot)())
{
    auto *button = new QToolButton(this);
    button->setAutoRaise(true);
    button->setAutoRepeat(true);
    button->setFocusPolicy(Qt::NoFocus); // the keyboard steps by Page Up and Page Down
    button->setToolTip(toolTip);
    button->setAccessibleName(toolTip);
    connect(button, &QToolButton::clicked, this, slot);
    m_buttons.at(step) = button;
}

void VelDayPicker::addLine(QGridLayout *layout, int row)
{
    auto *line = new QFrame(this);
    line->setFrameShape(QFrame::HLine);
    line->setFrameShadow(QFrame::Sunken);
    layout->addWidget(line, row, 0, 1, ColumnCount);
}

void VelDayPicker::addWeekdays(QGridLayout *layout)
{
    const std::array<QString, DaysPerWeek> letters{
        i18nc("letter of Monday", "M"),   i18nc("letter of Tuesday", "T"), i18nc("letter of Wednesday", "W"),
        i18nc("letter of Thursday", "T"), i18nc("letter of Friday", "F"),  i18nc("letter of Saturday", "S"),
        i18nc("letter of Sunday", "S")};
    for (int day = Qt::Monday; day <= Qt::Sunday; ++day)
        createLabel(layout, letters.at(static_cast<std::size_t>(day - 1)),
                    m_isMondayFirst ? day : day % DaysPerWeek + 1, day);
}

/** A centred @p letter for weekday @p day (1 = Monday), the name of which it tells. */
void VelDayPicker::createLabel(QGridLayout *layout, const QString &letter, int column, int day)
{
    auto *label = new QLabel(letter, this);
    label->setAlignment(Qt::AlignCenter);
    label->setToolTip(VelText::getWeekDay(day));
    label->setAccessibleName(VelText::getWeekDay(day));
    layout->addWidget(label, 2, column);
}

void VelDayPicker::addCells(QGridLayout *layout)
{
    for (int row = 0; row < WeekCount; ++row) {
        auto *week = new VelDayPickerWeek(this);
        m_weeks.at(static_cast<std::size_t>(row)) = week;
        connect(week, &VelDayPickerCell::chosen, this, &VelDayPicker::emitDateSelected);
        layout->addWidget(week, FirstWeekRow + row, 0);
        layout->setRowStretch(FirstWeekRow + row, 1);
    }
    for (int i = 0; i < WeekCount * DaysPerWeek; ++i) {
        auto *item = new VelDayPickerItem(this);
        m_items.at(static_cast<std::size_t>(i)) = item;
        connect(item, &VelDayPickerCell::chosen, this, &VelDayPicker::emitDateSelected);
        layout->addWidget(item, FirstWeekRow + i / DaysPerWeek, 1 + i % DaysPerWeek);
    }
    for (int column = 0; column < ColumnCount; ++column)
        layout->setColumnStretch(column, 1);
}

QSize VelDayPicker::minimumSizeHint() const
{
    return QWidget::minimumSizeHint().expandedTo({150, 150});
}

QSize VelDayPicker::sizeHint() const
{
    return minimumSizeHint().expandedTo({200, 200});
}

QString VelDayPicker::accessibleText() const
{
    const VelDayPickerItem *item = itemOf(m_cursor);
    return item ? i18nc("with the day that the cursor is on", "Day picker, %1", item->accessibleText())
                : i18n("Day picker");
}

QDate VelDayPicker::getToday() const
{
    const VelApp *app = VelApp::getApp(this);
    return app ? app->now().date() : QDate::currentDate();
}

void VelDayPicker::setDate(QDate date)
{
    if (!VelDateTime::isSupported(date))
        return;
    m_current = m_shown = m_cursor = date;
    updateCalendar();
}

void VelDayPicker::setHighlight(QDate start, int days)
{
    m_highlightStart = start;
    m_highlightDays = days;
    updateDays();
}

void VelDayPicker::updateToday()
{
    updateDays();
}

void VelDayPicker::updateColors()
{
    const VelApp *app = VelApp::getApp(this);
    const VelLook look = app ? app->look() : VelLook::defaults(palette());
    colorWindow(this, look.picker());
    for (VelDayPickerWeek *week : m_weeks)
        colorWindow(week, look.weekNumber());
    update();
}

/** In layouts from right to left the previous is on the right, and its picture points there. */
void VelDayPicker::updateIcons()
{
    const std::array<QString, StepCount> names{QStringLiteral("2leftarrow"), QStringLiteral("1leftarrow"),
                                               QStringLiteral("1rightarrow"), QStringLiteral("2rightarrow")};
    for (std::size_t i = 0; i < names.size(); ++i)
        m_buttons.at(i)->setIcon(VelApp::getIcon(names.at(isRightToLeft() ? names.size() - 1 - i : i)));
}

/** Keeps the same room for all months, so that the buttons do not move about while one steps with them. */
void VelDayPicker::updateLabelSize()
{
    const QFontMetrics metrics(m_monthLabel->font());
    int width = 0;
    for (int month = 1; month <= 12; ++month)
        width = std::max(width, metrics.horizontalAdvance(VelText::getMonth(QDate(2000, month, 1), true)));
    m_monthLabel->setMinimumSize(width, 2 * metrics.lineSpacing());
}

void VelDayPicker::updateCalendar()
{
    QLocale locale;
    locale.setNumberOptions(QLocale::OmitGroupSeparator);
    m_monthLabel->setText(VelText::getMonth(m_shown, true) + QLatin1Char(' ')
                          + locale.toString(m_shown.year()));
    QDate date = gridStart(m_shown, m_isMondayFirst);
    for (VelDayPickerWeek *week : m_weeks) {
        week->setWeek(date, VelSettings::weekOfYear(date, m_isMondayFirst));
        date = date.addDays(DaysPerWeek);
    }
    updateDays();
}

/** The cells repaint themselves where this makes a difference. */
void VelDayPicker::updateDays()
{
    const QDate today = getToday();
    QDate date = gridStart(m_shown, m_isMondayFirst);
    for (VelDayPickerItem *item : m_items) {
        item->setDay(dayOf(date, today));
        date = date.addDays(1);
    }
}

VelDayPickerDay VelDayPicker::dayOf(QDate date, QDate today) const
{
    const VelSettings *settings = VelApp::getSettings(this);
    VelDayPickerDay day;
    day.date = date;
    day.isShownMonth = isSameMonth(date, m_shown);
    day.isHighlighted = m_highlightStart.isValid() && date >= m_highlightStart
        && m_highlightStart.daysTo(date) < m_highlightDays;
    day.isToday = date == today;
    day.isRed = settings && settings->isRedDay(date);
    day.hasCursor = hasFocus() && date == m_cursor;
    return day;
}

VelDayPickerItem *VelDayPicker::itemOf(QDate date) const
{
    const auto found = std::find_if(m_items.begin(), m_items.end(),
                                    [date](const VelDayPickerItem *item) { return item->getDate() == date; });
    return found == m_items.end() ? nullptr : *found;
}

void VelDayPicker::emitDateSelected(QDate date)
{
    if (!VelDateTime::isSupported(date))
        return;
    m_current = m_cursor = date;
    updateDays();
    Q_EMIT dateChanged(date);
    Q_EMIT dateSelected(date);
}
