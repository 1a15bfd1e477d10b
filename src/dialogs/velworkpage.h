// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "dialogs/velpreferencespage.h"

class QCheckBox;
class VelWeekDayWidget;
class WDateTimeWidget;

/** When the user works, and what becomes of a minimised window. */
class VelWorkPage : public VelPreferencesPage
{
    Q_OBJECT
public:
    explicit VelWorkPage(QWidget *parent = nullptr);

    [[nodiscard]] QString title() const override;
    [[nodiscard]] QIcon icon() const override;
    void show(const VelSettings &settings, const VelLook &look) override;
    void store(VelSettings &settings, VelLook &look) const override;
    void finishInput() override;
    /** There must be a working day, and work must begin before it ends. */
    [[nodiscard]] QString problem() const override;

private:
    VelWeekDayWidget *m_days;
    WDateTimeWidget *m_begin;
    WDateTimeWidget *m_end;
    QCheckBox *m_dock;
};
