// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "hub/velmessageboxes.h"

#include "widgets/wchoicedialog.h"
#include "widgets/wshowntext.h"

#include <KGuiItem>
#include <KLocalizedString>
#include <KMessageBox>

#include <QPointer>

namespace
{
constexpr int MostText = 3000; // characters: the buttons are to stay on the screen

/** Names, titles and what servers say stand in many of them. */
QString shown(const QString &text)
{
    return WShownText::plain(WShownText::cut(text, MostText));
}

KGuiItem button(const QString &text, const QString &usual)
{
    return KGuiItem(text.isEmpty() ? usual : text);
}
} // namespace

VelMessageBoxes::VelMessageBoxes(QWidget *parent)
    : m_parent(parent)
{
}

void VelMessageBoxes::error(const QString &text)
{
    KMessageBox::error(m_parent, shown(text));
}

void VelMessageBoxes::information(const QString &text, const QString &caption)
{
    KMessageBox::information(m_parent, shown(text), caption);
}

VelMessages::Answer VelMessageBoxes::questionYesNo(const QString &text, const QString &caption,
                                                   const QString &yes, const QString &no)
{
    // What is asked about cannot be undone by the next key: the harmless answer is the default.
    const auto chosen =
        KMessageBox::questionTwoActions(m_parent, shown(text), caption, button(yes, i18n("&Yes")),
                                        button(no, i18n("&No")), QString(), KMessageBox::Dangerous);
    return chosen == KMessageBox::PrimaryAction ? Answer::Yes : Answer::No;
}

VelMessages::Answer VelMessageBoxes::warningYesNoCancel(const QString &text, const QString &caption,
                                                        const QString &yes, const QString &no)
{
    const auto chosen = KMessageBox::warningTwoActionsCancel(
        m_parent, shown(text), caption, button(yes, i18n("&Yes")), button(no, i18n("&No")));
    switch (chosen) {
    case KMessageBox::PrimaryAction:
        return Answer::Yes;
    case KMessageBox::SecondaryAction:
        return Answer::No;
    default:
        return Answer::Cancel;
    }
}

std::optional<int> VelMessageBoxes::choose(const QString &text, const QString &caption,
                                           const std::vector<Choice> &choices, int usual)
{
    // It goes with the window when that is closed meanwhile.
    const QPointer<WChoiceDialog> dialog(new WChoiceDialog(text, caption, m_parent));
    for (const Choice &choice : choices)
        dialog->addChoice(choice.text, choice.explanation);
    dialog->setChoice(usual);
    const bool isChosen = dialog->exec() == QDialog::Accepted && dialog;
    const std::optional<int> chosen = isChosen ? std::optional(dialog->choice()) : std::nullopt;
    delete dialog.data();
    return chosen;
}
