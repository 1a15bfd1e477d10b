// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QDateTime>
#include <QLockFile>
#include <QString>

#include <memory>
#include <vector>

class VelDoc;

/**
 * The copy of a calendar that has no file yet, from which it is recovered when its program comes to a sudden end.
 *
 * It belongs to one window at a time, of whichever process: as long as that lives nobody else finds it.
 */
class VelRecoveryCopy
{
public:
    /** One of its own for a window; nothing is written yet. Null when there is no place for it. */
    [[nodiscard]] static std::unique_ptr<VelRecoveryCopy> create();
    /** Those whose windows are gone, the oldest first. They belong to the caller, who may let them go again. */
    [[nodiscard]] static std::vector<std::unique_ptr<VelRecoveryCopy>> findAbandoned();

    /** Writes the calendar in place of what was written before. False when that failed. */
    [[nodiscard]] bool write(const VelDoc &doc);
    /** Takes it from the disk: it is not needed any more. */
    void remove();
    [[nodiscard]] QString path() const { return m_path; }
    /** When it was last written. */
    [[nodiscard]] QDateTime written() const;

private:
    explicit VelRecoveryCopy(const QString &path);

    QString m_path;
    QLockFile m_lock;
};
