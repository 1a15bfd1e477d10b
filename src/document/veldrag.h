// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "model/compat.h"
#include "model/velentry.h"

#include <QMimeData>

#include <memory>
#include <vector>

/**
 * One entry on the clipboard or in a drag: in the program's own form and, for all other programs, as
 * vCalendar text.
 */
class VelDrag : public QMimeData
{
    Q_OBJECT
public:
    /** Keeps the texts of @p entry, nothing else; @p userid is the user id of its calendar. */
    VelDrag(const VelEntry &entry, quint32 userid);

    /** True for the types offered; case does not count. */
    [[nodiscard]] bool provides(const QString &mime) const;
    /** The program's own form for its type, the vCalendar text for any other. */
    [[nodiscard]] QByteArray encodedData(const QString &mime) const;

    [[nodiscard]] QStringList formats() const override;
    [[nodiscard]] bool hasFormat(const QString &mime) const override { return provides(mime); }

    /** True when decode() may find an entry: in data, or in a file that is dropped. */
    [[nodiscard]] static bool canDecode(const QMimeData *source);
    /** The first entry of the data, with the ids that it had where it comes from, or null. */
    [[nodiscard]] static std::unique_ptr<VelEntry> decode(const QMimeData *source);
    /** All entries of the data: files may hold many. */
    [[nodiscard]] static std::vector<std::unique_ptr<VelEntry>> decodeAll(const QMimeData *source);

    /** What it carries has been cut: the first to paste it moves it, and who pastes it again makes copies. */
    void setCut() { m_isCut = true; }
    /** True once for data of this program that has been cut. */
    [[nodiscard]] static bool takeCut(const QMimeData *source);

protected:
    QVariant retrieveData(const QString &mime, VelVariantType type) const override;

private:
    QByteArray m_entry;
    QString m_vCalendar;
    mutable bool m_isCut = false; // and not yet pasted; the clipboard hands out nothing that may be changed
};
