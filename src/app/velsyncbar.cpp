// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "app/velsyncbar.h"

#include <KSqueezedTextLabel>

#include <QAction>
#include <QStatusBar>
#include <QToolButton>

VelSyncBar::VelSyncBar(QAction *stop, QStatusBar *bar)
    : QObject(bar)
    , m_warning(new KSqueezedTextLabel(bar))
{
    auto *button = new QToolButton(bar);
    button->setObjectName(QStringLiteral("StopSynchronizing"));
    button->setDefaultAction(stop);
    button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::TabFocus);
    m_warning->setObjectName(QStringLiteral("SyncWarning"));
    m_warning->setTextElideMode(Qt::ElideRight);
    m_warning->setTextFormat(Qt::PlainText);
    // After the status, before what is there for good.
    bar->insertPermanentWidget(1, button);
    bar->insertPermanentWidget(2, m_warning);
    button->setVisible(stop->isEnabled());
    m_warning->hide();
    connect(stop, &QAction::changed, button, [stop, button] { button->setVisible(stop->isEnabled()); });
}

void VelSyncBar::setWarning(const QString &text)
{
    m_warning->setText(text);
    m_warning->setVisible(!text.isEmpty());
}
