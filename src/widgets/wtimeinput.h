// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <KTimeComboBox>

/** The input of a time to the minute, in the format of its locale, with a list of times that pops up. */
class WTimeInput : public KTimeComboBox
{
    Q_OBJECT
public:
    using KTimeComboBox::KTimeComboBox;

protected:
    void changeEvent(QEvent *event) override;
};
