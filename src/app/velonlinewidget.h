// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "widgets/wpixmapwidget.h"

/** The picture in the status bar that tells how the connection to the server is. */
class VelOnlineWidget : public WPixmapWidget
{
    Q_OBJECT
public:
    enum NetStatus { NoConnection = 0, Connecting = 1, Connected = 2 };

    explicit VelOnlineWidget(QWidget *parent);

    void setNetStatus(NetStatus status);
    [[nodiscard]] NetStatus netStatus() const { return m_status; }

private:
    NetStatus m_status = NoConnection;
};
