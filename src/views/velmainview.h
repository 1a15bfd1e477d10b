// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "views/velview.h"

#include <QList>

class KConfig;
class QSplitter;
class VelListView;

/**
 * What fills the window: the big view that the user chose, and beside it the compact to-do list.
 *
 * Only views that are seen are registered with the document. Every change of date goes through setDate().
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

    /** True for the views that there are. */
    [[nodiscard]] bool hasView(int type) const { return viewOf(type) != nullptr; }
    void setMainView(int type);
    /**
     * @p size is the number of days of the day view: 1, 5 or 7. A view that is not there gives way to the
     * list.
     */
    void setMainView(int type, int size);
    [[nodiscard]] int viewType() const { return m_viewType; }
    [[nodiscard]] int viewSize() const { return m_viewSize; }

    [[nodiscard]] QDate getDate() const { return m_date; }
    void setDate(QDate date);
    void next() { move(1); }
    void prev() { move(-1); }
    /** Moves by whole ranges of the view: days, weeks or months; a list stays. */
    void move(int steps);

    /** The big view that is shown. */
    [[nodiscard]] VelView *getCurrentView() const;
    [[nodiscard]] VelListView *listView() const { return m_listView; }
    [[nodiscard]] VelListView *smallList() const { return m_smallList; }

    [[nodiscard]] QList<int> getSplitter1Sizes() const;
    [[nodiscard]] QList<int> getSplitter2Sizes() const;
    void writeConfig(KConfig *config) const;

private:
    [[nodiscard]] VelView *viewOf(int type) const;
    void buildSplitters(const QList<int> &splitter1, const QList<int> &splitter2);
    void slotDateChanged(QDate date);
    void showOnly(int type);

    QSplitter *m_splitter1;
    QSplitter *m_splitter2;
    VelListView *m_listView;
    VelListView *m_smallList;
    QDate m_date;
    int m_viewType = NoView;
    int m_wantedType = DayView; // what was asked for, also while that view is not there
    int m_viewSize = WorkWeek;
};
