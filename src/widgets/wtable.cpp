// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "widgets/wtable.h"

#include "widgets/wtablearrangement.h"
#include "widgets/wtableheader.h"

#include <KConfig>
#include <KConfigGroup>

#include <QFile>
#include <QMenu>
#include <QScopedValueRollback>

#include <algorithm>

namespace
{
/** Rows that are measured to fit a column: more would not be seen together and cost time in long lists. */
constexpr int MeasuredRows = 200;
/** Average characters; wider columns push the others off the screen. */
constexpr int MaximumFittedChars = 60;
/** Pixels; a width beyond this in a configuration is a mistake. */
constexpr int MaximumWidth = 10000;

/**
 * Warns of what the owner or a configuration got wrong. Reports are searched for by the line numbers, so they
 * stay as they are when the code moves.
 */
void check(bool condition, const char *text, int line)
{
    if (!condition) {
        qWarning("ASSERT: \"%s\" in %s (%d)", text, "wtable", line);
    }
}

QIcon sortIcon(const QString &name, const QStyle *style, QStyle::StandardPixmap fallback)
{
    const QString file = QStringLiteral(":/icons/delmasttime/%1.svg").arg(name);
    return QFile::exists(file) ? QIcon(file) : style->standardIcon(fallback);
}
} // namespace

WTable::WTable(QWidget *parent)
    : WRowTable(parent)
    , m_header(new WTableHeader(this))
    , m_sortDown(sortIcon(QStringLiteral("w_sortdown"), style(), QStyle::SP_ArrowDown))
    , m_sortUp(sortIcon(QStringLiteral("w_sortup"), style(), QStyle::SP_ArrowUp))
{
    initHeader();
}

WTable::WTable(int rows, int columns, QWidget *parent)
    : WTable(parent)
{
    QStringList headers;
    QList<bool> actives;
    for (int column = 0; column < columns; ++column) {
        headers.append(QString());
        actives.append(true);
    }
    setColumns(headers, actives);
    beginFill(rows);
    for (int row = 0; row < rows; ++row) {
        addRow({});
    }
    endFill();
}

WTable::~WTable() = default;

void WTable::initHeader()
{
    setHorizontalHeader(m_header);
    m_header->setResizeContentsPrecision(MeasuredRows);
    connect(m_header, &QHeaderView::sectionClicked, this, &WTable::columnClicked);
    connect(m_header, &QHeaderView::sectionResized, this, &WTable::slotSizeChange);
    connect(m_header, &QHeaderView::sectionMoved, this, &WTable::rebuildMenu);
    connect(m_header, &WTableHeader::menuRequested, this, &WTable::openColumnMenu);
}

void WTable::setColumns(const QStringList &headers, const QList<bool> &actives, const QStringList &menuNames,
                        const QList<int> &widths)
{
    const QScopedValueRollback<bool> guard(m_ownResize, true);
    check(headers.count() == actives.count(), "t.count()==a.count()", 87);
    m_colActives = actives.mid(0, headers.count());
    while (m_colActives.count() < headers.count()) {
        m_colActives.append(true);
    }
    if (!m_colActives.contains(true) && !m_colActives.isEmpty()) {
        m_colActives[0] = true;
    }
    check(menuNames.isEmpty() || menuNames.count() == headers.count(), "n.count()==t.count()", 91);
    m_menuNames = menuNames.mid(0, headers.count()) + headers.mid(menuNames.count());
    tableModel()->setHeaders(headers);
    if (!m_columnMenu) {
        m_columnMenu = new QMenu(this);
    }
    for (int column = 0; column < columns(); ++column) {
        m_header->showSection(column);
    }
    rebuildMenu();
    setWidths(widths);
    setActives();
}

void WTable::setWidths(const QList<int> &widths)
{
    check(widths.isEmpty() || widths.count() == columns(), "w.count()==t.count()", 108);
    m_userWidths = m_userWidths || !widths.isEmpty();
    m_savedWidths = widths.mid(0, columns());
    for (int &width : m_savedWidths) {
        // What is no width is fitted when the column is shown.
        width = width <= 0 ? 0 : qBound(m_header->minimumSectionSize(), width, MaximumWidth);
    }
    while (m_savedWidths.count() < columns()) {
        m_savedWidths.append(0);
    }
    for (int column = 0; column < columns(); ++column) {
        if (m_savedWidths.at(column) > 0) {
            m_header->resizeSection(column, m_savedWidths.at(column));
        } else {
            fitColumn(column);
        }
    }
}

