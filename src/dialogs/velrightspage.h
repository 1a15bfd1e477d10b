// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "dialogs/velpreferencespage.h"

#include <QPointer>

class QLabel;
class QPushButton;
class QTreeView;
class VelApp;
class VelRightsModel;
class VelSearchLine;

/**
 * What others may do with the user's own calendar.
 *
 * The server keeps the rights: they are fetched each time that the page is first looked at, and sent back when they were
 * changed and are stored. Until they have come, the page says what it waits for and nothing can be changed.
 */
class VelRightsPage : public VelPreferencesPage
{
    Q_OBJECT
public:
    explicit VelRightsPage(QWidget *parent = nullptr);

    [[nodiscard]] QString title() const override;
    [[nodiscard]] QIcon icon() const override;
    /** Forgets what was fetched and changed. */
    void show(const VelSettings &settings, const VelLook &look) override;
    /** Sends the rights, if they were changed, to the account that they came from. */
    void store(VelSettings &settings, VelLook &look) const override;
    /** What the server decides for everybody must be chosen before anything is sent. */
    [[nodiscard]] QString problem() const override;
    [[nodiscard]] bool hasDefaults() const override { return false; }

protected:
    void showEvent(QShowEvent *event) override;

private:
    enum class State { Idle, Waiting, Failed, Ready };

    void makeControls();
    void fetch();
    void fetchAgain();
    void slotAccounts();
    void slotRights();
    void slotFailed(int type);
    void updateControls();
    /** Why there is nothing to fetch; empty when there is. */
    [[nodiscard]] QString obstacle() const;
    [[nodiscard]] QString explanation() const;

    QPointer<VelApp> m_app;
    VelRightsModel *m_model;
    QLabel *m_message;
    QTreeView *m_view;
    VelSearchLine *m_search;
    QPushButton *m_fetchAgain;
    State m_state = State::Idle;
    bool m_isListMissing = false; // the accounts could not be fetched
    QString m_server; // whose rights they are
    QString m_user;
    quint32 m_ownId = 0;
};
