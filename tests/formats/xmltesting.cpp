// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "formats/xmltesting.h"

#include "formats/velxmlwriter.h"

#include <QFile>

#include <algorithm>

namespace
{
QByteArray aroundOf(const QByteArray &bytes, VelSize at)
{
    return bytes.mid(std::max<VelSize>(at - 30, 0), 60);
}

bool sameAnswer(const VelXmlContent &a, const VelXmlContent &b)
{
    return a.synctime == b.synctime && a.userid == b.userid && a.origright == b.origright
        && a.origuserid == b.origuserid && a.error == b.error && a.totalsync == b.totalsync
        && a.rights == b.rights && a.accounts.has_value() == b.accounts.has_value();
}

bool sameEntries(const VelXmlContent &a, const VelXmlContent &b)
{
    return std::equal(a.entries.begin(), a.entries.end(), b.entries.begin(), b.entries.end(),
                      [](const auto &left, const auto &right) { return *left == *right; });
}
} // namespace

namespace XmlTesting
{
QByteArray dataFile(const QString &name)
{
    QFile file(QStringLiteral(TEST_DATA_DIR "/") + name);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("No test data %s", qPrintable(file.fileName()));
    return file.readAll();
}

QByteArray hexFile(const QString &name)
{
    QByteArray digits;
    const QList<QByteArray> lines = dataFile(name).split('\n');
    for (const QByteArray &line : lines)
        digits += line.split('#').first();
    return QByteArray::fromHex(digits);
}

QByteArray calendarOf(const QByteArray &elements)
{
    return "<?xml version='1.0' encoding='UTF-8'?><calendar>" + elements + "</calendar>";
}

std::optional<VelXmlContent> readInPieces(const QByteArray &bytes, int pieceSize)
{
    VelXmlReader reader;
    for (VelSize at = 0; at < bytes.size(); at += pieceSize) {
        const VelSize size = std::min<VelSize>(pieceSize, bytes.size() - at);
        if (!reader.feed(bytes.constData() + at, static_cast<std::size_t>(size)))
            return {};
    }
    if (!reader.finish())
        return {};
    return reader.takeContent();
}

std::optional<VelXmlContent> read(const QByteArray &bytes)
{
    return readInPieces(bytes, static_cast<int>(std::max<VelSize>(bytes.size(), 1)));
}

QByteArray write(const VelXmlContent &content)
{
    VelCalendarMeta meta;
    meta.userid = content.userid.value_or(meta.userid);
    meta.origright = content.origright.value_or(meta.origright);
    meta.synctime = content.synctime.value_or(meta.synctime);
    VelXmlWriter writer;
    writer.writeHead();
    writer.writeMeta(meta);
    if (content.accounts) {
        for (const VelAccount &account : *content.accounts)
            writer.writeAccount(account);
    }
    for (const auto &entry : content.entries)
        writer.writeEntry(*entry);
    writer.writeTail();
    return QByteArray::fromStdString(writer.text());
}

QString difference(const QByteArray &actual, const QByteArray &expected)
{
    if (actual == expected)
        return {};
    const auto at = std::mismatch(actual.begin(), actual.end(), expected.begin(), expected.end()).first;
    const auto offset = static_cast<VelSize>(at - actual.begin());
    return QStringLiteral("at byte %1: \"%2\" instead of \"%3\"")
        .arg(offset)
        .arg(QString::fromLatin1(aroundOf(actual, offset)), QString::fromLatin1(aroundOf(expected, offset)));
}

QString difference(const VelXmlContent &actual, const VelXmlContent &expected)
{
    if (!sameAnswer(actual, expected))
        return QStringLiteral("other values for the whole calendar");
    const QString written = difference(write(actual), write(expected));
    if (!written.isEmpty() || sameEntries(actual, expected))
        return written;
    return QStringLiteral("entries differ in what is not written");
}
} // namespace XmlTesting
