// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "model/velentry.h"

class VelDoc;

/** Answering the invitations in a calendar. Answers are values of VelAccount::Status; 0 stands for none. */
namespace VelAnswer
{
/** How an entry is shown to be read. */
enum Mode {
    NeverInvitation = -1, ///< just the entry, whoever owns it
    Plain = 0, ///< just the entry, unless somebody else owns it
    Invitation = 1, ///< with the organizer and the answers
    Notice = 2 ///< with the organizer and what is to be told, without answers
};

/** In place of an answer: this and all others that wait are put off. */
constexpr int AllLater = -1;

/** What the user may do about an entry that is shown. */
struct Offer {
    bool isOffered = false; ///< the answers are there
    bool mayAccept = false;
    bool mayAcceptTentatively = false;
    bool mayDecline = false;
    bool mayLeaveOpen = true; ///< the entry may be put away as it is
};

/** The mode to show @p entry in: a plain look at somebody else's entry is an invitation. */
[[nodiscard]] Mode modeFor(const VelDoc &doc, const VelEntry &entry, Mode wanted);

/** @p mayEdit tells whether the calendar may be changed now; without it the answers are there, but of no use. */
[[nodiscard]] Offer offerFor(const VelDoc &doc, const VelEntry &entry, Mode mode, bool mayEdit);

/**
 * Notes the answer in the user's own record of the stored entry and marks it for the next synchronisation; a declined
 * entry is deleted. False, and nothing changed, without an answer, an entry, or such a record. The views are the
 * caller's to update.
 */
bool apply(VelDoc &doc, quint32 localid, int answer);
} // namespace VelAnswer
