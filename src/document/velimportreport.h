// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "formats/velforeigncontent.h"

#include <QString>
#include <QStringList>

/** What to tell the user about entries that came, or went, in a file of another program. Texts are plain. */
class VelImportReport
{
public:
    static constexpr int MaximumNames = 10; ///< more are only counted
    static constexpr int MaximumLength = 60; ///< characters of one name

    /** Of what is going to be imported; keeps nothing else of it. */
    explicit VelImportReport(const VelForeignContent &content);

    /** Empty when all came as it was: the entries are there to be seen. */
    [[nodiscard]] QString text() const;

    /** The entries that an export could not carry; empty without any. */
    [[nodiscard]] static QString exportText(const QStringList &leftOut);
    /** A line for each title, cut to what can be read, and how many more there are. */
    [[nodiscard]] static QString names(const QStringList &titles);

private:
    [[nodiscard]] QStringList counts() const;

    int m_added;
    int m_leftOut;
    int m_singles;
    int m_passedOver;
    QStringList m_simplified;
};
