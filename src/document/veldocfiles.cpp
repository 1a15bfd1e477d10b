// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "document/velcalendarfile.h"
#include "document/veldoc.h"
#include "document/velmessages.h"
#include "document/velsavefile.h"
#include "document/veltransfer.h"
#include "document/velurl.h"
#include "model/velsettings.h"

#include <KLocalizedString>

#include <QPointer>

#include <algorithm>

bool VelDoc::newDocument()
{
    deleteContents();
    slotUpdateAllViews(nullptr);
    setModified(false);
    QUrl url;
    url.setPath(untitledName());
    setUrl(url, {});
    Q_EMIT editLockWanted(false);
    return true;
}

void VelDoc::closeDocument()
{
    deleteContents();
}

void VelDoc::restart(std::vector<std::unique_ptr<VelEntry>> entries)
{
    const std::optional<bool> mark = m_meta.archive;
    deleteContents();
    m_meta.archive = mark;
    m_globalMap.clear();
    m_rights.clear();
    m_accounts.clear();
    takeEntries(std::move(entries));
    slotUpdateAllViews(nullptr);
    Q_EMIT editLockWanted(false);
    Q_EMIT accountsChanged();
}

bool VelDoc::saveModified()
{
    if (!m_modified)
        return true;
    // What could not be saved by itself is asked about, so that nobody is kept from closing.
    const QPointer<VelDoc> self(this);
    if (m_settings.autoSave && !isUntitled() && saveDocument(m_url, true))
        return true;
    if (!self)
        return false;
    const VelMessages::Answer answer = m_messages.warningYesNoCancel(
        i18n("The current file has been modified.\nDo you want to save it?"), i18n("Warning"));
    if (!self)
        return false; // closed while it asked
    switch (answer) {
    case VelMessages::Answer::Yes:
        if (!isUntitled())
            return saveDocument(m_url, true);
        Q_EMIT saveAsWanted();
        if (!self)
            return false;
        // The file dialog may have been cancelled: then nothing is saved, and nothing may be thrown away.
        return !m_modified;
    case VelMessages::Answer::No:
        // To decline is to have dealt with the changes, towards the server too.
        m_modsSynced = true;
        return true;
    case VelMessages::Answer::Cancel:
        break;
    }
    return false;
}

bool VelDoc::readContent(const QString &path, VelXmlContent &content)
{
    switch (VelCalendarFile::read(path, content)) {
    case VelCalendarFile::Result::CannotOpen:
        m_messages.error(i18n("Cannot open the file."));
        return false;
    case VelCalendarFile::Result::CannotRead:
        m_messages.error(i18n("Cannot read from the file."));
        return false;
    case VelCalendarFile::Result::Ok:
        break;
    }
    return true;
}

bool VelDoc::openDocument(const QUrl &url)
{
    if (url.isLocalFile())
        VelSaveFile::sweep(url.toLocalFile());
    const VelDownload file(url);
    return load(file.path(), url);
}

bool VelDoc::recoverDocument(const QString &source, const QUrl &url)
{
    if (!load(source, url))
        return false;
    setModified(true);
    return true;
}

bool VelDoc::load(const QString &source, const QUrl &url)
{
    // Asked for first: what somebody writes while the file is read is not what will be shown.
    const VelFileState state = stateOf(url);
    VelXmlContent content;
    if (!readContent(source, content))
        return false;
    const bool hasAccounts = content.accounts.has_value();
    deleteContents();
    readXml(content);
    m_meta.archive = content.archive;
    m_meta.account = content.account;
    takeEntries(std::move(content.entries));
    setUrl(url, state);
    slotUpdateAllViews(nullptr);
    setModified(false);
    Q_EMIT editLockWanted(!isWritable());
    if (hasAccounts)
        Q_EMIT accountsChanged();
    return true;
}

