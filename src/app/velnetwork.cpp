// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "app/velnetwork.h"

#include "app/velclosing.h"
#include "document/veldoc.h"
#include "document/velmessages.h"
#include "model/velsettings.h"

#include <KFormat>
#include <KLocalizedString>

#include <QPointer>

#include <algorithm>
#include <utility>

namespace
{
constexpr int MsecsPerMinute = 60000;

/** Entries fetched to be looked at are kept while they may be; more would be a calendar. */
constexpr std::size_t MostReceived = 100;

constexpr char NewPassHead[] = "<newpass>";
constexpr char NewPassTail[] = "</newpass>";

/** The digest that a change of the password carries: with several under way each stands for its own. */
QString digestOf(const QString &argument)
{
    const int head = int(sizeof NewPassHead) - 1;
    return argument.mid(head, argument.size() - head - int(sizeof NewPassTail) + 1);
}
} // namespace

VelNetwork::VelNetwork(Context context)
    : m_context(std::move(context))
    , m_connection(m_context.doc, m_context.settings, &m_context.trust)
{
    m_autoSyncTimer.setSingleShot(true);
    m_waitingTimer.setSingleShot(true);
    connect(&m_autoSyncTimer, &QTimer::timeout, this, &VelNetwork::slotAutoSync);
    connect(&m_waitingTimer, &QTimer::timeout, this, &VelNetwork::takeWaiting);
    connect(&m_context.doc, &VelDoc::contentsReplaced, this, [this] {
        m_record.clear();
        Q_EMIT warningChanged(stoppedText());
    });
    connectConnection();
}

void VelNetwork::connectConnection()
{
    connect(&m_connection, &VelConnection::netStatusChanged, this, &VelNetwork::netStatusChanged);
    connect(&m_connection, &VelConnection::answered, this, &VelNetwork::take);
    connect(&m_connection, &VelConnection::failed, this, &VelNetwork::tellFailure);
    connect(&m_connection, &VelConnection::closedUnanswered, this, &VelNetwork::noticed);
    connect(&m_connection, &VelConnection::taskFailed, this, [this](int type, const QString &argument) {
        if (type == VelNetTask::Sync)
            failSync();
        Q_EMIT netTaskFailed(type, argument);
    });
    connect(&m_connection, &VelConnection::taskEnded, this, [this](int type) {
        if (std::exchange(m_hasShownProgress, false))
            m_context.ready();
        if (type == VelNetTask::Sync && !m_waiting)
            endSync();
        Q_EMIT taskEnded();
    });
    connect(&m_connection, &VelConnection::taskFailed, this, &VelNetwork::taskEnded);
    connect(&m_connection, &VelConnection::trialWanted, this, &VelNetwork::trialWanted);
    connect(&m_connection, &VelConnection::queueEmpty, this, &VelNetwork::idle);
    connect(&m_connection, &VelConnection::accessDenied, this, &VelNetwork::accessDenied);
    connect(&m_connection, &VelConnection::progress, this, [this](qint64 bytes) {
        m_hasShownProgress = true;
        m_context.status(i18n("Receiving data from the server: %1", KFormat().formatByteSize(double(bytes))));
    });
}

VelNetwork::~VelNetwork() = default;

bool VelNetwork::hasAccount() const
{
    return !m_context.settings.server.isEmpty() && !m_context.settings.user.isEmpty();
}

void VelNetwork::netTask(int type, const QString &argument, bool quiet)
{
    if (!hasAccount()) // whoever waits for the answer is to know
        QTimer::singleShot(0, this, [this, type, argument] { Q_EMIT netTaskFailed(type, argument); });
    m_connection.netTask(type, argument, quiet);
}

void VelNetwork::slotSynchronize()
{
    if (m_isByHand || m_isMerging)
        return;
    const QString text = i18n("Synchronizing with server");
    if (!hasAccount()) {
        tellNoAccount();
    } else if (m_isSynchronizing) {
        // What runs by itself may have been sent before the last change.
        m_isByHand = m_isWantedAgain = true;
        m_context.lockChanged();
        m_context.status(text);
    } else {
        startIfAllowed(text, false);
    }
}

void VelNetwork::stopSynchronizing()
{
    if (!isStoppable())
        return;
    m_isGivenUp = true;
    m_isWantedAgain = false;
    Q_EMIT noticed(i18n("Synchronizing was stopped."));
    if (std::exchange(m_waiting, std::nullopt))
        endWaiting();
    else
        m_connection.giveUp(VelNetTask::Sync);
}

void VelNetwork::tellNoAccount()
{
    m_context.messages.information(
        i18n("Please set server connection settings in Settings -> Configuring Delmast Time."));
}

