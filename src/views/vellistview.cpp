// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "views/vellistview.h"

#include "document/veldoc.h"
#include "document/veldrag.h"
#include "document/velpaste.h"
#include "document/velstep.h"
#include "hub/velapp.h"
#include "model/veltext.h"
#include "views/vellistprintout.h"
#include "views/vellistviewwidget.h"
#include "widgets/wtable.h"

#include <KConfig>
#include <KConfigGroup>
#include <KLocalizedString>

#include <QDragEnterEvent>
#include <QMenu>
#include <QScopedValueRollback>
#include <QStatusBar>
#include <QVBoxLayout>

namespace
{
constexpr int NoticeTime = 8000; // milliseconds

/** What a row leads back to: ids stay true when the document changes, pointers need not. */
void *keyOf(quint32 localid, quint32 number)
{
    static_assert(sizeof(quintptr) >= sizeof(quint64), "a row's key holds two ids");
    const quint64 key = (quint64(localid) << 32) | number;
    return reinterpret_cast<void *>(static_cast<quintptr>(key)); // NOLINT(performance-no-int-to-ptr)
}

void *keyOf(const VelEntry *entry)
{
    return entry->isOccurrence() ? keyOf(entry->originalid, entry->localid) : keyOf(entry->localid, 0);
}

const VelEntry *entryOf(const VelDoc &doc, const void *key)
{
    const auto ids = static_cast<quint64>(reinterpret_cast<quintptr>(key));
    const VelEntry *entry = doc.getEntry(static_cast<quint32>(ids >> 32));
    const auto number = static_cast<quint32>(ids);
    return entry && number != 0 ? entry->getOccurrence(number) : entry;
}

VelListColumn shown(const QString &header, const QString &menuName)
{
    return {header, menuName, true};
}

VelListColumn hidden(const QString &header, const QString &menuName)
{
    return {header, menuName, false};
}
} // namespace

VelListView::VelListView(QWidget *parent, Kind kind, QDate today)
    : VelView(parent)
    , m_kind(kind)
    , m_table(new WTable(this))
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    if (kind == Kind::Entries) {
        m_filterBar = new VelListViewWidget(today, this);
        layout->addWidget(m_filterBar);
        connect(m_filterBar, &VelListViewWidget::dateChanged, this, &VelListView::updateView);
    }
    layout->addWidget(m_table);
    setFocusProxy(m_table);
    setAcceptDrops(true);

    m_table->setAccessibleName(kind == Kind::Entries ? i18n("Calendar entries") : i18n("To-do tasks"));
    m_table->setDateFormatter([](const QDate &date) { return VelText::getDay(date); });
    m_table->setDateTimeFormatter(
        [](const QDateTime &time) { return VelText::getDateTime(VelDateTime::fromQDateTime(time)); });
    connect(m_table, &WTable::rowClicked, this, &VelListView::slotSelectionChanged);
    connect(m_table->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &VelListView::slotSelectionChanged);
    m_table->setRowsDraggable(true);
    connect(m_table, &WTable::rowDoubleClicked, this, [this](int row) { edit(getEntry(row)); });
    connect(m_table, &WTable::rowActivated, this, [this](int row) { edit(getEntry(row)); });
    connect(m_table, &WTable::rowDragged, this, &VelListView::slotRowDragged);
    connect(m_table, &WTable::valueChanged, this, &VelListView::slotValueChanged);
    connect(m_table, &WTable::contextMenuRequested, this,
            [this](int row, int, const QPoint &globalPos) { slotPopup(row, globalPos); });
}

std::vector<VelListColumn> VelListView::columns(Kind kind)
{
    // A menu shows "&&" as a single ampersand.
    if (kind == Kind::Entries) {
        return {shown(i18n("Start"), i18n("Start date && time")),
                hidden(i18n("Start"), i18n("Start date")),
                shown(i18n("End"), i18n("End date && time")),
                hidden(i18n("End"), i18n("End date")),
                shown(i18n("Title"), i18n("Title")),
                shown(i18n("Reminder"), i18n("Reminder"))};
    }
    return {hidden(i18n("Start"), i18n("Start date && time")),
            hidden(i18n("Start"), i18n("Start date")),
            hidden(i18n("Due"), i18n("Due date && time")),
            shown(i18n("Due"), i18n("Due date")),
            shown(i18n("Title"), i18n("Title")),
            shown(i18n("Com"), i18n("Complete")),
            shown(i18n("Pri"), i18n("Priority")),
            hidden(i18n("Reminder"), i18n("Reminder"))};
}

