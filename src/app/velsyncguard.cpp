// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "app/velsyncguard.h"

#include "document/veldoc.h"
#include "document/velkeptcopy.h"
#include "document/velsyncrule.h"
#include "model/velsettings.h"

#include <KLocalizedString>

#include <QDir>
#include <QStandardPaths>

#include <utility>

using Verdict = VelSyncRule::Verdict;

namespace
{
enum ArchiveChoice { IsArchive, IsCalendar, DecideLater };
enum OriginChoice { SameCalendar, KeepOwn, Replace, LeaveAlone };

/** As people read it, with the user first. */
QString nameOf(const VelServerAccount &account)
{
    return i18nc("an account: user, server", "%1 on %2", account.user, account.server);
}
} // namespace

VelSyncGuard::VelSyncGuard(Context context)
    : m_context(std::move(context))
{
}

VelServerAccount VelSyncGuard::account() const
{
    return {m_context.settings.server.trimmed(), m_context.settings.user};
}

/** Which file it is, and which accounts: with another of these the question is another. */
QString VelSyncGuard::situation() const
{
    const VelServerAccount last = m_context.doc.getServerAccount();
    const VelServerAccount now = account();
    return QStringList{m_context.doc.URL().toString(), last.server, last.user, now.server, now.user}.join(
        QLatin1Char('\n'));
}

bool VelSyncGuard::maySync(bool byHand)
{
    m_replaced.reset();
    m_allowed = account();
    switch (VelSyncRule::judge(m_context.doc, m_allowed, m_context.settings.archiveFile)) {
    case Verdict::Archive:
        if (byHand)
            tellArchive();
        return false;
    case Verdict::MaybeArchive:
        return askOnce(byHand, &VelSyncGuard::askWhetherArchive);
    case Verdict::OtherAccount:
        return askOnce(byHand, &VelSyncGuard::askWhatBecomesOfIt);
    case Verdict::Allowed:
        break;
    }
    return true;
}

bool VelSyncGuard::askOnce(bool byHand, Ask ask)
{
    if (m_isAsking || (!byHand && m_putOff == situation()))
        return false;
    m_isAsking = true;
    m_putOff.clear();
    const QPointer<VelSyncGuard> self(this);
    const bool mayGoOn = (this->*ask)();
    if (!self)
        return false;
    m_isAsking = false;
    return mayGoOn;
}

void VelSyncGuard::checkOpened()
{
    const bool isAutomatic = m_context.settings.autoSync && !m_context.settings.user.isEmpty()
        && !m_context.settings.server.isEmpty();
    const Verdict verdict = VelSyncRule::judge(m_context.doc, account(), m_context.settings.archiveFile);
    if (isAutomatic && verdict == Verdict::MaybeArchive)
        static_cast<void>(askOnce(false, &VelSyncGuard::askWhetherArchive));
}

void VelSyncGuard::tellArchive()
{
    m_context.messages.information(
        i18n("This file is an archive: it holds what was taken out of a calendar or kept aside, and is never "
             "synchronized with the server. Synchronized, it would take in the calendar and might lose what "
             "it "
             "holds.\nTo get entries back into your calendar, open that and import this file."),
        i18nc("@title:window", "Archive"));
}

bool VelSyncGuard::askWhetherArchive()
{
    const QPointer<VelSyncGuard> self(this);
    const QString asked = situation();
    const std::optional<int> choice = m_context.messages.choose(
        i18n("Is \"%1\" an archive, or a calendar that is to be synchronized with the server?\nIt looks like "
             "an "
             "archive; your answer is kept in the file.",
             m_context.doc.URL().fileName()),
        i18nc("@title:window", "Archive or Calendar"),
        {{i18n("It is an &archive"),
          i18n("It is never synchronized: what it holds stays as it is, and nothing is added.")},
         {i18n("It is my &calendar"),
          i18n(
              "It is synchronized with the account %1: it takes in what the server has, and entries that the "
              "server does not have any more are removed.",
              nameOf(account()))},
         {i18n("Ask me &later"),
          i18n("Nothing is synchronized in this window until you choose \"Synchronize\".")}},
        DecideLater);
    if (!self || asked != situation())
        return false; // closed, or another calendar opened, while it asked
    if (choice.value_or(DecideLater) == DecideLater) {
        m_putOff = asked;
        return false;
    }
    m_context.doc.setArchiveMark(choice == IsArchive);
    saveNote();
    // It may be another account's as well.
    return self && choice == IsCalendar
        && (VelSyncRule::judge(m_context.doc, account(), {}) == Verdict::Allowed || askWhatBecomesOfIt());
}

