// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QWidget>

class QCheckBox;
class QComboBox;
class QSpinBox;

/** The input of a reminder: how many minutes, hours or days before the start the user wants to be alerted. */
class VelReminderWidget : public QWidget
{
    Q_OBJECT
public:
    /** The highest number of minutes, hours or days. */
    static constexpr int MaximumValue = 32000;

    /** With a check box in front the user can also do without a reminder. */
    VelReminderWidget(QWidget *parent, bool withCheckBox);

    /** The lead time in minutes; 0 when the check box says that none is wanted. */
    [[nodiscard]] quint32 getReminder() const;
    /** Checks the box unless @p minutes is 0, and shows them. */
    void setReminder(quint32 minutes);
    /**
     * Shows @p minutes in the largest unit that fits, and leaves the box as it is. 0 shows the lowest value;
     * more than the input can take shows the highest.
     */
    void setDefault(quint32 minutes);

private:
    void slotToggled(bool on);

    QCheckBox *m_wanted = nullptr;
    QSpinBox *m_value;
    QComboBox *m_unit;
};
