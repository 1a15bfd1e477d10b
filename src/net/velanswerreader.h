// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "formats/velxmlreader.h"

#include <QString>

#include <memory>
#include <optional>

class QByteArray;

/**
 * Reads one answer of the server as its bytes arrive, so that nothing is left to be done when the last has come.
 *
 * An answer is complete when a read ends with the terminator. A terminator anywhere else makes it unreadable, which
 * shows when it is complete, as everything unreadable does.
 */
class VelAnswerReader
{
public:
    static constexpr qint64 MaximumBytes = qint64(256) << 20;
    static constexpr std::size_t MaximumRecords = 1000000; ///< entries, accounts and rights together

    struct Limits {
        qint64 bytes = MaximumBytes;
        std::size_t records = MaximumRecords;
    };
    enum class State {
        Incomplete,
        Complete, ///< see takeContent()
        TooLarge ///< unreadable, whatever may follow
    };

    VelAnswerReader();
    explicit VelAnswerReader(Limits limits);

    /** Takes what one read gave. To be called until the answer is not incomplete any more. */
    State feed(const QByteArray &read);
    [[nodiscard]] qint64 bytesReceived() const { return m_bytes; }

    /** The content of a complete answer; none when it was unreadable. Call it once. */
    [[nodiscard]] std::optional<VelXmlContent> takeContent();
    /** After takeContent() gave none: where and why, for the log. */
    [[nodiscard]] QString errorText() const { return m_error; }

private:
    void fail(const QString &message);

    Limits m_limits;
    std::unique_ptr<VelXmlReader> m_reader; // gone as soon as the answer is unreadable
    QString m_error;
    qint64 m_bytes = 0;
};
