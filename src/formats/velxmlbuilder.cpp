// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "formats/velxmlbuilder.h"

#include "formats/velxmlvalues.h"

#include <array>
#include <cstring>

enum class VelXmlBuilder::Name : quint8 {
    Unknown,
    Access,
    Account,
    Action,
    Archive,
    Attendee,
    Complete,
    Description,
    Dirty,
    Display,
    Email,
    End,
    Entry,
    Error,
    GlobalId,
    Id,
    LocalId,
    Meta,
    NameText,
    NoTime,
    OccurDayNumber,
    OccurDays,
    OccurEndCount,
    OccurEndDate,
    OccurEvery,
    OrigRight,
    OrigUserId,
    Priority,
    RecurringType,
    Reminder,
    ReminderFired,
    Right,
    Server,
    Start,
    Status,
    SyncTime,
    Title,
    TotalSync,
    Type,
    User,
    UserId,
};

namespace
{
/** Names and addresses longer than this are hardly shared. */
constexpr std::size_t LongestSharedText = 256;
constexpr std::size_t MostSharedTexts = 65536;

QString toText(std::string_view utf8)
{
    // The toolkit drops a mark of the byte order where a text begins; here it is a character like any other.
    constexpr std::string_view mark = "\xEF\xBB\xBF";
    VelSize marks = 0;
    for (; utf8.substr(0, mark.size()) == mark; utf8.remove_prefix(mark.size()))
        ++marks;
    const QString text = QString::fromUtf8(utf8.data(), static_cast<VelSize>(utf8.size()));
    return marks == 0 ? text : QString(marks, QChar(QChar::ByteOrderMark)) + text;
}
} // namespace

VelXmlBuilder::Name VelXmlBuilder::nameOf(std::string_view name)
{
    struct Known {
        std::string_view text;
        Name name;
    };
    // By length, so that a name is told from few others.
    static constexpr std::array<Known, 40> Names{{
        {"id", Name::Id},
        {"end", Name::End},
        {"type", Name::Type},
        {"name", Name::NameText},
        {"user", Name::User},
        {"meta", Name::Meta},
        {"title", Name::Title},
        {"start", Name::Start},
        {"dirty", Name::Dirty},
        {"email", Name::Email},
        {"entry", Name::Entry},
        {"right", Name::Right},
        {"error", Name::Error},
        {"access", Name::Access},
        {"status", Name::Status},
        {"notime", Name::NoTime},
        {"userid", Name::UserId},
        {"action", Name::Action},
        {"server", Name::Server},
        {"localid", Name::LocalId},
        {"display", Name::Display},
        {"account", Name::Account},
        {"archive", Name::Archive},
        {"globalid", Name::GlobalId},
        {"attendee", Name::Attendee},
        {"reminder", Name::Reminder},
        {"complete", Name::Complete},
        {"priority", Name::Priority},
        {"synctime", Name::SyncTime},
        {"occurdays", Name::OccurDays},
        {"origright", Name::OrigRight},
        {"totalsync", Name::TotalSync},
        {"occurevery", Name::OccurEvery},
        {"origuserid", Name::OrigUserId},
        {"description", Name::Description},
        {"occurenddate", Name::OccurEndDate},
        {"reminderfired", Name::ReminderFired},
        {"recurringtype", Name::RecurringType},
        {"occurendcount", Name::OccurEndCount},
        {"occurdaynumber", Name::OccurDayNumber},
    }};
    static constexpr auto FirstOfLength = [] {
        std::array<quint8, 17> first{};
        for (std::size_t length = 0; length < first.size(); ++length) {
            while (first[length] < Names.size() && Names[first[length]].text.size() < length)
                ++first[length];
        }
        return first;
    }();
    if (name.size() + 1 >= FirstOfLength.size())
        return Name::Unknown;
    for (std::size_t i = FirstOfLength[name.size()]; i < FirstOfLength[name.size() + 1]; ++i) {
        if (std::memcmp(Names[i].text.data(), name.data(), name.size()) == 0)
            return Names[i].name;
    }
    return Name::Unknown;
}

void VelXmlBuilder::startElement(std::string_view name, const char *const *attributes)
{
    ++m_depth;
    if (m_skipFrom != 0)
        return;
    switch (m_place) {
    case Place::Outside:
        m_place = Place::Root;
        break;
    case Place::Root:
        startTopLevel(nameOf(name), attributes);
        break;
    case Place::Value:
        // Only the text before the first element inside counts.
        m_textEnded = true;
        skip();
        break;
    default:
        startInside(nameOf(name));
        break;
    }
}

