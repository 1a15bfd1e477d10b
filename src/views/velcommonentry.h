// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "model/velentry.h"

#include <QObject>

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
    void slotViewCommonEntry();
    void slotDisplayCommonEntry();
    void stopWaiting();
    [[nodiscard]] QWidget *widget() const;

    VelEntry m_entry; // a copy: the busy times it is of may be gone while the menu is open
    bool m_isWaiting = false;
    QMenu *m_commonMenu = nullptr; // made when first asked for
};
