// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "app/velonlinewidget.h"

#include "hub/velapp.h"
#include "widgets/wshowntext.h"

#include <KLocalizedString>

namespace
{
QString pixmapName(VelOnlineWidget::NetStatus status)
{
    switch (status) {
    case VelOnlineWidget::Connecting:
        return QStringLiteral("connect_creating");
    case VelOnlineWidget::Connected:
        return QStringLiteral("connect_established");
    case VelOnlineWidget::NoConnection:
        break;
    }
    return QStringLiteral("connect_no");
}

QString statusText(VelOnlineWidget::NetStatus status)
{
    switch (status) {
    case VelOnlineWidget::Connecting:
        return i18n("Connecting to server");
    case VelOnlineWidget::Connected:
        return i18n("Connection established");
    case VelOnlineWidget::NoConnection:
        break;
    }
    return i18n("No connection");
}
} // namespace

VelOnlineWidget::VelOnlineWidget(QWidget *parent)
    : WPixmapWidget(QStyle::PM_SmallIconSize, parent)
{
    setNetStatus(NoConnection);
}

void VelOnlineWidget::setNetStatus(NetStatus status)
{
    m_status = status;
    updateText();
    setIcon(VelApp::getIcon(pixmapName(status)));
}

void VelOnlineWidget::setFailure(const QString &text)
{
    m_failure = text;
    updateText();
}

void VelOnlineWidget::updateText()
{
    QString text = statusText(m_status);
    if (!m_failure.isEmpty())
        text = i18nc("state of the connection, and why the last attempt failed",
                     "%1\nThe last attempt failed: %2", text, m_failure);
    setToolTip(WShownText::plain(text));
    setAccessibleName(text);
}
