// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogs/velnewaccount.h"

#include <KLocalizedString>

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>

namespace
{
constexpr int MaxLength = 300;
} // namespace

VelNewAccount::VelNewAccount(QWidget *parent)
    : QDialog(parent)
    , m_nameInput(new QLineEdit(this))
    , m_emailInput(new QLineEdit(this))
    , m_listInput(new QComboBox(this))
    , m_bookInput(new QCheckBox(i18n("Add to KDE Address Book"), this))
    , m_hint(new QLabel(this))
{
    setWindowTitle(i18n("New addressee"));
    makeControls();
    makeLayout();
    connect(m_nameInput, &QLineEdit::textChanged, this, &VelNewAccount::check);
    connect(m_emailInput, &QLineEdit::textChanged, this, &VelNewAccount::check);
    check();
}

void VelNewAccount::makeControls()
{
    constexpr int usualCharacters = 36;
    m_nameInput->setMinimumWidth(fontMetrics().averageCharWidth() * usualCharacters);
    m_nameInput->setMaxLength(MaxLength);
    m_nameInput->setToolTip(i18n("The name that others see, for example first name and surname."));
    m_emailInput->setMaxLength(MaxLength);
    m_emailInput->setInputMethodHints(Qt::ImhEmailCharactersOnly);
    m_emailInput->setToolTip(i18n("The address that an invitation is sent to."));
    for (const int role : {VelAccount::RequiredAttendee, VelAccount::OptionalAttendee}) {
        VelAccount account;
        account.attendee = role;
        m_listInput->addItem(account.getAttendeeStr(), role);
    }
    m_listInput->setToolTip(i18n("The list that the new person goes to."));
    m_bookInput->setToolTip(i18n("Keeps the name and the address for other entries and programs."));
    m_hint->setWordWrap(true);
}

void VelNewAccount::makeLayout()
{
    auto *form = new QFormLayout(this);
    form->addRow(i18n("Name"), m_nameInput);
    form->addRow(i18n("Email"), m_emailInput);
    form->addRow(i18n("Add to"), m_listInput);
    form->addRow(QString(), m_bookInput);
    form->addRow(m_hint);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    m_ok = buttons->button(QDialogButtonBox::Ok);
    m_ok->setDefault(true);
    form->addRow(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

bool VelNewAccount::isEmail(const QString &text)
{
    // What is allowed left of the sign is nearly everything; these would make two addresses of one.
    static const QRegularExpression form(QStringLiteral(R"(\A[^\s@,;<>"\p{Cc}]+@[^\s@,;<>"\p{Cc}.]+)"
                                                        R"((\.[^\s@,;<>"\p{Cc}.]+)*\z)"));
    return form.match(text).hasMatch();
}

QString VelNewAccount::whyIncomplete(const QString &name, const QString &email)
{
    if (!email.isEmpty() && !isEmail(email))
        return i18n("This is no e-mail address.");
    return name.isEmpty() && email.isEmpty() ? i18n("A name or an e-mail address is needed.") : QString();
}

VelAccount VelNewAccount::account() const
{
    const VelAddressee typed = addressee();
    VelAccount account(typed.name.isEmpty() ? typed.email : typed.name, typed.email, 0);
    account.type = VelAccount::Person;
    account.attendee = m_listInput->currentData().toInt();
    return account;
}

VelAddressee VelNewAccount::addressee() const
{
    return {m_nameInput->text().simplified(), m_emailInput->text().trimmed()};
}

bool VelNewAccount::isForAddressBook() const
{
    return m_bookInput->isChecked();
}

void VelNewAccount::check()
{
    const VelAddressee typed = addressee();
    const QString why = whyIncomplete(typed.name, typed.email);
    m_hint->setText(why);
    m_ok->setEnabled(why.isEmpty());
}
