// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogs/velfindtimedialog.h"

#include "dialogs/velfindtimepersonlist.h"
#include "dialogs/velfindtimewidget.h"
#include "document/velmessages.h"
#include "model/velnettask.h"
#include "model/velsettings.h"
#include "views/veldaypicker.h"
#include "views/veldayview.h"
#include "views/velmainview.h"

#include <KLocalizedString>

#include <QTimer>

namespace
{
constexpr int DaysPerWeek = 7;
constexpr int StillTime = 200; // milliseconds, longer than a key that is held takes to repeat

/** The planner as the columns see it. */
class Columns : public VelDaySource
{
public:
    explicit Columns(VelFindTimeDialog &dialog)
        : m_dialog(dialog)
    {
    }
    [[nodiscard]] VelEntryList getEntries(QDate day) const override { return m_dialog.getKnownEntries(day); }
    [[nodiscard]] int getVisibleCount() const override { return m_dialog.getVisibleCount(); }
    [[nodiscard]] int getColumn(quint32 account) const override { return m_dialog.getColumn(account); }
    [[nodiscard]] QString getColumnName(int column) const override { return m_dialog.getColumnName(column); }

private:
    VelFindTimeDialog &m_dialog;
};
} // namespace

VelFindTimeDialog::VelFindTimeDialog(const VelEntry &entry, const KConfigGroup &options, QWidget *parent)
    : QDialog(parent)
    , m_app(*VelApp::getApp(parent))
    , m_entry(entry)
    , m_options(options)
    , m_busy([this](const QString &body) { m_app.netTask(VelNetTask::UserBusy, body, false); })
    , m_still(new QTimer(this))
    , m_source(std::make_unique<Columns>(*this))
{
    m_still->setObjectName(QStringLiteral("still"));
    m_still->setInterval(StillTime);
    m_still->setSingleShot(true);
    setWindowTitle(i18n("Meeting Planner"));
    setModal(true);
    makeLayout();
    makeConnections();
    restoreOptions();
}

VelFindTimeDialog::~VelFindTimeDialog()
{
    delete m_dayView; // before the entries that it shows
}

void VelFindTimeDialog::makeConnections()
{
    connect(m_dayPicker, &VelDayPicker::dateChanged, this, &VelFindTimeDialog::slotDateChanged);
    connect(m_dayView, &VelDayView::selectionChanged, m_widget, &VelFindTimeWidget::slotSelectionChanged);
    connect(m_dayView, &VelDayView::prevWanted, this, &VelFindTimeDialog::prev);
    connect(m_dayView, &VelDayView::nextWanted, this, &VelFindTimeDialog::next);
    connect(m_dayView, &VelDayView::dayWanted, this, &VelFindTimeDialog::setDate);
    connect(m_widget, &VelFindTimeWidget::proposalChanged, this, &VelFindTimeDialog::slotPropDateChanged);
    connect(m_widget, &VelFindTimeWidget::workDaysClicked, this, [this] { setDate(getDate()); });
    connect(this, &VelFindTimeDialog::newAccounts, m_widget, &VelFindTimeWidget::slotContinue);
    connect(m_personList, &VelFindTimePersonList::personToggled, this,
            &VelFindTimeDialog::slotPersonListChanged);
    connect(m_still, &QTimer::timeout, this, &VelFindTimeDialog::requestRange);
    connect(&m_app, &VelApp::taskUserBusyReady, this, &VelFindTimeDialog::slotEntries);
    connect(&m_app, &VelApp::netTaskFailed, this, &VelFindTimeDialog::slotFailed);
}

void VelFindTimeDialog::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    if (m_wasShown)
        return;
    m_wasShown = true;
    setDate(m_app.now().date());
    slotPropDateChanged();
}

void VelFindTimeDialog::setAccounts(const VelAccountList &accounts)
{
    m_widget->stop();
    m_dayView->release(); // what it shows is gone in a moment
    m_busy.setAccounts(accounts);
    m_widget->showStatus({});
    m_personList->setAccounts(accounts);
    slotDateChanged(getDate());
    requestRange();
    slotPersonListChanged();
}

void VelFindTimeDialog::setEntry(const VelEntry &entry)
{
    const bool isMoved = entry.getStart() != m_entry.getStart() || entry.getEnd() != m_entry.getEnd();
    m_entry = entry;
    // Moved to what is proposed, the search goes on from there as the user has set it up.
    const bool isProposal = entry.getStart() == VelDateTime::fromQDateTime(m_widget->getStart())
        && entry.getEnd() == VelDateTime::fromQDateTime(m_widget->getEnd());
    if (isMoved && !isProposal)
        m_widget->setEntry(entry);
}

