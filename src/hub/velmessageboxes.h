// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "document/velmessages.h"

#include <QMessageBox>

/**
 * Questions and errors as modal message boxes over a window. Those that come by themselves leave the keyboard where it
 * is, and block nothing unless they ask.
 */
class VelMessageBoxes : public VelMessages
{
public:
    /** @p parent must outlive this. */
    explicit VelMessageBoxes(QWidget *parent);

    void error(const QString &text) override;
    void information(const QString &text, const QString &caption = {}) override;
    Answer questionYesNo(const QString &text, const QString &caption, const QString &yes = {},
                         const QString &no = {}) override;
    Answer warningYesNoCancel(const QString &text, const QString &caption, const QString &yes = {},
                              const QString &no = {}) override;
    std::optional<int> choose(const QString &text, const QString &caption, const std::vector<Choice> &choices,
                              int usual) override;

private:
    void raiseText(QMessageBox::Icon icon, const QString &text, const QString &caption);
    /** Where in @p buttons the one is that was chosen; the last changes nothing. */
    [[nodiscard]] int raiseQuestion(const QString &text, const QString &caption, const QStringList &buttons);

    QWidget *m_parent;
};
