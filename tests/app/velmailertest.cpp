// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "app/velmailer.h"

#include "app/velfilechooser.h"
#include "document/velexchange.h"
#include "support/fakemessages.h"
#include "support/testcalendar.h"

#include <KJob>

#include <QTemporaryDir>
#include <QTest>

using namespace TestCalendar;

namespace
{
struct FakeFiles : VelFileChooser {
    QUrl getOpenUrl(const QString &, const QString &) override { return {}; }
    QUrl getSaveUrl(const QString &, const QString &, const QUrl &, QString *) override { return choice; }
    QUrl choice;
};

struct FakeJob : KJob {
    explicit FakeJob(int error) { setError(error); }
    void start() override { emitResult(); }
};
} // namespace

class VelMailerTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void entryShouldGoToTheMailProgramOrAFile();
};

void VelMailerTest::entryShouldGoToTheMailProgramOrAFile()
{
    constexpr int noProgram = -1;
    const auto readBack = [](const QUrl &file) {
        VelForeignContent content;
        return VelExchange::read(file.toLocalFile(), content) && content.entries.size() == 1
            ? content.entries.front()->getTitle()
            : QString();
    };
    VelEntry entry = makeEvent(QStringLiteral("K\u00e4se & Wein"), march(2, 9), march(2, 10));
    entry.accounts = {VelAccount({}, QStringLiteral("ann@example.org"), 0)};
    const VelInvitation invitation = *VelInvitation::of(entry, 3);
    const QTemporaryDir folder;
    QWidget window;
    for (const int error : {0, int(KJob::UserDefinedError), noProgram}) {
        FakeMessages messages;
        FakeFiles files;
        files.choice = QUrl::fromLocalFile(folder.filePath(QString::number(error)));
        messages.orderAnswer(VelMessages::Answer::Yes);
        VelMail sent;
        VelDesktopMailer mailer(&window, messages, files, [&](const VelMail &mail) {
            sent = mail;
            return error == noProgram ? nullptr : new FakeJob(error);
        });
        mailer.compose(invitation);
        QCOMPARE(sent.to, QStringList(QStringLiteral("ann@example.org")));
        QCOMPARE(sent.subject, entry.getTitle());
        QCOMPARE(sent.body, invitation.body);
        QCOMPARE(readBack(sent.attachment), entry.getTitle());
        QCOMPARE(messages.count(), error == 0 ? 0 : 1);
        const QUrl saved = QUrl::fromLocalFile(files.choice.toLocalFile() + QLatin1String(".vcs"));
        QCOMPARE(readBack(saved), error == 0 ? QString() : entry.getTitle());
    }
}

QTEST_MAIN(VelMailerTest)

#include "velmailertest.moc"
