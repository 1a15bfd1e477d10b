// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "app/velfilecommands.h"

#include "app/velfilechooser.h"
#include "app/velimport.h"
#include "document/velarchiver.h"
#include "document/velcalendarfile.h"
#include "document/veldoc.h"
#include "document/velexchange.h"
#include "document/velmessages.h"
#include "document/veltransfer.h"
#include "model/velsettings.h"

#include <KLocalizedString>

#include <QCursor>
#include <QFileInfo>
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
        + i18n("iCalendar files") + QLatin1String("\n*.xml|") + i18n("Calendar files") + QLatin1String("\n*|")
        + i18n("All files");
}

QString VelFileCommands::getImportFilter()
{
    return QLatin1String("*.vcs *.ics *.xml|") + i18n("Calendar files of all kinds") + QLatin1Char('\n')
        + getExtFilter();
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
    const QUrl url = m_context.files.getSaveUrl(i18n("Save as..."), getFilter(), m_context.proposal());
    if (!command.isAlive() || url.isEmpty())
        return;
    if (m_context.doc.saveDocument(url, false) && command.isAlive())
        m_context.addRecentFile(m_context.doc.URL());
}

void VelFileCommands::importFile()
{
    const Command command(*this, i18n("Import from file..."));
    const QUrl url = m_context.files.getOpenUrl(i18n("Import from file..."), getImportFilter());
    if (command.isAlive() && !url.isEmpty())
        importFile(url);
}

void VelFileCommands::importFile(const QUrl &url)
{
    if (!mayChange()) {
        m_context.messages.error(i18n("This calendar cannot be changed now. Nothing was imported."));
        return;
    }
    VelImport import(
        {m_context.doc, m_life, m_context.progress, m_context.setEditLock, [this] { return mayChange(); }});
    switch (import.run(url)) {
    case VelImport::Result::Done:
        tell(import.report()->text(), i18nc("title of a message", "Import"));
        break;
    case VelImport::Result::Locked:
        m_context.messages.error(i18n("This calendar cannot be changed now. Nothing was imported."));
        break;
    case VelImport::Result::CannotOpen:
        m_context.messages.error(i18n("Cannot open the file."));
        break;
    case VelImport::Result::CannotRead:
        m_context.messages.error(i18n("Cannot read from the file."));
        break;
    case VelImport::Result::Stopped:
    case VelImport::Result::Gone:
        break;
    }
}

/** Says nothing when all went as expected. */
void VelFileCommands::tell(const QString &text, const QString &caption)
{
    if (!text.isEmpty())
        m_context.messages.information(text, caption);
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
    const QUrl chosen =
        m_context.files.getSaveUrl(i18n("Export to file..."), getExtFilter(), exportProposal(), &pattern);
    if (!command.isAlive() || chosen.isEmpty())
        return;
    const QUrl url = VelExchange::withSuffix(chosen, pattern);
    if (mayWrite(url) && command.isAlive())
        exportTo(url);
}

/** The calendar's own name, in the folder of the last choice. */
QUrl VelFileCommands::exportProposal() const
{
    QString name = QFileInfo(m_context.doc.URL().fileName()).completeBaseName();
    if (m_context.doc.isUntitled() || name.isEmpty())
        name = i18nc("name of a file for an export", "calendar");
    QUrl proposal;
    proposal.setPath(name + QLatin1String(".vcs"));
    return proposal;
}

void VelFileCommands::exportTo(const QUrl &url)
{
    if (url == m_context.doc.URL()) {
        m_context.doc.saveDocument(url, true); // else it would seem to be somebody else's change
        return;
    }
    const std::weak_ptr<bool> life = m_life;
    VelExchange::Written written;
    {
        const BusyCursor busy;
        written = VelExchange::write(m_context.doc, url);
    }
    if (life.expired())
        return;
    if (!written.isWritten)
        m_context.messages.error(i18n("Cannot write to the file."));
    else
        tell(VelImportReport::exportText(written.leftOut), i18nc("title of a message", "Export"));
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
