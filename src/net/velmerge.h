// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "document/velanswer.h"
#include "document/veldoc.h"
#include "formats/velxmlreader.h"
#include "net/velrequestwriter.h"

#include <memory>
#include <optional>
#include <unordered_set>
#include <vector>

/**
 * Brings the answer to a synchronisation into the calendar.
 *
 * First the answer is looked through and nothing in it is applied, so that the questions that it raises can be put to the
 * user: whoever closes the window meanwhile, or loses the power, finds everything as it was, and is asked again at the next
 * synchronisation. Then apply() takes all of it at once. What changed in the calendar since the request was written keeps
 * that change, and stays to be sent.
 */
class VelMerge
{
public:
    enum class Kind {
        Invitation, ///< to something new
        Changed, ///< what the user was invited to takes place at another time
        Cancelled, ///< by who organises it: only to be told
        Removed ///< the user, from those who are invited: only to be told
    };

    /** What the user must be asked or told. */
    struct Question {
        Kind kind;
        VelEntry entry; ///< to be shown; of what is gone, as the calendar has it
        std::size_t index; ///< in the answer
        /** "Request for new appointment" and the like. */
        [[nodiscard]] QString text() const;
        [[nodiscard]] VelAnswer::Mode mode() const
        {
            return kind == Kind::Invitation || kind == Kind::Changed ? VelAnswer::Invitation
                                                                     : VelAnswer::Notice;
        }
    };

    /** One entry of the calendar that is another now. */
    struct Merged {
        enum What { Added, Replaced, Deleted };
        What what;
        quint32 localid;
        bool operator==(const Merged &) const = default;
    };

    struct Report {
        std::vector<Merged>
            merged; ///< in the order of the answer; then what a total synchronisation took away
        bool hasChanged = false; ///< true also when only marks of what is to be sent have been taken away
        bool hasUnsent = false; ///< an answer, a change made meanwhile or the like is still to be sent
        int open = 0; ///< invitations that were left without an answer
        int received = 0; ///< entries that are new or another, apart from echoes of what was sent
    };

    /**
     * @p doc is in the exchange (VelDoc::beginExchange()) whose request carried the entries with the local ids @p sent and is
     * answered, without an error, by @p content. Who the user is, their right, and the accounts are taken over now: the
     * questions are shown by them.
     */
    VelMerge(VelDoc &doc, VelXmlContent content, const VelSentEntries &sent);

    /** In the order of the answer. */
    [[nodiscard]] const std::vector<Question> &questions() const { return m_questions; }
    /**
     * The user's answer to an invitation: a value of VelAccount::Status. None when it was put off; Unanswered when the user
     * only took note and stays with the answer that was given before.
     */
    void setAnswer(const Question &question, std::optional<int> answer);

    /**
     * Applies everything and ends the exchange; call it once. Does nothing, and is to be followed by nothing, when the
     * calendar has been replaced by another since. The views are the caller's to update.
     */
    Report apply();

private:
    enum class Action {
        Skip,
        Store, ///< as it came: there is nothing left to send about it
        StoreAnswered, ///< the user's answer is still to be sent
        StoreDeclined, ///< as a notice for the server
        Delete ///< for good
    };

    struct Step {
        std::unique_ptr<VelEntry> entry; ///< from the answer
        quint32 localid = 0; ///< of the local copy, or 0
        Action action = Action::Skip;
        bool isPutOff = false;
    };

    [[nodiscard]] quint32 findLocal(const VelEntry &entry) const;
    void plan(Step &step, std::size_t index);
    void planForeign(Step &step, std::size_t index);
    void ask(Kind kind, const VelEntry &entry, std::size_t index);
    void store(Step &step);
    void remove(const Step &step);
    void storeOver(std::unique_ptr<VelEntry> entry, const VelEntry &current);
    void removeUnnamed();
    void markSent();
    [[nodiscard]] bool hasUnsent() const;
    [[nodiscard]] const VelEntry *before(quint32 localid) const;
    [[nodiscard]] bool isEditedSince(const VelEntry &current) const;

    VelDoc &m_doc;
    std::unordered_set<quint32> m_sent;
    VelDoc::Journal m_before; // what has changed since the request was written, as it was
    bool m_isTotal;
    std::optional<QString> m_synctime;
    std::vector<Step> m_steps;
    std::vector<Question> m_questions;
    Report m_report;
};
