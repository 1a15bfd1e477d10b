// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogs/velserverpage.h"

#include "dialogs/velpassword.h"
#include "hub/velapp.h"
#include "model/vellimits.h"

#include <KLocalizedString>

#include <QCheckBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpinBox>

#include <initializer_list>
#include <utility>

namespace
{
/** As many as tell nothing of the password. */
constexpr int PlaceholderLength = 8;

QLabel *makeText(QWidget *parent)
{
    auto *label = new QLabel(parent);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}
} // namespace

VelServerPage::VelServerPage(QWidget *parent)
    : VelPreferencesPage(parent)
    , m_server(new QLineEdit(this))
    , m_encrypt(new QCheckBox(i18n("&Encrypt the connection"), this))
    , m_port(new QSpinBox(this))
    , m_traffic(makeText(this))
    , m_forget(new QPushButton(i18n("&Forget this certificate"), this))
    , m_user(new QLineEdit(this))
    , m_setPassword(new QPushButton(i18n("Set pass&word..."), this))
    , m_password(new QLabel(this))
    , m_userid(new QLabel(this))
    , m_test(new QPushButton(i18n("&Test connection"), this))
    , m_result(makeText(this))
{
    makeControls();
    auto *password = new QHBoxLayout;
    password->addWidget(m_setPassword);
    password->addWidget(m_password, 1);
    auto *layout = new QFormLayout(this);
    layout->addRow(i18n("&Server:"), m_server);
    layout->addRow(QString(), m_encrypt);
    layout->addRow(m_traffic);
    layout->addRow(i18n("&Port:"), m_port);
    layout->addRow(QString(), m_forget);
    layout->addRow(i18n("&User name:"), m_user);
    layout->addRow(i18n("Password:"), password);
    layout->addRow(i18n("Your number on the server:"), m_userid);
    layout->addRow(QString(), m_test);
    layout->addRow(m_result);
    explainControls();
    watchInputs();

    connect(m_encrypt, &QCheckBox::toggled, this, &VelServerPage::slotEncrypt);
    connect(m_setPassword, &QPushButton::clicked, this, &VelServerPage::askPassword);
    connect(m_forget, &QPushButton::clicked, this, &VelServerPage::forgetCertificate);
    connect(m_test, &QPushButton::clicked, this, &VelServerPage::testConnection);
    connect(this, &VelPreferencesPage::changed, this, &VelServerPage::updateTest);
    slotEncrypt(false);
    updateTest();
}

