// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "formats/velxmlreader.h"
#include "formats/velxmlwriter.h"

#include <QByteArray>
#include <QFile>

// Bytes to records and back in one step.
namespace XmlTesting
{
// What is in tests/formats/data/@p name. Ends the program when there is no such file.
inline QByteArray dataFile(const char *name)
{
    QFile file(QLatin1String(TEST_DATA_DIR "/") + QLatin1String(name));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("No test data %s", name);
    return file.readAll();
}

// What @p bytes hold, fed in pieces of @p pieceSize; nothing when reading failed.
inline std::optional<VelXmlContent> read(const QByteArray &bytes, VelSize pieceSize = 1 << 29)
{
    VelXmlReader reader;
    for (VelSize at = 0; at < bytes.size(); at += pieceSize) {
        const VelSize size = std::min(pieceSize, bytes.size() - at);
        if (!reader.feed(bytes.constData() + at, static_cast<std::size_t>(size)))
            return {};
    }
    return reader.finish() ? std::optional(reader.takeContent()) : std::nullopt;
}

// The calendar file of @p content, line by line; meta fields that are not set have their defaults.
inline QList<QByteArray> write(const VelXmlContent &content)
{
    VelCalendarMeta meta;
    meta.userid = content.userid.value_or(meta.userid);
    meta.origright = content.origright.value_or(meta.origright);
    meta.synctime = content.synctime.value_or(meta.synctime);
    meta.archive = content.archive;
    meta.account = content.account;
    VelXmlWriter writer;
    writer.writeHead();
    writer.writeMeta(meta);
    for (const VelAccount &account : content.accounts.value_or(VelAccountList()))
        writer.writeAccount(account);
    for (const auto &entry : content.entries)
        writer.writeEntry(*entry);
    writer.writeTail();
    return QByteArray::fromStdString(writer.text()).split('\n');
}
} // namespace XmlTesting
