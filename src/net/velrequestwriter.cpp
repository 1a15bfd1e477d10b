// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "net/velrequestwriter.h"

#include "document/veldoc.h"
#include "formats/velxmlvalues.h"
#include "formats/velxmlwriter.h"
#include "model/velsettings.h"

namespace
{
bool isMarkup(QChar c)
{
    return c == QLatin1Char('<') || c == QLatin1Char('>') || c == QLatin1Char('&');
}

/** Appends text that is markup already: only its characters are encoded. */
void appendFormatted(std::string &out, const QString &text)
{
    for (VelSize begin = 0; begin < text.size();) {
        VelSize end = begin;
        while (end < text.size() && !isMarkup(text.at(end)))
            ++end;
        VelXmlWriter::appendEscaped(out, text.mid(begin, end - begin));
        if (end < text.size())
            out += text.at(end).toLatin1();
        begin = end + 1;
    }
}

void appendElement(std::string &out, const char *open, const QString &text, const char *close)
{
    out += open;
    VelXmlWriter::appendEscaped(out, text);
    out += close;
}

void appendUserId(std::string &out, const VelDoc &doc)
{
    out += " <userid>";
    VelXmlValues::append(out, doc.getUserId());
    out += "</userid>\n";
}

/** A calendar that has never been synchronised keeps "0", but tells nothing. */
QString sentSynctime(const VelDoc &doc)
{
    const QString synctime = doc.getSynctime();
    return synctime == VelCalendarMeta().synctime ? QString() : synctime;
}

VelSentEntries appendChanges(std::string &out, const VelDoc &doc)
{
    VelSentEntries sent;
    VelXmlWriter writer;
    for (const auto &found : doc.getEntries({}, VelEntry::NoType, false, {})) {
        const VelEntry *entry = found.getOriginal();
        if (entry->dirty == 0)
            continue;
        writer.writeEntry(*entry);
        sent.push_back(entry->localid);
    }
    out += writer.text();
    return sent;
}
void appendAgain(std::string &out, const VelDoc &doc, const VelSentEntries &entries)
{
    VelXmlWriter writer;
    for (const quint32 localid : entries) {
        const VelEntry *entry = doc.isChangedSince(localid) ? doc.getBefore(localid) : doc.getEntry(localid);
        if (entry)
            writer.writeEntry(*entry);
    }
    out += writer.text();
}
} // namespace

VelRequest VelRequestWriter::write(const VelNetTask &task, const VelSettings &settings, const VelDoc &doc,
                                   const VelSentEntries *again)
{
    VelXmlWriter head;
    head.writeHead();
    std::string out = head.text();
    appendElement(out, "<action type=\"", VelNetTask::nameOf(task.type), "\">\n");
    out += " <version>1.0</version>\n";
    appendElement(out, " <user>", settings.user, "</user>\n");
    appendElement(out, " <pass>", settings.pass, "</pass>\n");
    VelSentEntries sent;
    if (task.type == VelNetTask::Sync) {
        appendUserId(out, doc);
        appendElement(out, " <synctime>", sentSynctime(doc), "</synctime>\n</action>\n");
        if (again)
            appendAgain(out, doc, *again);
        sent = again ? *again : appendChanges(out, doc);
    } else if (task.type == VelNetTask::GetUserRights) {
        appendUserId(out, doc);
        out += "</action>\n";
    } else {
        out += "</action>\n";
        appendFormatted(out, task.argument);
    }
    out += "</calendar>\n";
    out += Terminator;
    return {QByteArray(out.data(), static_cast<VelSize>(out.size())), std::move(sent)};
}
