// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "model/velentry.h"
#include "model/velnettask.h"

#include <QByteArray>

#include <vector>

class VelDoc;
class VelSettings;

/** Local ids of the entries that a synchronisation sent; how they were then, the document knows: VelDoc::getBefore(). */
using VelSentEntries = std::vector<quint32>;

/** A message to the server, and what must be known of it when the answer comes. */
struct VelRequest {
    QByteArray bytes;
    VelSentEntries sent; ///< empty unless it is a synchronisation
};

/**
 * Writes the messages to the server: XML in ISO-8859-15, ended by one byte that occurs nowhere inside.
 *
 * Every message carries the user's name and the digest of the password, a synchronisation every entry that was
 * changed here, and the others the task's argument.
 */
namespace VelRequestWriter
{
/** Ends every message, in both directions. */
constexpr char Terminator = 0x1A;

/**
 * With @p again a synchronisation carries these entries, in place of what is to be sent now, as they were when the exchange
 * began in which @p doc is.
 */
[[nodiscard]] VelRequest write(const VelNetTask &task, const VelSettings &settings, const VelDoc &doc,
                               const VelSentEntries *again = nullptr);
} // namespace VelRequestWriter
