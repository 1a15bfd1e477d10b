// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QPushButton>

/** A button that shows a font, its name in the font itself, and lets the user choose another one. */
class WFontButton : public QPushButton
{
    Q_OBJECT
    Q_PROPERTY(QFont selectedFont READ getSelectedFont WRITE setSelectedFont NOTIFY fontSelected USER true)
public:
    explicit WFontButton(QWidget *parent = nullptr);

    [[nodiscard]] QFont getSelectedFont() const { return m_font; }
    void setSelectedFont(const QFont &font);

Q_SIGNALS:
    /** The font is another one, by the user's hand or by a function. */
    void fontSelected(const QFont &font);

private:
    void chooseFont();
    void showFont();

    QFont m_font;
};
