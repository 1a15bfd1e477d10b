// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <memory>

class KStatusNotifierItem;
class QAction;
class QWidget;

/** The icon in the system tray that a docked window leaves behind. */
class VelTray
{
public:
    /** Both must outlive this. A click on the icon brings the window back; @p quit is in its menu. */
    VelTray(QWidget *window, QAction *quit);
    ~VelTray();

    /** True when there is a system tray that would show the icon. */
    [[nodiscard]] static bool isAvailable();

    void show();
    void hide();
    [[nodiscard]] bool isShown() const { return m_item != nullptr; }

private:
    QWidget *m_window;
    QAction *m_quit;
    std::unique_ptr<KStatusNotifierItem> m_item;
};
