// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "formats/vellatin.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <utility>

namespace
{
/** Where the encoding parts from Latin-1. */
constexpr std::array<std::pair<unsigned char, char16_t>, 8> Differences{{{0xA4, u'\u20AC'},
                                                                         {0xA6, u'\u0160'},
                                                                         {0xA8, u'\u0161'},
                                                                         {0xB4, u'\u017D'},
                                                                         {0xB8, u'\u017E'},
                                                                         {0xBC, u'\u0152'},
                                                                         {0xBD, u'\u0153'},
                                                                         {0xBE, u'\u0178'}}};

constexpr std::array<char16_t, 256> makeTable(bool latin9)
{
    std::array<char16_t, 256> table{};
    for (std::size_t i = 0; i < table.size(); ++i)
        table[i] = static_cast<char16_t>(i);
    if (latin9) {
        for (const auto &[byte, character] : Differences)
            table[byte] = character;
    }
    return table;
}

constexpr auto Latin1Table = makeTable(false);
constexpr auto Latin9Table = makeTable(true);

void appendUtf8(std::string &out, char16_t c)
{
    if (c < 0x800) {
        out += static_cast<char>(0xC0 | (c >> 6));
    } else {
        out += static_cast<char>(0xE0 | (c >> 12));
        out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    }
    out += static_cast<char>(0x80 | (c & 0x3F));
}

/** The number of bytes from @p bytes on that are plain ASCII, eight looked at at once. */
std::size_t asciiRun(const char *bytes, std::size_t size)
{
    std::size_t i = 0;
    for (; i + sizeof(std::uint64_t) <= size; i += sizeof(std::uint64_t)) {
        std::uint64_t word = 0;
        std::memcpy(&word, bytes + i, sizeof word);
        if (word & 0x8080808080808080ULL)
            break;
    }
    while (i < size && !(static_cast<unsigned char>(bytes[i]) & 0x80))
        ++i;
    return i;
}

void appendAsUtf8(std::string &out, const char *bytes, std::size_t size,
                  const std::array<char16_t, 256> &table)
{
    while (size > 0) {
        const std::size_t run = asciiRun(bytes, size);
        out.append(bytes, run);
        bytes += run;
        size -= run;
        if (size > 0) {
            appendUtf8(out, table[static_cast<unsigned char>(*bytes++)]);
            --size;
        }
    }
}
} // namespace

namespace VelLatin
{
char16_t fromLatin9(unsigned char byte)
{
    return Latin9Table[byte];
}

QString fromLatin9(const char *bytes, VelSize size)
{
    QString text(size, Qt::Uninitialized);
    QChar *out = text.data();
    for (VelSize i = 0; i < size; ++i)
        out[i] = QChar(Latin9Table[static_cast<unsigned char>(bytes[i])]);
    return text;
}

int toLatin9(char16_t character)
{
    if (character < 0xA0)
        return character;
    for (const auto &[byte, other] : Differences) {
        if (character == other)
            return byte;
    }
    return character < 0x100 && Latin9Table[character] == character ? character : -1;
}

void appendLatin9AsUtf8(std::string &out, const char *bytes, std::size_t size)
{
    appendAsUtf8(out, bytes, size, Latin9Table);
}

void appendLatin1AsUtf8(std::string &out, const char *bytes, std::size_t size)
{
    appendAsUtf8(out, bytes, size, Latin1Table);
}
} // namespace VelLatin
