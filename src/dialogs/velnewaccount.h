// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "dialogs/veladdressbook.h"
#include "model/velaccount.h"

#include <QDialog>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

/** Asks for the name and e-mail address of somebody new, the list they go to, and whether the address book keeps them. */
class VelNewAccount : public QDialog
{
    Q_OBJECT
public:
    explicit VelNewAccount(QWidget *parent = nullptr);

    /** True for what a mail program would send to: something, one "@" and a host, without blanks and list signs. */
    [[nodiscard]] static bool isEmail(const QString &text);
    /** What is wrong with the two, or empty when there is a name or an address that makes sense. */
    [[nodiscard]] static QString whyIncomplete(const QString &name, const QString &email);

    /** The new person with the role chosen; without a name they are called by the address. */
    [[nodiscard]] VelAccount account() const;
    /** What was typed, for the address book. */
    [[nodiscard]] VelAddressee addressee() const;
    [[nodiscard]] bool isForAddressBook() const;

private:
    void makeControls();
    void makeLayout();
    void check();

    QLineEdit *m_nameInput;
    QLineEdit *m_emailInput;
    QComboBox *m_listInput;
    QCheckBox *m_bookInput;
    QLabel *m_hint;
    QPushButton *m_ok = nullptr;
};
