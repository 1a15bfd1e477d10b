// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "widgets/wchoicedialog.h"

#include <QButtonGroup>
#include <QDialogButtonBox>
#include <QFontMetrics>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QStyle>
#include <QVBoxLayout>

namespace
{
constexpr int TextWidth = 70; // characters

QLabel *plainLabel(const QString &text, QWidget *parent)
{
    auto *label = new QLabel(text, parent);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setMinimumWidth(label->fontMetrics().averageCharWidth() * TextWidth);
    return label;
}
} // namespace

WChoiceDialog::WChoiceDialog(const QString &text, const QString &caption, QWidget *parent)
    : QDialog(parent)
    , m_choicesLayout(new QVBoxLayout)
    , m_buttons(new QButtonGroup(this))
{
    setWindowTitle(caption);
    auto *icon = new QLabel(this);
    const QStyle *look = style();
    const int size = look->pixelMetric(QStyle::PM_MessageBoxIconSize, nullptr, this);
    icon->setPixmap(look->standardIcon(QStyle::SP_MessageBoxQuestion).pixmap(size));
    auto *head = new QHBoxLayout;
    head->addWidget(icon, 0, Qt::AlignTop);
    head->addSpacing(look->pixelMetric(QStyle::PM_LayoutHorizontalSpacing));
    head->addWidget(plainLabel(text, this), 1);

    auto *box = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    box->button(QDialogButtonBox::Ok)->setDefault(true);
    connect(box, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(box, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(head);
    layout->addLayout(m_choicesLayout);
    layout->addStretch();
    layout->addWidget(box);
}

void WChoiceDialog::addChoice(const QString &text, const QString &explanation)
{
    auto *button = new QRadioButton(text, this);
    // Read out with the answer, as who cannot see what stands below it needs it too.
    button->setAccessibleDescription(explanation);
    button->setWhatsThis(explanation);
    m_buttons->addButton(button, static_cast<int>(m_buttons->buttons().size()));
    auto *below = plainLabel(explanation, this);
    below->setIndent(style()->pixelMetric(QStyle::PM_ExclusiveIndicatorWidth)
                     + style()->pixelMetric(QStyle::PM_RadioButtonLabelSpacing));
    m_choicesLayout->addSpacing(fontMetrics().height() / 2);
    m_choicesLayout->addWidget(button);
    m_choicesLayout->addWidget(below);
}

int WChoiceDialog::choice() const
{
    return m_buttons->checkedId();
}

void WChoiceDialog::setChoice(int index)
{
    if (QAbstractButton *button = m_buttons->button(index)) {
        button->setChecked(true);
        button->setFocus();
    }
}
