// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "app/velfilechooser.h"

#include <QFileDialog>
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

QUrl VelFileDialogs::getOpenUrl(const QString &title, const QString &filter)
{
    QUrl url = QFileDialog::getOpenFileUrl(m_parent, title, m_folder, nameFilter(filter));
    if (!url.isEmpty())
        m_folder = url.adjusted(QUrl::RemoveFilename);
    return url;
}

QUrl VelFileDialogs::getSaveUrl(const QString &title, const QString &filter, QString *pattern)
{
    QString chosen;
    QUrl url = QFileDialog::getSaveFileUrl(m_parent, title, m_folder, nameFilter(filter), &chosen,
                                           QFileDialog::DontConfirmOverwrite);
    if (!url.isEmpty())
        m_folder = url.adjusted(QUrl::RemoveFilename);
    if (pattern && chosen.endsWith(QLatin1Char(')')))
        *pattern = chosen.section(QLatin1Char('('), -1).chopped(1);
    return url;
}
