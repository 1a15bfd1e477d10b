// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "model/velentry.h"

#include <QObject>

#include <optional>

class QMenu;
class QPoint;
class QWidget;

/**
 * Shows an entry of whose owner only the busy time is known: what is missing is fetched from the server first.
 *
 * One entry is waited for at a time, the one that was asked for last.
 */
class VelCommonEntry : public QObject
{
    Q_OBJECT
public:
    /** Belongs to @p view, and stands in the window of that. */
    explicit VelCommonEntry(QWidget *view);

    /** Opens the menu for that entry. */
    void popup(const VelEntry &entry, QPoint globalPos);
    /** Shows the entry: at once, or when the server has sent it. */
    void view(const VelEntry &entry);

private:
    void waitFor(const VelEntry &entry);
    void slotDisplayCommonEntry();
    void slotFailed(int type, const QString &argument);
    void stopWaiting();
    void show(const VelEntry &entry) const;
    [[nodiscard]] QWidget *widget() const;

    // Copies: the busy times that they are of may be gone meanwhile.
    VelEntry m_entry; // that the menu is for
    std::optional<VelEntry> m_wanted; // that was asked for and has not come
    QMenu *m_commonMenu = nullptr; // made when first asked for
};
