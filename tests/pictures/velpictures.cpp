// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

/**
 * @file
 * Paints every view of a calendar into picture files, in light and dark colours, for somebody to look at.
 * scripts/pictures runs it at each scale.
 */

#include "app/velaboutdata.h"
#include "app/velmainwindow.h"
#include "hub/vellook.h"
#include "hub/velprintout.h"
#include "views/veldayview.h"
#include "views/velmainview.h"
#include "views/velprintpages.h"

#include <KSharedConfig>

#include <QApplication>
#include <QDir>
#include <QPainter>
#include <QStandardPaths>
#include <QStyleFactory>

#include <cstdio>

namespace
{
QPalette darkPalette()
{
    QPalette palette(QColor(0x2a, 0x2e, 0x32));
    palette.setColor(QPalette::Window, QColor(0x2a, 0x2e, 0x32));
    palette.setColor(QPalette::WindowText, QColor(0xfc, 0xfc, 0xfc));
    palette.setColor(QPalette::Base, QColor(0x1b, 0x1e, 0x20));
    palette.setColor(QPalette::AlternateBase, QColor(0x23, 0x26, 0x29));
    palette.setColor(QPalette::Text, QColor(0xfc, 0xfc, 0xfc));
    palette.setColor(QPalette::Button, QColor(0x31, 0x36, 0x3b));
    palette.setColor(QPalette::ButtonText, QColor(0xfc, 0xfc, 0xfc));
    palette.setColor(QPalette::Highlight, QColor(0x3d, 0xae, 0xe9));
    palette.setColor(QPalette::Light, QColor(0x47, 0x4d, 0x54));
    palette.setColor(QPalette::Mid, QColor(0x24, 0x28, 0x2b));
    palette.setColor(QPalette::Dark, QColor(0x16, 0x18, 0x1a));
    palette.setColor(QPalette::ToolTipBase, QColor(0x31, 0x36, 0x3b));
    palette.setColor(QPalette::ToolTipText, QColor(0xfc, 0xfc, 0xfc));
    return palette;
}

/** Paints what one calendar looks like into the files of one folder. */
class Pictures
{
public:
    Pictures(QString calendar, QDir folder, QDate day)
        : m_calendar(std::move(calendar))
        , m_folder(std::move(folder))
        , m_day(day)
    {
    }

    void paintViews(const QString &name, Qt::LayoutDirection direction) const
    {
        QGuiApplication::setLayoutDirection(direction);
        VelSurroundings surroundings;
        surroundings.now = [day = m_day] { return VelDateTime(day, QTime(13, 20)); };
        surroundings.alerts = std::make_unique<VelAlertSurface>();
        auto *window = new VelMainWindow(std::move(surroundings));
        window->resize(1100, 680);
        window->show();
        window->openDocumentFile(QUrl::fromLocalFile(m_calendar));
        VelMainView *view = window->mainView();
        const auto save = [&](const char *what, int type, int size) {
            view->setMainView(type, size);
            QCoreApplication::processEvents();
            window->grab().save(
                m_folder.filePath(name + QLatin1Char('-') + QLatin1String(what) + QLatin1String(".png")));
        };
        save("day", VelMainView::DayView, 1);
        save("workweek", VelMainView::DayView, VelMainView::WorkWeek);
        save("week", VelMainView::DayView, 7);
        save("month", VelMainView::MonthView, 7);
        save("list", VelMainView::ListView, 7);
        if (name == QLatin1String("light")) {
            for (const int type : {int(VelMainView::DayView), int(VelMainView::MonthView)}) {
                view->setMainView(type, 7);
                paintPages(*view->getCurrentView(), type);
            }
        }
        delete window;
    }

private:
    void paintPages(const VelView &view, int type) const
    {
        constexpr int width = 1169; // A4 across at 100 dots per inch
        constexpr int height = 827;
        const std::unique_ptr<VelPrintout> printout = view.makePrintout();
        QImage page(width, height, QImage::Format_RGB32);
        page.setDotsPerMeterX(3937);
        page.setDotsPerMeterY(3937);
        VelPrintPages pages(*printout, VelDateTime(m_day, QTime(13, 20)));
        const int count = pages.layOut(QSizeF(width, height), &page);
        for (int i = 0; i < count; ++i) {
            page.fill(Qt::white);
            QPainter painter(&page);
            pages.paint(painter, i);
            painter.end();
            page.save(m_folder.filePath(QStringLiteral("print-%1-%2.png").arg(type).arg(i + 1)));
        }
    }

    QString m_calendar;
    QDir m_folder;
    QDate m_day;
};
} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    if (argc != 4) {
        std::fprintf(stderr, "usage: %s CALENDAR.xml DAY FOLDER\n", argv[0]);
        return 2;
    }
    QStandardPaths::setTestModeEnabled(true);
    KAboutData::setApplicationData(velAboutData());
    QIcon::setThemeName(QStringLiteral("breeze"));
    QFont font = QApplication::font();
    font.setPointSize(10); // as on most desktops
    QApplication::setFont(font);
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    const QStringList arguments = QCoreApplication::arguments();
    const QDir folder(arguments.at(3));
    if (!folder.mkpath(QStringLiteral(".")))
        return 1;
    const Pictures pictures(arguments.at(1), folder, QDate::fromString(arguments.at(2), Qt::ISODate));
    pictures.paintViews(QStringLiteral("light"), Qt::LeftToRight);
    pictures.paintViews(QStringLiteral("rtl"), Qt::RightToLeft);
    QApplication::setPalette(darkPalette());
    pictures.paintViews(QStringLiteral("dark"), Qt::LeftToRight);
    return 0;
}
