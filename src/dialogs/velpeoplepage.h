// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "model/velaccount.h"

#include <QWidget>

#include <array>

class QGridLayout;
class QLabel;
class QPushButton;
class QToolButton;
class VelAddressBook;
class VelNewAccount;
class VelPersonList;
class VelPersonSource;
struct VelAddressee;

/**
 * The page of the entry editor that says who takes part: on one side those to choose from, on the other the lists of
 * attendees, optional attendees and resources.
 */
class VelPeoplePage : public QWidget
{
    Q_OBJECT
public:
    /** @p book must outlive the page. */
    explicit VelPeoplePage(VelAddressBook &book, QWidget *parent = nullptr);

    /** The users and resources that the server knows; call it again when they are others. */
    void setServerAccounts(const VelAccountList &accounts);
    /** Fills the three lists by the roles of an entry's accounts. One without a known role is an attendee. */
    void setAccounts(const VelAccountList &accounts);
    /** Attendees, then optional attendees, then resources, each with that role. */
    [[nodiscard]] VelAccountList getAccounts() const;

    /** Adds what is selected in the source to @p list, or says why not. */
    void moveTo(VelPersonList *list);
    /** Removes what is selected in @p list. */
    void moveFrom(VelPersonList *list);
    /** Asks for somebody new and adds them. */
    void slotNewAddress();

Q_SIGNALS:
    /** Somebody was added or removed. */
    void accountsChanged();
    /** The user asks when everybody has time. */
    void plannerWanted();

protected:
    void changeEvent(QEvent *event) override;

private:
    struct Target {
        VelPersonList *list = nullptr;
        QToolButton *add = nullptr;
        QToolButton *remove = nullptr;
    };

    void makeTarget(QGridLayout *grid, VelAccount::Attendee role);
    void makeLayout();
    void connectTarget(const Target &target);
    [[nodiscard]] Target &target(int role);
    void addChosen();
    void addNew(const VelNewAccount &dialog);
    void sayNotStored(const VelAddressee &addressee);
    void slotListChanged();
    void updateArrows();
    void updateButtons();
    void say(const QString &text);

    VelAddressBook &m_book;
    VelPersonSource *m_source;
    std::array<Target, 3> m_targets; ///< by role
    QPushButton *m_newAttendee;
    QPushButton *m_planner;
    QLabel *m_message;
};
