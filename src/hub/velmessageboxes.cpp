// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "hub/velmessageboxes.h"

#include "widgets/wchoicedialog.h"
#include "widgets/wraised.h"
#include "widgets/wshowntext.h"

#include <KGuiItem>
#include <KLocalizedString>
#include <KMessageBox>

#include <QApplication>
#include <QPointer>
#include <QPushButton>

namespace
{
constexpr int MostText = 3000; // characters: the buttons are to stay on the screen

/** Names, titles and what servers say stand in many of them. */
QString shown(const QString &text)
{
    return WShownText::plain(WShownText::cut(text, MostText));
}

QString orUsual(const QString &text, const QString &usual)
{
    return text.isEmpty() ? usual : text;
}

KGuiItem button(const QString &text, const QString &usual)
{
    return KGuiItem(orUsual(text, usual));
}
} // namespace

VelMessageBoxes::VelMessageBoxes(QWidget *parent)
    : m_parent(parent)
{
}

void VelMessageBoxes::raiseText(QMessageBox::Icon icon, const QString &text, const QString &caption)
{
    // Without a parent, with which it would go.
    auto *box = new QMessageBox(icon, caption, text, QMessageBox::Ok);
    box->setWindowIcon(m_parent->windowIcon());
    box->setTextFormat(Qt::PlainText);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setWindowModality(Qt::NonModal);
    auto *raised = new WRaised(box);
    raised->passModal();
    box->show();
    QApplication::alert(box);
}

int VelMessageBoxes::raiseQuestion(const QString &text, const QString &caption, const QStringList &buttons)
{
    const QPointer<QMessageBox> box(new QMessageBox(
        QMessageBox::Question, caption, WShownText::cut(text, MostText), QMessageBox::NoButton, m_parent));
    box->setTextFormat(Qt::PlainText);
    box->setWindowModality(Qt::NonModal);
    QList<QPushButton *> made;
    for (const QString &label : buttons)
        made.append(box->addButton(label, QMessageBox::ActionRole));
    box->setDefaultButton(made.last());
    box->setEscapeButton(made.last());
    auto *raised = new WRaised(box);
    raised->run(m_parent);
    // The window may have gone, and the box with it.
    const int last = int(made.size()) - 1;
    const int chosen = box ? int(made.indexOf(qobject_cast<QPushButton *>(box->clickedButton()))) : last;
    delete box.data();
    return chosen >= 0 ? chosen : last;
}

void VelMessageBoxes::error(const QString &text)
{
    if (isUnasked()) {
        raiseText(QMessageBox::Critical, WShownText::cut(text, MostText), i18nc("@title:window", "Error"));
        return;
    }
    KMessageBox::error(m_parent, shown(text));
}

void VelMessageBoxes::information(const QString &text, const QString &caption)
{
    if (isUnasked()) {
        raiseText(QMessageBox::Information, WShownText::cut(text, MostText),
                  caption.isEmpty() ? i18nc("@title:window", "Information") : caption);
        return;
    }
    KMessageBox::information(m_parent, shown(text), caption);
}

VelMessages::Answer VelMessageBoxes::questionYesNo(const QString &text, const QString &caption,
                                                   const QString &yes, const QString &no)
{
    if (isUnasked()) {
        const QStringList buttons{orUsual(yes, i18n("&Yes")), orUsual(no, i18n("&No"))};
        return raiseQuestion(text, caption, buttons) == 0 ? Answer::Yes : Answer::No;
    }
    // What is asked about cannot be undone by the next key: the harmless answer is the default.
    const auto chosen =
        KMessageBox::questionTwoActions(m_parent, shown(text), caption, button(yes, i18n("&Yes")),
                                        button(no, i18n("&No")), QString(), KMessageBox::Dangerous);
    return chosen == KMessageBox::PrimaryAction ? Answer::Yes : Answer::No;
}

VelMessages::Answer VelMessageBoxes::warningYesNoCancel(const QString &text, const QString &caption,
                                                        const QString &yes, const QString &no)
{
    if (isUnasked()) {
        constexpr Answer answers[] = {Answer::Yes, Answer::No, Answer::Cancel};
        const QStringList buttons{orUsual(yes, i18n("&Yes")), orUsual(no, i18n("&No")), i18n("Cancel")};
        return answers[raiseQuestion(text, caption, buttons)];
    }
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
    const int result = isUnasked() ? (new WRaised(dialog))->run(m_parent) : dialog->exec();
    const bool isChosen = result == QDialog::Accepted && dialog;
    const std::optional<int> chosen = isChosen ? std::optional(dialog->choice()) : std::nullopt;
    delete dialog.data();
    return chosen;
}
