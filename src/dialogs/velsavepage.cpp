// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogs/velsavepage.h"

#include "hub/velapp.h"
#include "model/vellimits.h"
#include "model/velsettings.h"
#include "widgets/wfileedit.h"

#include <KLocalizedString>

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QSpinBox>

namespace
{
/** The input of an interval, to be used while @p box is checked. */
QSpinBox *makeInterval(QCheckBox *box, const char *name)
{
    auto *interval = new QSpinBox(box->parentWidget());
    const auto showUnit = [interval](int minutes) {
        interval->setSuffix(i18ncp("after the number in an input", " minute", " minutes", minutes));
    };
    interval->setObjectName(QLatin1String(name));
    interval->setRange(1, VelLimits::LongestInterval);
    interval->setAccessibleName(box->text().remove(QLatin1Char('&')));
    interval->setEnabled(false);
    showUnit(interval->value());
    QObject::connect(interval, QOverload<int>::of(&QSpinBox::valueChanged), interval, showUnit);
    QObject::connect(box, &QCheckBox::toggled, interval, &QSpinBox::setEnabled);
    return interval;
}
} // namespace

VelSavePage::VelSavePage(QWidget *parent)
    : VelPreferencesPage(parent)
    , m_autoSave(new QCheckBox(i18n("&Save the calendar every"), this))
    , m_saveInterval(makeInterval(m_autoSave, "AutoSaveInterval"))
    , m_autoSaveSync(new QCheckBox(i18n("Sa&ve the calendar after each synchronization"), this))
    , m_autoSync(new QCheckBox(i18n("S&ynchronize with the server every"), this))
    , m_syncInterval(makeInterval(m_autoSync, "AutoSyncInterval"))
    , m_archiveFile(new WFileEdit(WFileEdit::Kind::SaveFile, this))
{
    m_autoSave->setObjectName(QStringLiteral("AutoSave"));
    m_autoSaveSync->setObjectName(QStringLiteral("AutoSaveSync"));
    m_autoSync->setObjectName(QStringLiteral("AutoSync"));
    m_archiveFile->setObjectName(QStringLiteral("ArchiveFile"));

    auto *archiveLabel = new QLabel(i18n("A&rchive file:"), this);
    archiveLabel->setBuddy(m_archiveFile);
    auto *archive = new QHBoxLayout;
    archive->addWidget(archiveLabel);
    archive->addWidget(m_archiveFile);
    auto *layout = new QGridLayout(this);
    layout->addWidget(m_autoSave, 0, 0);
    layout->addWidget(m_saveInterval, 0, 1);
    layout->addWidget(m_autoSaveSync, 1, 0, 1, 3);
    layout->addWidget(m_autoSync, 2, 0);
    layout->addWidget(m_syncInterval, 2, 1);
    layout->addLayout(archive, 3, 0, 1, 3);
    layout->setColumnStretch(2, 1);
    layout->setRowStretch(4, 1);
    explain(m_autoSave, i18n("Saves a calendar that has a file by itself when it has been changed"));
    explain(m_autoSaveSync, i18n("Saves the calendar by itself when it has been synchronized"));
    explain(m_autoSync, i18n("Exchanges changes with the server by itself, once a server account is set"));
    explain(m_archiveFile, i18n("Where old entries go when they are archived"));
    watchInputs();
}

QString VelSavePage::title() const
{
    return i18n("Saving and Synchronizing");
}

QIcon VelSavePage::icon() const
{
    return VelApp::getIcon(QStringLiteral("synchronize"));
}

void VelSavePage::show(const VelSettings &settings, const VelLook &)
{
    m_autoSave->setChecked(settings.autoSave);
    m_saveInterval->setValue(settings.autoSaveInterval);
    m_autoSaveSync->setChecked(settings.autoSaveSync);
    m_autoSync->setChecked(settings.autoSync);
    m_syncInterval->setValue(settings.autoSyncInterval);
    m_archiveFile->setUrl(settings.archiveFile);
}

void VelSavePage::store(VelSettings &settings, VelLook &) const
{
    settings.autoSave = m_autoSave->isChecked();
    settings.autoSaveInterval = m_saveInterval->value();
    settings.autoSaveSync = m_autoSaveSync->isChecked();
    settings.autoSync = m_autoSync->isChecked();
    settings.autoSyncInterval = m_syncInterval->value();
    settings.archiveFile = m_archiveFile->getUrl();
}