void VelXmlBuilder::startTopLevel(Name name, const char *const *attributes)
{
    if (m_stopped) {
        skip();
        return;
    }
    switch (name) {
    case Name::Action:
    case Name::Meta:
        m_place = Place::Meta;
        m_isAction = name == Name::Action;
        m_content.hasAction = m_content.hasAction || m_isAction;
        break;
    case Name::Account:
        m_place = Place::Account;
        m_account = {};
        break;
    case Name::Entry:
        beginEntry();
        break;
    case Name::Right:
        addRight(attributes);
        skip();
        break;
    default:
        skip();
        break;
    }
}

void VelXmlBuilder::startInside(Name name)
{
    if (name == Name::Unknown || m_stopped) {
        skip();
    } else if (name == Name::Account && m_place == Place::Entry) {
        m_place = Place::EntryAccount;
        m_account = {};
    } else {
        m_name = name;
        m_valueOf = m_place;
        m_place = Place::Value;
        m_text.clear();
        m_textEnded = false;
    }
}

void VelXmlBuilder::skip()
{
    m_skipFrom = m_depth;
}

bool VelXmlBuilder::addText(std::string_view text)
{
    if (m_place != Place::Value || m_textEnded || m_skipFrom != 0)
        return true;
    m_text += text;
    return m_text.size() <= VelXmlReader::MaximumText;
}

void VelXmlBuilder::endElement()
{
    const int depth = m_depth--;
    if (m_skipFrom != 0) {
        if (depth == m_skipFrom)
            m_skipFrom = 0;
        return;
    }
    switch (m_place) {
    case Place::Value:
        m_place = m_valueOf;
        storeValue();
        break;
    case Place::Entry:
        m_place = Place::Root;
        endEntry();
        break;
    case Place::Account:
    case Place::EntryAccount:
        endAccount();
        break;
    default:
        m_place = m_place == Place::Meta ? Place::Root : Place::Outside;
        break;
    }
}

void VelXmlBuilder::addRight(const char *const *attributes)
{
    quint32 id = 0;
    int right = 0;
    for (; *attributes; attributes += 2) {
        const std::string_view name = attributes[0];
        if (name == "id")
            id = VelXmlValues::parseUInt(attributes[1]);
        else if (name == "right")
            right = VelXmlValues::parseInt(attributes[1]);
    }
    if (!m_content.rights)
        m_content.rights.emplace();
    (*m_content.rights)[id] = right;
}

void VelXmlBuilder::beginEntry()
{
    m_place = Place::Entry;
    m_entry = std::make_unique<VelEntry>();
    m_entry->type = VelEntry::Event;
    m_title.clear();
    m_description.clear();
    m_start = {};
    m_end = {};
}

void VelXmlBuilder::endEntry()
{
    if (!m_start.isValid() || !m_end.isValid())
        return;
    m_entry->setStored(m_title, m_description, m_start, m_end);
    m_content.entries.push_back(std::move(m_entry));
}

void VelXmlBuilder::endAccount()
{
    const bool inEntry = m_place == Place::EntryAccount;
    m_place = inEntry ? Place::Entry : Place::Root;
    if (m_account.name.isEmpty())
        return;
    if (inEntry) {
        m_entry->accounts.append(m_account);
        return;
    }
    if (!m_content.accounts)
        m_content.accounts.emplace();
    m_content.accounts->append(m_account);
}

void VelXmlBuilder::storeValue()
{
    switch (m_place) {
    case Place::Meta:
        storeMetaValue();
        break;
    case Place::Entry:
        if (!storeRuleValue())
            storeEntryValue();
        break;
    default:
        storeAccountValue();
        break;
    }
}

void VelXmlBuilder::storeMetaValue()
{
    switch (m_name) {
    case Name::SyncTime:
        m_content.synctime = toText(m_text);
        break;
    case Name::UserId:
        m_content.userid = VelXmlValues::parseUInt(m_text);
        break;
    case Name::OrigRight:
        m_content.origright = VelXmlValues::parseInt(m_text);
        break;
    case Name::OrigUserId:
        m_content.origuserid = VelXmlValues::parseUInt(m_text);
        break;
    case Name::TotalSync:
        m_content.totalsync = true;
        break;
    case Name::Error:
        m_content.error = VelXmlValues::parseInt(m_text);
        m_stopped = true;
        break;
    default:
        if (!m_isAction)
            storeFileValue();
        break;
    }
}

