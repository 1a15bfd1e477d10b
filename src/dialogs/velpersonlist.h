// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "model/velaccount.h"

#include <QTreeWidget>

/**
 * The accounts that take part in an entry in one role, in the order in which they were added.
 *
 * Persons attend, resources are booked, and an account stands in one of the lists of a dialog once. What a user adds is
 * checked; what is refused is told by refused(). Accounts may be dropped here and dragged to another list; Delete
 * removes the selected ones.
 */
class VelPersonList : public QTreeWidget
{
    Q_OBJECT
public:
    explicit VelPersonList(VelAccount::Attendee role, QWidget *parent = nullptr);

    [[nodiscard]] VelAccount::Attendee role() const { return m_role; }
    /** "Attendees", "Optional attendees" or "Resources". */
    [[nodiscard]] QString heading() const;
    /** The other lists of the same dialog; they must live as long as this one is used. */
    void setBuddies(const QVector<const VelPersonList *> &buddies) { m_buddies = buddies; }

    /**
     * True when the two are one: the same account of the server or, for those it does not know, the same name and
     * e-mail address. One of the server and another that it does not know are one when the e-mail address is.
     */
    [[nodiscard]] static bool isSame(const VelAccount &a, const VelAccount &b);

    [[nodiscard]] bool containsAccount(const VelAccount &account) const;
    /** True when the account is of a type that this list takes. Without a type it counts as a person. */
    [[nodiscard]] bool checkType(const VelAccount &account) const;
    /** True when the account stands in none of the other lists, @p except left out. */
    [[nodiscard]] bool checkBuddies(const VelAccount &account, const VelPersonList *except = nullptr) const
    {
        return !findBuddy(account, except);
    }
    /** Why the account cannot be added, or empty when it can; @p from is the list that it would leave. */
    [[nodiscard]] QString whyRefused(const VelAccount &account, const VelPersonList *from = nullptr) const;

    /** The accounts in their order, with the role of this list. */
    [[nodiscard]] VelAccountList accounts() const;
    /** Replaces all; nothing is checked, because an entry that is stored is shown as it is. */
    void setAccounts(const VelAccountList &accounts);
    /** Adds those that are not refused, and selects them. */
    void addAccounts(const VelAccountList &accounts) { moveAccounts(accounts, nullptr); }
    /** The same with accounts that then leave @p from; null for none. */
    void moveAccounts(const VelAccountList &accounts, VelPersonList *from);
    [[nodiscard]] VelAccountList selectedAccounts() const;
    void removeSelected();

Q_SIGNALS:
    /** Something was added or removed. */
    void listChanged();
    /** The reasons why something was not added. */
    void refused(const QString &why);

protected:
    void startDrag(Qt::DropActions supported) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void append(const VelAccount &account);
    void removeAccounts(const VelAccountList &accounts);
    void selectLast(int count);
    /** Another list that has the account, or null. */
    [[nodiscard]] const VelPersonList *findBuddy(const VelAccount &account,
                                                 const VelPersonList *except) const;
    [[nodiscard]] QString whyTypeRefused(const VelAccount &account) const;

    VelAccount::Attendee m_role;
    QVector<const VelPersonList *> m_buddies;
};
