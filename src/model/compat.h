// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QCoreApplication>
#include <QMetaType>
#include <QPoint>
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
/** Call before the application is made: pictures and sizes follow the screen's scale, as they now do anyway. */
inline void velFollowScreenScale()
{
}
#else
using VelSize = int;
using VelVariantType = QVariant::Type;
/** Call before the application is made: pictures and sizes follow the screen's scale. */
inline void velFollowScreenScale()
{
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
}
#endif

/** Where in the widget a drag or drop event is. */
template <typename DropEvent>
[[nodiscard]] QPoint velDropPosition(const DropEvent &event)
{
    if constexpr (requires { event.position(); })
        return event.position().toPoint();
    else
        return event.pos();
}
