// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "hub/velapp.h"

#include "document/veldoc.h"
#include "hub/vellook.h"
#include "model/velnettask.h"

#include <KActionCollection>

#include <QFile>
#include <QStyle>

VelApp *VelApp::getApp(const QWidget *widget)
{
    for (const QWidget *w = widget; w; w = w->parentWidget()) {
        if (const auto *app = qobject_cast<const VelApp *>(w))
            return const_cast<VelApp *>(app);
    }
    return nullptr;
}

VelDoc *VelApp::getDocument(const QWidget *widget)
{
    const VelApp *app = getApp(widget);
    return app ? app->document() : nullptr;
}

const VelSettings *VelApp::getSettings(const QWidget *widget)
{
    const VelApp *app = getApp(widget);
    return app ? app->settings() : nullptr;
}

QIcon VelApp::getIcon(const QString &name)
{
    const QString file = QLatin1String(":/icons/delmasttime/") + name + QLatin1String(".svg");
    return QFile::exists(file) ? QIcon(file) : QIcon::fromTheme(name);
}

QPixmap VelApp::getPixmap(const QString &name, const QWidget *widget)
{
    const int size = widget->style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, widget);
    return getIcon(name).pixmap(size, size);
}

const VelAccountList &VelApp::getAccounts() const
{
    return document()->getAccounts();
}

QString VelApp::getAccountName(quint32 id) const
{
    const VelAccount *account = getAccounts().get(id);
    return account ? account->name : QString();
}

void VelApp::requestAccounts(bool quiet)
{
    if (getAccounts().isEmpty())
        netTask(VelNetTask::UserList, {}, quiet);
}

QAction *VelApp::getAction(const QString &name) const
{
    return actionCollection()->action(name);
}
