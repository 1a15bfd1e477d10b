// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "widgets/wtableheader.h"

#include <QContextMenuEvent>
#include <QPainter>

WTableHeader::WTableHeader(QWidget *parent)
    : QHeaderView(Qt::Horizontal, parent)
{
    setSectionsClickable(true);
    setSectionsMovable(true);
    setHighlightSections(false);
    setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    setFocusPolicy(Qt::TabFocus);
    setTabKeyNavigation(false);
}

int WTableHeader::currentColumn() const
{
    if (m_current >= 0 && m_current < count() && !isSectionHidden(m_current)) {
        return m_current;
    }
    const int visual = shownNeighbour(-1, 1);
    return visual < 0 ? -1 : logicalIndex(visual);
}

void WTableHeader::contextMenuEvent(QContextMenuEvent *event)
{
    event->accept();
    if (event->reason() == QContextMenuEvent::Mouse) {
        Q_EMIT menuRequested(event->globalPos());
    } else {
        requestMenuAtColumn();
    }
}

void WTableHeader::focusInEvent(QFocusEvent *event)
{
    // Not the view's own: it would update cells, of which a header has none.
    // NOLINTNEXTLINE(bugprone-parent-virtual-call)
    QWidget::focusInEvent(event);
    setCurrentColumn(currentColumn());
}

void WTableHeader::focusOutEvent(QFocusEvent *event)
{
    // NOLINTNEXTLINE(bugprone-parent-virtual-call)
    QWidget::focusOutEvent(event);
    viewport()->update();
}

void WTableHeader::keyPressEvent(QKeyEvent *event)
{
    const int forward = isRightToLeft() ? -1 : 1;
    if (event->key() == Qt::Key_Right) {
        step(forward, event->modifiers());
    } else if (event->key() == Qt::Key_Left) {
        step(-forward, event->modifiers());
    } else if (event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier) {
        requestMenuAtColumn();
    } else if (currentColumn() >= 0
               && (event->key() == Qt::Key_Space || event->key() == Qt::Key_Return
                   || event->key() == Qt::Key_Enter)) {
        Q_EMIT sectionClicked(currentColumn());
    } else {
        event->ignore();
    }
}

void WTableHeader::paintSection(QPainter *painter, const QRect &rect, int logicalIndex) const
{
    painter->save();
    QHeaderView::paintSection(painter, rect, logicalIndex);
    painter->restore();
    if (hasFocus() && logicalIndex == currentColumn()) {
        painter->save();
        painter->setPen(QPen(palette().highlight(), 2));
        painter->drawRect(rect.adjusted(2, 2, -2, -2));
        painter->restore();
    }
}

/** The next shown display column from @p visual on; -1 when there is none. */
int WTableHeader::shownNeighbour(int visual, int step) const
{
    for (visual += step; visual >= 0 && visual < count(); visual += step) {
        if (!isSectionHidden(logicalIndex(visual))) {
            return visual;
        }
    }
    return -1;
}

void WTableHeader::step(int steps, Qt::KeyboardModifiers modifiers)
{
    const int column = currentColumn();
    if (column < 0) {
        return;
    }
    if (modifiers & Qt::ShiftModifier) {
        resizeSection(
            column,
            qMax(minimumSectionSize(), sectionSize(column) + steps * fontMetrics().averageCharWidth()));
        return;
    }
    const int from = visualIndex(column);
    const int to = shownNeighbour(from, steps);
    if (to < 0) {
        return;
    }
    if (modifiers & Qt::ControlModifier) {
        moveSection(from, to);
    }
    setCurrentColumn(logicalIndex(modifiers & Qt::ControlModifier ? visualIndex(column) : to));
}

void WTableHeader::setCurrentColumn(int column)
{
    m_current = column;
    // What a screen reader says when the header gets the focus or its choice changes.
    setAccessibleName(column < 0 ? QString() : model()->headerData(column, Qt::Horizontal).toString());
    viewport()->update();
}

void WTableHeader::requestMenuAtColumn()
{
    const int column = qMax(0, currentColumn());
    Q_EMIT menuRequested(viewport()->mapToGlobal(QPoint(sectionViewportPosition(column), height())));
}