void WTable::readConfig(const KConfig *config, const QString &name, const QStringList &headers,
                        const QList<bool> &actives, const QStringList &menuNames)
{
    const WTableArrangement saved =
        WTableArrangement::read(config->group(QLatin1String("WTable_") + name), int(headers.count()));
    QList<bool> shown;
    for (const int active : saved.actives) {
        shown.append(active != 0);
    }
    // A table with nothing to see cannot have been saved by its user.
    setColumns(headers, shown.isEmpty() || !shown.contains(true) ? actives : shown, menuNames, saved.widths);
    m_sortColumn = saved.sortColumn;
    m_ascending = saved.ascending;
    setPositions(saved.positions);
}

void WTable::writeConfig(KConfig *config, const QString &name) const
{
    WTableArrangement arrangement;
    arrangement.actives = colActivesInt();
    if (m_userWidths) {
        arrangement.widths = colWidths();
    }
    for (int column = 0; column < columns(); ++column) {
        arrangement.positions.append(getDispColumn(column));
    }
    arrangement.sortColumn = m_sortColumn;
    arrangement.ascending = m_ascending;
    KConfigGroup group = config->group(QLatin1String("WTable_") + name);
    arrangement.write(group);
}

void WTable::setPositions(const QList<int> &positions)
{
    for (int display = 0; display < positions.count(); ++display) {
        const int current = getDispColumn(int(positions.indexOf(display)));
        if (current != display) {
            swapColumns(current, display, true);
        }
    }
}

void WTable::endFill()
{
    finishFill(m_sortingEnabled ? m_sortColumn : -1, sortOrder());
    showSortIcon();
}

void WTable::sortBy(int column)
{
    if (!m_sortingEnabled || column >= columns()) {
        return;
    }
    if (column >= 0) {
        m_ascending = column != m_sortColumn || !m_ascending;
        m_sortColumn = column;
    }
    resort();
}

void WTable::resort()
{
    const bool keepInView = isRowInView(currentRow());
    tableModel()->sort(m_sortColumn, sortOrder());
    showSortIcon();
    if (keepInView) {
        scrollTo(currentIndex());
    }
}

void WTable::setSortIcons(const QIcon &down, const QIcon &up)
{
    m_sortDown = down;
    m_sortUp = up;
    showSortIcon();
}

void WTable::showSortIcon()
{
    if (m_sortingEnabled) {
        tableModel()->setHeaderIcon(m_sortColumn, m_ascending ? m_sortDown : m_sortUp);
    }
}

Qt::SortOrder WTable::sortOrder() const
{
    return m_ascending ? Qt::AscendingOrder : Qt::DescendingOrder;
}

void WTable::setActives()
{
    const QScopedValueRollback<bool> guard(m_ownResize, true);
    for (int column = 0; column < columns(); ++column) {
        if (m_colActives.at(column)) {
            showColumn(column);
        } else {
            hideColumn(column);
        }
    }
}

QList<int> WTable::colActivesInt() const
{
    QList<int> result;
    for (const bool active : m_colActives) {
        result.append(active ? 1 : 0);
    }
    return result;
}

QList<int> WTable::colWidths() const
{
    QList<int> result;
    for (int column = 0; column < columns(); ++column) {
        result.append(m_header->isSectionHidden(column) ? m_savedWidths.at(column)
                                                        : m_header->sectionSize(column));
    }
    return result;
}

void WTable::adjustAll()
{
    for (int column = 0; column < columns(); ++column) {
        if (!m_header->isSectionHidden(column)) {
            fitColumn(column);
        }
    }
    stretch();
}

void WTable::stretch()
{
    if (m_userWidths || !isColumn(m_stretchColumn) || m_header->isSectionHidden(m_stretchColumn)) {
        return;
    }
    const QScopedValueRollback<bool> guard(m_ownResize, true);
    const int others = m_header->length() - m_header->sectionSize(m_stretchColumn);
    const int least = m_header->sectionSizeHint(m_stretchColumn);
    m_header->resizeSection(m_stretchColumn, qMax(least, viewport()->width() - others));
}

