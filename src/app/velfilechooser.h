// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QString>
#include <QUrl>

class QFileDialog;
class QWidget;

/** How the user names files. The window's body shows the desktop's dialogs; that of a test answers by itself.
 */
class VelFileChooser
{
public:
    virtual ~VelFileChooser() = default;

    /** @p filter has a line for each kind: a pattern, a bar and a description. Empty when cancelled. */
    virtual QUrl getOpenUrl(const QString &title, const QString &filter) = 0;
    /**
     * The same for writing; asking about an existing file is left to the caller. @p proposal is what the user finds
     * there to be changed or taken: a whole URL, or only a name, which goes into the folder of the last choice. @p pattern,
     * unless null, becomes the pattern of the kind that the user chose, such as "*.xml".
     */
    virtual QUrl getSaveUrl(const QString &title, const QString &filter, const QUrl &proposal = {},
                            QString *pattern = nullptr) = 0;
};

/** The desktop's file dialogs. They choose nothing when the window goes while they are open. */
class VelFileDialogs : public VelFileChooser
{
public:
    /** @p parent must outlive this. */
    explicit VelFileDialogs(QWidget *parent);

    QUrl getOpenUrl(const QString &title, const QString &filter) override;
    QUrl getSaveUrl(const QString &title, const QString &filter, const QUrl &proposal = {},
                    QString *pattern = nullptr) override;

    /** The toolkit's form of a filter: "Calendar files (*.xml);;All files (*)". */
    [[nodiscard]] static QString nameFilter(const QString &filter);
    /** The file's name with the suffix of that kind, such as "iCalendar files (*.ics)", in place of the one it has. */
    [[nodiscard]] static QString withSuffixOf(const QString &name, const QString &kind);

private:
    [[nodiscard]] QUrl run(QFileDialog *dialog, QString *pattern);

    QWidget *m_parent;
    QUrl m_folder; // of the last choice
};
