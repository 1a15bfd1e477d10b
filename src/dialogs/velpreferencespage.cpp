// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogs/velpreferencespage.h"

#include "widgets/wdatetimewidget.h"
#include "widgets/wfileedit.h"
#include "widgets/wfontbutton.h"

#include <KColorButton>

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QSpinBox>

void VelPreferencesPage::watchInputs()
{
    const auto watch = [this](const auto &inputs, auto signal) {
        for (auto *input : inputs)
            connect(input, signal, this, &VelPreferencesPage::changed);
    };
    watch(findChildren<QCheckBox *>(), &QCheckBox::toggled);
    watch(findChildren<QSpinBox *>(), QOverload<int>::of(&QSpinBox::valueChanged));
    watch(findChildren<QComboBox *>(), QOverload<int>::of(&QComboBox::currentIndexChanged));
    watch(findChildren<QLineEdit *>(), &QLineEdit::textChanged);
    watch(findChildren<WDateTimeWidget *>(), &WDateTimeWidget::dateChanged);
    watch(findChildren<WDateTimeWidget *>(), &WDateTimeWidget::problemChanged);
    watch(findChildren<KColorButton *>(), &KColorButton::changed);
    watch(findChildren<WFontButton *>(), &WFontButton::fontSelected);
    watch(findChildren<WFileEdit *>(), &WFileEdit::urlChanged);
}

void VelPreferencesPage::explain(QWidget *widget, const QString &text)
{
    widget->setToolTip(text);
    widget->setWhatsThis(text);
}
