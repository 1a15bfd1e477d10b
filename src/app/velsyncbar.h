// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QObject>

class KSqueezedTextLabel;
class QAction;
class QStatusBar;

/** What the status bar has for synchronising: a button to stop one, and why none succeeds. Its parent is the bar, which shows the status first. */
class VelSyncBar : public QObject
{
    Q_OBJECT
public:
    /** The button triggers @p stop and is there while that is enabled. */
    VelSyncBar(QAction *stop, QStatusBar *bar);

    /** Stands there until another is set; empty for none. */
    void setWarning(const QString &text);

private:
    KSqueezedTextLabel *m_warning;
};
