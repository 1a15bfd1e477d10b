// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "document/velinvitation.h"

#include <QTemporaryDir>

class QWidget;
class VelFileChooser;
class VelMessages;

/** Hands invitations to the desktop's mail program. A test's body keeps them instead. */
class VelMailer
{
public:
    virtual ~VelMailer() = default;

    /** Opens a message with the entry attached, for the user to send. */
    virtual void compose(const VelInvitation &invitation) = 0;
};

/** The mail program that the user has set up. Its attachments stay until the window goes. */
class VelDesktopMailer : public VelMailer
{
public:
    /** Keeps the references: they outlive the mailer, as @p window does. */
    VelDesktopMailer(QWidget *window, VelMessages &messages, VelFileChooser &files);

    void compose(const VelInvitation &invitation) override;

private:
    [[nodiscard]] QString writeAttachment(const VelInvitation &invitation);
    void offerToSave(const VelInvitation &invitation);

    QWidget *m_window;
    VelMessages &m_messages;
    VelFileChooser &m_files;
    QTemporaryDir m_folder; // only the user may look into it
    int m_count = 0;
};
