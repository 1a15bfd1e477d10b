// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "widgets/wraised.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QEvent>
#include <QEventLoop>
#include <QPointer>
#include <QWindow>

WRaised::WRaised(QDialog *dialog, std::chrono::milliseconds deafTime)
    : QObject(dialog)
    , m_dialog(dialog)
{
    m_deaf.setSingleShot(true);
    m_deaf.setInterval(deafTime);
    connect(&m_deaf, &QTimer::timeout, this, &WRaised::listen);
    dialog->setAttribute(Qt::WA_ShowWithoutActivating);
    // One that cannot have the focus would pass it on to its default button.
    dialog->setFocusPolicy(Qt::ClickFocus);
    dialog->setFocus();
    dialog->installEventFilter(this);
}

WRaised::~WRaised() = default;

void WRaised::beDeaf()
{
    // At the application, which gets keys before shortcuts and whatever in the dialog has the focus do.
    if (!isDeaf())
        qApp->installEventFilter(this);
    m_deaf.start();
}

void WRaised::listen()
{
    m_deaf.stop();
    qApp->removeEventFilter(this);
}

int WRaised::run(QWidget *disabled)
{
    const QPointer<QWidget> window(disabled);
    const QPointer<QWidget> focus(disabled ? disabled->focusWidget() : nullptr);
    int result = QDialog::Rejected;
    QEventLoop loop;
    connect(m_dialog, &QDialog::finished, &loop, [&loop, &result](int ended) {
        result = ended;
        loop.quit();
    });
    connect(m_dialog, &QObject::destroyed, &loop, &QEventLoop::quit);
    if (window) {
        window->setEnabled(false);
        // Not what belongs to it, such as an editor that is being typed in, and the dialog itself.
        const QList<QDialog *> dialogs = window->findChildren<QDialog *>();
        for (QDialog *dialog : dialogs)
            dialog->setEnabled(true);
    }
    passModal();
    m_dialog->show();
    QApplication::alert(m_dialog);
    loop.exec();
    if (window)
        window->setEnabled(true);
    if (focus)
        focus->setFocus(); // which went with that
    return result;
}

/** What belongs to the modal window is not blocked by it. */
void WRaised::joinModal()
{
    QWindow *modal = QGuiApplication::modalWindow();
    if (modal && m_dialog->windowHandle())
        m_dialog->windowHandle()->setTransientParent(modal);
}

/** A button box makes up its mind about the focus when it is shown, and a button answers to the blank. */
void WRaised::leaveButtons()
{
    if (qobject_cast<QAbstractButton *>(m_dialog->focusWidget()))
        m_dialog->setFocus();
}

bool WRaised::isInDialog(const QObject *object) const
{
    if (object->isWidgetType())
        return static_cast<const QWidget *>(object)->window() == m_dialog;
    return object->isWindowType() && object == m_dialog->windowHandle();
}

bool WRaised::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::Show:
        if (watched == m_dialog) {
            beDeaf();
            QTimer::singleShot(0, this, &WRaised::leaveButtons);
            if (m_passesModal)
                joinModal();
        }
        break;
    case QEvent::WindowActivate:
        if (watched == m_dialog)
            beDeaf();
        break;
    case QEvent::WindowBlocked:
        if (watched == m_dialog && m_passesModal)
            QTimer::singleShot(0, this, &WRaised::joinModal);
        break;
    case QEvent::MouseButtonPress:
        if (isDeaf() && isInDialog(watched))
            listen();
        break;
    case QEvent::ShortcutOverride:
        // Taken, so that it is no shortcut; the press of the key comes next.
        if (isDeaf() && isInDialog(watched)) {
            event->accept();
            return true;
        }
        break;
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
        return isDeaf() && isInDialog(watched);
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}