void VelFindTimeDialog::setDate(QDate date)
{
    if (!VelDateTime::isSupported(date))
        return;
    m_dayPicker->setDate(date);
    slotDateChanged(date);
}

QDate VelFindTimeDialog::getDate() const
{
    return m_dayPicker->getDate();
}

void VelFindTimeDialog::moveTo(int weeks)
{
    setDate(getDate().addDays(qint64(weeks) * DaysPerWeek));
}

void VelFindTimeDialog::slotDateChanged(QDate date)
{
    QDate first = date.addDays(Qt::Monday - date.dayOfWeek());
    int days = DaysPerWeek;
    if (m_widget->isWorkDays()) {
        first = date;
        days = VelMainView::getWorkWeek(*m_app.settings(), first);
    }
    m_dayView->setRange(first, days);
    m_dayPicker->setHighlight(first, days);
    if (isRangeRequested())
        requestRange();
    else
        m_still->start();
}

bool VelFindTimeDialog::isRangeRequested() const
{
    const QDate first = m_dayView->startDate();
    return m_busy.isRequested(getDate()) && m_busy.isRequested(first)
        && m_busy.isRequested(first.addDays(m_dayView->numDays() - 1));
}

/** A work week may be of two weeks from Monday. */
void VelFindTimeDialog::requestRange()
{
    m_still->stop();
    const QDate first = m_dayView->startDate();
    const QDate last = first.addDays(m_dayView->numDays() - 1);
    if (m_busy.accounts().isEmpty())
        return;
    requestEntries(getDate());
    for (const QDate day : {first, last}) {
        if (!m_busy.isRequested(day))
            requestEntries(day);
    }
}

bool VelFindTimeDialog::requestEntries(QDate date)
{
    const bool isThere = m_busy.requestEntries(date);
    showFetching();
    return isThere;
}

VelEntryList VelFindTimeDialog::getEntries(QDate date)
{
    VelEntryList entries = m_busy.getEntries(date, m_entry.globalid);
    showFetching();
    return entries;
}

VelEntryList VelFindTimeDialog::getKnownEntries(QDate date)
{
    return m_busy.isRequested(date) ? m_busy.getEntries(date, m_entry.globalid) : VelEntryList();
}

void VelFindTimeDialog::showFetching()
{
    if (m_busy.isFetching())
        m_widget->showStatus(i18n("Fetching busy times..."));
}

void VelFindTimeDialog::slotEntries(const VelReceivedEntries &entries, const QString &argument)
{
    if (!m_busy.takeEntries(entries, argument))
        return;
    if (!m_busy.isFetching())
        m_widget->showStatus({});
    m_dayView->updateView();
    Q_EMIT newAccounts();
}

/** The week is asked for again when somebody comes to it, not at once. */
void VelFindTimeDialog::slotFailed(int type, const QString &argument)
{
    if (type != VelNetTask::UserBusy || !m_busy.takeFailure(argument))
        return;
    m_widget->stop();
    m_widget->showStatus(i18n("The busy times could not be fetched."));
}

bool VelFindTimeDialog::isWorkingDay(QDate day) const
{
    return m_app.settings()->isWorkingDay(day);
}

/** A week that was looked at meanwhile no longer counts as being retrieved, but its answer may still be out. */
bool VelFindTimeDialog::isWaiting(QDate day) const
{
    return m_busy.isRetrieving() || !m_busy.isAnswered(day);
}

void VelFindTimeDialog::slotPersonListChanged()
{
    m_shown = m_personList->getSelected();
    m_columns.clear();
    for (int column = 0; column < getVisibleCount(); ++column)
        m_columns[m_shown.at(column).id] = column;
    m_dayView->updateView();
}

int VelFindTimeDialog::getColumn(quint32 account) const
{
    const auto found = m_columns.find(account);
    return found == m_columns.end() ? -1 : found->second;
}

void VelFindTimeDialog::slotPropDateChanged()
{
    m_dayView->setSelection(VelDateTime::fromQDateTime(m_widget->getStart()),
                            VelDateTime::fromQDateTime(m_widget->getEnd()), false, true);
}

void VelFindTimeDialog::slotOk()
{
    const QString problem = m_widget->finishInput();
    if (!problem.isEmpty()) {
        m_app.messages().error(problem);
        return;
    }
    if (m_widget->getStart() > m_widget->getEnd()) {
        m_app.messages().error(i18n("Start time may not be later than end time."));
        return;
    }
    Q_EMIT timeChosen(m_widget->getStart(), m_widget->getEnd());
    storeOptions();
    accept();
}

void VelFindTimeDialog::slotCancel()
{
    storeOptions();
    QDialog::reject();
}

/** However it is closed, nobody waits any longer. */
void VelFindTimeDialog::done(int result)
{
    m_still->stop();
    m_widget->stop();
    QDialog::done(result);
}