void VelServerPage::makeControls()
{
    m_server->setObjectName(QStringLiteral("Server"));
    m_encrypt->setObjectName(QStringLiteral("Encrypt"));
    m_port->setObjectName(QStringLiteral("Port"));
    m_user->setObjectName(QStringLiteral("User"));
    m_setPassword->setObjectName(QStringLiteral("SetPassword"));
    m_forget->setObjectName(QStringLiteral("ForgetCertificate"));
    m_test->setObjectName(QStringLiteral("TestConnection"));
    m_result->setObjectName(QStringLiteral("TestResult"));
    m_port->setRange(1, VelLimits::HighestPort);
    m_userid->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_result->setTextInteractionFlags(Qt::TextSelectableByMouse);
    for (QPushButton *button : {m_setPassword, m_forget, m_test})
        button->setAutoDefault(false);
    for (QWidget *widget : std::initializer_list<QWidget *>{m_port, m_forget, m_test})
        widget->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void VelServerPage::explainControls()
{
    explain(m_server, i18n("The name of the computer that keeps the calendars of the group; empty for none"));
    explain(m_encrypt, i18n("Lets nobody on the way to the server read along. Servers of old cannot do it."));
    explain(m_port,
            i18n("The number at which the server answers: usually %1, or encrypted %2",
                 QString::number(PlainPort), QString::number(EncryptedPort)));
    explain(
        m_forget,
        i18n("You have accepted a certificate of this server that nobody vouches for. When it is forgotten, "
             "the next connection asks again whether to trust the server."));
    explain(m_user, i18n("Your name on the server"));
    explain(m_setPassword, i18n("The password that you have on the server. Only a digest of it is kept."));
    explain(m_userid, i18n("The server gives it with the first synchronization"));
    explain(m_test, i18n("Tries to reach the server with what stands here, and changes nothing there"));
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
    m_settings = settings;
    m_server->setText(settings.server);
    m_encrypt->setChecked(settings.encrypt);
    m_port->setValue(settings.port); // after the box, which may change it
    m_user->setText(settings.user);
    setDigest(settings.pass);
    showUserid();
    updateTest();
}

void VelServerPage::follow(const VelSettings &settings)
{
    const VelSettings before = std::exchange(m_settings, settings);
    VelSettings typed;
    takeInputs(typed);
    showUserid();
    if (typed.server != before.server || typed.user != before.user)
        return; // another account
    const QSignalBlocker blocker(this);
    if (typed.encrypt == before.encrypt && typed.port == before.port) {
        m_encrypt->setChecked(settings.encrypt);
        m_port->setValue(settings.port);
        if (typed.encrypt != settings.encrypt || typed.port != settings.port)
            updateTest();
    }
    setDigest(typed.pass == before.pass ? settings.pass : typed.pass);
}

void VelServerPage::showUserid()
{
    m_userid->setText(m_settings.origUserid == 0 ? i18n("not known yet")
                                                 : QString::number(m_settings.origUserid));
}

void VelServerPage::forgetCertificate()
{
    VelApp::getApp(this)->forgetCertificate(m_server->text().trimmed(), m_port->value());
    updateTest();
    m_result->setText(i18n("The next connection asks again whether to trust the server."));
}

void VelServerPage::store(VelSettings &settings, VelLook &) const
{
    takeInputs(settings);
}

void VelServerPage::takeInputs(VelSettings &settings) const
{
    settings.server = m_server->text().trimmed();
    settings.port = m_port->value();
    settings.encrypt = m_encrypt->isChecked();
    settings.user = m_user->text();
    settings.pass = m_digest;
}

bool VelServerPage::isShown(const VelSettings &settings) const
{
    VelSettings shown;
    takeInputs(shown);
    return shown.server == settings.server && shown.port == settings.port && shown.encrypt == settings.encrypt
        && shown.user == settings.user && shown.pass == settings.pass;
}

void VelServerPage::slotEncrypt(bool encrypt)
{
    if (m_port->value() == (encrypt ? PlainPort : EncryptedPort))
        m_port->setValue(encrypt ? EncryptedPort : PlainPort);
    m_traffic->setText(
        encrypt ? i18n("Everything travels encrypted.")
                : i18n("Without encryption everything in your calendar, and a digest that is as good as your "
                       "password, can be read by others on the network."));
}

void VelServerPage::askPassword()
{
    auto *dialog = new VelPassword(this, VelPassword::ConfirmMode);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    if (!m_digest.isEmpty())
        dialog->setPass(m_digest, PlaceholderLength);
    connect(dialog, &QDialog::accepted, this, [this, dialog] {
        if (dialog->getPass() == m_digest)
            return;
        setDigest(dialog->getPass());
        Q_EMIT changed();
    });
    dialog->open();
}

void VelServerPage::setDigest(const QString &digest)
{
    m_digest = digest;
    if (digest.isEmpty())
        m_password->setText(i18n("not set yet"));
    else
        m_password->setText(digest == m_settings.pass ? i18n("set") : i18n("set anew, not stored yet"));
}

void VelServerPage::testConnection()
{
    VelApp *app = VelApp::getApp(this);
    VelSettings tested = m_settings;
    takeInputs(tested);
    m_isTesting = true;
    updateTest();
    const QPointer<VelServerPage> page(this);
    app->testConnection(tested, [page, tested](const VelConnectionResult &result) {
        if (page)
            page->slotTested(tested, result);
    });
}

void VelServerPage::slotTested(const VelSettings &tested, const VelConnectionResult &result)
{
    m_isTesting = false;
    const bool isStillMeant = isShown(tested);
    if (isStillMeant && result.problem.isEmpty())
        takeOver(result);
    updateTest();
    if (!isStillMeant)
        return;
    if (!result.problem.isEmpty())
        m_result->setText(result.problem);
    else
        m_result->setText(result.encrypt ? i18n("The server was reached, encrypted, and knows you.")
                                         : i18n("The server was reached, not encrypted, and knows you."));
}

void VelServerPage::takeOver(const VelConnectionResult &result)
{
    const bool isNew = m_server->text().trimmed() != m_settings.server || m_user->text() != m_settings.user;
    if (!isNew || !result.encrypt)
        return;
    m_encrypt->setChecked(true);
    m_port->setValue(result.port);
}

/** A result tells nothing of other inputs than those it was got with. */
void VelServerPage::updateTest()
{
    m_result->setText(m_isTesting ? i18n("Connecting...") : QString());
    const VelApp *app = VelApp::getApp(this);
    m_forget->setEnabled(app && app->hasTrusted(m_server->text().trimmed(), m_port->value()));
    m_test->setEnabled(!m_isTesting && app && !m_server->text().trimmed().isEmpty()
                       && !m_user->text().isEmpty());
}
