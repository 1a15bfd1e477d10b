// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogs/veladdressbook.h"

#include "dialogs/velvcardaddressbook.h"

std::unique_ptr<VelAddressBook> VelAddressBook::create()
{
    return std::make_unique<VelVCardAddressBook>(VelVCardAddressBook::defaultFolder());
}
