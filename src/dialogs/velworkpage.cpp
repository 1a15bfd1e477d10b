// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogs/velworkpage.h"

#include "hub/velapp.h"
#include "model/velsettings.h"
#include "views/velweekdaywidget.h"
#include "widgets/wdatetimewidget.h"

#include <KLocalizedString>

#include <QCheckBox>
#include <QFormLayout>
#include <QLabel>

VelWorkPage::VelWorkPage(QWidget *parent)
    : VelPreferencesPage(parent)
    , m_days(new VelWeekDayWidget(this))
    , m_begin(new WDateTimeWidget(WDateTimeWidget::Kind::Time, this))
    , m_end(new WDateTimeWidget(WDateTimeWidget::Kind::Time, this))
    , m_dock(new QCheckBox(i18n("&Minimise the window into the system tray"), this))
{
    m_days->setObjectName(QStringLiteral("Workdays"));
    m_begin->setObjectName(QStringLiteral("WorkdayBegin"));
    m_end->setObjectName(QStringLiteral("WorkdayEnd"));
    m_dock->setObjectName(QStringLiteral("Dock"));
    for (WDateTimeWidget *time : {m_begin, m_end}) {
        time->leaveProblem();
        time->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    }
    m_days->setFocusProxy(m_days->findChild<QCheckBox *>());

    auto *layout = new QFormLayout(this);
    layout->setRowWrapPolicy(QFormLayout::WrapLongRows);
    layout->addRow(i18n("&Working days:"), m_days);
    const auto addTime = [this, layout](const QString &text, WDateTimeWidget *time) {
        auto *label = new QLabel(text, this);
        label->setBuddy(time->getBuddy());
        layout->addRow(label, time);
    };
    addTime(i18n("Work &begins:"), m_begin);
    addTime(i18n("Work &ends:"), m_end);
    layout->addRow(QString(), m_dock);
    explain(m_days, i18n("The days that the view of the working week goes from and to"));
    const QString hours = i18n("Working hours have another background. Only full hours are told apart.");
    explain(m_begin, hours);
    explain(m_end, hours);
    explain(m_dock, i18n("A minimised window then is an icon in the system tray"));
    watchInputs();
}

QString VelWorkPage::title() const
{
    return i18n("Working Time");
}

QIcon VelWorkPage::icon() const
{
    return VelApp::getIcon(QStringLiteral("view5"));
}

void VelWorkPage::show(const VelSettings &settings, const VelLook &)
{
    m_days->setList(settings.getWorkdays());
    m_begin->setTime(settings.workdayBegin);
    m_end->setTime(settings.workdayEnd);
    m_dock->setChecked(settings.dock);
}

void VelWorkPage::store(VelSettings &settings, VelLook &) const
{
    settings.setWorkdays(m_days->getList());
    settings.workdayBegin = m_begin->getTime();
    settings.workdayEnd = m_end->getTime();
    settings.dock = m_dock->isChecked();
}

void VelWorkPage::finishInput()
{
    for (WDateTimeWidget *time : {m_begin, m_end})
        time->finishInput();
}

QString VelWorkPage::problem() const
{
    for (const WDateTimeWidget *time : {m_begin, m_end}) {
        if (!time->getProblem().isEmpty())
            return time->getProblem();
    }
    if (m_days->getList().isEmpty())
        return i18n("Please choose at least one working day.");
    if (m_begin->getTime() >= m_end->getTime())
        return i18n("Work must begin before it ends.");
    return {};
}
