// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QString>

#include <memory>

struct ca_context;

/**
 * Plays sound files in the background through libcanberra, which the notifications of the desktop play theirs with:
 * whatever machine shows those has it, and it needs no media framework. It reads WAV and Ogg Vorbis, the formats of
 * sound themes.
 */
class VelSound
{
public:
    VelSound();
    ~VelSound();
    Q_DISABLE_COPY_MOVE(VelSound)

    /** Plays @p file in place of the one that is still played. A failure is logged. */
    void play(const QString &file);

private:
    struct Deleter {
        void operator()(ca_context *context) const;
    };
    std::unique_ptr<ca_context, Deleter> m_context;
};
