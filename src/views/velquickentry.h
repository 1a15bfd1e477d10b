// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "model/veldatetime.h"

#include <QLineEdit>

/**
 * A line over an empty place of a calendar that takes the title of a new event.
 *
 * Enter, or going elsewhere, enters what was typed; Escape, or nothing typed, leaves everything as it was. Deletes
 * itself.
 */
class VelQuickEntry : public QLineEdit
{
    Q_OBJECT
public:
    /** Stands over @p place of @p parent, and is never too small to type in. */
    VelQuickEntry(QWidget *parent, const QRect &place, const VelDateTime &start, const VelDateTime &end);

    /** Takes what was typed so far: the place below is about to be another one. */
    void finish() { finish(true); }

Q_SIGNALS:
    void entered(const QString &title);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

private:
    void finish(bool accept);

    bool m_isFinished = false;
};
