// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "document/velreplay.h"

namespace
{
/** Where @p from became @p to, the same happens to @p current. */
template <typename T>
void follow(T &current, const T &from, const T &to)
{
    if (!(from == to))
        current = to;
}

} // namespace

std::unique_ptr<VelEntry> VelReplay::replayed(const VelEntry &current, const VelEntry &from,
                                              const VelEntry &to)
{
    auto result = std::make_unique<VelEntry>(current);
    QString title = current.getTitle();
    QString description = current.getDescription();
    VelDateTime start = current.getStart();
    VelDateTime end = current.getEnd();
    follow(title, from.getTitle(), to.getTitle());
    follow(description, from.getDescription(), to.getDescription());
    follow(start, from.getStart(), to.getStart());
    follow(end, from.getEnd(), to.getEnd());
    result->setStored(title, description, start, end);
    follow(result->user, from.user, to.user);
    follow(result->type, from.type, to.type);
    follow(result->access, from.access, to.access);
    follow(result->display, from.display, to.display);
    follow(result->priority, from.priority, to.priority);
    follow(result->reminder, from.reminder, to.reminder);
    follow(result->notime, from.notime, to.notime);
    follow(result->complete, from.complete, to.complete);
    follow(result->reminderfired, from.reminderfired, to.reminderfired);
    follow(result->accounts, from.accounts, to.accounts);
    follow(result->rule, from.rule, to.rule);
    return result;
}
