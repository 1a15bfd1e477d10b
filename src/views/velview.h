// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "document/veldocview.h"
#include "model/velentrylist.h"

#include <QDate>
#include <QWidget>

#include <functional>
#include <memory>

class QDropEvent;
class QMimeData;
class QPainter;
class QPrinter;
class VelDoc;
class VelEntry;
class VelPrintout;
class WPopupMenu;

/**
 * What every view of the calendar has: one selected entry, the clipboard commands on it, the two context
 * menus, and the way to ask for another date.
 */
class VelView : public QWidget, public VelDocView
{
    Q_OBJECT
public:
    explicit VelView(QWidget *parent);
    ~VelView() override;

    /** Drops the range of time that was selected with the mouse. */
    virtual void clearSelection() { }
    /** That range; invalid where a view has none. */
    [[nodiscard]] virtual VelDateTime getSelectionStart() const { return {}; }
    [[nodiscard]] virtual VelDateTime getSelectionEnd() const { return {}; }
    [[nodiscard]] virtual bool hasSelection() const { return false; }
    /** The day of the selected time or entry; invalid when there is none. */
    [[nodiscard]] virtual QDate currentDay() const;
    /** True when the clipboard holds an entry and the calendar may be changed. */
    [[nodiscard]] virtual bool mayPaste() const;
    /** The menu for an entry, made when first asked for and kept. */
    virtual WPopupMenu *getEntryPopup();
    /** Shows the given entry anew wherever this view shows it. */
    virtual void updateAllEntries(const VelEntry *entry) = 0;
    /** What the view shows, on paper. It may go on after the view has changed, but not after the document. */
    [[nodiscard]] virtual std::unique_ptr<VelPrintout> makePrintout() const = 0;
    /** Prints what the view shows. */
    void print(QPainter &painter, QPrinter &printer) const;

    /** The menu for an empty place, made when first asked for and kept. */
    WPopupMenu *getPopup();

    /** Asks for another date: a view never changes its own range. */
    void setDate(QDate date) { Q_EMIT setDateInternal(date); }

    /** Opens the selected entry to be edited, a repeating one as a whole, or to be read when it is not the user's. */
    void editSelected();
    /** Takes in the title that is being typed, before its place, its calendar or its file is another one. */
    void finishInput();
    /** True while one is being typed. */
    [[nodiscard]] bool hasInput() const;

    [[nodiscard]] bool hasSelectedEntry() const { return m_selected.localid != 0; }
    [[nodiscard]] bool isSelectedEntry(const VelEntry *entry) const;
    [[nodiscard]] bool isSelectedEntry(const VelEntryRef &entry) const;
    /** The entry or occurrence that is selected, or null; also when it has gone meanwhile. */
    [[nodiscard]] const VelEntry *getSelectedEntry() const;
    /** Selects an entry instead of a range of time; @p update shows it and the one before anew. */
    void setSelectedEntry(const VelEntry *entry, bool update);
    void clearSelectedEntry(bool update);

public Q_SLOTS:
    /** These act on the selected entry, on a repeating one as a whole, and ask before they do away with that.
     */
    void cut();
    void copy();
    void del();
    /** Puts the entry of the clipboard into the calendar, onto the selected range of time if there is one. */
    void paste();
    /** Lets the user print all that is known of the selected entry. */
    void slotPrintEntry();

Q_SIGNALS:
    void setDateInternal(QDate date);

protected:
    bool event(QEvent *event) override;

    [[nodiscard]] VelDoc *document() const;
    /** True when the user may change that entry now. */
    [[nodiscard]] bool mayChange(const VelEntry *entry) const;
    /** Lets the user print that entry; does nothing for null. */
    void printEntry(const VelEntry *entry) const;

    /** True when the mouse may take that entry elsewhere: it is the user's to change and does not repeat. */
    [[nodiscard]] bool mayMove(const VelEntry *entry) const;
    /** Tells those whom the server does not know of the entry's change, once the present event has been dealt with. */
    void announce(quint32 localid);
    /** Lets the user drag a stored entry to another day, view, window or program; returns when that is over. */
    void dragEntry(const VelEntry *entry);
    /** True when what is dragged here may be dropped. */
    [[nodiscard]] bool mayDrop(const QDropEvent *event) const;
    /** What is being dragged, as far as a preview needs it, or null when only the drop will tell. */
    [[nodiscard]] std::unique_ptr<VelEntry> draggedEntry(const QMimeData *mimeData) const;
    /**
     * Moves what is dropped, or takes it in, to where @p startFor says that it starts, and accepts the event. Questions
     * are asked when the event has been dealt with, so that the program the drag came from need not wait.
     */
    void dropEntry(QDropEvent *event, const std::function<VelDateTime(const VelEntry &)> &startFor);

    /**
     * Offers to enter the title of a new event from getSelectionStart() to getSelectionEnd(), in a line over
     * @p place (in this widget's coordinates).
     */
    void offerNewEntry(const QRect &place);

private:
    /** Names an entry or an occurrence; unlike a pointer it stays true when the document changes. */
    struct Selection {
        quint32 localid = 0; // of the stored entry
        quint32 number = 0; // of the occurrence, or 0
        bool operator==(const Selection &other) const = default;
    };

    [[nodiscard]] static Selection selectionOf(const VelEntry *entry);
    [[nodiscard]] bool mayRemoveSelected(const QString &question, const QString &yes) const;
    void delInternal(const QString &step);
    void copyToClipboard(bool isCut);
    void addNewEntry(const QString &title, const VelDateTime &start, const VelDateTime &end);

    Selection m_selected;
    WPopupMenu *m_entryPopup = nullptr;
    WPopupMenu *m_popup = nullptr;
};
