// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "views/velaccessible.h"

#include <QAccessibleWidget>
#include <QPointer>
#include <QWidget>
#include <QWindow>

#include <map>

namespace
{
/** One painted part. The toolkit owns it from its registration on. */
class Part : public QAccessibleInterface
{
public:
    Part(QWidget *widget, int index)
        : m_widget(widget)
        , m_index(index)
    {
    }

    [[nodiscard]] bool isValid() const override { return source() && m_index < source()->accessibleCount(); }
    [[nodiscard]] QObject *object() const override { return nullptr; }
    [[nodiscard]] QWindow *window() const override
    {
        return m_widget ? m_widget->window()->windowHandle() : nullptr;
    }
    [[nodiscard]] QAccessibleInterface *parent() const override
    {
        return QAccessible::queryAccessibleInterface(m_widget);
    }
    [[nodiscard]] QAccessibleInterface *child(int) const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface *childAt(int, int) const override { return nullptr; }
    [[nodiscard]] int childCount() const override { return 0; }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface *) const override { return -1; }

    [[nodiscard]] QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Name ? item().name : QString();
    }
    void setText(QAccessible::Text, const QString &) override { }
    [[nodiscard]] QRect rect() const override
    {
        return m_widget ? item().rect.translated(m_widget->mapToGlobal(QPoint())) : QRect();
    }
    [[nodiscard]] QAccessible::Role role() const override { return item().role; }
    [[nodiscard]] QAccessible::State state() const override
    {
        QAccessible::State state;
        if (!isValid()) {
            state.invalid = 1;
            return state;
        }
        state.focusable = 1;
        state.selectable = 1;
        state.selected = item().isSelected ? 1 : 0;
        state.focused = source()->accessibleFocus() == m_index ? 1 : 0;
        state.offscreen = m_widget->visibleRegion().intersects(item().rect) ? 0 : 1;
        return state;
    }

private:
    [[nodiscard]] const VelAccessible *source() const
    {
        return dynamic_cast<const VelAccessible *>(m_widget.data());
    }
    [[nodiscard]] VelAccessibleItem item() const
    {
        return isValid() ? source()->accessibleItem(m_index) : VelAccessibleItem();
    }

    QPointer<QWidget> m_widget;
    int m_index;
};

/** A widget with its child widgets and, after them, its painted parts. */
class Whole : public QAccessibleWidget
{
public:
    explicit Whole(QWidget *widget)
        : QAccessibleWidget(widget)
    {
    }
    ~Whole() override { forget(); }
    Q_DISABLE_COPY_MOVE(Whole)

    [[nodiscard]] QAccessible::Role role() const override { return source()->accessibleRole(); }
    [[nodiscard]] QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Name ? source()->accessibleText() : QAccessibleWidget::text(kind);
    }
    [[nodiscard]] int childCount() const override { return widgetCount() + source()->accessibleCount(); }
    [[nodiscard]] QAccessibleInterface *child(int index) const override
    {
        if (index < widgetCount())
            return QAccessibleWidget::child(index);
        index -= widgetCount();
        return index < source()->accessibleCount() ? part(index) : nullptr;
    }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface *child) const override
    {
        for (const auto &[index, id] : m_parts) {
            if (QAccessible::accessibleInterface(id) == child)
                return widgetCount() + index;
        }
        return QAccessibleWidget::indexOfChild(child);
    }
    [[nodiscard]] QAccessibleInterface *childAt(int x, int y) const override
    {
        const QPoint point = widget()->mapFromGlobal(QPoint(x, y));
        // The last that is painted lies on top.
        for (int index = source()->accessibleCount() - 1; index >= 0; --index) {
            if (source()->accessibleItem(index).rect.contains(point))
                return part(index);
        }
        return QAccessibleWidget::childAt(x, y);
    }
    [[nodiscard]] QAccessibleInterface *focusChild() const override
    {
        const int index = source()->accessibleFocus();
        return index >= 0 ? part(index) : QAccessibleWidget::focusChild();
    }

    [[nodiscard]] int widgetCount() const { return QAccessibleWidget::childCount(); }

    void forget()
    {
        for (const auto &[index, id] : m_parts)
            QAccessible::deleteAccessibleInterface(id);
        m_parts.clear();
    }

private:
    [[nodiscard]] const VelAccessible *source() const
    {
        return dynamic_cast<const VelAccessible *>(widget());
    }
    QAccessibleInterface *part(int index) const
    {
        auto found = m_parts.find(index);
        if (found == m_parts.end()) {
            const QAccessible::Id id = QAccessible::registerAccessibleInterface(new Part(widget(), index));
            found = m_parts.emplace(index, id).first;
        }
        return QAccessible::accessibleInterface(found->second);
    }

    mutable std::map<int, QAccessible::Id> m_parts; // made when asked for
};

QAccessibleInterface *makeInterface(const QString &, QObject *object)
{
    auto *widget = qobject_cast<QWidget *>(object);
    return dynamic_cast<VelAccessible *>(widget) ? new Whole(widget) : nullptr;
}

Whole *wholeOf(QWidget *widget)
{
    return QAccessible::isActive() ? dynamic_cast<Whole *>(QAccessible::queryAccessibleInterface(widget))
                                   : nullptr;
}
} // namespace

void velInstallAccessibility()
{
    QAccessible::installFactory(&makeInterface); // which the toolkit takes once only
}

void velAccessibleChanged(QWidget *widget)
{
    if (Whole *whole = wholeOf(widget)) {
        whole->forget();
        QAccessibleEvent event(widget, QAccessible::ObjectReorder);
        QAccessible::updateAccessibility(&event);
    }
}

void velAccessibleFocus(QWidget *widget, int index)
{
    if (const Whole *whole = wholeOf(widget)) {
        QAccessibleEvent event(widget, QAccessible::Focus);
        event.setChild(whole->widgetCount() + index);
        QAccessible::updateAccessibility(&event);
    }
}
