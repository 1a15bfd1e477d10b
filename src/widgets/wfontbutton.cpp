// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "widgets/wfontbutton.h"

#include <KFontChooserDialog>
#include <KLocalizedString>

#include <QFontInfo>
#include <QLocale>

WFontButton::WFontButton(QWidget *parent)
    : QPushButton(parent)
    , m_font(font())
{
    showFont();
    connect(this, &QPushButton::clicked, this, &WFontButton::chooseFont);
}

void WFontButton::setSelectedFont(const QFont &font)
{
    if (font == m_font)
        return;
    m_font = font;
    showFont();
    Q_EMIT fontSelected(m_font);
}

void WFontButton::chooseFont()
{
    QFont chosen = m_font;
    if (KFontChooserDialog::getFont(chosen, KFontChooser::NoDisplayFlags, window()) == QDialog::Accepted)
        setSelectedFont(chosen);
}

/** In the size of other buttons: a font for a poster would make one that no dialog has room for. */
void WFontButton::showFont()
{
    // A font whose size is given in pixels has none in points.
    const qreal points = m_font.pointSizeF() > 0 ? m_font.pointSizeF() : QFontInfo(m_font).pointSizeF();
    setText(i18nc("a font: its family and its size in points", "%1, %2", m_font.family(),
                  QLocale().toString(points, 'g', 3)));
    QFont shown = m_font;
    shown.setPointSizeF(QFontInfo(parentWidget() ? parentWidget()->font() : font()).pointSizeF());
    setFont(shown);
}
