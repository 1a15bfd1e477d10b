// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QLineEdit>

class QAbstractItemView;

/**
 * A line that searches a list while it is typed in: the keys that move up and down move in the list, and Escape takes
 * the search back before it closes the dialog.
 */
class VelSearchLine : public QLineEdit
{
    Q_OBJECT
public:
    /** @p view must outlive the line. */
    explicit VelSearchLine(QAbstractItemView *view, QWidget *parent = nullptr);

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    QAbstractItemView *m_view;
};
