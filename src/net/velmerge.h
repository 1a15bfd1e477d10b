// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "document/velanswer.h"
#include "document/veldoc.h"
#include "formats/velxmlreader.h"
#include "net/velnottaken.h"
#include "net/velrequestwriter.h"

#include <memory>
#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <vector>

/**
 * Brings the answer to a synchronisation into the calendar.
 *
 * First the answer is looked through and nothing in it is applied, so that the user can be told of what goes: whoever closes
 * the window meanwhile, or loses the power, finds everything as it was, and is told again at the next synchronisation. Then
 * apply() takes all of it at once, except for the invitations that nobody has answered: those are handed on, see
 * VelOpenInvitations. What changed in the calendar since the request was written keeps that change, and stays to be sent, as
 * does all that was sent and that the answer does not mention. Of an entry that the answer holds twice the later one counts.
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
        int others = 0; ///< how many more are asked after this one
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
        bool hasChanged = false; ///< the calendar is another: to be shown, and saved
        bool hasUnsent = false; ///< a change made meanwhile, or one that was not taken, is still to be sent
        int received = 0; ///< entries that are new or another, apart from echoes of what was sent
        std::vector<Question> open; ///< invitations for the user to answer, as they came
        std::unordered_set<quint32> named; ///< global ids of all entries that came
        bool isTotal = false; ///< what was not named is not on the server any more
        std::vector<VelNotTaken::Item> notTaken; ///< of what was sent, in the order of the request
    };

    /**
     * @p doc is in the exchange (VelDoc::beginExchange()) whose request carried the entries with the local ids @p sent and is
     * answered by @p content. Whose calendar it is, the user's right, and the accounts are taken over now: what the user is
     * told is shown by them. @p ownUserid is the number of the user, 0 while it is not known: the invitations in somebody
     * else's calendar are not theirs to be asked about.
     */
    VelMerge(VelDoc &doc, VelXmlContent content, const VelSentEntries &sent, quint32 ownUserid);

    /** What the user is to be told first, in the order of the answer. */
    [[nodiscard]] const std::vector<Question> &notices() const { return m_notices; }

    /** True when a total synchronisation is about to take entries away that it does not name. */
    [[nodiscard]] bool removesEntries() const;

    /**
     * Applies everything and ends the exchange; call it once. Does nothing, and is to be followed by nothing, when the
     * calendar has been replaced by another since. The views are the caller's to update.
     */
    Report apply();

private:
    enum class Action {
        Skip,
        Store, ///< as it came: there is nothing left to send about it
        Delete ///< for good
    };

    struct Step {
        std::unique_ptr<VelEntry> entry; ///< from the answer; null when it holds a later one of the same
        quint32 localid = 0; ///< of the local copy, or 0
        Action action = Action::Skip;
    };

    [[nodiscard]] quint32 findLocal(const VelEntry &entry) const;
    void dropRepeated();
    void plan(Step &step);
    void planForeign(Step &step);
    void leaveOpen(Kind kind, const VelEntry &entry);
    [[nodiscard]] bool isAnsweredSince(quint32 localid) const;
    void findNotTaken();
    void store(Step &step);
    void remove(quint32 localid);
    [[nodiscard]] std::unique_ptr<VelEntry> putOver(std::unique_ptr<VelEntry> entry, const VelEntry &current);
    void removeUnnamed();
    [[nodiscard]] bool hasUnsent() const;
    [[nodiscard]] const VelEntry *before(quint32 localid) const;
    [[nodiscard]] bool isEditedSince(const VelEntry &current) const;

    VelDoc &m_doc;
    VelSentEntries m_sentOrder;
    std::unordered_set<quint32> m_sent;
    VelDoc::Journal m_before; // what has changed since the request was written, as it was
    bool m_isTotal;
    bool m_isMine = false; // invitations are for the user to answer
    std::optional<QString> m_synctime;
    std::vector<Step> m_steps;
    std::vector<Question> m_notices;
    Report m_report;
};
