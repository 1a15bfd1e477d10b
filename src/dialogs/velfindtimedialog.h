// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "dialogs/velbusytimes.h"
#include "dialogs/velfreetimesearch.h"
#include "dialogs/velownbusytimes.h"

#include <KConfigGroup>

#include <QDialog>

#include <map>
#include <set>

class QSplitter;
class QTimer;
class QTreeWidgetItem;
class VelDayPicker;
class VelDaySource;
class VelDayView;
class VelFindTimePersonList;
class VelFindTimeWidget;

/**
 * The meeting planner: shows week by week when those invited are busy, each in a column of their own, and finds the next
 * time at which all are free.
 *
 * The first column is that of the owner of the calendar, whose own entries tell when they are busy. What the others do is
 * fetched from the server as it is needed: at once for a search, and for the user when the days shown have stood still
 * for a moment. Boxes choose who of them has a column; the search goes by all.
 */
class VelFindTimeDialog : public QDialog, private VelFreeTimeSearch::Source
{
    Q_OBJECT
public:
    /** Stands in the window (VelApp) of @p parent. Sizes and splitters are kept in @p options. */
    VelFindTimeDialog(const VelEntry &entry, const KConfigGroup &options, QWidget *parent);
    ~VelFindTimeDialog() override;

    /** Those to plan for, whose busy times are then fetched anew. */
    void setAccounts(const VelAccountList &accounts);
    /** The entry to plan. What is proposed follows it when its times are others than they were. */
    void setEntry(const VelEntry &entry);
    [[nodiscard]] const VelEntry &getEntry() const { return m_entry; }

    void setDate(QDate date);
    [[nodiscard]] QDate getDate() const;
    void next() { moveTo(1); }
    void prev() { moveTo(-1); }
    /** By so many weeks. */
    void moveTo(int weeks);

    /** Asks for the week of @p date unless that was done; true when there was nothing to ask for. */
    bool requestEntries(QDate date);
    /** What takes time on @p date, the planned entry left out. Asks for the week when nobody has. */
    [[nodiscard]] VelEntryList getEntries(QDate date);
    /** What of that is there now. Asks for nothing. */
    [[nodiscard]] VelEntryList getKnownEntries(QDate date);
    /** A request has been sent and not been answered yet. */
    [[nodiscard]] bool isRetrieving() const { return m_busy.isRetrieving(); }
    /** The column of that account, or -1. */
    [[nodiscard]] int getColumn(quint32 account) const;
    [[nodiscard]] int getVisibleCount() const { return static_cast<int>(m_shown.size()); }
    /** The name of the account that has that column. */
    [[nodiscard]] QString getColumnName(int column) const;

public Q_SLOTS:
    void slotOk();
    void slotCancel();

Q_SIGNALS:
    /** Busy times have come. */
    void newAccounts();
    /** The user has taken the proposal. */
    void timeChosen(const QDateTime &start, const QDateTime &end);

protected:
    void reject() override { slotCancel(); }
    void done(int result) override;
    void showEvent(QShowEvent *event) override;

private:
    [[nodiscard]] bool isWorkingDay(QDate day) const override;
    [[nodiscard]] bool isWaiting(QDate day) const override;
    [[nodiscard]] VelEntryList getBusyEntries(QDate day) override { return getEntries(day); }
    void showDay(QDate day) override { setDate(day); }

    void makeLayout();
    void makeSides();
    void makeButtons();
    void makeConnections();
    void restoreOptions();
    void storeOptions();
    void slotDateChanged(QDate date);
    [[nodiscard]] bool isRangeRequested() const;
    void requestRange();
    void slotEntries(const VelReceivedEntries &entries, const QString &argument);
    void slotFailed(int type, const QString &argument);
    void slotPersonListChanged();
    void slotPropDateChanged();
    [[nodiscard]] VelAccount yourself() const;
    void showFetching();
    void showBusyThen();

    VelApp &m_app;
    VelEntry m_entry;
    KConfigGroup m_options;
    VelBusyTimes m_busy; // of those invited
    VelOwnBusyTimes m_own;
    VelAccountList m_shown; // those that have columns, in their order
    std::map<quint32, int> m_columns; // account to column
    bool m_wasShown = false;
    QTimer *m_still; // until the user is taken to stay where they are
    std::unique_ptr<VelDaySource> m_source; // this dialog, as the day view sees it

    QSplitter *m_splitter1 = nullptr; // the panel and the days, then the sides
    QSplitter *m_splitter2 = nullptr; // the day picker above the persons
    VelFindTimeWidget *m_widget = nullptr;
    VelDayView *m_dayView = nullptr;
    VelDayPicker *m_dayPicker = nullptr;
    VelFindTimePersonList *m_personList = nullptr;
};
