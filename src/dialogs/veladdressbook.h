// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QObject>
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
class VelAddressBook : public QObject
{
    Q_OBJECT
public:
    /**
     * Everybody who has a name or an e-mail address, as far as they are known by now. May read them anew each time, so
     * keep the answer until changed().
     */
    [[nodiscard]] virtual QVector<VelAddressee> addressees() const = 0;
    /** Stores one more, now or soon; they are among the addressees at once. False when nobody will be stored. */
    [[nodiscard]] virtual bool add(const VelAddressee &addressee) = 0;

    /** The address book of this user. */
    [[nodiscard]] static std::unique_ptr<VelAddressBook> create();

Q_SIGNALS:
    /** The addressees have become others without add(). */
    void changed();
    /** Somebody whom add() had taken could not be stored after all. */
    void notStored(const VelAddressee &addressee);
};
