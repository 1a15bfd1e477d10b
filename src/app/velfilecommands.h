// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "app/velprogress.h"

#include <QDate>
#include <QUrl>

#include <functional>
#include <memory>
#include <optional>

class VelDoc;
class VelFileChooser;
class VelMessages;
class VelSettings;

/** Which entries to archive, and where. */
struct VelArchiveChoice {
    QDate date; ///< entries that ended before it
    QUrl url;
};

/**
 * The commands of the File menu that deal with files of one window's calendar.
 *
 * The window may be closed, and this with it, while one of them waits for the user: the command then ends there.
 */
class VelFileCommands
{
public:
    /** All of these must outlive this. @p status shows a text in the status bar. */
    struct Context {
        VelDoc &doc;
        VelMessages &messages;
        VelFileChooser &files;
        VelSettings &settings;
        std::function<void(const QUrl &)> addRecentFile;
        std::function<void(const QString &)> status;
        /** True while the calendar may not be changed; status texts are left alone then. */
        std::function<bool()> isEditLocked;
        /** Sees to it that another calendar can take the place of the one that is open; false when it is to stay. */
        std::function<bool()> mayReplaceCalendar;
        /** Brings up another window that shows the file already; false when there is none. */
        std::function<bool(const QUrl &)> showElsewhere;
        /** Takes hold of that lock, and lets it go. */
        std::function<void(bool)> setEditLock;
        VelProgress::Maker progress; ///< for what may take long
        /** Where the calendar is, or, without a file yet, where it may well be saved; always with a name. */
        std::function<QUrl()> proposal;
        /** Lets the user choose, beginning with what is handed in; none when that was cancelled. */
        std::function<std::optional<VelArchiveChoice>(const VelArchiveChoice &)> chooseArchive;
    };

    explicit VelFileCommands(Context context);

    /** Calendar files. */
    [[nodiscard]] static QString getFilter();
    /** Files for export. */
    [[nodiscard]] static QString getExtFilter();
    /** The same for import, with all that can be imported in the first line. */
    [[nodiscard]] static QString getImportFilter();

    void newDocument();
    /** Asks which file to open. */
    void open();
    /** Asks what to do with changes, then opens @p url; or brings it up in another window that shows it. */
    void open(const QUrl &url);
    /** Opens @p url without looking at the calendar that is open. False when it cannot be read. */
    bool openDocumentFile(const QUrl &url);
    void save();
    void saveAs();
    /** Asks which file to import. */
    void importFile();
    /** Adds the entries of @p url to the calendar. */
    void importFile(const QUrl &url);
    void exportFile();
    /** Asks what to move to the archive, and to which. */
    void archive();

private:
    class Command;

    void exportTo(const QUrl &url);
    [[nodiscard]] QUrl exportProposal() const;
    void tell(const QString &text, const QString &caption);
    void archive(const VelArchiveChoice &choice);
    [[nodiscard]] bool mayChange() const;
    [[nodiscard]] bool mayWrite(const QUrl &url);

    Context m_context;
    std::shared_ptr<bool> m_life = std::make_shared<bool>(true); // what guards hold on to weakly
};
