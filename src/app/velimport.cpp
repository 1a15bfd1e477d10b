// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "app/velimport.h"

#include "document/veldoc.h"
#include "document/velexchangereader.h"
#include "document/velpaste.h"
#include "document/velstep.h"
#include "document/veltransfer.h"

#include <KLocalizedString>

VelImport::Result VelImport::run(const QUrl &url)
{
    VelForeignContent content;
    m_context.setEditLock(true);
    const Result result = read(url, content);
    if (m_context.life.expired())
        return Result::Gone;
    m_context.setEditLock(false);
    if (result != Result::Done)
        return result;
    if (!content.isReadable)
        return Result::CannotRead;
    if (!m_context.mayChange())
        return Result::Locked;
    m_report = VelImportReport(content);
    add(std::move(content));
    return Result::Done;
}

VelImport::Result VelImport::read(const QUrl &url, VelForeignContent &content)
{
    // Another calendar in the place of this one is not the one that was to take the entries.
    bool isReplaced = false;
    const QObject guard;
    QObject::connect(&m_context.doc, &VelDoc::contentsReplaced, &guard, [&isReplaced] { isReplaced = true; });
    const std::unique_ptr<VelProgress> progress = m_context.progress(i18n("Import from file..."));
    const VelDownload file(url);
    VelExchangeReader reader(file.path());
    if (!reader.isOpen())
        return Result::CannotOpen;
    while (reader.readSome()) {
        const bool isWanted = progress->show(reader.progress());
        if (m_context.life.expired() || isReplaced)
            return Result::Gone;
        if (!isWanted)
            return Result::Stopped;
    }
    content = reader.takeContent();
    return Result::Done;
}

void VelImport::add(VelForeignContent content)
{
    if (content.entries.empty())
        return;
    {
        const VelStepScope scope(&m_context.doc, i18nc("what was done", "Import"));
        for (auto &entry : content.entries)
            VelPaste::addImported(m_context.doc, std::move(entry));
    }
    m_context.doc.slotUpdateAllViews(nullptr);
}