/** To the file at once, unless other changes wait to be saved too. */
void VelSyncGuard::saveNote()
{
    if (m_context.doc.isModified() || !m_context.doc.saveQuietly())
        m_context.doc.setModified(true);
}

bool VelSyncGuard::askWhatBecomesOfIt()
{
    const QPointer<VelSyncGuard> self(this);
    const QString asked = situation();
    const QString now = nameOf(account());
    const std::optional<int> choice = m_context.messages.choose(
        i18n("This calendar was last synchronized with another account: %1.\nNow your account is: %2.\nWhat "
             "is to "
             "become of the entries in it? Nothing is sent before you have chosen.",
             nameOf(m_context.doc.getServerAccount()), now),
        i18nc("@title:window", "Calendar of Another Account"),
        {{i18n("It is the &same calendar under a new name"),
          i18n("The server or the user was only renamed. It is synchronized as before.")},
         {i18n("&Keep my own entries as new ones"),
          i18n("Your own entries are added to the calendar of %1. Invitations of others are left out, and "
               "nobody is "
               "invited again.",
               now)},
         {i18n("&Replace it by the calendar on the server"),
          i18n("What is here is taken away, and what the server has for %1 takes its place.", now)},
         {i18n("&Leave it alone"),
          i18n("Nothing is changed and nothing is synchronized in this window until you choose "
               "\"Synchronize\".")}},
        LeaveAlone);
    if (!self || asked != situation())
        return false;
    return follow(choice.value_or(LeaveAlone));
}

bool VelSyncGuard::follow(int choice)
{
    switch (choice) {
    case SameCalendar:
        m_context.doc.setServerAccount(account());
        saveNote();
        return true;
    case KeepOwn:
        return startAnew(true);
    case Replace:
        return startAnew(false);
    default:
        m_putOff = situation();
        m_context.notice(
            i18n("Not synchronized: this calendar belongs to %1.", nameOf(m_context.doc.getServerAccount())));
        return false;
    }
}

bool VelSyncGuard::startAnew(bool keepsOwn)
{
    const QPointer<VelSyncGuard> self(this);
    if (!keepCopy() || !self)
        return false;
    VelDoc &doc = m_context.doc;
    const Replaced replaced{m_copy, doc.isModified()};
    doc.restart(keepsOwn ? VelSyncRule::ownAsNew(doc) : std::vector<std::unique_ptr<VelEntry>>());
    if (!keepsOwn) {
        // The file stays as it is until the server's calendar has come.
        doc.setModified(false);
        m_replaced = replaced;
    }
    return true;
}

bool VelSyncGuard::noteSynchronized()
{
    m_replaced.reset();
    VelDoc &doc = m_context.doc;
    if (doc.getServerAccount().isSame(m_allowed))
        return false;
    doc.setServerAccount(m_allowed);
    return !doc.isUntitled();
}

void VelSyncGuard::noteEnded()
{
    const std::optional<Replaced> replaced = std::exchange(m_replaced, std::nullopt);
    VelDoc &doc = m_context.doc;
    // What was written meanwhile stays; the copy is there too.
    if (!replaced || doc.isModified() || doc.getEntryCount() > 0)
        return;
    const QPointer<VelSyncGuard> self(this);
    const std::optional<bool> mark = doc.getArchiveMark();
    if (!doc.recoverDocument(replaced->copy, doc.URL()) || !self)
        return;
    doc.setArchiveMark(mark);
    doc.setModified(replaced->wasModified);
    m_putOff = situation(); // by hand it may be tried again
}

bool VelSyncGuard::keepCopy()
{
    const QString folder =
        QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + QLatin1String("/copies");
    const QString path = VelKeptCopy::write(m_context.doc, m_context.doc.today(), folder);
    const bool wasTold = std::exchange(m_hasCopyFailed, path.isEmpty());
    const QString failure =
        i18n("A copy of the calendar could not be written. Nothing was taken from the server, and "
             "the calendar is as it was.");
    if (path.isEmpty() && wasTold) {
        m_context.notice(failure);
        return false;
    }
    if (path.isEmpty()) {
        m_context.messages.error(failure); // this may go meanwhile
        return false;
    }
    m_copy = path;
    return true;
}

QString VelSyncGuard::takeCopyNotice()
{
    const QString path = std::exchange(m_copy, {});
    return path.isEmpty() ? QString()
                          : i18n("The calendar as it was is in %1.", QDir::toNativeSeparators(path));
}
