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

    /** @name Colours that follow from the chosen ones */
    /// @{
    /** The second of the two colours that working hours take in turn. */
    [[nodiscard]] QColor dayHour2() const;
    /** Lines between hours, days and cells. */
    [[nodiscard]] QColor grid() const;
    /** The dashed line in the middle of an hour. */
    [[nodiscard]] QColor halfHour() const;
    /** Background of the hours' ruler and of the headings over days. */
    [[nodiscard]] QColor ruler() const { return mainColor2; }
    /** Background of the day picker. */
    [[nodiscard]] QColor picker() const { return dayHour; }
    /** Background of the cells with week numbers. */
    [[nodiscard]] QColor weekNumber() const { return mainColor2; }
    /** Background of the days that a range marks in the day picker: blue unless chosen otherwise. */
    [[nodiscard]] QColor highlight() const { return mainColor1; }
    /** Red that can be read on the background of days. */
    [[nodiscard]] QColor red() const;
    /** Black or white, whichever can be read on @p background. */
    [[nodiscard]] static QColor textOn(const QColor &background);
    /** @p share (0 to 1) of @p color, the rest of @p other. */
    [[nodiscard]] static QColor mixed(const QColor &color, const QColor &other, qreal share);
    /// @}

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
