// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QString>
#include <QVector>

#include <memory>

/** Somebody in the user's address book. */
struct VelAddressee {
    bool operator==(const VelAddressee &other) const { return name == other.name && email == other.email; }

    QString name; ///< as it is shown
    QString email; ///< the preferred one of several; may be empty
};

/**
 * The people whom the user knows apart from the server.
 *
 * An address book that is missing or cannot be read is an empty one: who picks people from it has the server's too,
 * and nobody wants a box about it each time.
 */
class VelAddressBook
{
public:
    virtual ~VelAddressBook() = default;

    /** Everybody who has a name or an e-mail address. Reads them anew each time, so keep the answer. */
    [[nodiscard]] virtual QVector<VelAddressee> addressees() const = 0;
    /** Stores one more; false when nobody was stored. */
    [[nodiscard]] virtual bool add(const VelAddressee &addressee) = 0;

    /** The address book of this user. */
    [[nodiscard]] static std::unique_ptr<VelAddressBook> create();
};
