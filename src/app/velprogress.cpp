// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "app/velprogress.h"

#include <KLocalizedString>

#include <QCoreApplication>
#include <QProgressDialog>

VelProgressDialog::VelProgressDialog(const QString &text, QWidget *parent)
    : m_dialog(new QProgressDialog(text, i18nc("ends an import before its time", "Stop"), 0, 1000, parent))
{
    constexpr int moment = 500; // milliseconds
    m_dialog->setWindowModality(Qt::WindowModal);
    m_dialog->setMinimumDuration(moment);
    m_dialog->setAutoClose(false);
    m_dialog->setAutoReset(false);
}

VelProgressDialog::~VelProgressDialog()
{
    delete m_dialog.data();
}

bool VelProgressDialog::show(int done)
{
    if (m_dialog)
        m_dialog->setValue(done);
    // What the user does before the dialog stands in front of the window waits.
    const bool isShown = m_dialog && m_dialog->isVisible();
    QCoreApplication::processEvents(isShown ? QEventLoop::AllEvents : QEventLoop::ExcludeUserInputEvents);
    return m_dialog && !m_dialog->wasCanceled();
}
