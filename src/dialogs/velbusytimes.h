// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "hub/velapp.h"
#include "model/velentrylist.h"

#include <deque>
#include <functional>
#include <unordered_map>

/**
 * The busy times of some accounts, fetched from the server week by week and kept.
 *
 * Weeks are told apart by their number in the year alone, so that what was fetched for week 5 serves week 5 of the next
 * year, too. Answers come to everybody in the window: one's own are known by the body of the request.
 */
class VelBusyTimes
{
public:
    /** Sends the body of a request to the server. */
    using Ask = std::function<void(const QString &body)>;

    explicit VelBusyTimes(Ask ask)
        : m_ask(std::move(ask))
    {
    }

    /** Forgets all that was fetched. Answers that are still to come are to other accounts and will be dropped. */
    void setAccounts(const VelAccountList &accounts);
    [[nodiscard]] const VelAccountList &accounts() const { return m_accounts; }

    /**
     * Asks for the week of @p date, of all accounts that the server knows, unless that was done. True when there was
     * nothing to ask for; for a week that was asked for this also ends isRetrieving().
     */
    bool requestEntries(QDate date);
    /**
     * What was fetched and touches @p date, an invalid one for all, in the order in which it came; without the entry
     * that the server knows by @p except. Asks for the week, and gives nothing, when nobody has asked for it.
     */
    [[nodiscard]] VelEntryList getEntries(QDate date, quint32 except);

    /** A request was sent, and since then no answer has come and no earlier week was asked for again. */
    [[nodiscard]] bool isRetrieving() const { return m_isRetrieving; }
    /** True when the week of @p date has been asked for. */
    [[nodiscard]] bool isRequested(QDate date) const;
    /** True when the week of @p date has been answered, or there is nobody to ask for. */
    [[nodiscard]] bool isAnswered(QDate date) const;
    /** True while an answer is out. */
    [[nodiscard]] bool isFetching() const;

    /** Takes the answer to @p body. False for one that was not asked for from here, or was for other accounts. */
    bool takeEntries(const VelReceivedEntries &entries, const QString &body);
    /** @p body got no answer: its week is forgotten, to be asked for again. False as above. */
    bool takeFailure(const QString &body);

private:
    /** In place of the week of a request that no longer matters. */
    static constexpr int Dropped = -1;

    struct Request {
        int week; ///< its number
        QString body;
    };

    [[nodiscard]] bool isKnownToServer() const;
    [[nodiscard]] QString requestBody(QDate date) const;
    [[nodiscard]] int takeRequest(const QString &body);
    void addToIndex(const VelEntry &entry, std::size_t place);
    [[nodiscard]] std::vector<std::size_t> placesOn(QDate date) const;

    Ask m_ask;
    VelAccountList m_accounts;
    std::vector<VelReceivedEntries> m_answers; // own the entries
    VelEntryList m_cache; // all of them, in the order in which they came
    std::unordered_map<qint32, std::vector<std::size_t>> m_byDay; // Julian day to places in the cache
    std::vector<std::size_t> m_long; // places of those that take more days than are worth listing one by one
    std::vector<int> m_requested; // numbers of weeks
    std::deque<Request> m_out; // those that are not answered, the oldest first
    bool m_isRetrieving = false;
};