/** What only a file may say of itself. */
void VelXmlBuilder::storeFileValue()
{
    switch (m_name) {
    case Name::Archive:
        m_content.archive = VelXmlValues::parseInt(m_text) != 0;
        break;
    case Name::Server:
        m_content.account.server = toText(m_text);
        break;
    case Name::User:
        m_content.account.user = toText(m_text);
        break;
    default:
        break;
    }
}

void VelXmlBuilder::storeAccountValue()
{
    switch (m_name) {
    case Name::Id:
        m_account.id = VelXmlValues::parseUInt(m_text);
        break;
    case Name::NameText:
        m_account.name = shared(m_text);
        break;
    case Name::Email:
        m_account.email = shared(m_text);
        break;
    case Name::Type:
        m_account.type = VelXmlValues::parseInt(m_text);
        break;
    case Name::Status:
        m_account.status = VelXmlValues::parseInt(m_text);
        break;
    case Name::Attendee:
        m_account.attendee = VelXmlValues::parseInt(m_text);
        break;
    default:
        break;
    }
}

void VelXmlBuilder::storeEntryValue()
{
    switch (m_name) {
    case Name::LocalId:
        m_entry->localid = VelXmlValues::parseUInt(m_text);
        break;
    case Name::GlobalId:
        m_entry->globalid = VelXmlValues::parseUInt(m_text);
        break;
    case Name::Dirty:
        m_entry->dirty = VelXmlValues::parseInt(m_text);
        break;
    case Name::Title:
        m_title = toText(m_text);
        break;
    case Name::Description:
        m_description = toText(m_text);
        break;
    case Name::Start:
        m_start = VelXmlValues::parseDateTime(m_text);
        break;
    case Name::End:
        m_end = VelXmlValues::parseDateTime(m_text);
        break;
    case Name::Type:
        m_entry->type = VelXmlValues::parseInt(m_text);
        break;
    case Name::User:
        m_entry->user = VelXmlValues::parseUInt(m_text);
        break;
    case Name::Access:
        m_entry->access = VelXmlValues::parseInt(m_text);
        break;
    case Name::Display:
        m_entry->display = VelXmlValues::parseInt(m_text);
        break;
    case Name::Priority:
        m_entry->priority = VelXmlValues::parseInt(m_text);
        break;
    case Name::NoTime:
        m_entry->notime = VelXmlValues::parseInt(m_text) != 0;
        break;
    case Name::Complete:
        m_entry->complete = VelXmlValues::parseInt(m_text) != 0;
        break;
    case Name::Reminder:
        m_entry->reminder = VelXmlValues::parseUInt(m_text);
        break;
    case Name::ReminderFired:
        m_entry->reminderfired = VelXmlValues::parseInt(m_text) != 0;
        break;
    default:
        break;
    }
}

bool VelXmlBuilder::storeRuleValue()
{
    VelRecurrenceRule &rule = m_entry->rule;
    switch (m_name) {
    case Name::RecurringType:
        rule.recurringtype = VelXmlValues::parseInt(m_text);
        return true;
    case Name::OccurEvery:
        rule.occurevery = VelXmlValues::parseInt(m_text);
        return true;
    case Name::OccurDays:
        rule.occurdays = VelXmlValues::parseIntList(m_text);
        return true;
    case Name::OccurDayNumber:
        rule.occurdaynumber = VelXmlValues::parseInt(m_text);
        return true;
    case Name::OccurEndDate:
        rule.occurenddate = VelXmlValues::parseDate(m_text);
        return true;
    case Name::OccurEndCount:
        rule.occurendcount = VelXmlValues::parseInt(m_text);
        return true;
    default:
        return false;
    }
}

QString VelXmlBuilder::shared(std::string_view text)
{
    const auto found = m_shared.find(text);
    if (found != m_shared.end())
        return found->second;
    QString made = toText(text);
    if (text.size() <= LongestSharedText && m_shared.size() < MostSharedTexts)
        m_shared.emplace(text, made);
    return made;
}
