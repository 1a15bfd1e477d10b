// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "dialogs/velpreferencespage.h"

class QCheckBox;
class VelReminderWidget;
class WFileEdit;

/** What happens when an entry reminds, and when new entries do. */
class VelReminderPage : public VelPreferencesPage
{
    Q_OBJECT
public:
    explicit VelReminderPage(QWidget *parent = nullptr);

    [[nodiscard]] QString title() const override;
    [[nodiscard]] QIcon icon() const override;
    void show(const VelSettings &settings, const VelLook &look) override;
    void store(VelSettings &settings, VelLook &look) const override;

private:
    QCheckBox *m_doDialog;
    QCheckBox *m_doSound;
    WFileEdit *m_sound;
    QCheckBox *m_doExec;
    WFileEdit *m_exec;
    VelReminderWidget *m_default;
};
