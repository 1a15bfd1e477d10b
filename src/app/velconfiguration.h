// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "hub/vellook.h"
#include "model/velsettings.h"

#include <KConfigGroup>

#include <QList>
#include <QSize>

/** What the configuration remembers of the window itself. */
struct VelWindowOptions {
    static constexpr int TopToolBar = 2;

    QSize geometry{800, 500};
    bool showToolbar = true;
    bool showStatusbar = true;
    int toolBarPos = TopToolBar; ///< 2 top, 3 bottom, 4 right, 5 left
    QList<int> splitterSizes1; ///< pixels, empty for the usual ones
    QList<int> splitterSizes2;
    bool docked = false;
    QUrl docUrl; ///< the calendar that was open last; empty for none
};

/**
 * Reads and writes the configuration groups. Whatever a file says, what is read can be worked with: numbers
 * are in range, lists hold what they may hold, colours are colours.
 */
namespace VelConfiguration
{
/**
 * Takes the right to read the configuration, which holds the digest of the password, from everybody but its owner. To be
 * called at the start: what is written later keeps the file's rights.
 */
void protect(const KConfig &config);
/** Writes what has changed to the file, which only its owner may read then. */
void save(KConfig &config);

[[nodiscard]] KConfigGroup preferences(KConfig *config);
[[nodiscard]] KConfigGroup generalOptions(KConfig *config);

/** @p defaults are the colours and fonts of a configuration that names none. */
void readPreferences(const KConfigGroup &group, VelSettings &settings, VelLook &look,
                     const VelLook &defaults);
void writePreferences(KConfigGroup group, const VelSettings &settings, const VelLook &look,
                      const VelLook &defaults);

[[nodiscard]] VelWindowOptions readOptions(const KConfigGroup &group);
void writeOptions(KConfigGroup group, const VelWindowOptions &options);

/** The toolbar's place, and back. A number that names none is the top. */
[[nodiscard]] Qt::ToolBarArea toolBarArea(int position);
[[nodiscard]] int toolBarPosition(Qt::ToolBarArea area);
} // namespace VelConfiguration