void VelListView::readConfig(const KConfig *config, const QString &name)
{
    QStringList headers;
    QStringList menuNames;
    QList<bool> actives;
    for (const VelListColumn &column : columns(m_kind)) {
        headers.append(column.header);
        menuNames.append(column.menuName);
        actives.append(column.shownByDefault);
    }
    m_table->setSorting(true);
    m_table->setStretchColumn(TitleColumn);
    m_table->readConfig(config, name, headers, actives, menuNames);
    const KConfigGroup saved = config->group(QLatin1String("WTable_") + name);
    if (m_kind == Kind::Tasks && !saved.hasKey("SortColumn"))
        m_table->sortBy(EndDateColumn);
}

void VelListView::writeConfig(KConfig *config, const QString &name) const
{
    m_table->writeConfig(config, name);
}

void VelListView::setFilter(QDate date)
{
    if (!m_filterBar)
        return;
    m_filterBar->setFilter(date);
    updateView();
}

VelEntryList VelListView::wantedEntries() const
{
    const VelDoc *doc = document();
    if (m_kind == Kind::Tasks)
        return doc->getEntries(QDate(), VelEntry::Todo, false, QDate());
    VelEntryList list = doc->getEntries(m_filterBar->getStart(), 0, true, m_filterBar->getEnd());
    // Notices of deletion are for the server only.
    std::erase_if(list, [](const VelEntryRef &ref) { return ref.getOriginal()->isDeleted(); });
    return list;
}

void VelListView::updateView()
{
    if (m_kind == Kind::Tasks) {
        // Most changes are about events, and there may be many thousands of tasks.
        if (m_shownRevision == document()->getTodoRevision())
            return;
        m_shownRevision = document()->getTodoRevision();
    }
    const QScopedValueRollback<bool> guard(m_isFilling, true);
    const VelEntryList list = wantedEntries();
    m_table->beginFill(static_cast<int>(list.size()));
    for (const VelEntryRef &ref : list)
        addRow(ref);
    m_table->endFill();
    m_table->setActives();
    if (!m_table->userWidths())
        m_table->adjustAll();
    showSelectedEntry();
}

/** The table's current row is that of the selected entry; what is not listed is not selected either. */
void VelListView::showSelectedEntry()
{
    const VelEntry *entry = getSelectedEntry();
    const int row = entry ? m_table->rowOfKey(keyOf(entry)) : -1;
    if (row < 0) {
        clearSelectedEntry(false);
        m_table->setCurrentIndex(QModelIndex());
    } else if (row != m_table->currentRow()) {
        m_table->selectRow(row);
    }
}

/** When the entry is not timed, its date alone: a moment at midnight would say what nobody meant. */
WTableItem VelListView::momentCell(const VelEntry &entry, const VelDateTime &moment)
{
    if (entry.notime)
        return WDateTableItem(moment.date());
    return WDateTimeTableItem(moment.toQDateTime());
}

void VelListView::addRow(const VelEntryRef &ref)
{
    const VelEntry *entry = ref.getOriginal();
    const VelDateTime start = ref.getStart();
    const VelDateTime end = ref.getEnd();
    const QString reminder = VelReminder::toString(entry->reminder);
    std::vector<WTableItem> cells;
    cells.reserve(TaskReminderColumn + 1);
    cells.push_back(momentCell(*entry, start));
    cells.emplace_back(WDateTableItem(start.date()));
    cells.push_back(momentCell(*entry, end));
    cells.emplace_back(WDateTableItem(end.date()));
    cells.emplace_back(WKeyTableItem(entry->getTitle(), keyOf(entry->localid, ref.getNumber())));
    if (m_kind == Kind::Tasks) {
        cells.emplace_back(WCheckTableItem{entry->complete});
        cells.emplace_back(entry->priority);
    }
    cells.emplace_back(reminder);
    m_table->addRow(std::move(cells));
}

