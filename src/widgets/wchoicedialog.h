// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QDialog>

class QButtonGroup;
class QVBoxLayout;

/** A question with several answers, each of which is explained. All texts are plain. */
class WChoiceDialog : public QDialog
{
    Q_OBJECT
public:
    WChoiceDialog(const QString &text, const QString &caption, QWidget *parent = nullptr);

    /** Adds an answer at the end; @p explanation stands below it. */
    void addChoice(const QString &text, const QString &explanation);
    /** The answer's place among them, from 0; -1 for none. */
    [[nodiscard]] int choice() const;
    void setChoice(int index);

private:
    QVBoxLayout *m_choicesLayout;
    QButtonGroup *m_buttons;
};
