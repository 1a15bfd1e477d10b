// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "app/velsound.h"

#include <QFile>
#include <QLoggingCategory>

#include <canberra.h>

namespace
{
Q_LOGGING_CATEGORY(soundLog, "delmasttime.sound", QtWarningMsg)

constexpr quint32 SoundId = 1; // all that are played share it, so that one call stops them

bool isGood(int result, const QString &what)
{
    if (result != CA_SUCCESS)
        qCWarning(soundLog) << what << ca_strerror(result);
    return result == CA_SUCCESS;
}
} // namespace

VelSound::VelSound() = default;

VelSound::~VelSound() = default;

void VelSound::Deleter::operator()(ca_context *context) const
{
    ca_context_destroy(context);
}

void VelSound::play(const QString &file)
{
    if (!m_context) {
        ca_context *context = nullptr;
        if (!isGood(ca_context_create(&context), file))
            return;
        m_context.reset(context);
    }
    ca_context_cancel(m_context.get(), SoundId);
    const QByteArray path = QFile::encodeName(file);
    isGood(ca_context_play(m_context.get(), SoundId, CA_PROP_MEDIA_FILENAME, path.constData(),
                           CA_PROP_MEDIA_ROLE, "event", nullptr),
           file);
}
