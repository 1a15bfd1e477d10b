// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "document/velinvitation.h"

#include <QPointer>
#include <QTemporaryDir>
#include <QUrl>
#include <QWidget>

#include <functional>

class KJob;
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

/** A message as a mail program opens it. */
struct VelMail {
    QStringList to;
    QString subject;
    QString body;
    QUrl attachment; ///< a local file
};

/** The mail program that the user has set up. Its attachments stay until the window goes. */
class VelDesktopMailer : public VelMailer
{
public:
    /** Makes the job that opens a message in the mail program, not yet started; null where there is no such program. */
    using MakeJob = std::function<KJob *(const VelMail &)>;

    /** Keeps the references: they outlive the mailer, as @p window does. */
    VelDesktopMailer(QWidget *window, VelMessages &messages, VelFileChooser &files,
                     MakeJob makeJob = desktopJob);

    /** The job for the mail program of the desktop's settings. */
    [[nodiscard]] static KJob *desktopJob(const VelMail &mail);

    void compose(const VelInvitation &invitation) override;

private:
    [[nodiscard]] QString writeAttachment(const VelInvitation &invitation);
    void offerToSave(const VelMail &mail);

    QPointer<QWidget> m_window;
    VelMessages &m_messages;
    VelFileChooser &m_files;
    MakeJob m_makeJob;
    QTemporaryDir m_folder; // only the user may look into it
    int m_count = 0;
};
