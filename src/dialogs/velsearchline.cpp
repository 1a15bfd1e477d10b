// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogs/velsearchline.h"

#include <KLocalizedString>

#include <QAbstractItemView>
#include <QCoreApplication>
#include <QKeyEvent>

VelSearchLine::VelSearchLine(QAbstractItemView *view, QWidget *parent)
    : QLineEdit(parent)
    , m_view(view)
{
    setPlaceholderText(i18n("Search"));
    setAccessibleName(i18n("Search"));
    setToolTip(i18n("Parts of the name or the e-mail address"));
    setWhatsThis(toolTip());
    setClearButtonEnabled(true);
}

void VelSearchLine::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        QCoreApplication::sendEvent(m_view, event);
        return;
    case Qt::Key_Escape:
        if (text().isEmpty())
            break;
        clear();
        return;
    default:
        break;
    }
    QLineEdit::keyPressEvent(event);
}
