// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "document/velkeptcopy.h"

#include "document/veldoc.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

namespace
{
constexpr char Infix[] = ".before-sync-";

/** Without the suffix; an untitled calendar has a name too. */
QString baseOf(const VelDoc &doc)
{
    return QFileInfo(doc.URL().fileName()).completeBaseName();
}

QString nameOf(const QString &base, QDate today, int number)
{
    const QString day = QString::fromLatin1(Infix) + today.toString(Qt::ISODate);
    const QString count = number > 1 ? QLatin1Char('-') + QString::number(number) : QString();
    return base + day + count + QLatin1String(".xml");
}

/** One that is not taken yet. */
QString freeName(const QDir &folder, const QString &base, QDate today)
{
    int number = 1;
    while (folder.exists(nameOf(base, today, number)))
        ++number;
    return folder.filePath(nameOf(base, today, number));
}

void removeOldest(QDir folder, const QString &base, const QString &newest)
{
    const QRegularExpression name(
        QRegularExpression::anchoredPattern(QRegularExpression::escape(base + QString::fromLatin1(Infix))
                                            + QStringLiteral("\\d{4}-\\d\\d-\\d\\d(-\\d+)?\\.xml")));
    int count = 1;
    const QStringList files = folder.entryList(QDir::Files | QDir::NoSymLinks, QDir::Time); // newest first
    for (const QString &file : files) {
        if (folder.filePath(file) != newest && name.match(file).hasMatch()
            && ++count > VelKeptCopy::MostCopies)
            folder.remove(file);
    }
}

QString writeInto(const QDir &folder, const VelDoc &doc, QDate today)
{
    const QString path = freeName(folder, baseOf(doc), today);
    if (!doc.writeCopy(path, true))
        return {};
    removeOldest(folder, baseOf(doc), path);
    return path;
}
} // namespace

namespace VelKeptCopy
{
QString write(const VelDoc &doc, QDate today, const QString &folder)
{
    if (doc.URL().isLocalFile() && !doc.isUntitled()) {
        const QFileInfo file(doc.URL().toLocalFile());
        const QString beside = writeInto(QDir(file.absolutePath()), doc, today);
        if (!beside.isEmpty())
            return beside;
    }
    const QDir other(folder);
    return other.mkpath(QStringLiteral(".")) ? writeInto(other, doc, today) : QString();
}
} // namespace VelKeptCopy
