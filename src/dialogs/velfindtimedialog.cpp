// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogs/velfindtimedialog.h"

#include "dialogs/velfindtimepersonlist.h"
#include "dialogs/velfindtimewidget.h"
#include "document/veldoc.h"
#include "document/velmessages.h"
#include "model/velnettask.h"
#include "model/velsettings.h"
#include "views/veldaypicker.h"
#include "views/veldayview.h"
#include "views/velmainview.h"
#include "widgets/wshowntext.h"

#include <KLocalizedString>

#include <QTimer>

#include <algorithm>
#include <iterator>

namespace
{
constexpr int DaysPerWeek = 7;
constexpr int StillTime = 200; // milliseconds, longer than a key that is held takes to repeat

constexpr int MostNames = 12; // in a sentence
constexpr int MostName = 60; // characters

/** Who of @p accounts, each named once, is among the @p busy; all of their time @p isKnown or not. */
QString busyText(const VelAccountList &accounts, std::set<quint32> busy, bool isKnown)
{
    QStringList names;
    int more = 0;
    for (const VelAccount &account : accounts) {
        if (busy.erase(account.id) == 0)
            continue;
        if (names.size() < MostNames)
            names.append(WShownText::cut(account.name, MostName));
        else
            ++more;
    }
    if (more > 0)
        names.append(i18np("one more", "%1 more", more));
    const QString unknown = isKnown ? QString() : i18n("Not all busy times are known yet.");
    if (names.isEmpty())
        return isKnown ? i18n("Nobody is known to be busy then.") : unknown;
    const QString told = i18nc("names follow", "Busy then: %1.", names.join(QLatin1String(", ")));
    return isKnown ? told : QString(told + QLatin1Char(' ') + unknown);
}

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
    , m_own(*m_app.document())
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
    m_own.reset(m_entry, yourself().id);
    m_widget->showStatus({});
    m_personList->setAccounts(accounts);
    slotDateChanged(getDate());
    requestRange();
    slotPersonListChanged();
}

void VelFindTimeDialog::setEntry(const VelEntry &entry)
{
    m_dayView->release(); // what it shows is gone in a moment
    m_own.reset(entry, yourself().id);
    const bool isMoved = entry.getStart() != m_entry.getStart() || entry.getEnd() != m_entry.getEnd();
    m_entry = entry;
    // Moved to what is proposed, the search goes on from there as the user has set it up.
    const bool isProposal = entry.getStart() == VelDateTime::fromQDateTime(m_widget->getStart())
        && entry.getEnd() == VelDateTime::fromQDateTime(m_widget->getEnd());
    if (isMoved && !isProposal)
        m_widget->setEntry(entry);
    m_dayView->updateView();
    showBusyThen();
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
    const VelEntryList entries = m_busy.getEntries(date, m_entry.globalid);
    showFetching();
    return m_own.mergedInto(entries, date);
}

VelEntryList VelFindTimeDialog::getKnownEntries(QDate date)
{
    const bool isRequested = m_busy.isRequested(date);
    return m_own.mergedInto(isRequested ? m_busy.getEntries(date, m_entry.globalid) : VelEntryList(), date);
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
    showBusyThen();
    Q_EMIT newAccounts();
}

/** The week is asked for again when somebody comes to it, not at once. */
void VelFindTimeDialog::slotFailed(int type, const QString &argument)
{
    if (type != VelNetTask::UserBusy || !m_busy.takeFailure(argument))
        return;
    m_widget->stop();
    showBusyThen();
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
    m_shown = {yourself()};
    const VelAccountList selected = m_personList->getSelected();
    std::copy_if(selected.begin(), selected.end(), std::back_inserter(m_shown),
                 [this](const VelAccount &account) { return account.id != m_own.owner(); });
    m_columns.clear();
    for (int column = 0; column < getVisibleCount(); ++column)
        m_columns[m_shown.at(column).id] = column;
    m_dayView->updateView();
}

/**
 * In a colleague's calendar the appointment is the colleague's, and so is the time. Without a number on the server it is
 * 0, which nobody else has a column for.
 */
VelAccount VelFindTimeDialog::yourself() const
{
    const quint32 user = m_app.document()->getUserId();
    const quint32 own = m_app.settings()->origUserid;
    const bool isOther = user != 0 && own != 0 && user != own;
    const QString name = isOther ? m_app.getAccountName(user) : i18nc("the user of the program", "Yourself");
    return {name.isEmpty() ? i18n("Owner of the calendar") : name, {}, user != 0 ? user : own};
}

QString VelFindTimeDialog::getColumnName(int column) const
{
    return WShownText::cut(m_shown.value(column).name);
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
    showBusyThen();
}

void VelFindTimeDialog::showBusyThen()
{
    const VelDateTime start = VelDateTime::fromQDateTime(m_widget->getStart());
    const VelDateTime end = VelDateTime::fromQDateTime(m_widget->getEnd());
    if (!start.isValid() || !end.isValid() || start.date().daysTo(end.date()) > VelFreeTimeSearch::LastDay) {
        m_widget->showBusy({});
        return;
    }
    VelAccountList accounts{yourself()};
    accounts += m_busy.accounts();
    std::set<quint32> busy;
    bool isKnown = true;
    for (QDate day = start.date(); day <= end.date(); day = day.addDays(1)) {
        isKnown = isKnown && m_busy.isAnswered(day);
        for (const VelEntryRef &ref : getKnownEntries(day)) {
            if (VelEntry::overlap(start, end, ref.getStart(), ref.getEnd()))
                busy.insert(ref.getOriginal()->user);
        }
    }
    m_widget->showBusy(busyText(accounts, busy, isKnown));
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
