// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "views/velcommonentry.h"

#include "document/veldoc.h"
#include "hub/velapp.h"
#include "model/velnettask.h"

#include <KLocalizedString>

#include <QMenu>

VelCommonEntry::VelCommonEntry(QWidget *view)
    : QObject(view)
{
}

QWidget *VelCommonEntry::widget() const
{
    return static_cast<QWidget *>(parent());
}

void VelCommonEntry::popup(const VelEntry &entry, QPoint globalPos)
{
    if (!m_commonMenu) {
        m_commonMenu = new QMenu(widget());
        m_commonMenu->addAction(VelApp::getIcon(QStringLiteral("info")), i18n("View Event"), this,
                                &VelCommonEntry::slotViewCommonEntry);
    }
    m_entry = entry;
    m_commonMenu->popup(globalPos);
}

void VelCommonEntry::view(const VelEntry &entry)
{
    m_entry = entry;
    slotViewCommonEntry();
}

void VelCommonEntry::slotViewCommonEntry()
{
    VelApp *app = VelApp::getApp(widget());
    const VelDoc &doc = *app->document();
    stopWaiting();
    if (doc.isOwner(&m_entry)) {
        const VelEntry *local = doc.getEntry(doc.getLocalId(m_entry.globalid));
        app->showEntryInfo(local ? *local : m_entry, VelAnswer::NeverInvitation);
    } else if (m_entry.access == VelEntry::NoAccess && m_entry.display == VelEntry::NoDisplay) {
        m_isWaiting = true;
        connect(app, &VelApp::entriesReceived, this, &VelCommonEntry::slotDisplayCommonEntry);
        connect(app, &VelApp::netTaskFailed, this, [this](int type) {
            if (type == VelNetTask::GetEntries)
                stopWaiting();
        });
        app->netTask(VelNetTask::GetEntries, QStringLiteral("<globalid>%1</globalid>").arg(m_entry.globalid),
                     false);
    } else {
        app->showEntryInfo(m_entry, VelAnswer::NeverInvitation);
    }
}

/** Another entry may have come first: it was asked for before. */
void VelCommonEntry::slotDisplayCommonEntry()
{
    VelApp *app = VelApp::getApp(widget());
    const VelEntry *received = app->getReceivedEntry(m_entry.globalid);
    if (!received)
        return;
    stopWaiting();
    const VelEntry shown = *received; // other answers may come while it is looked at
    app->showEntryInfo(shown, VelAnswer::NeverInvitation);
}

void VelCommonEntry::stopWaiting()
{
    if (!m_isWaiting)
        return;
    m_isWaiting = false;
    disconnect(VelApp::getApp(widget()), nullptr, this, nullptr);
}
