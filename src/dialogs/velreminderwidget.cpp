// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogs/velreminderwidget.h"

#include "model/veltext.h"

#include <KLocalizedString>

#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QSpinBox>

#include <algorithm>
#include <array>

namespace
{
/** In the order of VelReminder::Unit. */
constexpr std::array<quint32, 3> MinutesPerUnit{1, 60, 1440};
} // namespace

VelReminderWidget::VelReminderWidget(QWidget *parent, bool withCheckBox)
    : QWidget(parent)
    , m_value(new QSpinBox(this))
    , m_unit(new QComboBox(this))
{
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    if (withCheckBox) {
        m_wanted = new QCheckBox(i18n("Remind me"), this);
        layout->addWidget(m_wanted);
        connect(m_wanted, &QCheckBox::toggled, this, &VelReminderWidget::slotToggled);
    }
    m_value->setRange(1, MaximumValue);
    m_value->setAccessibleName(i18n("Lead time"));
    m_unit->addItems({i18nc("unit of a lead time", "minutes"), i18nc("unit of a lead time", "hours"),
                      i18nc("unit of a lead time", "days")});
    m_unit->setAccessibleName(i18n("Unit of the lead time"));
    layout->addWidget(m_value);
    layout->addWidget(m_unit);
    layout->addWidget(new QLabel(i18n("before the start."), this));
    layout->addStretch();
    const QString help =
        i18n("Set a reminder to alert you some minutes, hours or days before the start time.");
    setToolTip(help);
    setWhatsThis(help);
    setFocusProxy(m_wanted ? static_cast<QWidget *>(m_wanted) : m_value);
    setDefault(0);
}

quint32 VelReminderWidget::getReminder() const
{
    if (m_wanted && !m_wanted->isChecked())
        return 0;
    return static_cast<quint32>(m_value->value())
        * MinutesPerUnit[static_cast<std::size_t>(m_unit->currentIndex())];
}

void VelReminderWidget::setReminder(quint32 minutes)
{
    if (m_wanted)
        m_wanted->setChecked(minutes != 0);
    setDefault(minutes);
}

void VelReminderWidget::setDefault(quint32 minutes)
{
    // 0 minutes are a whole number of days, but nobody thinks of them as such.
    const VelReminder::Unit unit = minutes == 0 ? VelReminder::Minutes : VelReminder::reminderType(minutes);
    const quint32 value = VelReminder::valueForType(unit, minutes);
    m_unit->setCurrentIndex(unit);
    m_value->setValue(static_cast<int>(std::min<quint32>(value, MaximumValue)));
    if (m_wanted)
        slotToggled(m_wanted->isChecked());
}

void VelReminderWidget::slotToggled(bool on)
{
    m_value->setEnabled(on);
    m_unit->setEnabled(on);
}
