// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogs/veladdressbook.h"

#ifdef DELMAST_HAVE_AKONADI
#include "dialogs/velakonadiaddressbook.h"
#include "dialogs/veljoinedaddressbook.h"
#endif
#include "dialogs/velvcardaddressbook.h"

std::unique_ptr<VelAddressBook> VelAddressBook::create()
{
    auto cards = std::make_unique<VelVCardAddressBook>(VelVCardAddressBook::defaultFolder());
#ifdef DELMAST_HAVE_AKONADI
    return std::make_unique<VelJoinedAddressBook>(std::make_unique<VelAkonadiAddressBook>(),
                                                  std::move(cards));
#else
    return cards;
#endif
}
