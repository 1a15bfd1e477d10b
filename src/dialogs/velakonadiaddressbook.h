// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "dialogs/veladdressbook.h"

#include <Akonadi/Collection>
#include <Akonadi/Item>

#include <QMap>
#include <QSet>
#include <QTimer>

namespace Akonadi
{
class ItemFetchJob;
class Monitor;
class Session;
} // namespace Akonadi
class KJob;

/**
 * The contacts that Akonadi keeps, while its server runs; an empty address book while it does not. Never starts it.
 *
 * The contacts come in the background, from the moment on that this is made or the server is up.
 */
class VelAkonadiAddressBook : public VelAddressBook
{
    Q_OBJECT
public:
    VelAkonadiAddressBook();
    ~VelAkonadiAddressBook() override;

    [[nodiscard]] QVector<VelAddressee> addressees() const override;
    /**
     * Sends somebody to the first folder that may be written to. False while none is known; those who were sent and not
     * stored when the server stops, or when this ends, are given back through notStored().
     */
    [[nodiscard]] bool add(const VelAddressee &addressee) override;

private:
    void setRunning(bool isRunning);
    void watch();
    void fetch();
    void fetchItems(Akonadi::ItemFetchJob *job);
    void takeCollections(const Akonadi::Collection::List &collections);
    void takeItems(const Akonadi::Item::List &items);
    void dropItems(const Akonadi::Item::List &items);
    void finishAdding(KJob *job, const VelAddressee &addressee);
    void stop();

    std::unique_ptr<Akonadi::Session> m_session; ///< owns the jobs; none while the server does not run
    std::unique_ptr<Akonadi::Monitor> m_monitor;
    Akonadi::Collection m_target; ///< where new ones go
    QSet<Akonadi::Collection::Id> m_collections; ///< that hold contacts
    QMap<Akonadi::Item::Id, QVector<VelAddressee>> m_people;
    QVector<VelAddressee> m_sent; ///< but not stored yet
    QTimer m_notice; ///< makes one notice of many that come together
};
