// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QMenu>

/**
 * A popup menu of application actions. An item looks like its action and is enabled as its action is, but
 * calls the slot that it was inserted with: a view's own "cut" instead of the window's.
 */
class WPopupMenu : public QMenu
{
    Q_OBJECT
public:
    /** The most actions that one menu takes. */
    static constexpr int MaximumActions = 32;

    explicit WPopupMenu(QWidget *parent = nullptr);

    using QWidget::insertAction;
    /**
     * Adds an item for @p action at the end that calls @p slot of @p receiver. The action stays the caller's;
     * when it goes before the menu does, its item stays and is disabled. Returns the item, which the menu
     * owns; nullptr, after a warning, when the menu is full.
     */
    template <typename Receiver, typename Slot>
    QAction *insertAction(QAction *action, const Receiver *receiver, Slot slot)
    {
        QAction *item = addItem(action);
        if (item) {
            connect(item, &QAction::triggered, receiver, slot);
        }
        return item;
    }

private:
    QAction *addItem(QAction *action);
};
