// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "formats/velxmlreader.h"

#include <QRandomGenerator>

/**
 * Records with every field and every kind of character, the same ones for the same seed.
 *
 * Two instances with one seed, one of each form, tell what a calendar file is given and what it should give
 * back.
 */
class RandomRecords
{
public:
    enum class Form {
        Given, ///< also what a calendar file cannot hold: characters that XML forbids, seconds, details of
        ///< deleted entries
        Kept, ///< without those
    };

    RandomRecords(quint32 seed, Form form);

    [[nodiscard]] VelAccount account();
    [[nodiscard]] VelEntry entry();
    [[nodiscard]] VelXmlContent calendar();

private:
    [[nodiscard]] quint32 below(quint32 bound) { return m_random.bounded(bound); }
    [[nodiscard]] bool oneIn(quint32 bound) { return below(bound) == 0; }
    [[nodiscard]] quint32 anyId();
    [[nodiscard]] int anyInt() { return static_cast<int>(anyId()); }
    [[nodiscard]] int smallInt() { return static_cast<int>(below(5)); }
    [[nodiscard]] QString text(quint32 mostPieces);
    void appendPiece(QString &text);
    void appendForbidden(QString &text);
    [[nodiscard]] QDate date();
    [[nodiscard]] VelDateTime dateTime();
    void addDetails(VelEntry &entry, bool isKept);
    [[nodiscard]] VelRecurrenceRule rule();

    QRandomGenerator m_random;
    Form m_form;
};
