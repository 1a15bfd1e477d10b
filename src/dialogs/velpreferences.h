// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "hub/vellook.h"
#include "model/velsettings.h"

#include <KConfigGroup>

#include <QDialog>

#include <vector>

class KMessageWidget;
class QDialogButtonBox;
class QListWidget;
class QStackedWidget;
class VelPreferencesPage;

/**
 * Lets the user change the preferences, page by page.
 *
 * It works on a copy, which settingsChanged() hands over with OK or Apply; Cancel forgets it. While a page
 * holds what cannot be stored, the dialog says why and only Cancel is left.
 */
class VelPreferences : public QDialog
{
    Q_OBJECT
public:
    /** @p options remembers the dialog's size. */
    explicit VelPreferences(QWidget *parent, const KConfigGroup &options = {});

    /** Shows these preferences in the pages. */
    void refresh(const VelSettings &settings, const VelLook &look);
    /** With what is typed, if it can be stored. */
    void accept() override;
    /** The account that is stored has changed by itself. Keeps what was typed. */
    void follow(const VelSettings &settings);
    void done(int result) override;

Q_SIGNALS:
    void settingsChanged(const VelSettings &settings, const VelLook &look);

private:
    void addPage(VelPreferencesPage *page);
    void buildLayout();
    void restoreSize();
    void slotPage(int number);
    void slotChanged();
    void slotDefaults();
    [[nodiscard]] bool finishInput();
    void slotApply();
    void apply();
    void updateButtons();
    [[nodiscard]] QString problem() const;

    KConfigGroup m_options;
    VelSettings m_settings;
    VelLook m_look;
    std::vector<VelPreferencesPage *> m_pages;
    QListWidget *m_list;
    QStackedWidget *m_stack;
    KMessageWidget *m_message;
    QDialogButtonBox *m_buttons;
    bool m_isChanged = false;
};
