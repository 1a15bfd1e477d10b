// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "app/velfilecommands.h"

#include "app/velfilechooser.h"
#include "document/velarchiver.h"
#include "document/velcalendarfile.h"
#include "document/veldoc.h"
#include "document/velexchange.h"
#include "document/velmessages.h"
#include "document/velpaste.h"
#include "document/velstep.h"
#include "document/veltransfer.h"
#include "document/velurl.h"
#include "model/velsettings.h"

#include <KLocalizedString>

#include <QCursor>
#include <QGuiApplication>

namespace
{
/** Shows that something takes its time. */
class BusyCursor
{
public:
    BusyCursor() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
    ~BusyCursor() { QGuiApplication::restoreOverrideCursor(); }
    Q_DISABLE_COPY_MOVE(BusyCursor)
};
} // namespace

/** One command on its way: tells what it does, and when it is done that it is, unless its window went meanwhile. */
class VelFileCommands::Command
{
public:
    Command(VelFileCommands &commands, const QString &text)
        : m_commands(commands)
        , m_life(commands.m_life)
    {
        if (!text.isEmpty())
            commands.m_context.status(text);
    }
    ~Command()
    {
        if (isAlive())
            m_commands.m_context.status(i18n("Ready."));
    }
    Q_DISABLE_COPY_MOVE(Command)

    /** To be asked after each question. */
    [[nodiscard]] bool isAlive() const { return !m_life.expired(); }

private:
    VelFileCommands &m_commands;
    std::weak_ptr<bool> m_life;
};

VelFileCommands::VelFileCommands(Context context)
    : m_context(std::move(context))
{
}

QString VelFileCommands::getFilter()
{
    return QLatin1String("*.xml|") + i18n("Calendar files") + QLatin1String("\n*|") + i18n("All files");
}

QString VelFileCommands::getExtFilter()
{
    return QLatin1String("*.vcs|") + i18n("vCalendar files") + QLatin1String("\n*.ics|")
        + i18n("iCalendar files") + QLatin1String("\n*|") + i18n("All files");
}

void VelFileCommands::newDocument()
{
    const std::weak_ptr<bool> life = m_life;
    if (m_context.mayReplaceCalendar() && !life.expired())
        m_context.doc.newDocument();
}

void VelFileCommands::open()
{
    const Command command(*this, i18n("Opening file..."));
    if (!m_context.mayReplaceCalendar() || !command.isAlive())
        return;
    const QUrl url = m_context.files.getOpenUrl(i18n("Open File..."), getFilter());
    if (command.isAlive() && !url.isEmpty() && !m_context.showElsewhere(url))
        openDocumentFile(url);
}

void VelFileCommands::open(const QUrl &url)
{
    const Command command(*this, i18n("Opening file..."));
    if (!m_context.showElsewhere(url) && m_context.mayReplaceCalendar() && command.isAlive())
        openDocumentFile(url);
}

bool VelFileCommands::openDocumentFile(const QUrl &url)
{
    std::optional<Command> command;
    if (!m_context.isEditLocked())
        command.emplace(*this, i18n("Opening file..."));
    bool opened = false;
    {
        const BusyCursor busy;
        opened = m_context.doc.openDocument(url);
    }
    // Only a failure is told, so that after a success the window is still there.
    if (opened)
        m_context.addRecentFile(url);
    return opened;
}

void VelFileCommands::save()
{
    if (m_context.doc.isUntitled()) {
        saveAs();
        return;
    }
    const Command command(*this, i18n("Saving file..."));
    m_context.doc.saveDocument(m_context.doc.URL(), true);
}

void VelFileCommands::saveAs()
{
    const Command command(*this, i18n("Saving file with a new filename..."));
    const QUrl url = m_context.files.getSaveUrl(i18n("Save as..."), getFilter());
    if (!command.isAlive() || url.isEmpty())
        return;
    if (m_context.doc.saveDocument(url, false) && command.isAlive())
        m_context.addRecentFile(m_context.doc.URL());
}

/** Adds what the file holds; without what had to be left out, which the counts tell. */
bool VelFileCommands::readIntoDocument(const QUrl &url, Imported &imported)
{
    const std::weak_ptr<bool> life = m_life;
    const BusyCursor busy;
    const VelDownload file(url);
    VelExchange::Content content;
    if (life.expired() || !VelExchange::read(file.path(), content))
        return false;
    imported = {static_cast<int>(content.entries.size()), content.leftOut, content.simplified,
                content.isReadable};
    {
        const VelStepScope scope(&m_context.doc, i18nc("what was done", "Import"));
        for (auto &entry : content.entries)
            VelPaste::addCopy(m_context.doc, std::move(entry));
    }
    if (imported.added > 0)
        m_context.doc.slotUpdateAllViews(nullptr);
    return true;
}