int VelDoc::readXml(VelXmlContent &content)
{
    const std::size_t count = content.count();
    m_meta.synctime = content.synctime.value_or(m_meta.synctime);
    m_meta.userid = content.userid.value_or(m_meta.userid);
    m_meta.origright = content.origright.value_or(m_meta.origright);
    if (content.rights)
        m_rights = std::move(*content.rights);
    if (content.accounts)
        m_accounts = std::move(*content.accounts);
    return static_cast<int>(count);
}

/**
 * An entry whose local id is missing, or taken by one before it, gets a fresh one above all: no entry is
 * lost.
 */
void VelDoc::takeEntries(std::vector<std::unique_ptr<VelEntry>> entries)
{
    for (const auto &entry : entries)
        m_nextLocalId = std::max(m_nextLocalId, entry->localid + 1);
    const QDate today = m_today();
    for (auto &entry : entries) {
        if (entry->localid == 0 || m_entries.count(entry->localid) != 0)
            entry->localid = takeLocalId();
        store(std::move(entry), today);
    }
}

bool VelDoc::mayReplace(const QUrl &url, bool overwrite)
{
    const bool isOwnFile = url == m_url;
    if (!overwrite && velExists(url)) {
        return m_messages.questionYesNo(i18n("Do you want to overwrite existing file?"), i18n("File exists"))
            == VelMessages::Answer::Yes;
    }
    const VelFileState state = stateOf(url);
    if (!isOwnFile || !state.exists() || state.hasSameContent(m_fileState))
        return true;
    const VelMessages::Answer answer = m_messages.questionYesNo(
        i18n("The file \"%1\" has been changed by another program since it was opened here.\n"
             "Saving replaces those changes by yours. To keep both, choose \"Cancel\" and save under another "
             "name.",
             url.fileName()),
        i18n("File was changed"), i18n("Replace the file"), i18n("Cancel"));
    return answer == VelMessages::Answer::Yes;
}

bool VelDoc::saveDocument(const QUrl &chosenUrl, bool overwrite)
{
    QUrl url = chosenUrl;
    VelUrl::setSuffix(url, QStringLiteral(".xml"));
    // Consent to replace a file is for the one that was named, not for another that the suffix leads to.
    const QPointer<VelDoc> self(this);
    const bool isAllowed = mayReplace(url, overwrite && url == chosenUrl);
    if (!self)
        return false; // closed while it asked
    if (!isAllowed) {
        m_declinedOverwrite = m_declinedOverwrite || overwrite;
        return false;
    }
    if (!writeFile(url)) {
        m_messages.error(i18n("Cannot write to the file."));
        return false;
    }
    setUrl(url, stateOf(url));
    setModified(false);
    return true;
}

bool VelDoc::saveQuietly()
{
    const VelFileState state = stateOf(m_url);
    if (isUntitled() || (state.exists() && !state.hasSameContent(m_fileState)) || !writeFile(m_url))
        return false;
    setUrl(m_url, stateOf(m_url));
    setModified(false);
    return true;
}

bool VelDoc::writeFile(const QUrl &url) const
{
    if (url.isLocalFile())
        return writeCopy(url.toLocalFile());
    QTemporaryFile copy;
    return copy.open() && writeTo(copy, m_meta) && copy.flush() && velUpload(copy.fileName(), url);
}

bool VelDoc::writeCopy(const QString &path, bool asArchive) const
{
    VelCalendarMeta meta = m_meta;
    if (asArchive)
        meta.archive = true;
    const QString own = m_url.isLocalFile() ? m_url.toLocalFile() : QString();
    return VelCalendarFile::write(
        path, [this, &meta](QIODevice &device) { return writeTo(device, meta); }, own);
}

bool VelDoc::writeTo(QIODevice &device, const VelCalendarMeta &meta) const
{
    VelXmlWriter writer(&device);
    writer.writeHead();
    writer.writeMeta(meta);
    for (const VelAccount &account : m_accounts)
        writer.writeAccount(account);
    for (const auto &[localid, stored] : m_entries)
        writer.writeEntry(*stored.entry);
    writer.writeTail();
    return writer.flush();
}
