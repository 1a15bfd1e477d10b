// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QDialog>

class QLabel;
class QTreeView;
class VelApp;
class VelPersonModel;
class VelSearchLine;

/** Lets the user pick whose calendar is opened from the server. */
class VelRemoteCalendarDialog : public QDialog
{
    Q_OBJECT
public:
    /** Shows the accounts of the window that @p parent is in, and asks the server for them if none are known. */
    explicit VelRemoteCalendarDialog(QWidget *parent);
    ~VelRemoteCalendarDialog() override;

    /** Fills the list anew; what was selected stays so. */
    void update();
    /** The same, and asks the server when nobody is known yet: for each time that the dialog is opened. */
    void refresh();

Q_SIGNALS:
    /** The dialog was closed with OK; @p id is the number of the user or resource. */
    void calendarChosen(quint32 id);

private:
    void makeControls();
    void makeLayout();
    void request();
    void slotAccountsReady();
    void slotFailed(int type);
    void slotOk();
    void search(const QString &text);
    /** The number of the account that is selected, or 0. */
    [[nodiscard]] quint32 selectedId() const;
    void select(quint32 id);

    VelApp *m_app;
    VelPersonModel *m_model;
    QTreeView *m_view;
    VelSearchLine *m_search;
    QLabel *m_message;
};
