// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QByteArray>
#include <QVector>

/** The contents of calendar files. */
namespace CalendarFiles
{
/** A calendar file in the very form in which they are written. */
inline QByteArray canonicalFile()
{
    return "<?xml version = '1.0' encoding = 'ISO-8859-15' ?>\n"
           "<calendar>\n"
           "<meta>\n <userid>5</userid>\n <origright>3</origright>\n <synctime>20260301</synctime>\n</meta>\n"
           " <account>\n  <id>5</id>\n  <name>Al</name>\n  <email>al@example.org</email>\n  <type>1</type>\n"
           " </account>\n"
           " <account>\n  <id>9</id>\n  <name>S\xe4hk\xf6 \xa4</name>\n </account>\n"
           "<entry>\n <localid>3</localid>\n <globalid>70</globalid>\n <dirty>1</dirty>\n"
           " <title>A&lt;B &amp; C&gt; \xa4&#128512;</title>\n <start>2026-3-5 9:5</start>\n"
           " <end>2026-3-5 10:0</end>\n <type>1</type>\n <user>5</user>\n "
           "<description>one\ntwo</description>\n"
           " <access>2</access>\n <recurringtype>1</recurringtype>\n <occurevery>2</occurevery>\n"
           " <occurendcount>4</occurendcount>\n"
           " <account>\n  <id>9</id>\n  <name>Bo</name>\n  <status>4</status>\n </account>\n</entry>\n"
           "<entry>\n <localid>57</localid>\n <globalid>0</globalid>\n <dirty>0</dirty>\n <title></title>\n"
           " <start>2026-3-6 0:0</start>\n <end>2026-3-6 0:0</end>\n <type>2</type>\n <notime>1</notime>\n"
           " <complete>1</complete>\n</entry>\n"
           "<entry>\n <localid>58</localid>\n <globalid>71</globalid>\n <dirty>1</dirty>\n "
           "<title>Gone</title>\n"
           " <start>2026-3-7 8:0</start>\n <end>2026-3-7 9:0</end>\n <type>-1</type>\n</entry>\n"
           "</calendar>\n";
}

/** One event for each local id, with its place in the file as its title. */
inline QByteArray fileWithIds(const QVector<quint32> &ids)
{
    QByteArray bytes = "<calendar>";
    for (int i = 0; i < ids.size(); ++i) {
        bytes += "<entry><localid>" + QByteArray::number(ids.at(i)) + "</localid><title>"
            + QByteArray::number(i) + "</title><start>2026-3-2 9:0</start><end>2026-3-2 10:0</end></entry>";
    }
    return bytes + "</calendar>";
}
} // namespace CalendarFiles
