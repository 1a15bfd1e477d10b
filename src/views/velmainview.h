// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "views/velview.h"

#include <QList>
#include <QTimer>

#include <memory>

class KConfig;
class QSplitter;
class VelDayPicker;
class VelDayView;
class VelDocSource;
class VelListView;
class VelMonthView;
class VelSettings;

/**
 * What fills the window: the big view that the user chose, and beside it the day picker above the compact to-do list.
 *
 * Only views that are seen are registered with the document. Every change of date goes through the day picker.
 */
class VelMainView : public QWidget
{
    Q_OBJECT
public:
    enum ViewType { NoView = -1, DayView = 0, MonthView = 1, ListView = 2 };
    /** A day view of this many days is the working week, whatever days the preferences say that is. */
    static constexpr int WorkWeek = 5;

    /**
     * @p splitter1 and @p splitter2 are sizes saved earlier, in pixels; empty for the usual ones. @p config
     * says which view to begin with and how the lists are arranged.
     */
    VelMainView(QWidget *parent, const KConfig *config, const QList<int> &splitter1,
                const QList<int> &splitter2);
    ~VelMainView() override;

    void setMainView(int type);
    /** @p size is the number of days of the day view: 1, 5 or 7. Other numbers stand for the usual ones. */
    void setMainView(int type, int size);
    [[nodiscard]] int viewType() const { return m_viewType; }
    [[nodiscard]] int viewSize() const { return m_viewSize; }

    [[nodiscard]] QDate getDate() const;
    void setDate(QDate date);
    /**
     * The working days of the week that @p date lies in: moves it to the first of them and returns how many there are
     * from there to the last.
     */
    static int getWorkWeek(const VelSettings &settings, QDate &date);
    /** The first day of the week that @p date lies in, in the user's locale. */
    [[nodiscard]] static QDate weekStart(QDate date);
    void next() { move(1); }
    void prev() { move(-1); }
    /** Moves by whole ranges of the view: days, weeks or months; a list stays. */
    void move(int steps);

    /** Takes in the title of a new event that is being typed. */
    void finishInput();
    /** True while somebody types into a view. */
    [[nodiscard]] bool hasInput() const;
    /** The big view that is shown. */
    [[nodiscard]] VelView *getCurrentView() const;
    /** The one whose entry Cut, Copy, Delete, Edit and View act on: the to-do list while it has the keyboard, else the big view. */
    [[nodiscard]] VelView *getCommandView() const;
    [[nodiscard]] VelDayView *dayView() const { return m_dayView; }
    [[nodiscard]] VelMonthView *monthView() const { return m_monthView; }
    [[nodiscard]] VelDayPicker *dayPicker() const { return m_dayPicker; }
    [[nodiscard]] VelListView *listView() const { return m_listView; }
    [[nodiscard]] VelListView *smallList() const { return m_smallList; }

    [[nodiscard]] QList<int> getSplitter1Sizes() const;
    [[nodiscard]] QList<int> getSplitter2Sizes() const;
    void writeConfig(KConfig *config) const;
    /** Takes the colours and fonts of the preferences. */
    void updateColors();

Q_SIGNALS:
    /** getCommandView() is another one. */
    void commandViewChanged();

protected:
    bool event(QEvent *event) override;

private:
    [[nodiscard]] VelView *viewOf(int type) const;
    void connectViews();
    void buildSplitters(const QList<int> &splitter1, const QList<int> &splitter2);
    void slotDateChanged(QDate date);
    void showOnly(int type);
    void slotFocusChanged(QWidget *old, QWidget *now);
    void tick();

    std::unique_ptr<VelDocSource> m_source;
    QSplitter *m_splitter1;
    QSplitter *m_splitter2;
    VelDayView *m_dayView;
    VelMonthView *m_monthView;
    VelListView *m_listView;
    VelDayPicker *m_dayPicker;
    VelListView *m_smallList;
    QTimer m_minuteTimer;
    QDate m_today;
    int m_viewType = NoView;
    int m_viewSize = WorkWeek;
    bool m_isInTasks = false; // the keyboard, or it was before it went to a menu or another window
};
