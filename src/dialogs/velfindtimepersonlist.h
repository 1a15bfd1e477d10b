// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "model/velaccount.h"

#include <QTreeWidget>

#include <array>

/** Somebody invited, with a box that says whether they have a column. */
class VelFindTimePersonListItem : public QTreeWidgetItem
{
public:
    /** Checked; but for somebody whom the server does not know neither that nor to be changed. */
    VelFindTimePersonListItem(QTreeWidgetItem *group, const VelAccount &account);

    [[nodiscard]] const VelAccount &getAccount() const { return m_account; }
    [[nodiscard]] bool isChecked() const { return checkState(0) == Qt::Checked; }

private:
    VelAccount m_account;
};

/** Those invited, in groups by their roles. */
class VelFindTimePersonList : public QTreeWidget
{
    Q_OBJECT
public:
    explicit VelFindTimePersonList(QWidget *parent = nullptr);

    /** Replaces all. One without a known role is an attendee. */
    void setAccounts(const VelAccountList &accounts);
    /** Those that the server knows and whose boxes are checked, group by group. */
    [[nodiscard]] VelAccountList getSelected() const;

Q_SIGNALS:
    /** A box was checked or unchecked. */
    void personToggled(QTreeWidgetItem *item);

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    std::array<QTreeWidgetItem *, 3> m_groups{}; // by role
};
