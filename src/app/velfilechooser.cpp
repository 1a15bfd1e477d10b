// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "app/velfilechooser.h"

#include <QFileDialog>
#include <QPointer>
#include <QStringList>

VelFileDialogs::VelFileDialogs(QWidget *parent)
    : m_parent(parent)
{
}

QString VelFileDialogs::nameFilter(const QString &filter)
{
    QStringList kinds;
    const QStringList lines = filter.split(QLatin1Char('\n'));
    for (const QString &line : lines)
        kinds.append(line.section(QLatin1Char('|'), 1) + QLatin1String(" (")
                     + line.section(QLatin1Char('|'), 0, 0) + QLatin1Char(')'));
    return kinds.join(QLatin1String(";;"));
}

QString VelFileDialogs::withSuffixOf(const QString &name, const QString &kind)
{
    const QString pattern = kind.section(QLatin1Char('('), -1).section(QLatin1Char(')'), 0, 0);
    const auto dot = name.lastIndexOf(QLatin1Char('.'));
    const bool isOneSuffix = pattern.startsWith(QLatin1String("*.")) && !pattern.contains(QLatin1Char(' '));
    return dot > 0 && isOneSuffix ? name.left(dot) + pattern.mid(1) : name;
}

QUrl VelFileDialogs::run(QFileDialog *dialog, QString *pattern)
{
    // The toolkit's own functions for this do not bear that the parent goes.
    const QPointer<QFileDialog> alive(dialog);
    const bool isChosen = dialog->exec() == QDialog::Accepted && alive;
    QUrl url = isChosen ? dialog->selectedUrls().value(0) : QUrl();
    if (isChosen)
        m_folder = url.adjusted(QUrl::RemoveFilename);
    const QString kind = isChosen ? dialog->selectedNameFilter() : QString();
    if (pattern && kind.endsWith(QLatin1Char(')')))
        *pattern = kind.section(QLatin1Char('('), -1).chopped(1);
    delete alive.data();
    return url;
}

QUrl VelFileDialogs::getOpenUrl(const QString &title, const QString &filter)
{
    auto *dialog = new QFileDialog(m_parent, title, QString(), nameFilter(filter));
    dialog->setFileMode(QFileDialog::ExistingFile);
    dialog->setDirectoryUrl(m_folder);
    return run(dialog, nullptr);
}

QUrl VelFileDialogs::getSaveUrl(const QString &title, const QString &filter, const QUrl &proposal,
                                QString *pattern)
{
    auto *dialog = new QFileDialog(m_parent, title, QString(), nameFilter(filter));
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setFileMode(QFileDialog::AnyFile);
    dialog->setOption(QFileDialog::DontConfirmOverwrite);
    dialog->setDirectoryUrl(proposal.isRelative() ? m_folder : proposal.adjusted(QUrl::RemoveFilename));
    if (!proposal.isEmpty())
        dialog->selectFile(proposal.fileName());
    QObject::connect(dialog, &QFileDialog::filterSelected, dialog, [dialog](const QString &kind) {
        const QString name = dialog->selectedUrls().value(0).fileName();
        const QString renamed = withSuffixOf(name, kind);
        if (renamed != name)
            dialog->selectFile(renamed);
    });
    return run(dialog, pattern);
}
