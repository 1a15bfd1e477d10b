// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QColor>
#include <QFont>

class QPalette;

/** The colours and fonts of the views: the part of the preferences that needs a screen. */
struct VelLook {
    /** The defaults that suit a palette, light or dark. */
    [[nodiscard]] static VelLook defaults(const QPalette &palette);
    [[nodiscard]] static bool isDark(const QPalette &palette);

    QColor dayOffHour; ///< background of hours outside working time
    QColor dayHour; ///< background of working hours
    QColor mainColor1;
    QColor mainColor2;
    QColor entryBackground;
    QColor entryText;
    QColor tentative;
    QColor selection;
    QFont calendarFont;
    QFont entryFont;
};
