// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "app/velmainwindow.h"
#include "app/velrecoverycopy.h"
#include "document/veldoc.h"
#include "document/velmessages.h"

#include <KLocalizedString>

#include <QLocale>
#include <QPointer>

void VelMainWindow::initRecovery()
{
    // What is saved, with the server or thrown away needs no copy.
    connect(m_doc, &VelDoc::modifiedChanged, this, [this](bool modified) {
        if (!modified)
            dropRecoveryCopy();
    });
    connect(m_doc, &VelDoc::contentsReplaced, this, &VelMainWindow::dropRecoveryCopy);
}

void VelMainWindow::dropRecoveryCopy()
{
    if (m_recovery)
        m_recovery->remove();
    m_recovery.reset();
}

/** Of what has no file that it could be saved to by itself. */
void VelMainWindow::keepRecoveryCopy()
{
    if (!m_doc->isModified() || !m_doc->isUntitled())
        return;
    if (!m_recovery)
        m_recovery = VelRecoveryCopy::create();
    if (!m_recovery || !m_recovery->write(*m_doc))
        slotStatusMsg(i18n("The calendar could not be saved automatically. Please save it yourself."));
}

void VelMainWindow::offerRecovered()
{
    enum Choice { Open, KeepForLater, ThrowAway };
    const QPointer<VelMainWindow> self(this);
    for (auto &copy : VelRecoveryCopy::findAbandoned()) {
        const QString when = QLocale().toString(copy->written(), QLocale::ShortFormat);
        const std::optional<int> choice = m_messages->choose(
            i18n("A calendar that has no file yet was open when the program came to a sudden end.\nIt is "
                 "kept as it "
                 "was on %1.",
                 when),
            i18nc("@title:window", "Unsaved Calendar"),
            {{i18n("&Open it"), i18n("It is shown in a window, from which you can save it.")},
             {i18n("&Keep it for later"), i18n("You are asked again at the next start.")},
             {i18n("&Throw it away"), i18n("It is gone for good.")}},
            Open);
        if (!self)
            return;
        if (choice == Open)
            windowForRecovered()->recover(std::move(copy));
        else if (choice == ThrowAway)
            copy->remove();
        if (!self)
            return;
    }
}

/** This one, when nothing is in it, else a new one. */
VelMainWindow *VelMainWindow::windowForRecovered()
{
    if (m_doc->isUntitled() && !m_doc->isModified() && m_doc->getEntryCount() == 0)
        return this;
    auto *window = new VelMainWindow;
    window->show();
    return window;
}

void VelMainWindow::recover(std::unique_ptr<VelRecoveryCopy> copy)
{
    QUrl untitled;
    untitled.setPath(VelDoc::untitledName());
    const QPointer<VelMainWindow> self(this);
    if (m_doc->recoverDocument(copy->path(), untitled) && self)
        m_recovery = std::move(copy);
}
