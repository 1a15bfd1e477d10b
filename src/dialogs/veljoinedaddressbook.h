// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "dialogs/veladdressbook.h"

#include <optional>

/** Two address books as one. The first is asked first; what it does not store, the second does. */
class VelJoinedAddressBook : public VelAddressBook
{
    Q_OBJECT
public:
    VelJoinedAddressBook(std::unique_ptr<VelAddressBook> first, std::unique_ptr<VelAddressBook> second);
    ~VelJoinedAddressBook() override;

    /** Those of the first book, then the others of the second; who has the same name and e-mail address is one. */
    [[nodiscard]] QVector<VelAddressee> addressees() const override;
    [[nodiscard]] bool add(const VelAddressee &addressee) override;

private:
    void tellChange();
    void rescue(const VelAddressee &addressee);

    // The first is gone first: what it gives back then is still stored.
    std::unique_ptr<VelAddressBook> m_second;
    std::unique_ptr<VelAddressBook> m_first;
    mutable std::optional<QVector<VelAddressee>> m_kept; ///< of the second, by its last answer
    bool m_isTelling = false;
};