const VelEntry *VelListView::getEntry(int row) const
{
    if (row < 0) {
        qWarning("ASSERT: \"%s\" in %s (%d)", "row>=0", "vellistview", 135);
        return nullptr;
    }
    const void *key = m_table->keyOfRow(row);
    if (!key) {
        qWarning("ASSERT: \"%s\" in %s (%d)", "kitem", "vellistview", 137);
        return nullptr;
    }
    return entryOf(*document(), key);
}

/** Not the current row: the toolkit has one that nothing shows. */
void VelListView::slotSelectionChanged()
{
    if (m_isFilling)
        return;
    const QModelIndexList rows = m_table->selectionModel()->selectedRows();
    const VelEntry *entry = rows.isEmpty() ? nullptr : getEntry(rows.first().row());
    if (entry)
        setSelectedEntry(entry, true);
    else
        clearSelectedEntry(true);
}

void VelListView::slotValueChanged(int row, int column)
{
    if (m_kind != Kind::Tasks || row < 0 || column != m_table->getDispColumn(CompleteColumn))
        return;
    const VelEntry *entry = getEntry(row);
    const auto *box = std::get_if<WCheckTableItem>(m_table->item(row, CompleteColumn));
    if (!entry || !box)
        return;
    if (!mayChange(entry)) {
        m_table->setChecked(row, CompleteColumn, entry->complete);
        return;
    }
    {
        const VelStepScope scope(document(),
                                 box->checked ? i18nc("what was done", "Complete")
                                              : i18nc("what was done", "Not Complete"));
        document()->changeEntry(entry->localid, [complete = box->checked](VelEntry &changed) {
            changed.complete = complete;
            changed.uDirty(1);
        });
    }
    document()->slotUpdateAllViews(this);
}

QMenu *VelListView::taskMenu()
{
    if (m_menu)
        return m_menu;
    m_menu = new QMenu(this);
    const VelApp *app = VelApp::getApp(this);
    const auto addItem = [this](const char *icon, const QString &text) {
        return m_menu->addAction(VelApp::getIcon(QLatin1String(icon)), text);
    };
    m_editAction = addItem("edit", i18n("Edit Task"));
    connect(m_editAction, &QAction::triggered, this, &VelListView::slotEdit);
    m_viewAction = addItem("info", i18n("View Task"));
    connect(m_viewAction, &QAction::triggered, this, &VelListView::slotView);
    m_deleteAction = addItem("editdelete", i18n("Delete Task"));
    connect(m_deleteAction, &QAction::triggered, this, &VelListView::slotDelete);
    m_printAction = addItem("fileprint", i18n("Print Task"));
    connect(m_printAction, &QAction::triggered, this, [this] { printEntry(menuEntry()); });
    connect(addItem("fileprint", i18n("Print To-Do List")), &QAction::triggered, this,
            &VelListView::slotPrint);
    m_menu->addSeparator();
    for (const char *name : {"new_todo", "purge_todo"})
        m_menu->addAction(app->getAction(QLatin1String(name)));
    return m_menu;
}

void VelListView::slotPopup(int row, const QPoint &globalPos)
{
    QMenu *menu = taskMenu();
    // By its key: the rows may be others by the time an item is chosen.
    m_menuKey = row >= 0 ? m_table->keyOfRow(row) : nullptr;
    m_editAction->setEnabled(mayChange(menuEntry()));
    m_deleteAction->setEnabled(mayChange(menuEntry()));
    m_printAction->setEnabled(menuEntry() != nullptr);
    m_viewAction->setEnabled(menuEntry() != nullptr);
    menu->popup(globalPos);
}

const VelEntry *VelListView::menuEntry() const
{
    return m_menuKey ? entryOf(*document(), m_menuKey) : nullptr;
}