void VelFileCommands::importFile()
{
    const Command command(*this, i18n("Import from file..."));
    const QUrl url = m_context.files.getOpenUrl(i18n("Import from file..."), getExtFilter());
    if (command.isAlive() && !url.isEmpty())
        importFile(url);
}

void VelFileCommands::importFile(const QUrl &url)
{
    if (!mayChange()) {
        m_context.messages.error(i18n("This calendar cannot be changed now. Nothing was imported."));
        return;
    }
    const std::weak_ptr<bool> life = m_life;
    Imported imported;
    const bool isOpened = readIntoDocument(url, imported);
    if (life.expired())
        return;
    if (!isOpened)
        m_context.messages.error(i18n("Cannot open the file."));
    else if (!imported.isReadable)
        m_context.messages.error(i18n("Cannot read from the file."));
    else
        tellImported(imported);
}

/** Says nothing when all went as expected: the entries are there to be seen. */
void VelFileCommands::tellImported(const Imported &imported)
{
    QStringList texts;
    if (imported.added == 0 && imported.leftOut == 0)
        texts.append(i18n("The file holds no calendar entries. Nothing was imported."));
    if (imported.leftOut > 0) {
        texts.append(i18np("One entry was imported.", "%1 entries were imported.", imported.added));
        texts.append(i18np("One could not be read and was left out.",
                           "%1 could not be read and were left out.", imported.leftOut));
    }
    if (imported.simplified > 0) {
        texts.append(
            i18np("One entry repeats in a way that this calendar does not know; please check its dates.",
                  "%1 entries repeat in ways that this calendar does not know; please check their dates.",
                  imported.simplified));
    }
    if (!texts.isEmpty())
        m_context.messages.information(texts.join(QLatin1Char(' ')), i18nc("title of a message", "Import"));
}

bool VelFileCommands::mayChange() const
{
    return !m_context.isEditLocked() && m_context.doc.isWritable();
}

bool VelFileCommands::mayWrite(const QUrl &url)
{
    return !velExists(url)
        || m_context.messages.questionYesNo(i18n("Do you want to overwrite existing file?"),
                                            i18n("File exists"))
        == VelMessages::Answer::Yes;
}

void VelFileCommands::exportFile()
{
    const Command command(*this, i18n("Export to file..."));
    QString pattern;
    QUrl url = m_context.files.getSaveUrl(i18n("Export to file..."), getExtFilter(), &pattern);
    if (!command.isAlive() || url.isEmpty())
        return;
    const QLatin1String iCalendar(".ics");
    const bool isICalendar = url.fileName().endsWith(iCalendar, Qt::CaseInsensitive)
        || (pattern.endsWith(iCalendar) && !url.fileName().contains(QLatin1Char('.')));
    if (!url.fileName().endsWith(iCalendar, Qt::CaseInsensitive))
        VelUrl::setSuffix(url, isICalendar ? QString(iCalendar) : QStringLiteral(".vcs"));
    if (mayWrite(url) && command.isAlive() && !VelExchange::write(m_context.doc, url) && command.isAlive())
        m_context.messages.error(i18n("Cannot write to the file."));
}

void VelFileCommands::archive()
{
    const Command command(*this, {});
    if (!mayChange()) {
        m_context.messages.error(i18n("This calendar cannot be changed now. Nothing was archived."));
        return;
    }
    const VelArchiveChoice usual{m_context.doc.today().addYears(-1), m_context.settings.archiveFile};
    const std::optional<VelArchiveChoice> choice = m_context.chooseArchive(usual);
    if (!command.isAlive() || !choice || choice->url.isEmpty())
        return;
    // It may have been opened or locked anew while the user was choosing.
    if (mayChange())
        archive(*choice);
}

void VelFileCommands::archive(const VelArchiveChoice &choice)
{
    const std::weak_ptr<bool> life = m_life;
    VelArchiver archiver(m_context.doc, m_context.messages, m_context.settings);
    VelArchiver::Result result = VelArchiver::Result::Failed;
    {
        const BusyCursor busy;
        if (!archiver.open(choice.url))
            return;
        m_context.settings.archiveFile = archiver.URL();
        result = archiver.archive(choice.date);
    }
    if (life.expired())
        return;
    if (result == VelArchiver::Result::Nothing)
        m_context.messages.information(
            i18n("No calendar entries matched the archive criteria. Nothing archived."));
    if (result != VelArchiver::Result::Archived)
        return;
    save();
    if (life.expired())
        return;
    // After saving: what was deleted is still to be told to the server.
    m_context.doc.slotUpdateAllViews(nullptr);
    m_context.messages.information(QString::number(archiver.getCount()) + QLatin1Char(' ')
                                   + i18n("calendar entries were archived."));
}
