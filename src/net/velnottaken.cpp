// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "net/velnottaken.h"

#include "formats/velxmlwriter.h"

#include <KLocalizedString>

#include <QStringList>

#include <algorithm>
#include <tuple>

namespace
{
constexpr std::size_t MostTitles = 5;
constexpr int LongestTitle = 40; // characters

/** Who is invited in which role; how they are called and what they answer the server may know better. */
void reduce(VelAccountList &accounts)
{
    for (VelAccount &account : accounts) {
        account.name = QStringLiteral("?"); // one without a name would not be written
        account.type = 0;
        account.status = 0;
        if (account.id != 0)
            account.email.clear();
    }
    std::sort(accounts.begin(), accounts.end(), [](const VelAccount &a, const VelAccount &b) {
        return std::tie(a.id, a.email, a.attendee) < std::tie(b.id, b.email, b.attendee);
    });
}

/** What only the sender can have changed. */
VelEntry reduced(const VelEntry &entry)
{
    VelEntry result(entry);
    result.localid = result.globalid = result.user = 0;
    result.dirty = 0;
    result.reminderfired = false;
    reduce(result.accounts);
    return result;
}

/** Without what a message does not carry. */
std::string wireForm(const VelEntry &entry)
{
    VelXmlWriter writer;
    writer.writeEntry(entry);
    return writer.text();
}

bool isOf(const VelEntry &entry, quint32 userid)
{
    return entry.user == 0 || entry.user == userid;
}

QString titleOf(const VelNotTaken::Item &item)
{
    QString title = item.entry.getTitle().simplified();
    if (title.isEmpty())
        title = i18nc("in place of the title of an entry", "(without a title)");
    if (title.size() > LongestTitle)
        title = i18nc("a title that is too long to be shown", "%1...", title.left(LongestTitle));
    switch (item.fate) {
    case VelNotTaken::Fate::Replaced:
        return i18nc("title of an entry that was changed here and elsewhere", "%1 (as the server has it)",
                     title);
    case VelNotTaken::Fate::Deleted:
        return i18nc("title of an entry that was changed here", "%1 (deleted on the server)", title);
    case VelNotTaken::Fate::Unsent:
        break;
    }
    return title;
}
} // namespace

bool VelNotTaken::isTaken(const VelEntry &sent, const VelEntry &came, quint32 userid)
{
    if (came.isDeleted())
        return sent.isDeleted();
    if (!isOf(came, userid)) {
        // Of what others organise only the answer is the user's.
        const VelAccount *own = came.accounts.get(userid);
        return own ? own->status == sent.getAccountStatus(userid) : sent.isDeleted();
    }
    const VelEntry a = reduced(sent);
    const VelEntry b = reduced(came);
    return !sent.isDeleted() && (a == b || wireForm(a) == wireForm(b));
}

QString VelNotTaken::tell(const std::vector<Item> &items, bool isAsked)
{
    std::map<quint32, Item> told;
    bool isNew = isAsked;
    for (const Item &item : items) {
        const auto before = m_told.find(item.entry.localid);
        isNew = isNew || item.fate != Fate::Unsent || before == m_told.end() || !(before->second == item);
        told.emplace(item.entry.localid, item);
    }
    m_told = std::move(told);
    if (items.empty() || !isNew)
        return {};
    QStringList titles;
    for (std::size_t i = 0; i < std::min(items.size(), MostTitles); ++i)
        titles.append(titleOf(items[i]));
    const QString list = titles.join(i18nc("between titles of entries", ", "));
    const auto count = static_cast<int>(items.size());
    const QString text = i18np("One change was not taken: %2", "%1 changes were not taken: %2", count, list);
    const int others = count - int(titles.size());
    return others > 0 ? i18ncp("%2 is a list of titles", "%2 and one more", "%2 and %1 more", others, text)
                      : text;
}
