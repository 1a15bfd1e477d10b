// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "formats/velxmlreader.h"

#include <functional>
#include <string>
#include <unordered_map>

/**
 * Turns the elements of a calendar document, one after the other, into records. Knows nothing of bytes and
 * markup; VelXmlReader feeds it.
 */
class VelXmlBuilder
{
public:
    /** @p attributes alternate names and values and end in null. */
    void startElement(std::string_view name, const char *const *attributes);
    void endElement();
    /** False when the element's text has grown too long. */
    bool addText(std::string_view text);

    [[nodiscard]] int depth() const { return m_depth; }
    /** True inside an element that is passed over. */
    [[nodiscard]] bool isSkipping() const { return m_skipFrom != 0; }
    [[nodiscard]] std::size_t recordCount() const
    {
        return m_content.count() + (m_content.rights ? m_content.rights->size() : 0);
    }
    [[nodiscard]] VelXmlContent takeContent() { return std::move(m_content); }

private:
    enum class Place { Outside, Root, Meta, Account, Entry, EntryAccount, Value };
    enum class Name : quint8;
    struct TextHash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>{}(text); }
    };

    static Name nameOf(std::string_view name);
    void startTopLevel(Name name, const char *const *attributes);
    void startInside(Name name);
    void skip();
    void addRight(const char *const *attributes);
    void beginEntry();
    void endEntry();
    void endAccount();
    void storeValue();
    void storeMetaValue();
    void storeFileValue();
    void storeAccountValue();
    void storeEntryValue();
    bool storeRuleValue();
    QString shared(std::string_view text);

    VelXmlContent m_content;
    std::unique_ptr<VelEntry> m_entry;
    QString m_title;
    QString m_description;
    VelDateTime m_start;
    VelDateTime m_end;
    VelAccount m_account;
    std::string m_text;
    // Names and addresses of attendees recur all over a calendar: one copy of each is kept.
    std::unordered_map<std::string, QString, TextHash, std::equal_to<>> m_shared;
    Place m_place = Place::Outside;
    Place m_valueOf = Place::Outside;
    Name m_name{};
    int m_depth = 0;
    int m_skipFrom = 0; // depth of the element that is skipped with all it holds; 0 for none
    bool m_textEnded = false;
    bool m_stopped = false;
    bool m_isAction = false; // in place of the meta of a file
};
