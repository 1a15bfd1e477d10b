// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogs/velfindtimedialog.h"
#include "dialogs/velfindtimepersonlist.h"
#include "dialogs/velfindtimewidget.h"
#include "views/veldaypicker.h"
#include "views/veldayview.h"

#include <KLocalizedString>

#include <QDialogButtonBox>
#include <QGuiApplication>
#include <QPushButton>
#include <QScreen>
#include <QSplitter>
#include <QVBoxLayout>
#include <QWhatsThis>

namespace
{
constexpr QSize UsualSize(800, 600);

constexpr char GeometryKey[] = "FindTimeGeometry";
constexpr char PositionKey[] = "FindTimePosition";
constexpr char Splitter1Key[] = "SplitterSizesFind1";
constexpr char Splitter2Key[] = "SplitterSizesFind2";

/** Sizes that do not fit the splitter, as somebody may have written them, are none. */
void restoreSizes(QSplitter &splitter, const QList<int> &sizes)
{
    if (sizes.size() == splitter.count())
        splitter.setSizes(sizes);
}
} // namespace

void VelFindTimeDialog::makeLayout()
{
    auto *layout = new QVBoxLayout(this);
    m_splitter1 = new QSplitter(Qt::Horizontal, this);
    m_splitter1->setChildrenCollapsible(false);
    layout->addWidget(m_splitter1, 1);

    auto *frame = new QFrame(m_splitter1);
    auto *left = new QVBoxLayout(frame);
    left->setContentsMargins(0, 0, 0, 0);
    m_widget = new VelFindTimeWidget(*this, m_entry, frame);
    m_dayView = new VelDayView(frame, VelDay::Planner, *m_source);
    m_dayView->setKeepSelection(true); // the proposal, wherever the user goes
    left->addWidget(m_widget);
    left->addWidget(m_dayView, 1);
    makeSides();
    m_splitter1->setStretchFactor(0, 1);
    m_splitter1->setStretchFactor(1, 0);
    makeButtons();
}

void VelFindTimeDialog::makeSides()
{
    m_splitter2 = new QSplitter(Qt::Vertical, m_splitter1);
    m_splitter2->setChildrenCollapsible(false);
    m_dayPicker = new VelDayPicker(m_splitter2);
    m_personList = new VelFindTimePersonList(m_splitter2);
    m_personList->setWhatsThis(
        i18n("<p>List of attendees.</p><p>Uncheck the box before the name to deselect the "
             "attendee from search."));
    m_splitter2->setStretchFactor(0, 0);
    m_splitter2->setStretchFactor(1, 1);
}

void VelFindTimeDialog::makeButtons()
{
    auto *buttons =
        new QDialogButtonBox(QDialogButtonBox::Help | QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &VelFindTimeDialog::slotOk);
    connect(buttons, &QDialogButtonBox::rejected, this, &VelFindTimeDialog::slotCancel);
    connect(buttons, &QDialogButtonBox::helpRequested, this, [] { QWhatsThis::enterWhatsThisMode(); });
    buttons->button(QDialogButtonBox::Cancel)->setDefault(true);
    layout()->addWidget(buttons);
}

void VelFindTimeDialog::restoreOptions()
{
    const QSize size = m_options.readEntry(GeometryKey, UsualSize);
    layout()->activate(); // what is in it says how small it may be
    resize((size.isEmpty() ? UsualSize : size).boundedTo(screen()->availableSize()));
    const QPoint position = m_options.readEntry(PositionKey, QPoint());
    if (!position.isNull() && QGuiApplication::screenAt(position))
        move(position);
    restoreSizes(*m_splitter1, m_options.readEntry(Splitter1Key, QList<int>()));
    restoreSizes(*m_splitter2, m_options.readEntry(Splitter2Key, QList<int>()));
}

void VelFindTimeDialog::storeOptions()
{
    m_options.writeEntry(GeometryKey, size());
    m_options.writeEntry(PositionKey, pos());
    m_options.writeEntry(Splitter1Key, m_splitter1->sizes());
    m_options.writeEntry(Splitter2Key, m_splitter2->sizes());
}
