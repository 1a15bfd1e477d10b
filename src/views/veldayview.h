// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "views/velday.h"
#include "views/veldayselection.h"
#include "views/veldaysource.h"
#include "views/velview.h"

#include <array>

class QScrollArea;
class QToolButton;
class VelCommonEntry;
class VelDayBand;
class VelDayHeader;
class VelDayHours;
class VelDayNames;

/** One to seven days side by side on a vertical axis of time. */
class VelDayView : public VelView
{
    Q_OBJECT
public:
    static constexpr int MaximumDays = 7;

    /** Shows what @p source gives; keeps a reference to it. */
    VelDayView(QWidget *parent, VelDay::Mode dayMode, const VelDaySource &source);
    ~VelDayView() override;

    /** @p days is 1 to 7. */
    void setRange(QDate start, int days);
    [[nodiscard]] QDate startDate() const { return m_days.front()->date(); }
    [[nodiscard]] int numDays() const { return m_numDays; }
    /** Lets go of all entries: a view that is not shown is not told when they are gone. setRange() gets new ones. */
    void release();
    /** A new range then leaves the selected time as it is. */
    void setKeepSelection(bool keep) { m_keepSelection = keep; }
    /** Takes the colours and fonts of the preferences. */
    void updateColors();
    /** Time has passed: shows where in the day it is. */
    void updateNow();

    [[nodiscard]] std::unique_ptr<VelPrintout> makePrintout() const override;
    void updateView() override;
    /** Paints each shown column anew. */
    void updateAll();
    void updateAllEntries(const VelEntry *entry) override;

    /** @name The range of time selected with the mouse */
    /// @{
    [[nodiscard]] const VelDaySelection &selection() const { return m_selection; }
    void clearSelection() override;
    /** Adds the row if it is not selected, which gives false, else removes it. */
    bool toggleSelection(const VelDateTime &start, const VelDateTime &end, bool keepEnd);
    /** With @p toggle a selected row is deselected instead; @p silent sends no signal. */
    void setSelection(const VelDateTime &start, const VelDateTime &end, bool toggle, bool silent);
    [[nodiscard]] VelDateTime getSelectionStart() const override { return m_selection.start(); }
    [[nodiscard]] VelDateTime getSelectionEnd() const override { return m_selection.end(); }
    [[nodiscard]] bool hasSelection() const override { return !m_selection.isEmpty(); }
    void emitSelectionSignal();
    [[nodiscard]] QDate currentDay() const override;
    [[nodiscard]] bool mayPaste() const override;
    /// @}

    /** @name For the columns */
    /// @{
    [[nodiscard]] bool mayMoveEntry(const VelEntry *entry) const { return mayMove(entry); }
    void dragStored(const VelEntry *entry) { dragEntry(entry); }
    [[nodiscard]] bool mayDropHere(const QDropEvent *event) const { return mayDrop(event); }
    [[nodiscard]] std::unique_ptr<VelEntry> previewOf(const QMimeData *mimeData) const
    {
        return draggedEntry(mimeData);
    }
    void takeDrop(QDropEvent *event, const std::function<VelDateTime(const VelEntry &)> &startFor)
    {
        dropEntry(event, startFor);
    }
    /** Gives a stored entry other times, here and in all other views. */
    void changeTimes(const VelEntry &entry, const VelDayDrag::Times &times);
    /** Where busy times of others are shown: lets the user look at one, or opens its menu. */
    VelCommonEntry &commonEntry();
    void announceChange(quint32 localid) { announce(localid); }
    /** Offers to enter a new event into the selected range of time, or where work begins when there is none. */
    void offerNew();
    /** Scrolls by a line when @p point of the column is near the upper or lower edge of what can be seen. */
    void ensureVisible(const VelDay *day, QPoint point);
    /// @}

    /** The column of a shown day, or null. */
    [[nodiscard]] VelDay *dayOf(QDate date) const;

Q_SIGNALS:
    void selectionChanged(const QDateTime &start, const QDateTime &end);
    void prevWanted();
    void nextWanted();
    /** The user wants to see that day alone. */
    void dayWanted(QDate date);

protected:
    void showEvent(QShowEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    bool focusNextPrevChild(bool next) override;

private:
    void buildHeaders();
    void buildColumns();
    QToolButton *makeButton(const QString &icon);
    void layOut();
    void placeHeaders();
    [[nodiscard]] int getLastColumnSize() const;
    [[nodiscard]] int columnHeight() const;
    void scrollToWork();
    void updateBands();
    void updateNames();
    [[nodiscard]] int stripHeight() const;
    void releaseDay(std::size_t index);
    bool selectIfShown(quint32 localid);
    void selectShown(VelDayArea *area, int index);
    void moveSlot(int days, int rows, bool extend);
    void moveSelectedEntry(int days, int rows);
    /** Where an entry is shown. */
    struct Place {
        VelDayArea *area;
        int index;
        [[nodiscard]] const VelEntryRef &entry() const { return area->entry(index).entry(); }
    };
    [[nodiscard]] std::vector<Place> places() const;
    bool walkEntries(int step, bool mayLeave);
    void walkToDay(int step);
    void escape();
    bool handlePlannerKey(QKeyEvent *event);
    void popupCommonEntry();
    bool handleArrow(int key, Qt::KeyboardModifiers modifiers);

    VelDay::Mode m_dayMode;
    const VelDaySource &m_source;
    std::array<VelDay *, MaximumDays> m_days{};
    std::array<VelDayHeader *, MaximumDays> m_headers{};
    std::array<VelDayBand *, MaximumDays> m_bands{};
    std::array<VelDayNames *, MaximumDays> m_names{}; // only where persons have columns
    VelCommonEntry *m_commonEntry = nullptr; // made when first asked for
    QToolButton *m_prevButton = nullptr;
    QToolButton *m_nextButton = nullptr;
    QWidget *m_headerRow = nullptr;
    QScrollArea *m_scrollView = nullptr;
    QWidget *m_columnBox = nullptr;
    VelDayHours *m_hours = nullptr;
    VelDaySelection m_selection;
    int m_numDays = 1;
    bool m_keepSelection = false;
    bool m_hasScrolledToWork = false;
};
