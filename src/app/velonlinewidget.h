// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QWidget>

/** The picture in the status bar that tells how the connection to the server is. */
class VelOnlineWidget : public QWidget
{
    Q_OBJECT
public:
    enum NetStatus { NoConnection = 0, Connecting = 1, Connected = 2 };

    explicit VelOnlineWidget(QWidget *parent);

    void setNetStatus(NetStatus status);
    [[nodiscard]] NetStatus netStatus() const { return m_status; }
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    NetStatus m_status = NoConnection;
};
