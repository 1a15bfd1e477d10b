// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "widgets/wtimeinput.h"

#include <QEvent>
#include <QSignalBlocker>
#include <QTime>

void WTimeInput::changeEvent(QEvent *event)
{
    KTimeComboBox::changeEvent(event);
    if (event->type() != QEvent::LocaleChange)
        return;
    // Only a change of the format makes it leave the one of the old locale. The time is the same.
    const QSignalBlocker blocker(this);
    const QTime shown = time();
    setDisplayFormat(QLocale::LongFormat);
    setDisplayFormat(QLocale::ShortFormat);
    setTime(shown);
}
