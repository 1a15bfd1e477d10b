// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "document/velmessages.h"

class QWidget;

/** Questions and errors as modal message boxes over a window. */
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
    QWidget *m_parent;
};
