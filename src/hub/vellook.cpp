// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "hub/vellook.h"

#include <QGuiApplication>
#include <QPalette>

bool VelLook::isDark(const QPalette &palette)
{
    return palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
}

VelLook VelLook::defaults(const QPalette &palette)
{
    VelLook look;
    if (isDark(palette)) {
        look.dayOffHour = QColor(0x2a, 0x2e, 0x33);
        look.dayHour = QColor(0x35, 0x3b, 0x42);
        look.mainColor1 = QColor(0x4a, 0x76, 0xa8);
        look.mainColor2 = QColor(0x3c, 0x44, 0x4d);
        look.entryBackground = QColor(0x2f, 0x55, 0x80);
        look.entryText = QColor(0xf2, 0xf5, 0xf8);
        look.tentative = QColor(0x7a, 0x66, 0x2a);
        look.selection = QColor(0x5b, 0x8f, 0xc9);
    } else {
        look.dayOffHour = QColor(0xe9, 0xec, 0xef);
        look.dayHour = QColor(0xff, 0xff, 0xff);
        look.mainColor1 = QColor(0x3b, 0x6e, 0xa8);
        look.mainColor2 = QColor(0xd5, 0xde, 0xe8);
        look.entryBackground = QColor(0xd3, 0xe4, 0xf7);
        look.entryText = QColor(0x14, 0x1c, 0x24);
        look.tentative = QColor(0xf6, 0xe3, 0xae);
        look.selection = QColor(0x9c, 0xc4, 0xf0);
    }
    look.calendarFont = QGuiApplication::font();
    look.entryFont = QGuiApplication::font();
    return look;
}

QColor VelLook::mixed(const QColor &color, const QColor &other, qreal share)
{
    const auto mix = [share](int a, int b) { return qRound(a * share + b * (1 - share)); };
    return {mix(color.red(), other.red()), mix(color.green(), other.green()),
            mix(color.blue(), other.blue())};
}

QColor VelLook::textOn(const QColor &background)
{
    constexpr int middle = 140; // of 255: dark text gains contrast faster than light text loses it
    return qGray(background.rgb()) < middle ? QColor(Qt::white) : QColor(Qt::black);
}

QColor VelLook::dayHour2() const
{
    return mixed(mainColor2, dayHour, 0.25);
}

QColor VelLook::grid() const
{
    return mixed(mainColor1, dayHour, 0.45);
}

QColor VelLook::halfHour() const
{
    return mixed(mainColor1, dayHour, 0.25);
}

QColor VelLook::red() const
{
    return textOn(dayHour) == Qt::white ? QColor(0xff, 0x7b, 0x72) : QColor(0xc6, 0x1a, 0x1a);
}
