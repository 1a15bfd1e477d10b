// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "document/veldoc.h"
#include "document/velmessages.h"
#include "model/velsettings.h"

#include <benchmark/benchmark.h>

/** What the benchmarks share: one large calendar, named on the command line, and documents that never ask. */
namespace VelBenchmark
{
class Silent : public VelMessages
{
public:
    void error(const QString &text) override;
    void information(const QString &, const QString &) override { }
    Answer questionYesNo(const QString &, const QString &, const QString &, const QString &) override
    {
        return Answer::Yes;
    }
    Answer warningYesNoCancel(const QString &, const QString &, const QString &, const QString &) override
    {
        return Answer::Yes;
    }
    std::optional<int> choose(const QString &, const QString &, const std::vector<Choice> &, int) override
    {
        return std::nullopt;
    }
};

struct Document {
    Silent messages;
    VelSettings settings;
    VelDoc doc{messages, settings, nullptr, [] { return QDate(2026, 11, 21); }};
};

/** The file that is measured. */
[[nodiscard]] QString calendarPath();
/** One document that has it open; benchmarks may move its entries about. */
[[nodiscard]] VelDoc &loadedDocument();
/** Memory that the process holds, in bytes. */
[[nodiscard]] qint64 residentMemory();
} // namespace VelBenchmark
