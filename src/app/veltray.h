// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <memory>

class KStatusNotifierItem;
class QWidget;

/** The icon in the system tray that a docked window leaves behind. */
class VelTray
{
public:
    /** @p window must outlive this; a click on the icon brings it back. */
    explicit VelTray(QWidget *window);
    ~VelTray();

    /** True when there is a system tray that would show the icon. */
    [[nodiscard]] static bool isAvailable();

    void show();
    void hide();
    [[nodiscard]] bool isShown() const { return m_item != nullptr; }

private:
    QWidget *m_window;
    std::unique_ptr<KStatusNotifierItem> m_item;
};
