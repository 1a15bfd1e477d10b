// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "dialogs/veladdressbook.h"
#include "model/velaccount.h"

#include <QWidget>

#include <optional>

class QComboBox;
class QTreeView;
class VelPersonModel;
class VelSearchLine;

/**
 * Where the people of an entry come from: the server's accounts or the address book, with a line that searches
 * while it is typed in.
 *
 * The arrow keys move in the list from the search line too. Return or a double click takes what is selected.
 */
class VelPersonSource : public QWidget
{
    Q_OBJECT
public:
    enum Source { ServerSource = 0, AddressBookSource = 1 };

    /** @p book must outlive this; it is read when the user first asks for it, and again when it changes. */
    explicit VelPersonSource(const VelAddressBook &book, QWidget *parent = nullptr);

    /** Search and selection stay. */
    void setServerAccounts(const VelAccountList &accounts);
    /** Fills the list from that source; others leave it empty. */
    void slotSourceType(int source);
    /** Reads the address book again, now or when it is next shown. Search and selection stay. */
    void refreshAddressBook();
    [[nodiscard]] bool hasSelection() const;
    [[nodiscard]] VelAccountList selectedAccounts() const;

Q_SIGNALS:
    void selectionChanged();
    /** The user wants what is selected. */
    void chosen();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void makeControls();
    void makeLayout();
    void search(const QString &text);
    void selectFirst();
    void refill(const VelAccountList &accounts);
    void select(const VelAccountList &accounts);
    [[nodiscard]] const VelAccountList &addressBookAccounts();

    const VelAddressBook &m_book;
    VelAccountList m_serverAccounts;
    std::optional<VelAccountList> m_bookAccounts; ///< none until somebody looks
    VelPersonModel *m_model;
    QComboBox *m_sourceInput;
    QTreeView *m_view;
    VelSearchLine *m_searchInput;
};
