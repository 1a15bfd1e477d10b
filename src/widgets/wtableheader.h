// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QHeaderView>

/**
 * The header of a WTable. Columns are moved and sized with the mouse, as in any header, and with the
 * keyboard: Tab goes into the header, Left and Right choose a column, Space or Return click on it, Ctrl+Left
 * and Ctrl+Right move it, Shift+Left and Shift+Right size it, the menu key or Shift+F10 opens the column
 * menu.
 */
class WTableHeader : public QHeaderView
{
    Q_OBJECT
public:
    explicit WTableHeader(QWidget *parent = nullptr);

    /** The logical column that the keys act on; -1 when no column is shown. */
    [[nodiscard]] int currentColumn() const;

Q_SIGNALS:
    /** The column menu is wanted, at @p globalPos. */
    void menuRequested(const QPoint &globalPos);

protected:
    void contextMenuEvent(QContextMenuEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void paintSection(QPainter *painter, const QRect &rect, int logicalIndex) const override;

private:
    [[nodiscard]] int shownNeighbour(int visual, int step) const;
    void step(int steps, Qt::KeyboardModifiers modifiers);
    void setCurrentColumn(int column);
    void requestMenuAtColumn();

    int m_current = -1;
};
