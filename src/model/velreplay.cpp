// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "model/velreplay.h"

#include "model/compat.h"

#include <algorithm>

namespace
{
/** Where @p from became @p to, the same happens to @p current. */
template <typename T>
void follow(T &current, const T &from, const T &to)
{
    if (!(from == to))
        current = to;
}

bool isSamePerson(const VelAccount &a, const VelAccount &b)
{
    return a.id == b.id && (a.id != 0 || a.email == b.email);
}

/** Answers are each on their own; who is invited in which role is one thing. */
void followAccounts(VelAccountList &current, const VelAccountList &from, const VelAccountList &to)
{
    const bool isSameList =
        std::equal(from.begin(), from.end(), to.begin(), to.end(), [](const auto &a, const auto &b) {
            return a == b && a.type == b.type && a.attendee == b.attendee;
        });
    if (!isSameList) {
        current = to;
        return;
    }
    for (VelSize i = 0; i < from.size(); ++i) {
        const VelAccount &account = to.at(i);
        if (account.status == from.at(i).status)
            continue;
        const auto found = std::find_if(current.begin(), current.end(), [&account](const VelAccount &each) {
            return isSamePerson(each, account);
        });
        if (found != current.end())
            found->status = account.status;
    }
}

struct Times {
    VelDateTime start;
    VelDateTime end;
    bool notime;
    bool operator==(const Times &) const = default;
    [[nodiscard]] bool isInOrder() const { return notime ? start.date() <= end.date() : start <= end; }
};

/** When an entry takes place, and when again. */
struct Series {
    Times times;
    VelRecurrenceRule rule;
    bool operator==(const Series &) const = default;
};

Series seriesOf(const VelEntry &entry)
{
    return {{entry.getStart(), entry.getEnd(), entry.notime}, entry.rule};
}

/** True when the rule says something else about a series that starts on another day. */
bool dependsOnDay(const VelRecurrenceRule &rule)
{
    return rule.recurringtype == VelRecurrenceRule::Weekly || rule.recurringtype == VelRecurrenceRule::Monthly
        || (rule.recurringtype != VelRecurrenceRule::None && rule.occurenddate.isValid());
}

Series replayedSeries(const Series &current, const Series &from, const Series &to)
{
    Series result = current;
    follow(result.times, from.times, to.times);
    follow(result.rule, from.rule, to.rule);
    const Series &ruled = from.rule == to.rule ? current : to;
    const bool isMixed = !(result == current) && !(result == to);
    if (isMixed && dependsOnDay(result.rule)
        && ruled.times.start.julianDay() != result.times.start.julianDay())
        result = to;
    // A faulty one, from a file, must not displace a good one.
    const bool isMoved = !(current.times == from.times);
    return isMoved && !result.times.isInOrder() && current.times.isInOrder() ? current : result;
}
} // namespace

std::unique_ptr<VelEntry> VelReplay::replayed(const VelEntry &current, const VelEntry &from,
                                              const VelEntry &to)
{
    auto result = std::make_unique<VelEntry>(current);
    QString title = current.getTitle();
    QString description = current.getDescription();
    follow(title, from.getTitle(), to.getTitle());
    follow(description, from.getDescription(), to.getDescription());
    const Series series = replayedSeries(seriesOf(current), seriesOf(from), seriesOf(to));
    result->setStored(title, description, series.times.start, series.times.end);
    result->notime = series.times.notime;
    result->rule = series.rule;
    follow(result->user, from.user, to.user);
    follow(result->type, from.type, to.type);
    follow(result->access, from.access, to.access);
    follow(result->display, from.display, to.display);
    follow(result->priority, from.priority, to.priority);
    follow(result->complete, from.complete, to.complete);
    followAccounts(result->accounts, from.accounts, to.accounts);
    follow(result->reminderfired, from.reminderfired, to.reminderfired);
    if (from.reminder != to.reminder) {
        result->reminder = to.reminder;
        result->reminderfired = to.reminderfired;
    }
    return result;
}
