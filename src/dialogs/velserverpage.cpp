// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogs/velserverpage.h"

#include "hub/velapp.h"
#include "model/vellimits.h"
#include "model/velsettings.h"
#include "model/wsecurity.h"

#include <KLocalizedString>

#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>

VelServerPage::VelServerPage(QWidget *parent)
    : VelPreferencesPage(parent)
    , m_server(new QLineEdit(this))
    , m_port(new QSpinBox(this))
    , m_user(new QLineEdit(this))
    , m_password(new QLineEdit(this))
    , m_userid(new QLabel(this))
    , m_test(new QPushButton(i18n("&Test connection"), this))
{
    m_server->setObjectName(QStringLiteral("Server"));
    m_port->setObjectName(QStringLiteral("Port"));
    m_user->setObjectName(QStringLiteral("User"));
    m_password->setObjectName(QStringLiteral("Pass"));
    m_port->setRange(1, VelLimits::HighestPort);
    m_port->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    m_password->setEchoMode(QLineEdit::Password);
    m_userid->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_test->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    m_test->setEnabled(false); // the program has no connection yet

    auto *layout = new QFormLayout(this);
    layout->addRow(i18n("&Server:"), m_server);
    layout->addRow(i18n("&Port:"), m_port);
    layout->addRow(i18n("&User name:"), m_user);
    layout->addRow(i18n("Pass&word:"), m_password);
    layout->addRow(i18n("Your number on the server:"), m_userid);
    layout->addRow(QString(), m_test);
    explain(m_server, i18n("The name of the computer that keeps the calendars of the group; empty for none"));
    explain(m_port, i18n("The number at which the server answers"));
    explain(m_user, i18n("Your name on the server"));
    explain(m_password, i18n("Only a digest of the password is kept. Type nothing to leave it as it is."));
    explain(m_userid, i18n("The server gives it with the first synchronization"));
    explain(m_test, i18n("This version of the program cannot connect to a server yet"));
    watchInputs();
}

QString VelServerPage::title() const
{
    return i18n("Server Account");
}

QIcon VelServerPage::icon() const
{
    return VelApp::getIcon(QStringLiteral("password"));
}

void VelServerPage::show(const VelSettings &settings, const VelLook &)
{
    m_server->setText(settings.server);
    m_port->setValue(settings.port);
    m_user->setText(settings.user);
    m_digest = settings.pass;
    m_password->clear();
    m_password->setPlaceholderText(m_digest.isEmpty() ? i18n("not set yet") : i18n("unchanged"));
    m_userid->setText(settings.origUserid == 0 ? i18n("not known yet")
                                               : QString::number(settings.origUserid));
}

void VelServerPage::store(VelSettings &settings, VelLook &) const
{
    settings.server = m_server->text().trimmed();
    settings.port = m_port->value();
    settings.user = m_user->text();
    settings.pass = m_password->text().isEmpty() ? m_digest : WSecurity::md5(m_password->text());
}
