// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogs/velcolorpage.h"

#include "dialogs/vellooksample.h"
#include "widgets/wfontbutton.h"

#include <KColorButton>
#include <KLocalizedString>

#include <QGridLayout>
#include <QLabel>
#include <QPainter>

namespace
{
constexpr int ColorsPerRow = 2;

/** A label beside an input, which its key leads to. */
void addInput(QGridLayout *layout, int row, int column, const QString &text, QWidget *input)
{
    auto *label = new QLabel(text, input->parentWidget());
    label->setBuddy(input);
    layout->addWidget(label, row, column);
    layout->addWidget(input, row, column + 1);
}
} // namespace

VelColorPage::VelColorPage(QWidget *parent)
    : VelPreferencesPage(parent)
    , m_calendarFont(new WFontButton(this))
    , m_entryFont(new WFontButton(this))
    , m_sample(new VelLookSample(this))
{
    auto *layout = new QGridLayout(this);
    const int row = addColors(layout);
    m_calendarFont->setObjectName(QStringLiteral("CalendarFont"));
    m_entryFont->setObjectName(QStringLiteral("EntryFont"));
    const auto addFont = [layout](int at, const QString &text, WFontButton *button) {
        addInput(layout, at, 0, text, button);
        layout->removeWidget(button);
        layout->addWidget(button, at, 1, 1, 2 * ColorsPerRow - 1);
    };
    addFont(row, i18n("Calenda&r font:"), m_calendarFont);
    addFont(row + 1, i18n("&Entry font:"), m_entryFont);
    layout->addWidget(m_sample, row + 2, 0, 1, 2 * ColorsPerRow);
    layout->setRowStretch(row + 2, 1);
    explain(m_calendarFont, i18n("The font of hours, days and months"));
    explain(m_entryFont, i18n("The font of entries"));
    explain(m_sample, i18n("A morning in these colours and fonts"));
    watchInputs();
    connect(this, &VelPreferencesPage::changed, this, &VelColorPage::updateSample);
}

int VelColorPage::addColors(QGridLayout *layout)
{
    const auto add = [this, layout](const char *key, const QString &text, QColor VelLook::*color,
                                    const QString &help) {
        auto *button = new KColorButton(this);
        button->setObjectName(QLatin1String(key));
        explain(button, help);
        const int count = static_cast<int>(m_colors.size());
        addInput(layout, count / ColorsPerRow, count % ColorsPerRow * 2, text, button);
        m_colors.push_back({button, color});
    };
    add("DayHour", i18n("Wor&king hours:"), &VelLook::dayHour, i18n("The background of working hours"));
    add("DayOffHour", i18n("&Hours off work:"), &VelLook::dayOffHour,
        i18n("The background of all other hours"));
    add("MainColor1", i18n("First &main colour:"), &VelLook::mainColor1,
        i18n("Today, the shown days in the day picker, and lines"));
    add("MainColor2", i18n("Second main co&lour:"), &VelLook::mainColor2,
        i18n("The ruler of hours, headings, and every other working hour"));
    add("EntryBackground", i18n("Entry &background:"), &VelLook::entryBackground,
        i18n("The background of entries"));
    add("EntryText", i18n("Entry &text:"), &VelLook::entryText, i18n("The text of entries"));
    add("Tentative", i18n("Te&ntative entries:"), &VelLook::tentative,
        i18n("The background of entries that are accepted tentatively"));
    add("Selection", i18n("&Selection:"), &VelLook::selection, i18n("Selected times and days"));
    for (int column = 0; column < ColorsPerRow; ++column)
        layout->setColumnStretch(2 * column + 1, 1);
    return static_cast<int>(m_colors.size()) / ColorsPerRow;
}

QString VelColorPage::title() const
{
    return i18n("Colours and Fonts");
}

/** Four of the colours themselves. */
QIcon VelColorPage::icon() const
{
    constexpr int size = 64; // pixels
    const VelLook look = VelLook::defaults(palette());
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    constexpr int half = size / 2;
    constexpr int square = half - 4;
    painter.fillRect(2, 2, square, square, look.mainColor1);
    painter.fillRect(half + 2, 2, square, square, look.tentative);
    painter.fillRect(2, half + 2, square, square, look.selection);
    painter.fillRect(half + 2, half + 2, square, square, look.red());
    painter.end();
    return QIcon(pixmap);
}

void VelColorPage::show(const VelSettings &, const VelLook &look)
{
    for (const ColorInput &input : m_colors)
        input.button->setColor(look.*input.color);
    m_calendarFont->setSelectedFont(look.calendarFont);
    m_entryFont->setSelectedFont(look.entryFont);
    updateSample();
}

VelLook VelColorPage::chosen() const
{
    VelLook look;
    for (const ColorInput &input : m_colors)
        look.*input.color = input.button->color();
    look.calendarFont = m_calendarFont->getSelectedFont();
    look.entryFont = m_entryFont->getSelectedFont();
    return look;
}

void VelColorPage::store(VelSettings &, VelLook &look) const
{
    look = chosen();
}

void VelColorPage::updateSample()
{
    m_sample->setLook(chosen());
}
