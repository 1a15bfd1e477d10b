// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QCoreApplication>
#include <QMetaType>
#include <QObject>
#include <QPoint>
#include <QStringList>
#include <QVariant>

#include <type_traits>

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

/**
 * Lets a desktop notification offer @p texts, and calls @p chosen with the place of the one that the user took, as long
 * as @p context lives.
 */
template <typename Notification, typename Function>
void velAddActions(Notification &notification, const QStringList &texts, const QObject *context,
                   Function chosen)
{
    if constexpr (requires { notification.addAction(QString()); }) {
        for (int place = 0; place < texts.size(); ++place) {
            auto *action = notification.addAction(texts.at(place));
            QObject::connect(action, &std::remove_pointer_t<decltype(action)>::activated, context,
                             [chosen, place] { chosen(place); });
        }
    } else {
        // Numbered from 1; 0 is the notification itself.
        notification.setActions(texts);
        QObject::connect(&notification, QOverload<unsigned int>::of(&Notification::activated), context,
                         [chosen](unsigned int number) {
                             if (number > 0)
                                 chosen(static_cast<int>(number) - 1);
                         });
    }
}
