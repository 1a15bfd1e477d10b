// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QDialog>

class QFormLayout;
class QLineEdit;

/**
 * Asks for a password, twice so that a slip is noticed, and turns it into the digest that is kept and sent. The
 * password itself is never handed over and never shown.
 */
class VelPassword : public QDialog
{
    Q_OBJECT
public:
    /** For any other number the dialog is one that confirms. */
    enum Mode { ConfirmMode = 0, ChangeMode = 1 };

    /** To change it, the old password is asked for too: see setOldPass(). */
    VelPassword(QWidget *parent, int mode);

    /** The digest that the old password must have. */
    void setOldPass(const QString &digest) { m_oldDigest = digest; }
    /**
     * There is a password already, of which only @p digest is known: the fields show @p length place holders, and
     * the digest stays the result unless the user types something.
     */
    void setPass(const QString &digest, int length);
    /** The digest of the new password, once the dialog is accepted; empty before. */
    [[nodiscard]] QString getPass() const { return m_digest; }

private:
    QLineEdit *addField(QFormLayout *form, const QString &label, const char *name, const QString &tip);
    void dropPlaceholder(QLineEdit *edited);
    void slotOk();
    void refuse(const QString &text, QLineEdit *field);

    QLineEdit *m_old = nullptr; ///< only to change the password
    QLineEdit *m_new = nullptr;
    QLineEdit *m_confirm = nullptr;
    QString m_oldDigest;
    QString m_keptDigest;
    QString m_digest;
    bool m_isPlaceholder = false;
};
