// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "app/veltray.h"

#include "hub/velapp.h"

#include <KLocalizedString>
#include <KStatusNotifierItem>

#include <QMenu>
#include <QSystemTrayIcon>

VelTray::VelTray(QWidget *window, QAction *quit)
    : m_window(window)
    , m_quit(quit)
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
    m_item->contextMenu()->addAction(m_quit);
    QObject::connect(m_item.get(), &KStatusNotifierItem::activateRequested, m_window, [this] {
        m_window->setWindowState(m_window->windowState() & ~Qt::WindowMinimized);
        m_window->show();
        m_window->raise();
        m_window->activateWindow();
    });
}

void VelTray::hide()
{
    m_item.reset();
}
