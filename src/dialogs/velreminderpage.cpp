// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogs/velreminderpage.h"

#include "dialogs/velreminderwidget.h"
#include "hub/velapp.h"
#include "model/velsettings.h"
#include "widgets/wfileedit.h"

#include <KLocalizedString>

#include <QCheckBox>
#include <QFormLayout>

VelReminderPage::VelReminderPage(QWidget *parent)
    : VelPreferencesPage(parent)
    , m_doDialog(new QCheckBox(i18n("Show a dialo&g"), this))
    , m_doSound(new QCheckBox(i18n("Play a &sound:"), this))
    , m_sound(new WFileEdit(WFileEdit::Kind::OpenFile, this))
    , m_doExec(new QCheckBox(i18n("Run a &program:"), this))
    , m_exec(new WFileEdit(WFileEdit::Kind::Command, this))
    , m_default(new VelReminderWidget(this, false))
{
    m_doDialog->setObjectName(QStringLiteral("DoReminderDialog"));
    m_doSound->setObjectName(QStringLiteral("DoReminderSound"));
    m_sound->setObjectName(QStringLiteral("ReminderSound"));
    m_doExec->setObjectName(QStringLiteral("DoReminderExec"));
    m_exec->setObjectName(QStringLiteral("ReminderExec"));
    m_default->setObjectName(QStringLiteral("ReminderDefault"));
    for (const auto &[box, file] : {std::pair(m_doSound, m_sound), std::pair(m_doExec, m_exec)}) {
        file->setEnabled(false);
        file->setAccessibleName(box->text().remove(QLatin1Char('&')));
        connect(box, &QCheckBox::toggled, file, &WFileEdit::setEnabled);
    }

    auto *layout = new QFormLayout(this);
    layout->setRowWrapPolicy(QFormLayout::WrapLongRows);
    layout->addRow(m_doDialog);
    layout->addRow(m_doSound, m_sound);
    layout->addRow(m_doExec, m_exec);
    layout->addRow(i18n("&New reminders:"), m_default);
    explain(m_doDialog, i18n("Shows what is due in a dialog"));
    explain(m_doSound, i18n("Plays a sound file when an entry reminds"));
    explain(m_sound, m_doSound->toolTip());
    explain(m_doExec,
            i18n("Runs a program when an entry reminds; blanks stand between it and its arguments"));
    explain(m_exec, m_doExec->toolTip());
    explain(m_default, i18n("The lead time that the editor offers for a new reminder"));
    watchInputs();
}

QString VelReminderPage::title() const
{
    return i18n("Reminders");
}

QIcon VelReminderPage::icon() const
{
    return VelApp::getIcon(QStringLiteral("reminder"));
}

void VelReminderPage::show(const VelSettings &settings, const VelLook &)
{
    m_doDialog->setChecked(settings.doReminderDialog);
    m_doSound->setChecked(settings.doReminderSound);
    m_sound->setUrl(settings.reminderSound);
    m_doExec->setChecked(settings.doReminderExec);
    m_exec->setUrl(settings.reminderExec);
    m_default->setReminder(static_cast<quint32>(settings.reminderDefault));
}

void VelReminderPage::store(VelSettings &settings, VelLook &) const
{
    settings.doReminderDialog = m_doDialog->isChecked();
    settings.doReminderSound = m_doSound->isChecked();
    settings.reminderSound = m_sound->getUrl();
    settings.doReminderExec = m_doExec->isChecked();
    settings.reminderExec = m_exec->getUrl();
    settings.reminderDefault = static_cast<int>(m_default->getReminder());
}
