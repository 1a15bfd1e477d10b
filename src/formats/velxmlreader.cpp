// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "formats/velxmlreader.h"

#include "formats/vellatin.h"
#include "formats/velxmlbuilder.h"

#include <expat.h>

#include <QByteArray>

#include <algorithm>
#include <set>

namespace
{
/** A declaration that is not complete after so many bytes is none. */
constexpr std::size_t LongestDeclaration = 1024;

/** What the parser needs for a name beside its bytes, roughly. */
constexpr std::size_t CostOfName = 64;

struct ParserDeleter {
    void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
};

/**
 * The value of encoding in the declaration that @p head begins with, in upper case; empty when there is none.
 */
QByteArray declaredEncoding(std::string_view head)
{
    const auto end = head.find("?>");
    constexpr std::string_view blanks = " \t\r\n";
    if (head.substr(0, 5) != "<?xml" || head.find_first_of(blanks) != 5 || end == std::string_view::npos)
        return {};
    head = head.substr(0, end);
    const auto name = head.find("encoding");
    const auto open = name == std::string_view::npos ? name : head.find_first_of("'\"", name);
    const auto close = open == std::string_view::npos ? open : head.find(head[open], open + 1);
    if (close == std::string_view::npos)
        return {};
    return QByteArray(head.data() + open + 1, static_cast<VelSize>(close - open - 1)).toUpper();
}
} // namespace

class VelXmlReader::Parser
{
public:
    Parser();

    bool feed(std::string_view bytes);
    bool finish();
    [[nodiscard]] QString errorMessage() const;
    [[nodiscard]] XML_Parser expat() const { return m_expat.get(); }
    [[nodiscard]] std::size_t recordCount() const { return m_builder.recordCount(); }
    [[nodiscard]] VelXmlContent takeContent() { return m_builder.takeContent(); }

private:
    enum class Encoding { Undecided, Latin1, Latin9, Utf8 };

    bool decideEncoding(bool isComplete);
    bool decode(std::string_view bytes);
    bool parse(const char *bytes, std::size_t size, bool isFinal);
    bool fail(const QString &message);
    void stop(const char *message);
    void countNames(std::string_view element, const char *const *attributes);
    void countName(std::string_view name);

    static void onStart(void *self, const XML_Char *name, const XML_Char **attributes);
    static void onEnd(void *self, const XML_Char *name);
    static void onText(void *self, const XML_Char *text, int size);
    static void onDocumentType(void *self, const XML_Char *, const XML_Char *, const XML_Char *, int);

    std::unique_ptr<XML_ParserStruct, ParserDeleter> m_expat;
    VelXmlBuilder m_builder;
    std::string m_head; // until the encoding is known
    std::string m_utf8;
    std::set<std::string, std::less<>> m_names; // those that no calendar has, and all of attributes
    std::size_t m_costOfNames = 0;
    QString m_error;
    qint64 m_fed = 0; // bytes of UTF-8 given to the parser
    qint64 m_parsed = 0; // bytes of them up to the token that is not complete
    Encoding m_encoding = Encoding::Undecided;
    bool m_failed = false;
};

VelXmlReader::Parser::Parser()
    // The parser sees UTF-8 only: it knows no ISO-8859-15, and is fastest so.
    : m_expat(XML_ParserCreate("UTF-8"))
{
    XML_SetUserData(m_expat.get(), this);
    XML_SetElementHandler(m_expat.get(), onStart, onEnd);
    XML_SetCharacterDataHandler(m_expat.get(), onText);
    XML_SetStartDoctypeDeclHandler(m_expat.get(), onDocumentType);
}

bool VelXmlReader::Parser::fail(const QString &message)
{
    if (!m_failed)
        m_error = message;
    m_failed = true;
    return false;
}

bool VelXmlReader::Parser::feed(std::string_view bytes)
{
    if (m_failed)
        return false;
    if (m_encoding != Encoding::Undecided)
        return decode(bytes);
    m_head += bytes;
    return decideEncoding(false);
}

bool VelXmlReader::Parser::finish()
{
    if (m_encoding == Encoding::Undecided && !decideEncoding(true))
        return false;
    return !m_failed && parse("", 0, true);
}

bool VelXmlReader::Parser::decideEncoding(bool isComplete)
{
    if (!isComplete && m_head.size() < LongestDeclaration && m_head.find("?>") == std::string::npos)
        return true;
    // Told nothing else, the parser would take such bytes for UTF-16.
    if (m_head.find('\0') != std::string::npos)
        return fail(QStringLiteral("null character"));
    const QByteArray name = declaredEncoding(m_head);
    if (name.isEmpty() || name == "UTF-8" || name == "US-ASCII" || name == "ASCII")
        m_encoding = Encoding::Utf8;
    else if (name == "ISO-8859-15" || name == "LATIN-9" || name == "LATIN9")
        m_encoding = Encoding::Latin9;
    else if (name == "ISO-8859-1" || name == "LATIN1")
        m_encoding = Encoding::Latin1;
    else
        return fail(QLatin1String("unknown encoding ") + QString::fromLatin1(name));
    const std::string head = std::move(m_head);
    return decode(head);
}

