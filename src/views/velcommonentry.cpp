// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "views/velcommonentry.h"

#include "document/veldoc.h"
#include "hub/velapp.h"
#include "model/velnettask.h"

#include <KLocalizedString>

#include <QMenu>
#include <QTimer>

namespace
{
/** What the request for an entry carries. */
QString bodyFor(const VelEntry &entry)
{
    return QStringLiteral("<globalid>%1</globalid>").arg(entry.globalid);
}
} // namespace

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
                                [this] { view(m_entry); });
    }
    m_entry = entry;
    m_commonMenu->popup(globalPos);
}

void VelCommonEntry::view(const VelEntry &entry)
{
    const VelDoc &doc = *VelApp::getApp(widget())->document();
    stopWaiting();
    if (doc.isOwner(&entry)) {
        const VelEntry *local = doc.getEntry(doc.getLocalId(entry.globalid));
        show(local ? *local : entry);
    } else if (entry.access == VelEntry::NoAccess && entry.display == VelEntry::NoDisplay) {
        waitFor(entry);
    } else {
        show(entry);
    }
}

void VelCommonEntry::waitFor(const VelEntry &entry)
{
    VelApp *app = VelApp::getApp(widget());
    m_wanted = entry;
    connect(app, &VelApp::entriesReceived, this, &VelCommonEntry::slotDisplayCommonEntry);
    connect(app, &VelApp::netTaskFailed, this, &VelCommonEntry::slotFailed);
    app->netTask(VelNetTask::GetEntries, bodyFor(entry), false);
}

/** Another entry may have come first: it was asked for before. */
void VelCommonEntry::slotDisplayCommonEntry()
{
    const VelEntry *received =
        m_wanted ? VelApp::getApp(widget())->getReceivedEntry(m_wanted->globalid) : nullptr;
    if (!received)
        return;
    stopWaiting();
    // Later: the connection waits for those whom it tells of an answer, and the user may look for long.
    QTimer::singleShot(0, this, [this, shown = *received] { show(shown); });
}

void VelCommonEntry::slotFailed(int type, const QString &argument)
{
    if (type == VelNetTask::GetEntries && m_wanted && argument == bodyFor(*m_wanted))
        stopWaiting();
}

void VelCommonEntry::show(const VelEntry &entry) const
{
    const auto shown = std::make_unique<VelEntry>(entry); // other answers may come while it is looked at
    VelApp::getApp(widget())->showEntryInfo(*shown, VelAnswer::NeverInvitation);
}

void VelCommonEntry::stopWaiting()
{
    if (!m_wanted)
        return;
    m_wanted.reset();
    disconnect(VelApp::getApp(widget()), nullptr, this, nullptr);
}
