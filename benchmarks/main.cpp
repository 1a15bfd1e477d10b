// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "app/velaboutdata.h"
#include "benchmarksupport.h"

#include <KAboutData>
#include <KLocalizedString>

#include <QApplication>
#include <QFile>
#include <QTextStream>

#include <cstdio>

namespace
{
QString &path()
{
    static QString calendar;
    return calendar;
}

/** The memory that one open calendar takes, measured before anything else is in the process. */
void printMemory()
{
    const qint64 before = VelBenchmark::residentMemory();
    (void)VelBenchmark::loadedDocument();
    const qint64 after = VelBenchmark::residentMemory();
    std::printf("memory after opening: %.1f MB in all, %.1f MB for the calendar\n", double(after) / 1e6,
                double(after - before) / 1e6);
}
} // namespace

namespace VelBenchmark
{
void Silent::error(const QString &text)
{
    std::fprintf(stderr, "%s\n", qPrintable(text));
}

QString calendarPath()
{
    return path();
}

VelDoc &loadedDocument()
{
    static Document document;
    if (document.doc.getEntryCount() == 0)
        document.doc.openDocument(QUrl::fromLocalFile(calendarPath()));
    return document.doc;
}

qint64 residentMemory()
{
    QFile file(QStringLiteral("/proc/self/statm"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    constexpr qint64 pageSize = 4096;
    return file.readAll().split(' ').value(1).toLongLong() * pageSize;
}
} // namespace VelBenchmark

int main(int argc, char **argv)
{
    benchmark::Initialize(&argc, argv);
    const QApplication application(argc, argv);
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s [--benchmark_...] CALENDAR.xml\n", argv[0]);
        return 2;
    }
    KLocalizedString::setApplicationDomain("delmasttime");
    KAboutData::setApplicationData(velAboutData());
    path() = QFile::decodeName(argv[1]);
    printMemory();
    if (VelBenchmark::loadedDocument().getEntryCount() == 0)
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
