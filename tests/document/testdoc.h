// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "document/veldoc.h"
#include "model/velsettings.h"
#include "support/fakemessages.h"
#include "support/testcalendar.h"

#include <QTemporaryDir>

namespace TestCalendar
{
struct Surroundings {
    FakeMessages messages;
    VelSettings settings;
    QTemporaryDir folder;
};

// A document with all that it needs around it, and a folder for its files.
struct TestDoc : public Surroundings, public VelDoc {
    explicit TestDoc(Today today = &TestCalendar::today, Now now = {})
        : VelDoc(messages, settings, nullptr, std::move(today), std::move(now))
    {
    }
    QString path(const QString &name) const { return folder.filePath(name); }
    QUrl url(const QString &name) const { return QUrl::fromLocalFile(path(name)); }
    QByteArray bytes(const QString &name) const { return fileBytes(path(name)); }
    bool put(const QString &name, const QByteArray &bytes) const { return writeBytes(path(name), bytes); }
};

// A calendar file in the very form in which they are written.
inline QByteArray canonicalFile()
{
    return fileBytes(QStringLiteral(TEST_DATA_DIR "/canonical.xml"));
}

// One event for each local id, with its place in the file as its title.
inline QByteArray fileWithIds(const QVector<quint32> &ids)
{
    const QString entry =
        QStringLiteral("<entry><localid>%1</localid><title>%2</title><start>2026-3-2 9:0</start>"
                       "<end>2026-3-2 10:0</end></entry>");
    QString text;
    for (int i = 0; i < ids.size(); ++i)
        text += entry.arg(ids.at(i)).arg(i);
    return "<calendar>" + text.toUtf8() + "</calendar>";
}
} // namespace TestCalendar
