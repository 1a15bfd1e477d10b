// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "app/velmailer.h"

#include "app/velfilechooser.h"
#include "document/velmessages.h"
#include "document/veltransfer.h"
#include "document/velurl.h"

#include <KApplicationTrader>
#include <KEMailClientLauncherJob>
#include <KLocalizedString>

#include <QSaveFile>

namespace
{
bool writeFile(const QString &path, const QByteArray &bytes)
{
    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit();
}

bool copyFile(const QString &path, const QUrl &to)
{
    if (!to.isLocalFile())
        return velUpload(path, to);
    QFile file(path);
    return file.open(QIODevice::ReadOnly) && writeFile(to.toLocalFile(), file.readAll());
}
} // namespace

VelDesktopMailer::VelDesktopMailer(QWidget *window, VelMessages &messages, VelFileChooser &files,
                                   MakeJob makeJob)
    : m_window(window)
    , m_messages(messages)
    , m_files(files)
    , m_makeJob(std::move(makeJob))
{
}

KJob *VelDesktopMailer::desktopJob(const VelMail &mail)
{
    if (!KApplicationTrader::preferredService(QStringLiteral("x-scheme-handler/mailto")))
        return nullptr;
    auto *job = new KEMailClientLauncherJob;
    job->setTo(mail.to);
    job->setSubject(mail.subject);
    job->setBody(mail.body);
    job->setAttachments({mail.attachment});
    return job;
}

QString VelDesktopMailer::writeAttachment(const VelInvitation &invitation)
{
    const QString path = m_folder.filePath(QStringLiteral("event%1.vcs").arg(++m_count));
    return m_folder.isValid() && writeFile(path, invitation.vCalendar) ? path : QString();
}

void VelDesktopMailer::compose(const VelInvitation &invitation)
{
    const QString path = writeAttachment(invitation);
    if (path.isEmpty()) {
        m_messages.error(i18n("Cannot write to the file."));
        return;
    }
    const VelMail mail{invitation.recipients, invitation.subject, invitation.body, QUrl::fromLocalFile(path)};
    KJob *job = m_makeJob(mail);
    if (!job) {
        offerToSave(mail);
        return;
    }
    QObject::connect(job, &KJob::result, m_window.data(), [this, mail](const KJob *done) {
        if (done->error() != KJob::NoError)
            offerToSave(mail);
    });
    job->start();
}

/** Without a mail program the user can still send the file by other means. */
void VelDesktopMailer::offerToSave(const VelMail &mail)
{
    const QString question =
        i18n("No mail program is set up. Do you want to save the event as a file that you can "
             "send to %1 yourself?",
             mail.to.join(QLatin1String(", ")));
    // The window may be closed, and this with it, while it asks.
    const QPointer<QWidget> alive(m_window);
    if (m_messages.questionYesNo(question, i18n("Invitations")) != VelMessages::Answer::Yes || !alive)
        return;
    QUrl url = m_files.getSaveUrl(i18n("Save the event"), QLatin1String("*.vcs|") + i18n("vCalendar file"));
    if (!alive || url.isEmpty())
        return;
    VelUrl::setSuffix(url, QStringLiteral(".vcs"));
    const bool mayWrite = !velExists(url)
        || m_messages.questionYesNo(i18n("Do you want to overwrite existing file?"), i18n("File exists"))
            == VelMessages::Answer::Yes;
    if (mayWrite && alive && !copyFile(mail.attachment.toLocalFile(), url) && alive)
        m_messages.error(i18n("Cannot write to the file."));
}