bool VelXmlReader::Parser::decode(std::string_view bytes)
{
    if (m_encoding == Encoding::Utf8)
        return parse(bytes.data(), bytes.size(), false);
    m_utf8.clear();
    if (m_encoding == Encoding::Latin9)
        VelLatin::appendLatin9AsUtf8(m_utf8, bytes.data(), bytes.size());
    else
        VelLatin::appendLatin1AsUtf8(m_utf8, bytes.data(), bytes.size());
    return parse(m_utf8.data(), m_utf8.size(), false);
}

bool VelXmlReader::Parser::parse(const char *bytes, std::size_t size, bool isFinal)
{
    // In pieces, so that a tag without an end is noticed before all of it has been taken.
    do {
        const std::size_t piece = std::min(size, MaximumToken);
        if (XML_Parse(m_expat.get(), bytes, static_cast<int>(piece), isFinal ? 1 : 0) == XML_STATUS_ERROR)
            return fail(QString::fromLatin1(XML_ErrorString(XML_GetErrorCode(m_expat.get()))));
        m_fed += static_cast<qint64>(piece);
        bytes += piece;
        size -= piece;
        // While it waits for the rest of a token, the parser may not know its place: then the last one counts.
        m_parsed = std::max<qint64>(m_parsed, XML_GetCurrentByteIndex(m_expat.get()));
        if (m_fed - m_parsed > 2 * static_cast<qint64>(MaximumToken))
            return fail(QStringLiteral("token too long"));
    } while (size > 0);
    return !m_failed;
}

QString VelXmlReader::Parser::errorMessage() const
{
    return m_error;
}

void VelXmlReader::Parser::stop(const char *message)
{
    fail(QLatin1String(message));
    XML_StopParser(m_expat.get(), XML_FALSE);
}

void VelXmlReader::Parser::countName(std::string_view name)
{
    if (m_names.find(name) != m_names.end())
        return;
    m_names.emplace(name);
    m_costOfNames += name.size() + CostOfName;
    if (m_costOfNames > MaximumToken)
        stop("too many names");
}

void VelXmlReader::Parser::countNames(std::string_view element, const char *const *attributes)
{
    // The parser never forgets a name. Elements that are not skipped have one of a few.
    if (m_builder.isSkipping())
        countName(element);
    for (; *attributes; attributes += 2)
        countName(*attributes);
}

void VelXmlReader::Parser::onStart(void *self, const XML_Char *name, const XML_Char **attributes)
{
    auto *parser = static_cast<Parser *>(self);
    parser->m_builder.startElement(name, attributes);
    if (parser->m_builder.depth() > MaximumDepth)
        parser->stop("nested too deep");
    parser->countNames(name, attributes);
}

void VelXmlReader::Parser::onEnd(void *self, const XML_Char *)
{
    static_cast<Parser *>(self)->m_builder.endElement();
}

void VelXmlReader::Parser::onText(void *self, const XML_Char *text, int size)
{
    auto *parser = static_cast<Parser *>(self);
    if (!parser->m_builder.addText({text, static_cast<std::size_t>(size)}))
        parser->stop("text too long");
}

void VelXmlReader::Parser::onDocumentType(void *self, const XML_Char *, const XML_Char *, const XML_Char *,
                                          int)
{
    // A calendar needs none, and the entities that one may define can grow without bounds.
    static_cast<Parser *>(self)->stop("document type not allowed");
}

VelXmlReader::VelXmlReader()
    : m_parser(std::make_unique<Parser>())
{
}

VelXmlReader::~VelXmlReader() = default;

bool VelXmlReader::feed(const char *bytes, std::size_t size)
{
    return m_parser->feed({bytes, size});
}

bool VelXmlReader::finish()
{
    return m_parser->finish();
}

QString VelXmlReader::errorMessage() const
{
    return m_parser->errorMessage();
}

qint64 VelXmlReader::errorLine() const
{
    return static_cast<qint64>(XML_GetCurrentLineNumber(m_parser->expat()));
}

qint64 VelXmlReader::errorColumn() const
{
    return static_cast<qint64>(XML_GetCurrentColumnNumber(m_parser->expat()));
}

std::size_t VelXmlReader::recordCount() const
{
    return m_parser->recordCount();
}

VelXmlContent VelXmlReader::takeContent()
{
    return m_parser->takeContent();
}
