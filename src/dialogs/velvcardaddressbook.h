// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "dialogs/veladdressbook.h"

/**
 * An address book that is a folder of vCard files (RFC 2426, RFC 6350 and the older vCard 2.1), each with one
 * card or more, as other programs leave them in the user's contacts folder.
 */
class VelVCardAddressBook : public VelAddressBook
{
public:
    /** @p folder need not exist; add() makes it. */
    explicit VelVCardAddressBook(const QString &folder);

    /** Where the desktop keeps this user's contacts. */
    [[nodiscard]] static QString defaultFolder();

    /** The people of @p bytes that hold vCards, in their order; groups and nobodies are left out. */
    [[nodiscard]] static QVector<VelAddressee> fromCards(const QByteArray &bytes);
    /** The vCard 3.0 of somebody, with the id @p uid; empty for nobody. */
    [[nodiscard]] static QByteArray toCard(const VelAddressee &addressee, const QString &uid);

    /**
     * The people of all files, those of one file in its order. Files that are no vCards, are not readable or have more
     * than MaxFileSize bytes are skipped, and so are cards of groups and of nobody.
     */
    [[nodiscard]] QVector<VelAddressee> addressees() const override;
    /** Writes a file of its own, wholly or not at all; other files stay as they are. */
    [[nodiscard]] bool add(const VelAddressee &addressee) override;

    static constexpr qint64 MaxFileSize = 16 * 1024 * 1024;

private:
    QString m_folder;
};
