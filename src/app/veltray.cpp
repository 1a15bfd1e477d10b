// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "app/veltray.h"

#include "hub/velapp.h"

#include <KLocalizedString>
#include <KStatusNotifierItem>

#include <QSystemTrayIcon>

VelTray::VelTray(QWidget *window)
    : m_window(window)
{
}

VelTray::~VelTray() = default;

bool VelTray::isAvailable()
{
    return QSystemTrayIcon::isSystemTrayAvailable();
}

void VelTray::show()
{
    if (m_item)
        return;
    m_item = std::make_unique<KStatusNotifierItem>();
    m_item->setIconByPixmap(VelApp::getIcon(QStringLiteral("delmasttime-mini")));
    m_item->setTitle(i18n("Delmast Time"));
    m_item->setToolTipTitle(i18n("Delmast Time"));
    m_item->setCategory(KStatusNotifierItem::ApplicationStatus);
    m_item->setStatus(KStatusNotifierItem::Active);
    // The window is not handed over: the item would then hide and show it by rules of its own.
    m_item->setStandardActionsEnabled(false);
    QObject::connect(m_item.get(), &KStatusNotifierItem::activateRequested, m_window, [this] {
        m_window->showNormal();
        m_window->raise();
        m_window->activateWindow();
    });
}

void VelTray::hide()
{
    m_item.reset();
}
