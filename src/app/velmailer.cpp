// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "app/velmailer.h"

#include "app/velfilechooser.h"
#include "document/velmessages.h"

#include <KApplicationTrader>
#include <KEMailClientLauncherJob>
#include <KLocalizedString>

#include <QSaveFile>
#include <QWidget>

VelDesktopMailer::VelDesktopMailer(QWidget *window, VelMessages &messages, VelFileChooser &files)
    : m_window(window)
    , m_messages(messages)
    , m_files(files)
{
}

QString VelDesktopMailer::writeAttachment(const VelInvitation &invitation)
{
    const QString path = m_folder.filePath(QStringLiteral("event%1.vcs").arg(++m_count));
    QSaveFile file(path);
    const bool isWritten = m_folder.isValid() && file.open(QIODevice::WriteOnly)
        && file.write(invitation.vCalendar) == invitation.vCalendar.size() && file.commit();
    return isWritten ? path : QString();
}

void VelDesktopMailer::compose(const VelInvitation &invitation)
{
    const QString path = writeAttachment(invitation);
    if (path.isEmpty()) {
        m_messages.error(i18n("Cannot write to the file."));
        return;
    }
    if (!KApplicationTrader::preferredService(QStringLiteral("x-scheme-handler/mailto"))) {
        offerToSave(invitation);
        return;
    }
    auto *job = new KEMailClientLauncherJob(m_window);
    job->setTo(invitation.recipients);
    job->setSubject(invitation.subject);
    job->setBody(invitation.body);
    job->setAttachments({QUrl::fromLocalFile(path)});
    QObject::connect(job, &KJob::result, m_window, [this, invitation, job] {
        if (job->error() != 0)
            offerToSave(invitation);
    });
    job->start();
}

/** Without a mail program the user can still send the file by other means. */
void VelDesktopMailer::offerToSave(const VelInvitation &invitation)
{
    const QString question =
        i18n("No mail program is set up. Do you want to save the event as a file that you can "
             "send to %1 yourself?",
             invitation.recipients.join(QLatin1String(", ")));
    if (m_messages.questionYesNo(question, i18n("Invitations")) != VelMessages::Answer::Yes)
        return;
    const QUrl url =
        m_files.getSaveUrl(i18n("Save the event"), QLatin1String("*.vcs|") + i18n("vCalendar file"));
    if (url.isEmpty())
        return;
    QSaveFile file(url.toLocalFile());
    if (!file.open(QIODevice::WriteOnly) || file.write(invitation.vCalendar) != invitation.vCalendar.size()
        || !file.commit())
        m_messages.error(i18n("Cannot write to the file."));
}
