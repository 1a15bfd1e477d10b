// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "dialogs/velpreferencespage.h"
#include "hub/vellook.h"

#include <vector>

class KColorButton;
class QGridLayout;
class VelLookSample;
class WFontButton;

/** The colours and fonts of the views, with a sample of what they come to. */
class VelColorPage : public VelPreferencesPage
{
    Q_OBJECT
public:
    explicit VelColorPage(QWidget *parent = nullptr);

    [[nodiscard]] QString title() const override;
    [[nodiscard]] QIcon icon() const override;
    void show(const VelSettings &settings, const VelLook &look) override;
    void store(VelSettings &settings, VelLook &look) const override;

private:
    struct ColorInput {
        KColorButton *button;
        QColor VelLook::*color;
    };

    /** Places the inputs of the colours, and returns the first row that is left. */
    int addColors(QGridLayout *layout);
    [[nodiscard]] VelLook chosen() const;
    void updateSample();

    std::vector<ColorInput> m_colors;
    WFontButton *m_calendarFont;
    WFontButton *m_entryFont;
    VelLookSample *m_sample;
};
