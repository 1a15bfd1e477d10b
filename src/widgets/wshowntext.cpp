// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "widgets/wshowntext.h"

#include <QTextDocument>

namespace WShownText
{
QString cut(const QString &text, int most)
{
    if (text.size() <= most)
        return text;
    const int half = most > 0 && text.at(most - 1).isHighSurrogate() ? 1 : 0;
    return text.left(most - half) + QChar(0x2026);
}

QString plain(const QString &text)
{
    return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text, Qt::WhiteSpaceNormal) : text;
}
} // namespace WShownText
