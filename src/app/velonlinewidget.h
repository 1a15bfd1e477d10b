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
    /** Why the server could not be reached without anybody asking; empty when it could. Adds to the tool tip. */
    void setFailure(const QString &text);
    [[nodiscard]] NetStatus netStatus() const { return m_status; }

private:
    void updateText();

    NetStatus m_status = NoConnection;
    QString m_failure;
};
