// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogs/velakonadiaddressbook.h"

#include "dialogs/velvcardaddressbook.h"

#include <Akonadi/CollectionFetchJob>
#include <Akonadi/CollectionFetchScope>
#include <Akonadi/ItemCreateJob>
#include <Akonadi/ItemFetchJob>
#include <Akonadi/ItemFetchScope>
#include <Akonadi/Monitor>
#include <Akonadi/ServerManager>
#include <Akonadi/Session>
#include <KContacts/Addressee>

#include <QUuid>

#include <chrono>
#include <utility>

namespace
{
constexpr std::chrono::milliseconds NoticeDelay(200);

bool holdsContacts(const Akonadi::Collection &collection)
{
    // Virtual ones only show what stands in others.
    return !collection.isVirtual()
        && collection.contentMimeTypes().contains(KContacts::Addressee::mimeType());
}
} // namespace

VelAkonadiAddressBook::VelAkonadiAddressBook()
{
    m_notice.setSingleShot(true);
    m_notice.setInterval(NoticeDelay);
    connect(&m_notice, &QTimer::timeout, this, &VelAddressBook::changed);
    connect(Akonadi::ServerManager::self(), &Akonadi::ServerManager::stateChanged, this,
            [this](Akonadi::ServerManager::State state) {
                setRunning(state == Akonadi::ServerManager::Running);
            });
    setRunning(Akonadi::ServerManager::isRunning());
}

VelAkonadiAddressBook::~VelAkonadiAddressBook()
{
    stop();
}

QVector<VelAddressee> VelAkonadiAddressBook::addressees() const
{
    QVector<VelAddressee> all;
    for (const QVector<VelAddressee> &people : m_people)
        all += people;
    return all + m_sent;
}

bool VelAkonadiAddressBook::add(const VelAddressee &addressee)
{
    const QByteArray card =
        VelVCardAddressBook::toCard(addressee, QUuid::createUuid().toString(QUuid::WithoutBraces));
    if (!m_target.isValid() || card.isEmpty())
        return false;
    Akonadi::Item item(KContacts::Addressee::mimeType());
    item.setPayloadFromData(card);
    auto *job = new Akonadi::ItemCreateJob(item, m_target, m_session.get());
    connect(job, &KJob::result, this, [this, addressee](KJob *done) { finishAdding(done, addressee); });
    m_sent.append(addressee);
    return true;
}

void VelAkonadiAddressBook::finishAdding(KJob *job, const VelAddressee &addressee)
{
    m_sent.removeOne(addressee);
    if (job->error())
        Q_EMIT notStored(addressee);
    else
        m_people.insert(static_cast<Akonadi::ItemCreateJob *>(job)->item().id(), {addressee});
}

void VelAkonadiAddressBook::setRunning(bool isRunning)
{
    if (isRunning == (m_session != nullptr))
        return;
    if (isRunning) {
        m_session = std::make_unique<Akonadi::Session>();
        watch();
        fetch();
    } else {
        stop();
        m_notice.start();
    }
}

void VelAkonadiAddressBook::stop()
{
    m_monitor.reset();
    m_session.reset(); // Its jobs end as failed, those that add too.
    m_target = {};
    m_collections.clear();
    m_people.clear();
    const QVector<VelAddressee> sent = std::exchange(m_sent, {});
    for (const VelAddressee &addressee : sent)
        Q_EMIT notStored(addressee);
}

void VelAkonadiAddressBook::watch()
{
    m_monitor = std::make_unique<Akonadi::Monitor>();
    Akonadi::Monitor *monitor = m_monitor.get();
    monitor->setMimeTypeMonitored(KContacts::Addressee::mimeType());
    // What they hold may still have to come from the source, which only a job asks for.
    const auto fetchItem = [this](const Akonadi::Item &item) {
        fetchItems(new Akonadi::ItemFetchJob(item, m_session.get()));
    };
    connect(monitor, &Akonadi::Monitor::itemAdded, this, fetchItem);
    connect(monitor, &Akonadi::Monitor::itemChanged, this, fetchItem);
    connect(monitor, &Akonadi::Monitor::itemsRemoved, this, &VelAkonadiAddressBook::dropItems);
    connect(monitor, &Akonadi::Monitor::collectionAdded, this, [this](const Akonadi::Collection &added) {
        if (holdsContacts(added))
            fetch();
    });
    connect(monitor, &Akonadi::Monitor::collectionRemoved, this, [this](const Akonadi::Collection &removed) {
        if (m_collections.contains(removed.id()))
            fetch();
    });
}

void VelAkonadiAddressBook::fetch()
{
    m_target = {};
    m_collections.clear();
    m_people.clear();
    auto *job = new Akonadi::CollectionFetchJob(Akonadi::Collection::root(),
                                                Akonadi::CollectionFetchJob::Recursive, m_session.get());
    job->fetchScope().setContentMimeTypes({KContacts::Addressee::mimeType()});
    connect(job, &Akonadi::CollectionFetchJob::collectionsReceived, this,
            &VelAkonadiAddressBook::takeCollections);
    connect(job, &KJob::result, &m_notice, QOverload<>::of(&QTimer::start));
}

void VelAkonadiAddressBook::takeCollections(const Akonadi::Collection::List &collections)
{
    for (const Akonadi::Collection &collection : collections) {
        if (!holdsContacts(collection))
            continue;
        m_collections.insert(collection.id());
        if (!m_target.isValid() && (collection.rights() & Akonadi::Collection::CanCreateItem))
            m_target = collection;
        fetchItems(new Akonadi::ItemFetchJob(collection, m_session.get()));
    }
}

void VelAkonadiAddressBook::fetchItems(Akonadi::ItemFetchJob *job)
{
    job->fetchScope().fetchFullPayload();
    // One contact that its source does not give must not hide the others.
    job->fetchScope().setIgnoreRetrievalErrors(true);
    job->setDeliveryOption(Akonadi::ItemFetchJob::EmitItemsInBatches);
    connect(job, &Akonadi::ItemFetchJob::itemsReceived, this, &VelAkonadiAddressBook::takeItems);
}

void VelAkonadiAddressBook::takeItems(const Akonadi::Item::List &items)
{
    for (const Akonadi::Item &item : items) {
        if (item.mimeType() == KContacts::Addressee::mimeType())
            m_people.insert(item.id(), VelVCardAddressBook::fromCards(item.payloadData()));
    }
    if (!m_notice.isActive())
        m_notice.start();
}

void VelAkonadiAddressBook::dropItems(const Akonadi::Item::List &items)
{
    for (const Akonadi::Item &item : items)
        m_people.remove(item.id());
    m_notice.start();
}
