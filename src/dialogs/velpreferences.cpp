// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogs/velpreferences.h"

#include "dialogs/velcolorpage.h"
#include "dialogs/velreminderpage.h"
#include "dialogs/velrightspage.h"
#include "dialogs/velsavepage.h"
#include "dialogs/velserverpage.h"
#include "dialogs/velworkpage.h"

#include <KLocalizedString>
#include <KMessageWidget>

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QListWidget>
#include <QPushButton>
#include <QScreen>
#include <QStackedWidget>

VelPreferences::VelPreferences(QWidget *parent, const KConfigGroup &options)
    : QDialog(parent)
    , m_options(options)
    , m_list(new QListWidget(this))
    , m_stack(new QStackedWidget(this))
    , m_message(new KMessageWidget(this))
    , m_buttons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Apply | QDialogButtonBox::Cancel
                                         | QDialogButtonBox::RestoreDefaults,
                                     this))
{
    setWindowTitle(i18nc("@title:window", "Preferences"));
    // While it is open nothing else may change what it shows.
    setModal(true);
    buildLayout();
    addPage(new VelWorkPage(this));
    addPage(new VelColorPage(this));
    addPage(new VelSavePage(this));
    addPage(new VelServerPage(this));
    addPage(new VelRightsPage(this));
    addPage(new VelReminderPage(this));
    connect(m_list, &QListWidget::currentRowChanged, this, &VelPreferences::slotPage);
    m_list->setCurrentRow(0);
    // The width of the longest title, with room for the frame and the spacing.
    m_list->setFixedWidth(m_list->sizeHintForColumn(0) + 2 * (m_list->frameWidth() + m_list->spacing()));

    QPushButton *defaults = m_buttons->button(QDialogButtonBox::RestoreDefaults);
    defaults->setText(i18n("&Defaults"));
    defaults->setToolTip(i18n("Puts what is on this page back to how it was at first"));
    defaults->setWhatsThis(defaults->toolTip());
    connect(defaults, &QPushButton::clicked, this, &VelPreferences::slotDefaults);
    connect(m_buttons->button(QDialogButtonBox::Apply), &QPushButton::clicked, this,
            &VelPreferences::slotApply);
    connect(m_buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    m_buttons->button(QDialogButtonBox::Ok)->setDefault(true);
    restoreSize();
}

void VelPreferences::buildLayout()
{
    m_list->setAccessibleName(i18n("Pages"));
    const int icon = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this) * 3 / 2;
    m_list->setIconSize({icon, icon});
    m_list->setSpacing(fontMetrics().height() / 6);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_message->setMessageType(KMessageWidget::Warning);
    m_message->setCloseButtonVisible(false);
    m_message->hide();
    auto *pages = new QHBoxLayout;
    pages->addWidget(m_list);
    pages->addWidget(m_stack, 1);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(pages, 1);
    layout->addWidget(m_message);
    layout->addWidget(m_buttons);
}

void VelPreferences::addPage(VelPreferencesPage *page)
{
    m_pages.push_back(page);
    m_stack->addWidget(page);
    // Not tinted when selected, which would leave little of the coloured icons.
    const QPixmap pixmap = page->icon().pixmap(m_list->iconSize());
    QIcon icon(pixmap);
    icon.addPixmap(pixmap, QIcon::Selected);
    m_list->addItem(new QListWidgetItem(icon, page->title()));
    connect(page, &VelPreferencesPage::changed, this, &VelPreferences::slotChanged);
}

/** The screen may be a smaller one than last time. */
void VelPreferences::restoreSize()
{
    const QSize size =
        m_options.isValid() ? m_options.readEntry("PreferencesGeometry", sizeHint()) : sizeHint();
    resize(size.boundedTo(screen()->availableSize()).expandedTo(minimumSizeHint()));
}

void VelPreferences::refresh(const VelSettings &settings, const VelLook &look)
{
    m_settings = settings;
    m_look = look;
    for (VelPreferencesPage *page : m_pages)
        page->show(settings, look);
    m_isChanged = false;
    updateButtons();
}

void VelPreferences::follow(const VelSettings &settings)
{
    m_settings.takeAccount(settings);
    for (VelPreferencesPage *page : m_pages)
        page->follow(settings);
}

void VelPreferences::slotPage(int number)
{
    m_stack->setCurrentIndex(number);
    m_buttons->button(QDialogButtonBox::RestoreDefaults)
        ->setEnabled(m_pages[static_cast<std::size_t>(number)]->hasDefaults());
}

void VelPreferences::slotChanged()
{
    m_isChanged = true;
    updateButtons();
}

void VelPreferences::slotDefaults()
{
    m_pages[static_cast<std::size_t>(m_stack->currentIndex())]->show(VelSettings(),
                                                                     VelLook::defaults(palette()));
}

QString VelPreferences::problem() const
{
    for (const VelPreferencesPage *page : m_pages) {
        QString problem = page->problem();
        if (!problem.isEmpty())
            return problem;
    }
    return {};
}

void VelPreferences::updateButtons()
{
    const QString text = problem();
    m_message->setText(text);
    m_message->setVisible(!text.isEmpty());
    m_buttons->button(QDialogButtonBox::Ok)->setEnabled(text.isEmpty());
    m_buttons->button(QDialogButtonBox::Apply)->setEnabled(text.isEmpty() && m_isChanged);
}

bool VelPreferences::finishInput()
{
    for (VelPreferencesPage *page : m_pages)
        page->finishInput();
    return problem().isEmpty();
}

void VelPreferences::accept()
{
    if (finishInput())
        QDialog::accept();
}

void VelPreferences::slotApply()
{
    if (finishInput())
        apply();
}

void VelPreferences::apply()
{
    const VelSettings before = m_settings;
    for (const VelPreferencesPage *page : m_pages)
        page->store(m_settings, m_look);
    Q_EMIT settingsChanged(m_settings, m_look);
    if (m_settings.server != before.server || m_settings.user != before.user)
        m_settings.origUserid = 0; // the other server, or user, has another
    refresh(m_settings, m_look); // a page may ask the server, which must be the new one by then
}

void VelPreferences::done(int result)
{
    if (result == Accepted && m_isChanged)
        apply();
    if (m_options.isValid())
        m_options.writeEntry("PreferencesGeometry", size());
    QDialog::done(result);
    refresh(m_settings, m_look); // forgets what was typed, a password above all
}
