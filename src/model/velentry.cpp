// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "model/velentry.h"

#include "model/veltext.h"

#include <KLocalizedString>

#include <tuple>
#include <unordered_map>

struct VelEntry::Occurrences {
    VelRecurrence recurrence;
    std::unordered_map<quint32, std::unique_ptr<VelEntry>> records;
};

VelEntry::VelEntry() = default;
VelEntry::~VelEntry() = default;
VelEntry::VelEntry(VelEntry &&other) noexcept = default;
VelEntry &VelEntry::operator=(VelEntry &&other) noexcept = default;

VelEntry::VelEntry(quint32 id, int entryType, const VelDateTime &start, const VelDateTime &end)
    : localid(id)
    , dirty(1)
    , type(entryType)
    , notime(entryType == Todo)
    , m_start(start)
    , m_end(end)
{
}

VelEntry::VelEntry(const VelEntry &other)
    : localid(other.localid)
    , globalid(other.globalid)
    , user(other.user)
    , dirty(other.dirty)
    , type(other.type)
    , access(other.access)
    , display(other.display)
    , priority(other.priority)
    , reminder(other.reminder)
    , originalid(other.originalid)
    , notime(other.notime)
    , complete(other.complete)
    , reminderfired(other.reminderfired)
    , accounts(other.accounts)
    , rule(other.rule)
    , m_title(other.m_title)
    , m_description(other.m_description)
    , m_start(other.m_start)
    , m_end(other.m_end)
{
}

VelEntry &VelEntry::operator=(const VelEntry &other)
{
    if (this != &other)
        *this = VelEntry(other);
    return *this;
}

bool VelEntry::operator==(const VelEntry &other) const
{
    const auto fields = [](const VelEntry &e) {
        return std::tie(e.localid, e.globalid, e.user, e.dirty, e.type, e.access, e.display, e.priority,
                        e.reminder, e.originalid, e.notime, e.complete, e.reminderfired, e.rule, e.m_title,
                        e.m_description, e.m_start, e.m_end);
    };
    const auto sameAccount = [](const VelAccount &a, const VelAccount &b) {
        return a == b && a.type == b.type && a.status == b.status && a.attendee == b.attendee;
    };
    return fields(*this) == fields(other)
        && std::equal(accounts.begin(), accounts.end(), other.accounts.begin(), other.accounts.end(),
                      sameAccount);
}

void VelEntry::setTitle(const QString &title)
{
    m_title = title;
    uDirty(1);
}

void VelEntry::setDescription(const QString &description)
{
    m_description = description;
    uDirty(1);
}

void VelEntry::setStart(const VelDateTime &start)
{
    m_start = start;
    uDirty(1);
}

void VelEntry::setEnd(const VelDateTime &end)
{
    m_end = end;
    uDirty(1);
}

void VelEntry::setStored(const QString &title, const QString &description, const VelDateTime &start,
                         const VelDateTime &end)
{
    m_title = title;
    m_description = description;
    m_start = start;
    m_end = end;
}

void VelEntry::uDirty(int value)
{
    if (!isOccurrence())
        dirty = value;
}

QString VelEntry::getAccessStr() const
{
    switch (access) {
    case Public:
        return i18nc("who may see the entry", "Public");
    case Private:
        return i18nc("who may see the entry", "Private");
    default:
        return {};
    }
}

QString VelEntry::getDisplayStr() const
{
    switch (display) {
    case Busy:
        return i18nc("how the time shows to others", "Busy");
    case Free:
        return i18nc("how the time shows to others", "Free");
    case TentativeTime:
        return i18nc("how the time shows to others", "Tentative");
    default:
        return {};
    }
}

int VelEntry::getAccountStatus(quint32 id) const
{
    const VelAccount *account = accounts.get(id != 0 ? id : user);
    return account ? account->status : 0;
}

QString VelEntry::getAccountStatusStr(quint32 id) const
{
    const VelAccount *account = accounts.get(id != 0 ? id : user);
    return account ? account->getStatusStr() : QString();
}

void VelEntry::clearAccountStatuses()
{
    for (VelAccount &account : accounts)
        account.status = VelAccount::Unanswered;
}

QString VelEntry::getStartStr() const
{
    return notime ? VelText::getDay(m_start.date()) : VelText::getDateTime(m_start);
}

QString VelEntry::getEndStr() const
{
    return notime ? VelText::getDay(m_end.date()) : VelText::getDateTime(m_end);
}

QTime VelEntry::getStartTime(QDate day) const
{
    return m_start.date() >= day ? m_start.time() : QTime(0, 0);
}

QTime VelEntry::getEndTime(QDate day) const
{
    return m_end.date() <= day ? m_end.time() : QTime(23, 59);
}

bool VelEntry::spanDays() const
{
    return m_start.julianDay() != m_end.julianDay();
}

int VelEntry::getSpan() const
{
    const bool hasDates = m_start.date().isValid() && m_end.date().isValid();
    return hasDates ? m_end.julianDay() - m_start.julianDay() : 0;
}

void VelEntry::updRecurrence(QDate today)
{
    m_occurrences.reset();
    if (isOccurrence() || rule.recurringtype <= VelRecurrenceRule::None)
        return;
    const VelRecurrence recurrence(rule, m_start.date(), getSpan(), today);
    if (!recurrence.isEmpty())
        m_occurrences = std::make_unique<Occurrences>(Occurrences{recurrence, {}});
}

void VelEntry::clearRecurring()
{
    if (rule.recurringtype <= VelRecurrenceRule::None)
        return;
    rule.clear();
    m_occurrences.reset();
}

const VelRecurrence &VelEntry::getRecurrence() const
{
    static const VelRecurrence none;
    return m_occurrences ? m_occurrences->recurrence : none;
}

const VelEntry *VelEntry::getOccurrence(quint32 number) const
{
    const VelRecurrence &recurrence = getRecurrence();
    if (number < 1 || number > recurrence.count())
        return nullptr;
    std::unique_ptr<VelEntry> &record = m_occurrences->records[number];
    if (!record) {
        record = std::make_unique<VelEntry>(*this);
        const QDate day = QDate::fromJulianDay(recurrence.startDay(number));
        record->localid = number;
        record->originalid = localid;
        record->dirty = 0;
        record->m_start = VelDateTime(day, m_start.time());
        record->m_end = VelDateTime(day.addDays(recurrence.spanDays()), m_end.time());
    }
    return record.get();
}