void VelNetwork::slotAutoSync()
{
    if (!m_context.settings.autoSync || m_isStopped)
        return;
    if (m_isSynchronizing || m_context.isInUse())
        m_autoSyncTimer.start(LockedRetry);
    else if (hasAccount() && mayRunByItself())
        startIfAllowed(i18n("Synchronizing with server."), true);
    else
        setAutoSyncTimer(); // another calendar, or account, may be there by then
}

void VelNetwork::synchronizeAtStart()
{
    m_isStartWindow = true;
    slotAutoSync();
}

bool VelNetwork::mayRunByItself() const
{
    const QString synctime = m_context.doc.getSynctime();
    return m_isStartWindow || (!synctime.isEmpty() && synctime != VelCalendarMeta().synctime);
}

/** Nothing is sent of a calendar that is somebody else's or an archive. */
void VelNetwork::startIfAllowed(const QString &text, bool quiet)
{
    const QPointer<VelNetwork> self(this);
    const auto maySync = m_context.maySync; // this may go while it asks
    std::optional<VelMessages::Unasked> unasked;
    if (quiet)
        unasked.emplace(m_context.messages);
    const bool isAllowed = maySync(!quiet);
    unasked.reset();
    if (!self)
        return;
    if (isAllowed && !m_isSynchronizing)
        startSync(text, quiet);
    else if (quiet)
        setAutoSyncTimer();
}

void VelNetwork::startSync(const QString &text, bool quiet)
{
    m_isSynchronizing = true;
    m_isByHand = !quiet;
    m_isGivenUp = false;
    m_outcome = VelSyncRecord::Outcome::Undecided;
    m_context.lockChanged();
    m_context.status(text);
    m_connection.netTask(VelNetTask::Sync, {}, quiet);
}

void VelNetwork::endSync()
{
    if (!m_isSynchronizing)
        return;
    noteOutcome();
    const bool wasByHand = m_isByHand;
    m_isSynchronizing = m_isByHand = m_isMerging = false;
    if (!m_connection.isUnanswered())
        m_context.doc.endExchange();
    m_context.lockChanged();
    m_context.ready();
    setAutoSyncTimer();
    const bool hasMoreToSend = std::exchange(m_hasMoreToSend, false);
    if (std::exchange(m_isWantedAgain, false))
        startSync(i18n("Synchronizing with server"), false);
    else if (hasMoreToSend && !m_isStopped)
        startSync(i18n("Synchronizing with server"), !wasByHand);
    else
        Q_EMIT syncEnded();
}

/** The end follows with that of the request, unless that never had its turn. */
void VelNetwork::failSync()
{
    if (!m_isGivenUp)
        m_outcome = VelSyncRecord::Outcome::Failed;
    if (m_connection.currentType() != VelNetTask::Sync)
        endSync();
}

void VelNetwork::noteOutcome()
{
    m_record.note(m_outcome, !m_isByHand, m_context.now(), m_connection.lastFailure());
    Q_EMIT warningChanged(m_record.warning(m_context.now().date()));
}

void VelNetwork::setAutoSyncTimer()
{
    if (m_context.settings.autoSync && !m_isStopped) {
        m_autoSyncTimer.start(m_context.settings.autoSyncInterval * MsecsPerMinute);
        return;
    }
    m_autoSyncTimer.stop();
    m_record.clear();
    Q_EMIT warningChanged(stoppedText());
}

void VelNetwork::sendChanges()
{
    if (!m_isSynchronizing && hasAccount())
        startIfAllowed(i18n("Synchronizing with server."), true);
}

void VelNetwork::accountTried(const QString &problem)
{
    if (problem.isEmpty())
        m_connection.resume();
    else
        m_connection.failWaiting(problem);
}

void VelNetwork::stop()
{
    m_isStopped = true;
    setAutoSyncTimer();
}

void VelNetwork::resume()
{
    if (!std::exchange(m_isStopped, false))
        return;
    Q_EMIT warningChanged({});
    setAutoSyncTimer();
}

QString VelNetwork::stoppedText() const
{
    return m_isStopped ? i18n("Access denied: not synchronized by itself before \"Synchronize\" succeeds.")
                       : QString();
}

bool VelNetwork::isChanging() const
{
    const std::deque<VelNetTask> &queue = m_connection.taskQueue();
    return m_waiting || m_isMerging || VelClosing::waitsFor(m_connection.currentType())
        || std::any_of(queue.begin(), queue.end(),
                       [](const VelNetTask &task) { return VelClosing::waitsFor(task.type); });
}

void VelNetwork::changePassword(const QString &digest)
{
    const QString argument = QLatin1String(NewPassHead) + digest + QLatin1String(NewPassTail);
    m_connection.netTask(VelNetTask::ChangePass, argument, false);
}

void VelNetwork::tellFailure(const QString &message, bool quiet)
{
    // By then the user may have turned to something else.
    const VelMessages::Unasked unasked(m_context.messages);
    if (!quiet)
        m_context.messages.error(message);
}

