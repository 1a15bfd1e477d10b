// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QAccessible>
#include <QRect>
#include <QString>

/** Something that a widget paints, as a screen reader tells it. */
struct VelAccessibleItem {
    QString name;
    QRect rect; ///< in the widget's coordinates
    QAccessible::Role role = QAccessible::ListItem;
    bool isSelected = false;
};

/**
 * What a widget that paints its parts itself, or is a part of such a whole, tells a screen reader.
 *
 * Inherit it beside QWidget and call velInstallAccessibility() once. The parts are numbered from 0; tell of
 * changed ones with velAccessibleChanged(), and of the part that the keyboard has come to with
 * velAccessibleFocus().
 */
class VelAccessible
{
public:
    virtual ~VelAccessible() = default;

    [[nodiscard]] virtual QAccessible::Role accessibleRole() const = 0;
    [[nodiscard]] virtual QString accessibleText() const = 0;
    [[nodiscard]] virtual int accessibleCount() const { return 0; }
    [[nodiscard]] virtual VelAccessibleItem accessibleItem(int) const { return {}; }
    /** The part that the keyboard acts on, or -1. */
    [[nodiscard]] virtual int accessibleFocus() const { return -1; }
};

/** Makes the toolkit ask widgets that are VelAccessible. May be called more than once. */
void velInstallAccessibility();
/** The parts of @p widget are others now. */
void velAccessibleChanged(QWidget *widget);
/** The keyboard has come to part @p index of @p widget. */
void velAccessibleFocus(QWidget *widget, int index);
