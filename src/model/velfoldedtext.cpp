// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "model/velfoldedtext.h"

#include <QRegularExpression>

namespace
{
enum class Kind { Number, Word, Separator, Other };

Kind kindOf(QChar character, const QString &separators)
{
    if (character.isDigit())
        return Kind::Number;
    if (character.isLetter() || character.isMark() || character.isSurrogate())
        return Kind::Word;
    constexpr char16_t lastAscii = 0x7f;
    const bool isForeign =
        character.unicode() > lastAscii && character.category() == QChar::Punctuation_Other;
    return isForeign || separators.contains(character) ? Kind::Separator : Kind::Other;
}
} // namespace

namespace VelFoldedText
{
QString fold(const QString &text)
{
    std::u32string folded; // some digits need more than one unit of the toolkit's texts
    for (const char32_t character : text.normalized(QString::NormalizationForm_KD).toStdU32String()) {
        const QChar::Category category = QChar::category(character);
        if (category == QChar::Mark_NonSpacing || category == QChar::Other_Format)
            continue;
        const int digit = QChar::digitValue(character);
        folded += digit >= 0 ? U'0' + static_cast<char32_t>(digit) : QChar::toCaseFolded(character);
    }
    return QString::fromStdU32String(folded).simplified();
}

std::optional<Pieces> split(const QString &folded, const QString &separators)
{
    Pieces pieces;
    Kind before = Kind::Other;
    for (const QChar character : folded) {
        const Kind kind = kindOf(character, separators);
        const bool isPiece = kind == Kind::Number || kind == Kind::Word;
        if (kind == Kind::Other || (before == Kind::Other && !isPiece))
            return {};
        QStringList &pile = kind == Kind::Number ? pieces.numbers : pieces.words;
        if (isPiece && kind == before)
            pile.last() += character;
        else if (isPiece)
            pile += QString(character);
        before = kind;
    }
    return pieces;
}

QStringList literalWords(const QString &format)
{
    // What is no ASCII needs no quotes to stand for itself. A B that the toolkit has no field for stands there too.
    static const QRegularExpression literal(QStringLiteral("'([^']+)'|([^\\x00-\\x7f]+|B)"));
    QStringList words;
    auto matches = literal.globalMatch(format);
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        if (const auto pieces = split(fold(match.captured(1) + match.captured(2)), QStringLiteral(" .,-/")))
            words += pieces->words;
    }
    return words;
}
} // namespace VelFoldedText