QString VelListView::cellText(int row, int column) const
{
    const WTableItem *cell = m_table->item(row, column);
    const auto *box = cell ? std::get_if<WCheckTableItem>(cell) : nullptr;
    if (box)
        return box->checked ? i18nc("in a printed list, of a task that is done", "Yes") : QString();
    const bool hasPriority =
        !(m_kind == Kind::Tasks && column == PriorityColumn && cell && *std::get_if<int>(cell) == 0);
    return cell && hasPriority ? m_table->tableModel()->text(*cell).simplified() : QString();
}

std::unique_ptr<VelPrintout> VelListView::makePrintout() const
{
    const QList<int> shown = m_table->shownColumns();
    const QStringList headers = m_table->tableModel()->headers();
    std::vector<VelListPrintout::Column> printed;
    for (const int column : shown)
        printed.push_back({headers.at(column), Qt::AlignLeft, column == TitleColumn});
    // A copy: the table may be filled anew while the user still looks at the pages.
    std::vector<QStringList> rows(std::size_t(m_table->rowCount()));
    for (int row = 0; row < m_table->rowCount(); ++row) {
        for (const int column : shown)
            rows[std::size_t(row)].append(cellText(row, column));
    }
    const int count = int(rows.size());
    const QString title = m_kind == Kind::Tasks
        ? i18n("To-Do List")
        : i18nc("title of a printed list: from a date to a date", "Calendar entries %1 – %2",
                VelText::getDay(m_filterBar->getStart()), VelText::getDay(m_filterBar->getEnd()));
    return std::make_unique<VelListPrintout>(
        title, std::move(printed), count,
        [rows = std::move(rows)](int row) { return rows[std::size_t(row)]; });
}

void VelListView::slotEdit()
{
    edit(menuEntry());
}

/** A repeating entry is edited as a whole. */
void VelListView::edit(const VelEntry *entry)
{
    const VelEntry *original = entry ? document()->getOriginalEntry(entry) : nullptr;
    if (original)
        VelApp::getApp(this)->showEntryDialog(*original, false);
}

void VelListView::slotView()
{
    if (const VelEntry *entry = menuEntry())
        VelApp::getApp(this)->showEntryInfo(*entry, VelAnswer::Plain);
}

void VelListView::slotPrint()
{
    const std::unique_ptr<VelPrintout> printout = makePrintout();
    VelApp::getApp(this)->printOut(*printout);
}

/** At once and for good, without a question and without a notice to the server: that is the menu's own way. */
void VelListView::slotDelete()
{
    const VelEntry *entry = menuEntry();
    if (!mayChange(entry))
        return;
    if (isSelectedEntry(entry))
        clearSelectedEntry(false);
    const QString title = entry->getTitle();
    {
        const VelStepScope scope(document(), i18nc("what was done", "Delete"));
        document()->deleteEntry(document()->getOriginalEntry(entry), true);
    }
    document()->slotUpdateAllViews(nullptr);
    VelApp::getApp(this)->statusBar()->showMessage(
        i18n("The task \"%1\" has been deleted. Undo brings it back.", title), NoticeTime);
}

void VelListView::slotRowDragged(int row)
{
    const VelEntry *entry = getEntry(row);
    if (mayMove(entry))
        dragEntry(entry);
}

/** What comes from outside; a list has no place to which the window's own entries could be moved. */
bool VelListView::mayTake(const QDropEvent *event) const
{
    return VelApp::getApp(this)->getDraggedEntry() == 0 && mayDrop(event);
}

void VelListView::dragEnterEvent(QDragEnterEvent *event)
{
    event->setAccepted(mayTake(event));
}

void VelListView::dragMoveEvent(QDragMoveEvent *event)
{
    event->setAccepted(mayTake(event));
}

void VelListView::dropEvent(QDropEvent *event)
{
    std::vector<std::unique_ptr<VelEntry>> entries;
    if (mayTake(event))
        entries = VelDrag::decodeAll(event->mimeData());
    event->setAccepted(!entries.empty());
    if (entries.empty())
        return;
    {
        const VelStepScope scope(document(), i18nc("what was done", "Drop"));
        const bool isFile = entries.size() > 1;
        for (auto &entry : entries) {
            if (isFile)
                VelPaste::addImported(*document(), std::move(entry));
            else
                VelPaste::addCopy(*document(), std::move(entry));
        }
    }
    document()->slotUpdateAllViews(nullptr);
}
