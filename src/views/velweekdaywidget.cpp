// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "views/velweekdaywidget.h"

#include <KLocalizedString>

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLocale>

VelWeekDayWidget::VelWeekDayWidget(QWidget *parent)
    : QWidget(parent)
{
    const std::array<QString, 7> names{i18n("Mon"), i18n("Tue"), i18n("Wed"), i18n("Thu"),
                                       i18n("Fri"), i18n("Sat"), i18n("Sun")};
    const bool isMondayFirst = QLocale().firstDayOfWeek() == Qt::Monday;
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    for (int i = 0; i < 7; ++i) {
        const int day = isMondayFirst ? i + 1 : (i + 6) % 7 + 1;
        auto *box = new QCheckBox(names[static_cast<std::size_t>(day) - 1], this);
        layout->addWidget(box);
        m_boxes[static_cast<std::size_t>(i)] = {day, box};
    }
}

QVector<int> VelWeekDayWidget::getList() const
{
    QVector<int> days;
    for (const Box &box : m_boxes) {
        if (box.box->isChecked())
            days.append(box.day);
    }
    return days;
}

void VelWeekDayWidget::setList(const QVector<int> &days)
{
    for (const Box &box : m_boxes)
        box.box->setChecked(days.contains(box.day));
}
