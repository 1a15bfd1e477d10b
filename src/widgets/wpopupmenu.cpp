// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "widgets/wpopupmenu.h"

#include <QAction>
#include <QKeySequence>

#include <algorithm>

namespace
{
/** The menu's own image of an application action. */
class ActionItem : public QAction
{
public:
    ActionItem(const QAction *action, QObject *parent)
        : QAction(parent)
    {
        follow(action);
        connect(action, &QAction::changed, this, [this, action] { follow(action); });
        connect(action, &QObject::destroyed, this, [this] { setEnabled(false); });
    }

private:
    void follow(const QAction *action)
    {
        setIcon(action->icon());
        setText(textOf(action));
        setEnabled(action->isEnabled());
    }

    /** With the keys as text only: a second action with the same shortcut would make it an ambiguous one. */
    static QString textOf(const QAction *action)
    {
        const QString keys = action->shortcut().toString(QKeySequence::NativeText);
        return keys.isEmpty() ? action->text() : action->text() + QLatin1Char('\t') + keys;
    }
};

bool isActionItem(const QAction *item)
{
    return dynamic_cast<const ActionItem *>(item) != nullptr;
}
} // namespace

WPopupMenu::WPopupMenu(QWidget *parent)
    : QMenu(parent)
{
}

QAction *WPopupMenu::addItem(QAction *action)
{
    const QList<QAction *> items = actions();
    if (std::count_if(items.begin(), items.end(), isActionItem) >= MaximumActions) {
        qWarning("ASSERT: \"%s\" in %s (%d)", "pos<32", "wpopupmenu", __LINE__);
        return nullptr;
    }
    auto *item = new ActionItem(action, this);
    addAction(item);
    return item;
}
