// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "views/velquickentry.h"

#include "model/veltext.h"

#include <KLocalizedString>

#include <QFocusEvent>
#include <QKeyEvent>

namespace
{
QRect usablePlace(const QRect &place, const QSize &least, const QRect &bounds)
{
    QRect rect = place;
    rect.setSize(rect.size().expandedTo(least).boundedTo(bounds.size()));
    rect.setHeight(least.height());
    rect.moveRight(qMin(rect.right(), bounds.right()));
    rect.moveBottom(qMin(rect.bottom(), bounds.bottom()));
    rect.moveTopLeft({qMax(rect.left(), bounds.left()), qMax(rect.top(), bounds.top())});
    return rect;
}
} // namespace

VelQuickEntry::VelQuickEntry(QWidget *parent, const QRect &place, const VelDateTime &start,
                             const VelDateTime &end)
    : QLineEdit(parent)
{
    constexpr int leastCharacters = 18;
    const QSize least(fontMetrics().averageCharWidth() * leastCharacters, sizeHint().height());
    setGeometry(usablePlace(place, least, parent->rect()));
    setPlaceholderText(i18n("New event"));
    setAccessibleName(
        i18n("Title of the new event, %1 to %2", VelText::getDateTime(start), VelText::getDateTime(end)));
    setToolTip(i18n("%1 to %2", VelText::getTime(start.time()), VelText::getTime(end.time())));
    show();
    setFocus(Qt::OtherFocusReason);
}

void VelQuickEntry::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Escape:
        finish(false);
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        finish(true);
        break;
    default:
        QLineEdit::keyPressEvent(event);
    }
}

void VelQuickEntry::focusOutEvent(QFocusEvent *event)
{
    QLineEdit::focusOutEvent(event);
    // Another window, or the line's own menu, only borrows the focus.
    if (event->reason() != Qt::ActiveWindowFocusReason && event->reason() != Qt::PopupFocusReason)
        finish(true);
}

void VelQuickEntry::finish(bool accept)
{
    if (m_isFinished)
        return;
    m_isFinished = true;
    const QString title = text().trimmed();
    const bool hadFocus = hasFocus();
    hide();
    deleteLater();
    // When the user went elsewhere, that is where the focus belongs.
    if (hadFocus)
        parentWidget()->setFocus(Qt::OtherFocusReason);
    if (accept && !title.isEmpty())
        Q_EMIT entered(title);
}
