// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "dialogs/velpreferencespage.h"

class QLabel;
class QLineEdit;
class QPushButton;
class QSpinBox;

/**
 * The account on the server. A password is kept as its digest only, and never shown: what is typed replaces
 * it, an empty input leaves it.
 */
class VelServerPage : public VelPreferencesPage
{
    Q_OBJECT
public:
    explicit VelServerPage(QWidget *parent = nullptr);

    [[nodiscard]] QString title() const override;
    [[nodiscard]] QIcon icon() const override;
    void show(const VelSettings &settings, const VelLook &look) override;
    void store(VelSettings &settings, VelLook &look) const override;

private:
    QLineEdit *m_server;
    QSpinBox *m_port;
    QLineEdit *m_user;
    QLineEdit *m_password;
    QLabel *m_userid;
    QPushButton *m_test;
    QString m_digest; // of the password that is replaced by what is typed
};
