// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "dialogs/velpreferencespage.h"
#include "model/velsettings.h"

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QSpinBox;
struct VelConnectionResult;

/**
 * The account on the server, and whether it can be reached. A password is kept as its digest only, and never shown: it
 * is typed twice in a dialog of its own.
 */
class VelServerPage : public VelPreferencesPage
{
    Q_OBJECT
public:
    /** Where a server answers that was not told otherwise. */
    static constexpr int PlainPort = 7070;
    static constexpr int EncryptedPort = 7071;

    explicit VelServerPage(QWidget *parent = nullptr);

    [[nodiscard]] QString title() const override;
    [[nodiscard]] QIcon icon() const override;
    void show(const VelSettings &settings, const VelLook &look) override;
    void follow(const VelSettings &settings) override;
    void store(VelSettings &settings, VelLook &look) const override;
    /** An account is nobody's by default, and nobody would want theirs emptied. */
    [[nodiscard]] bool hasDefaults() const override { return false; }

private:
    void makeControls();
    void explainControls();
    void slotEncrypt(bool encrypt);
    void askPassword();
    void setDigest(const QString &digest);
    void testConnection();
    void slotTested(const VelSettings &tested, const VelConnectionResult &result);
    /** Takes over how a server was reached that this account had not been on before. */
    void takeOver(const VelConnectionResult &result);
    void updateTest();
    void showUserid();
    void forgetCertificate();
    /** The account as the inputs have it. */
    void takeInputs(VelSettings &settings) const;
    /** True when the inputs say what @p settings do. */
    [[nodiscard]] bool isShown(const VelSettings &settings) const;

    QLineEdit *m_server;
    QCheckBox *m_encrypt;
    QSpinBox *m_port;
    QLabel *m_traffic; ///< what others can read
    QPushButton *m_forget;
    QLineEdit *m_user;
    QPushButton *m_setPassword;
    QLabel *m_password; ///< whether there is one
    QLabel *m_userid;
    QPushButton *m_test;
    QLabel *m_result;
    VelSettings m_settings; ///< as they were shown at first
    QString m_digest;
    bool m_isTesting = false;
};