void VelNetwork::take(int type, const std::shared_ptr<VelXmlContent> &content, const VelSentEntries &sent)
{
    const QPointer<VelNetwork> self(this);
    if (type != VelNetTask::Sync)
        takeOther(type, *content);
    else if (m_context.isInUse())
        putOff({content, sent});
    else
        takeIn({content, sent});
    if (self)
        m_connection.finishTask();
}

/** Other requests go on: they may be for the very work that the answer waits for. */
void VelNetwork::putOff(const Answer &answer)
{
    m_waiting = answer;
    m_context.status(i18n("The server has answered. Its changes wait until you are done with the entry."));
    m_waitingTimer.start(HeldRetry);
}

void VelNetwork::release()
{
    if (m_waiting)
        m_waitingTimer.start(0);
}

void VelNetwork::takeWaiting()
{
    if (!m_waiting)
        return;
    if (m_context.isInUse()) {
        m_waitingTimer.start(HeldRetry);
        return;
    }
    const QPointer<VelNetwork> self(this);
    takeIn(*std::exchange(m_waiting, std::nullopt));
    if (self)
        endWaiting();
}

/** Ends the synchronisation whose request has ended before. */
void VelNetwork::endWaiting()
{
    const QPointer<VelNetwork> self(this);
    endSync();
    if (self && !isBusy())
        Q_EMIT idle();
}

/** Brings the answer to a synchronisation into the calendar. */
void VelNetwork::takeIn(const Answer &answer)
{
    m_isMerging = true;
    m_context.lockChanged();
    takeSync(*answer.content, answer.sent);
}

void VelNetwork::takeSync(VelXmlContent &content, const VelSentEntries &sent)
{
    VelDoc &doc = m_context.doc;
    if (!doc.isExchanging())
        return; // another calendar has been opened: the answer is not about this one
    if (content.origuserid && *content.origuserid != m_context.settings.origUserid) {
        m_context.settings.origUserid = *content.origuserid;
        Q_EMIT settingsChanged();
    }
    const bool hasAccounts = content.accounts.has_value();
    VelMerge merge(doc, std::move(content), sent, m_context.settings.origUserid);
    if (hasAccounts)
        Q_EMIT accountsReady();
    const QPointer<VelNetwork> self(this);
    for (const VelMerge::Question &notice : merge.notices()) {
        m_context.tell(notice);
        if (!self)
            return; // with the window, and nothing applied
    }
    if (!doc.isExchanging() || (merge.removesEntries() && !mayRemove()))
        return;
    m_outcome = VelSyncRecord::Outcome::Good;
    const VelMerge::Report report = merge.apply();
    m_hasMoreToSend = m_connection.isRepeat() && report.hasUnsent;
    Q_EMIT merged(report);
}

/** What is taken away is kept in a copy. */
bool VelNetwork::mayRemove()
{
    const QPointer<VelNetwork> self(this);
    const auto keepCopy = m_context.keepCopy;
    return keepCopy() && self && m_context.doc.isExchanging();
}

void VelNetwork::takeOther(int type, VelXmlContent &content)
{
    // Of a synchronisation only: another answer must not make this the calendar of somebody else, or writable.
    content.synctime.reset();
    content.userid.reset();
    content.origright.reset();
    switch (type) {
    case VelNetTask::UserList:
        m_context.doc.readXml(content);
        Q_EMIT accountsReady();
        break;
    case VelNetTask::UserBusy:
        Q_EMIT taskUserBusyReady(
            std::make_shared<const std::vector<std::unique_ptr<VelEntry>>>(std::move(content.entries)),
            m_connection.currentArgument());
        break;
    case VelNetTask::GetUserRights:
        m_context.doc.readXml(content);
        Q_EMIT rightsReady();
        break;
    case VelNetTask::ChangePass:
        m_context.settings.pass = digestOf(m_connection.currentArgument());
        Q_EMIT settingsChanged();
        Q_EMIT passwordChanged();
        break;
    case VelNetTask::GetEntries:
        for (auto &entry : content.entries) {
            entry->updRecurrence(m_context.doc.today());
            m_received.push_back(std::move(entry));
        }
        if (m_received.size() > MostReceived)
            m_received.erase(m_received.begin(), m_received.end() - MostReceived);
        Q_EMIT entriesReceived();
        break;
    default:
        break;
    }
}

/** The one that came last: it may have changed since it was fetched before. */
const VelEntry *VelNetwork::getReceivedEntry(quint32 globalid) const
{
    const auto found = std::find_if(m_received.rbegin(), m_received.rend(),
                                    [globalid](const auto &entry) { return entry->globalid == globalid; });
    return found == m_received.rend() ? nullptr : found->get();
}
