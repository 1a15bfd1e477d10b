// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QMetaType>
#include <QVariant>

/**
 * @file
 * What differs between the two toolkit generations that one tree is built on, and nothing else.
 * No other file looks at the version.
 */

#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
/** The type of a size or an index of the toolkit's containers. */
using VelSize = qsizetype;
/** How QMimeData::retrieveData() is told which type is wanted. */
using VelVariantType = QMetaType;
#else
using VelSize = int;
using VelVariantType = QVariant::Type;
#endif
