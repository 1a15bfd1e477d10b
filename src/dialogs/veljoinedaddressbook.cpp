// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogs/veljoinedaddressbook.h"

#include <QPair>
#include <QSet>

#include <utility>

VelJoinedAddressBook::VelJoinedAddressBook(std::unique_ptr<VelAddressBook> first,
                                           std::unique_ptr<VelAddressBook> second)
    : m_second(std::move(second))
    , m_first(std::move(first))
{
    connect(m_first.get(), &VelAddressBook::changed, this, &VelJoinedAddressBook::tellChange);
    connect(m_first.get(), &VelAddressBook::notStored, this, &VelJoinedAddressBook::rescue);
    connect(m_second.get(), &VelAddressBook::changed, this, &VelAddressBook::changed);
    connect(m_second.get(), &VelAddressBook::notStored, this, &VelAddressBook::notStored);
}

VelJoinedAddressBook::~VelJoinedAddressBook()
{
    // What the first book gives back while it goes is stored, but there is nothing left to ask.
    blockSignals(true);
}

QVector<VelAddressee> VelJoinedAddressBook::addressees() const
{
    if (!m_isTelling || !m_kept)
        m_kept = m_second->addressees();
    QVector<VelAddressee> joined;
    QSet<QPair<QString, QString>> seen;
    const QVector<VelAddressee> all = m_first->addressees() + *m_kept;
    for (const VelAddressee &addressee : all) {
        const QPair<QString, QString> key(addressee.name.toCaseFolded(), addressee.email.toCaseFolded());
        if (!seen.contains(key))
            joined.append(addressee);
        seen.insert(key);
    }
    return joined;
}

bool VelJoinedAddressBook::add(const VelAddressee &addressee)
{
    return m_first->add(addressee) || m_second->add(addressee);
}

/** Nothing is new in the second book, and reading it may take a while: it is not read again for each that comes. */
void VelJoinedAddressBook::tellChange()
{
    m_isTelling = true;
    Q_EMIT changed();
    m_isTelling = false;
}

void VelJoinedAddressBook::rescue(const VelAddressee &addressee)
{
    if (m_second->add(addressee))
        Q_EMIT changed();
    else
        Q_EMIT notStored(addressee);
}
