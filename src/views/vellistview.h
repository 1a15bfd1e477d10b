// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "model/velentrylist.h"
#include "views/velview.h"
#include "widgets/wtableitem.h"

#include <QStringList>

#include <vector>

class KConfig;
class QMenu;
class VelListViewWidget;
class WTable;

/** One column of a list, as the table's configuration wants it. */
struct VelListColumn {
    QString header;
    QString menuName;
    bool shownByDefault;
};

/** Entries as the rows of a table that the user sorts and arranges. */
class VelListView : public VelView
{
    Q_OBJECT
public:
    enum class Kind {
        Entries = 1, ///< the big list: all entries between two dates
        Tasks = 2 ///< the compact list: the to-do tasks, with a box to tick
    };
    /** Logical columns, up to the title the same in both kinds. */
    enum Column {
        StartColumn = 0,
        StartDateColumn = 1,
        EndColumn = 2,
        EndDateColumn = 3,
        TitleColumn = 4,
        ReminderColumn = 5,
        CompleteColumn = 5,
        PriorityColumn = 6,
        TaskReminderColumn = 7
    };

    VelListView(QWidget *parent, Kind kind, QDate today);

    /** The columns of that kind, by logical column. */
    [[nodiscard]] static std::vector<VelListColumn> columns(Kind kind);

    /** Arranges the table as it was saved under @p name. */
    void readConfig(const KConfig *config, const QString &name);
    void writeConfig(KConfig *config, const QString &name) const;

    /** Moves the big list's range of dates to start at @p date. */
    void setFilter(QDate date);
    void updateView() override;
    /** Nothing: a row looks the same whether its entry is selected or not. */
    void updateAllEntries(const VelEntry *) override { }
    /** The table as it is shown: its columns in their order, its rows as they are sorted. */
    [[nodiscard]] std::unique_ptr<VelPrintout> makePrintout() const override;

    /** The entry or occurrence in that row, or null. */
    [[nodiscard]] const VelEntry *getEntry(int row) const;
    [[nodiscard]] WTable *table() const { return m_table; }
    [[nodiscard]] VelListViewWidget *filterBar() const { return m_filterBar; }
    [[nodiscard]] Kind kind() const { return m_kind; }

protected:
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    [[nodiscard]] VelEntryList wantedEntries() const;
    void addRow(const VelEntryRef &ref);
    [[nodiscard]] static WTableItem momentCell(const VelEntry &entry, const VelDateTime &moment);
    void showSelectedEntry();
    void slotSelectionChanged();
    void slotValueChanged(int row, int column);
    void slotPopup(int row, const QPoint &globalPos);
    void slotDelete();
    void slotEdit();
    void edit(const VelEntry *entry);
    void slotView();
    void slotPrint();
    [[nodiscard]] QString cellText(int row, int column) const;
    [[nodiscard]] const VelEntry *menuEntry() const;
    void slotRowDragged(int row);
    [[nodiscard]] bool mayTake(const QDropEvent *event) const;
    QMenu *taskMenu();

    Kind m_kind;
    WTable *m_table;
    VelListViewWidget *m_filterBar = nullptr;
    QMenu *m_menu = nullptr;
    QAction *m_editAction = nullptr;
    QAction *m_deleteAction = nullptr;
    QAction *m_printAction = nullptr;
    QAction *m_viewAction = nullptr;
    const void *m_menuKey = nullptr; // of the row that the menu was opened on
    quint64 m_shownRevision = 0; // of the to-dos that are listed
    bool m_isFilling = false; // the current row changes, but not by the user's hand
};
