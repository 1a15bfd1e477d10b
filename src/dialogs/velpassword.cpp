// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogs/velpassword.h"

#include "document/velmessages.h"
#include "hub/velapp.h"
#include "model/wsecurity.h"

#include <KLocalizedString>

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>

namespace
{
/** One of a private area, which no keyboard types. */
constexpr QChar Placeholder(0xE000);
constexpr int FieldCharacters = 28;
} // namespace

VelPassword::VelPassword(QWidget *parent, int mode)
    : QDialog(parent)
{
    const bool isChange = mode == ChangeMode;
    setWindowTitle(isChange ? i18n("Change password at the server") : i18n("Confirm password"));
    auto *form = new QFormLayout(this);
    if (isChange)
        m_old =
            addField(form, i18n("Old password"), "OldPass", i18n("The password that the server knows now"));
    m_new = addField(form, i18n("New password"), "NewPass", i18n("Only a digest of it is kept"));
    m_confirm = addField(form, i18n("Confirm password"), "ConfirmPass",
                         i18n("The same again, so that a slip of the finger is noticed"));
    for (QLineEdit *field : {m_new, m_confirm})
        connect(field, &QLineEdit::textEdited, this, [this, field] { dropPlaceholder(field); });

    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Ok)->setDefault(true);
    form->addRow(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &VelPassword::slotOk);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    (m_old ? m_old : m_new)->setFocus();
}

QLineEdit *VelPassword::addField(QFormLayout *form, const QString &label, const char *name,
                                 const QString &tip)
{
    auto *field = new QLineEdit(this);
    field->setObjectName(QLatin1String(name));
    field->setEchoMode(QLineEdit::Password);
    field->setMinimumWidth(fontMetrics().averageCharWidth() * FieldCharacters);
    field->setToolTip(tip);
    field->setWhatsThis(tip);
    form->addRow(label, field);
    return field;
}

void VelPassword::setPass(const QString &digest, int length)
{
    m_keptDigest = digest;
    m_isPlaceholder = true;
    for (QLineEdit *field : {m_new, m_confirm}) {
        field->setText(QString(length, Placeholder));
        field->selectAll();
    }
}

/** With the first key only what was typed is left, wherever among the place holders it was. */
void VelPassword::dropPlaceholder(QLineEdit *edited)
{
    if (!m_isPlaceholder)
        return;
    m_isPlaceholder = false;
    for (QLineEdit *field : {m_new, m_confirm})
        field->setText(field == edited ? field->text().remove(Placeholder) : QString());
}

void VelPassword::slotOk()
{
    if (m_old && WSecurity::md5(m_old->text()) != m_oldDigest) {
        refuse(i18n("Old Password does not match."), m_old);
        return;
    }
    if (m_new->text() != m_confirm->text()) {
        refuse(i18n("Passwords do not match."), m_confirm);
        return;
    }
    m_digest = m_isPlaceholder ? m_keptDigest : WSecurity::md5(m_new->text());
    accept();
}

void VelPassword::refuse(const QString &text, QLineEdit *field)
{
    if (VelApp *app = VelApp::getApp(this))
        app->messages().error(text);
    field->setFocus();
    field->selectAll();
}
