// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "views/veldrop.h"

#include "document/veldoc.h"
#include "document/velmessages.h"
#include "document/velpaste.h"
#include "document/velstep.h"
#include "model/veltext.h"

#include <KLocalizedString>

namespace
{
bool isWantedHere(VelMessages &messages, const VelEntry &entry)
{
    const QString question = i18n("Original event starts:") + QLatin1Char(' ')
        + VelText::getDateTime(entry.getStart()) + QLatin1Char('\n') + i18n("Original event ends:")
        + QLatin1Char(' ') + VelText::getDateTime(entry.getEnd()) + QLatin1Char('\n')
        + i18n("Do you want to drop this event to the selected position or use original start and end "
               "date/time?");
    return messages.questionYesNo(question, i18n("Dropping new entry"), i18n("Drop to this position"),
                                  i18n("Use original dates and times"))
        == VelMessages::Answer::Yes;
}
} // namespace

namespace VelDrop
{
VelDateTime startOn(const VelEntry &entry, QDate day, QTime time)
{
    const QDate date = entry.type == VelEntry::Todo ? day.addDays(-qMax(0, entry.getSpan())) : day;
    return {date, entry.notime ? entry.getStart().time() : time};
}

Result move(VelDoc &doc, quint32 localid, const VelDateTime &start)
{
    const VelEntry *entry = doc.getEntry(localid);
    if (!entry || entry->isDeleted() || entry->isRecurring() || !doc.isOwner(entry))
        return {};
    VelEntry moved(*entry);
    VelPaste::moveTo(moved, start);
    if (moved.getStart() == entry->getStart())
        return {};
    {
        const VelStepScope scope(&doc, i18nc("what was done", "Move"));
        doc.changeEntry(localid, [&moved](VelEntry &changed) {
            changed.setStart(moved.getStart());
            changed.setEnd(moved.getEnd());
        });
    }
    doc.slotUpdateAllViews(nullptr);
    return {doc.getEntry(localid), false};
}

Result takeIn(VelDoc &doc, VelMessages &messages, std::vector<std::unique_ptr<VelEntry>> entries,
              const VelDateTime &start)
{
    if (entries.empty())
        return {};
    Result result;
    result.hasKeptDates = entries.size() > 1 || !isWantedHere(messages, *entries.front());
    if (!result.hasKeptDates)
        VelPaste::moveTo(*entries.front(), start);
    auto scope = std::make_unique<VelStepScope>(&doc, i18nc("what was done", "Drop"));
    const bool isFile = entries.size() > 1;
    for (auto &entry : entries) {
        const VelEntry *added =
            isFile ? VelPaste::addImported(doc, std::move(entry)) : VelPaste::addCopy(doc, std::move(entry));
        if (!result.entry)
            result.entry = added;
    }
    scope.reset();
    doc.slotUpdateAllViews(nullptr);
    return result;
}
} // namespace VelDrop
