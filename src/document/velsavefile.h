// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "document/velfilerights.h"

#include <QFile>
#include <QString>

/**
 * A file that takes the place of another at once and whole, or not at all, and that nobody may use who could not use the
 * one before.
 *
 * What is being written stands beside it under a hidden name, locked; what a killed process left of that is removed when
 * the same file is next saved or opened.
 */
class VelSaveFile
{
public:
    /** A file this young is not swept, whatever its lock says. Seconds. */
    static constexpr int YoungestLeftover = 10;

    /** To replace @p path, or what a link of that name leads to. */
    explicit VelSaveFile(const QString &path);
    /** Leaves everything as it was, unless commit() was called. */
    ~VelSaveFile();
    Q_DISABLE_COPY_MOVE(VelSaveFile)

    /**
     * Begins. It will have the rights of the file that it replaces, else those of @p like, else, where there is neither,
     * it is for the owner and, as the user's mask says, for the group. False when the file may not be written.
     */
    [[nodiscard]] bool open(const QString &like);
    /** Takes what is written, unbuffered. */
    [[nodiscard]] QIODevice &device() { return m_file; }
    /** Replaces the file. Afterwards it is on the disk, whatever happens to the power. False when that failed. */
    [[nodiscard]] bool commit();

    /** Removes what killed processes of this user left of @p path. */
    static void sweep(const QString &path);

private:
    [[nodiscard]] bool create(unsigned mode);

    QString m_path; // of the file to be replaced
    QByteArray m_newPath; // empty when there is nothing to be removed
    std::optional<VelFileRights> m_rights;
    QFile m_file;
};
