// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "document/veldoc.h"
#include "hub/velapp.h"
#include "hub/vellook.h"
#include "hub/velprintout.h"
#include "model/velnettask.h"
#include "model/velsettings.h"
#include "support/fakemessages.h"

#include <KActionCollection>

#include <QAction>

/** A window that has a calendar and nothing else, for views to live in. */
class FakeApp : public VelApp
{
    Q_OBJECT
public:
    explicit FakeApp(QDate today)
        : fakeLook(VelLook::defaults(palette()))
        , doc(fakeMessages, fakeSettings, nullptr, [this] { return fakeNow.date(); })
        , fakeNow(today, QTime(10, 0))
    {
        for (const char *name : {"edit_entry", "view_entry", "edit_delete", "edit_cut", "edit_copy",
                                 "edit_paste", "go_today", "new_entry", "new_todo", "purge_todo"})
            actionCollection()->addAction(QLatin1String(name))->setText(QLatin1String(name));
    }

    [[nodiscard]] VelDoc *document() const override { return const_cast<VelDoc *>(&doc); }
    [[nodiscard]] const VelSettings *settings() const override { return &fakeSettings; }
    [[nodiscard]] const VelLook &look() const override { return fakeLook; }
    [[nodiscard]] VelMessages &messages() override { return fakeMessages; }
    void setCutCopy(const VelEntry *selected, bool) override { cutCopyEntry = selected; }
    void setEditLock(bool locked) override
    {
        isLocked = locked;
        ++lockCount;
    }
    [[nodiscard]] bool mayEdit() const override { return !isLocked && doc.isWritable(); }
    [[nodiscard]] VelDateTime now() const override { return fakeNow; }
    void informChanges(const VelEntry &entry) override { informed.append(entry.getTitle()); }
    void showEntryDialog(const VelEntry &entry, bool) override { editedTitle = entry.getTitle(); }
    int showEntryInfo(const VelEntry &entry, VelAnswer::Mode, const QString &) override
    {
        shownTitle = entry.getTitle();
        return 0;
    }
    void printOut(VelPrintout &printout) override
    {
        printedTitle = printout.title();
        ++printCount;
    }
    void netTask(int type, const QString &argument, bool quiet) override
    {
        netTasks.push_back({type, argument, quiet});
    }
    void testConnection(const VelSettings &settings,
                        const std::function<void(const VelConnectionResult &)> &done) override
    {
        testedSettings = settings;
        answerTest = done;
    }
    [[nodiscard]] bool hasTrusted(const QString &server, int port) const override
    {
        return trusted.contains(server + QString::number(port));
    }
    void forgetCertificate(const QString &server, int port) override
    {
        trusted.removeAll(server + QString::number(port));
    }
    [[nodiscard]] const VelEntry *getReceivedEntry(quint32) const override { return receivedEntry; }
    void slotClipboardChanged() override { ++clipboardCount; }
    void slotStatusMsg(const QString &) override { }

    FakeMessages fakeMessages;
    VelSettings fakeSettings;
    VelLook fakeLook;
    VelDoc doc;
    const VelEntry *cutCopyEntry = nullptr;
    VelDateTime fakeNow;
    std::vector<VelNetTask> netTasks; // as they were queued
    VelSettings testedSettings; // with which a connection was last tried
    std::function<void(const VelConnectionResult &)> answerTest; // for the test to call
    QStringList trusted; // servers, each with its port behind it
    const VelEntry *receivedEntry = nullptr;
    int printCount = 0;
    QString printedTitle;
    QString shownTitle;
    QString editedTitle;
    int clipboardCount = 0;
    QStringList informed; // titles of the entries whose attendees were told
    int lockCount = 0; // how often it was taken or given back
    bool isLocked = false;
};
