// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "dialogs/velpreferencespage.h"

class QCheckBox;
class QSpinBox;
class WFileEdit;

/** What the program saves and synchronises by itself, and where old entries go. */
class VelSavePage : public VelPreferencesPage
{
    Q_OBJECT
public:
    explicit VelSavePage(QWidget *parent = nullptr);

    [[nodiscard]] QString title() const override;
    [[nodiscard]] QIcon icon() const override;
    void show(const VelSettings &settings, const VelLook &look) override;
    void store(VelSettings &settings, VelLook &look) const override;

private:
    QCheckBox *m_autoSave;
    QSpinBox *m_saveInterval;
    QCheckBox *m_autoSaveSync;
    QCheckBox *m_autoSync;
    QSpinBox *m_syncInterval;
    WFileEdit *m_archiveFile;
};