void WTable::resizeEvent(QResizeEvent *event)
{
    WRowTable::resizeEvent(event);
    stretch();
}

void WTable::fitColumn(int column)
{
    const QScopedValueRollback<bool> guard(m_ownResize, true);
    m_header->resizeSection(column, fittingWidth(column));
}

int WTable::fittingWidth(int column) const
{
    int header = m_header->sectionSizeHint(column);
    if (column != m_sortColumn || !m_sortingEnabled) {
        // The sort icon comes with a click; the header text shall still fit then.
        header += style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, m_header)
            + style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, m_header);
    }
    const int limit = MaximumFittedChars * fontMetrics().averageCharWidth();
    return qMax(header, qMin(limit, sizeHintForColumn(column)));
}

bool WTable::isLastShown(int column) const
{
    return m_colActives.at(column) && m_colActives.count(true) == 1;
}

void WTable::hideColumn(int column)
{
    if (!isColumn(column) || isLastShown(column) || m_header->isSectionHidden(column)) {
        return;
    }
    const QScopedValueRollback<bool> guard(m_ownResize, true);
    m_colActives[column] = false;
    m_savedWidths[column] = m_header->sectionSize(column);
    m_header->hideSection(column);
    updateMenu();
}

void WTable::showColumn(int column)
{
    if (!isColumn(column) || !m_header->isSectionHidden(column)) {
        return;
    }
    const QScopedValueRollback<bool> guard(m_ownResize, true);
    m_colActives[column] = true;
    m_header->showSection(column);
    if (m_savedWidths.at(column) > 0) {
        m_header->resizeSection(column, m_savedWidths.at(column));
    } else {
        fitColumn(column);
    }
    updateMenu();
}

void WTable::swapColumns(int display1, int display2, bool swapHeaders)
{
    const int column1 = getOrigColumn(display1);
    const int column2 = getOrigColumn(display2);
    if (column1 < 0 || column2 < 0) {
        return;
    }
    m_header->swapSections(display1, display2);
    if (!swapHeaders) {
        QStringList headers = tableModel()->headers();
        std::swap(headers[column1], headers[column2]);
        tableModel()->setHeaders(headers);
    }
}

int WTable::getOrigColumn(int display) const
{
    return m_header->logicalIndex(display);
}

QList<int> WTable::shownColumns() const
{
    QList<int> shown;
    for (int display = 0; display < columns(); ++display) {
        const int column = getOrigColumn(display);
        if (isColumn(column) && m_colActives.at(column)) {
            shown.append(column);
        }
    }
    return shown;
}

int WTable::getDispColumn(int column) const
{
    return m_header->visualIndex(column);
}

QString WTable::pad(const QString &text) const
{
    return wPad(text);
}

void WTable::rebuildMenu()
{
    if (!m_columnMenu) {
        return;
    }
    m_columnMenu->clear();
    for (int display = 0; display < columns(); ++display) {
        const int column = getOrigColumn(display);
        QAction *action = m_columnMenu->addAction(m_menuNames.at(column));
        action->setCheckable(true);
        action->setData(column);
        connect(action, &QAction::triggered, this, [this, column] { columnDisplayChange(column); });
    }
    updateMenu();
}

void WTable::updateMenu()
{
    const QList<QAction *> items = m_columnMenu->actions();
    for (QAction *item : items) {
        const int column = item->data().toInt();
        item->setChecked(m_colActives.at(column));
        // Without any column there would be no header to bring one back from.
        item->setEnabled(!isLastShown(column));
    }
}

void WTable::openColumnMenu(const QPoint &globalPos)
{
    if (columns() > 0) {
        m_columnMenu->popup(globalPos);
    }
}

void WTable::columnDisplayChange(int id)
{
    check(isColumn(id), "(unsigned int)col<colactives.count()", 158);
    if (!isColumn(id)) {
        return;
    }
    if (m_colActives.at(id)) {
        hideColumn(id);
    } else {
        showColumn(id);
    }
    stretch();
}

void WTable::slotSizeChange(int /*column*/, int /*oldSize*/, int /*newSize*/)
{
    if (!m_ownResize) {
        m_userWidths = true;
    }
}
