// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "views/velview.h"

#include "document/veldoc.h"
#include "document/veldrag.h"
#include "document/velmessages.h"
#include "document/velpaste.h"
#include "document/velstep.h"
#include "hub/velapp.h"
#include "hub/velprintout.h"
#include "views/veldrop.h"
#include "views/velentryprintout.h"
#include "views/velprintpages.h"
#include "views/velquickentry.h"
#include "widgets/wpopupmenu.h"

#include <KLocalizedString>

#include <QAction>
#include <QClipboard>
#include <QDrag>
#include <QDropEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPointer>
#include <QTimer>

namespace
{
/** Arrows and Escape may be shortcuts elsewhere; here they move about. What can be stopped goes before. */
bool isOwnKey(int key, const VelApp *app)
{
    if (key != Qt::Key_Escape)
        return key >= Qt::Key_Left && key <= Qt::Key_PageDown;
    const QAction *stop = app ? app->getAction(QStringLiteral("stop_synchronize")) : nullptr;
    return !stop || !stop->isEnabled();
}
} // namespace

VelView::VelView(QWidget *parent)
    : QWidget(parent)
{
}

VelView::~VelView() = default;

bool VelView::event(QEvent *event)
{
    if (event->type() == QEvent::ShortcutOverride
        && isOwnKey(static_cast<QKeyEvent *>(event)->key(), VelApp::getApp(this))) {
        event->accept();
        return true;
    }
    return QWidget::event(event);
}

QDate VelView::currentDay() const
{
    const VelEntry *entry = getSelectedEntry();
    return entry ? entry->getStart().date() : getSelectionStart().date();
}

VelDoc *VelView::document() const
{
    return VelApp::getDocument(this);
}

bool VelView::mayChange(const VelEntry *entry) const
{
    return entry && VelApp::getApp(this)->mayEdit() && document()->isOwner(entry);
}

bool VelView::mayMove(const VelEntry *entry) const
{
    return mayChange(entry) && !entry->isRecurring();
}

VelView::Selection VelView::selectionOf(const VelEntry *entry)
{
    if (!entry)
        return {};
    return entry->isOccurrence() ? Selection{entry->originalid, entry->localid}
                                 : Selection{entry->localid, 0};
}

bool VelView::isSelectedEntry(const VelEntry *entry) const
{
    return entry && hasSelectedEntry() && selectionOf(entry) == m_selected;
}

bool VelView::isSelectedEntry(const VelEntryRef &entry) const
{
    return hasSelectedEntry() && Selection{entry.getOriginal()->localid, entry.getNumber()} == m_selected;
}

const VelEntry *VelView::getSelectedEntry() const
{
    const VelEntry *entry = hasSelectedEntry() ? document()->getEntry(m_selected.localid) : nullptr;
    if (entry && entry->isDeleted())
        return nullptr; // only the notice to the server is left
    return entry && m_selected.number != 0 ? entry->getOccurrence(m_selected.number) : entry;
}

void VelView::setSelectedEntry(const VelEntry *entry, bool update)
{
    clearSelection();
    const VelEntry *old = getSelectedEntry();
    m_selected = selectionOf(entry);
    if (update && old)
        updateAllEntries(old);
    if (update && entry)
        updateAllEntries(entry);
    VelApp::getApp(this)->setCutCopy(entry, true);
}

void VelView::clearSelectedEntry(bool update)
{
    if (!hasSelectedEntry())
        return;
    const VelEntry *old = getSelectedEntry();
    m_selected = {};
    if (update && old)
        updateAllEntries(old);
    VelApp::getApp(this)->setCutCopy(nullptr, false);
}

bool VelView::mayRemoveSelected(const QString &question, const QString &yes) const
{
    const VelEntry *entry = getSelectedEntry();
    VelApp *app = VelApp::getApp(this);
    if (!mayChange(entry))
        return false;
    if (!entry->isRecurring())
        return true;
    return app->messages().questionYesNo(question, i18n("Recurring event"), yes, i18n("Cancel"))
        == VelMessages::Answer::Yes;
}

void VelView::cut()
{
    if (mayRemoveSelected(
            i18n("Cutting this event to clipboard will also cut all recurring events based on it."),
            i18n("Cut all occurences"))) {
        copyToClipboard(true);
        delInternal(i18nc("what was done", "Cut"));
    }
}

void VelView::copy()
{
    copyToClipboard(false);
}

void VelView::copyToClipboard(bool isCut)
{
    const VelEntry *entry = getSelectedEntry();
    const VelEntry *original = entry ? document()->getOriginalEntry(entry) : nullptr;
    if (!original)
        return;
    auto *drag = new VelDrag(*original, document()->getUserId());
    if (isCut)
        drag->setCut();
    QGuiApplication::clipboard()->setMimeData(drag);
}

void VelView::del()
{
    if (mayRemoveSelected(i18n("Deleting this event will also delete all recurring events based on it."),
                          i18n("Delete all occurences")))
        delInternal(i18nc("what was done", "Delete"));
}

void VelView::delInternal(const QString &step)
{
    const VelEntry *entry = getSelectedEntry();
    const VelEntry *original = entry ? document()->getOriginalEntry(entry) : nullptr;
    if (!original)
        return;
    {
        const VelStepScope scope(document(), step);
        document()->deleteEntry(original, false);
    }
    clearSelectedEntry(false);
    document()->slotUpdateAllViews(nullptr);
}

bool VelView::mayPaste() const
{
    return VelApp::getApp(this)->mayEdit() && VelDrag::canDecode(QGuiApplication::clipboard()->mimeData());
}

void VelView::paste()
{
    if (!mayPaste())
        return;
    const QMimeData *source = QGuiApplication::clipboard()->mimeData();
    std::unique_ptr<VelEntry> decoded = VelDrag::decode(source);
    if (!decoded)
        return;
    const bool wasCut = VelDrag::takeCut(source);
    if (hasSelection())
        VelPaste::moveTo(*decoded, getSelectionStart());
    const VelEntry *entry = nullptr;
    {
        const VelStepScope scope(document(), i18nc("what was done", "Paste"));
        entry = VelPaste::addPasted(*document(), std::move(decoded), wasCut);
    }
    if (entry->globalid != 0)
        announce(entry->localid); // taken back what others think is gone
    document()->setModified(true);
    // First the date: a view that moves to another one lets go of what was selected there.
    setDate(entry->getStart().date());
    setSelectedEntry(entry, false);
    document()->slotUpdateAllViews(nullptr);
}

void VelView::print(QPainter &painter, QPrinter &printer) const
{
    const std::unique_ptr<VelPrintout> printout = makePrintout();
    VelPrintPages(*printout, VelApp::getApp(this)->now()).print(painter, printer);
}

void VelView::printEntry(const VelEntry *entry) const
{
    if (!entry)
        return;
    VelApp *app = VelApp::getApp(this);
    VelEntryPrintout printout(*entry, app->getAccountName(entry->user));
    app->printOut(printout);
}

void VelView::slotPrintEntry()
{
    printEntry(getSelectedEntry());
}

WPopupMenu *VelView::getEntryPopup()
{
    if (m_entryPopup)
        return m_entryPopup;
    m_entryPopup = new WPopupMenu(this);
    const VelApp *app = VelApp::getApp(this);
    for (const char *name : {"edit_entry", "view_entry", "edit_delete"}) {
        QAction *action = app->getAction(QLatin1String(name));
        m_entryPopup->insertAction(action, action, &QAction::trigger);
    }
    m_entryPopup->addSeparator();
    m_entryPopup->insertAction(app->getAction(QStringLiteral("edit_cut")), this, &VelView::cut);
    m_entryPopup->insertAction(app->getAction(QStringLiteral("edit_copy")), this, &VelView::copy);
    m_entryPopup->addSeparator();
    m_entryPopup->addAction(VelApp::getIcon(QStringLiteral("fileprint")), i18n("Print Event"), this,
                            &VelView::slotPrintEntry);
    return m_entryPopup;
}

WPopupMenu *VelView::getPopup()
{
    if (m_popup)
        return m_popup;
    m_popup = new WPopupMenu(this);
    const VelApp *app = VelApp::getApp(this);
    QAction *newEntry = app->getAction(QStringLiteral("new_entry"));
    m_popup->insertAction(newEntry, newEntry, &QAction::trigger);
    m_popup->addSeparator();
    m_popup->insertAction(app->getAction(QStringLiteral("edit_paste")), this, &VelView::paste);
    return m_popup;
}

void VelView::announce(quint32 localid)
{
    QTimer::singleShot(0, this, [this, localid] {
        const VelEntry *entry = document()->getEntry(localid);
        if (entry && !entry->isDeleted())
            VelApp::getApp(this)->informChanges(*entry);
    });
}

void VelView::dragEntry(const VelEntry *entry)
{
    VelApp *app = VelApp::getApp(this);
    const QPointer<VelApp> alive(
        app); // the window may be closed meanwhile, at the end of the session for one
    app->setEditLock(true);
    app->setDraggedEntry(entry->localid);
    auto *drag = new QDrag(this);
    drag->setMimeData(new VelDrag(*entry, document()->getUserId()));
    // Never a plain move: another program would have us delete what it took.
    drag->exec(Qt::CopyAction, Qt::CopyAction);
    if (!alive)
        return;
    app->setDraggedEntry(0);
    app->setEditLock(false);
}

bool VelView::mayDrop(const QDropEvent *event) const
{
    const VelApp *app = VelApp::getApp(this);
    // The window's own drag holds the lock itself.
    const bool isOpen = app->getDraggedEntry() != 0 ? document()->isWritable() : app->mayEdit();
    return isOpen && VelDrag::canDecode(event->mimeData());
}

std::unique_ptr<VelEntry> VelView::draggedEntry(const QMimeData *mimeData) const
{
    if (const VelEntry *own = document()->getEntry(VelApp::getApp(this)->getDraggedEntry()))
        return std::make_unique<VelEntry>(*own);
    // Files are read when they are dropped: that may mean to fetch them.
    return mimeData->hasUrls() ? nullptr : VelDrag::decode(mimeData);
}

void VelView::dropEntry(QDropEvent *event, const std::function<VelDateTime(const VelEntry &)> &startFor)
{
    event->setAccepted(mayDrop(event));
    if (!event->isAccepted())
        return;
    if (const VelEntry *own = document()->getEntry(VelApp::getApp(this)->getDraggedEntry())) {
        if (VelDrop::move(*document(), own->localid, startFor(*own)).entry)
            announce(own->localid);
        return;
    }
    auto entries =
        std::make_shared<std::vector<std::unique_ptr<VelEntry>>>(VelDrag::decodeAll(event->mimeData()));
    if (entries->empty()) {
        event->ignore();
        return;
    }
    QTimer::singleShot(0, this, [this, entries, start = startFor(*entries->front())] {
        if (!VelApp::getApp(this)->mayEdit())
            return;
        const VelDrop::Result result =
            VelDrop::takeIn(*document(), VelApp::getApp(this)->messages(), std::move(*entries), start);
        if (result.entry && result.hasKeptDates)
            setDate(result.entry->getStart().date());
    });
}

void VelView::offerNewEntry(const QRect &place)
{
    const VelDateTime start = getSelectionStart();
    const VelDateTime end = getSelectionEnd();
    if (!start.isValid() || !VelApp::getApp(this)->mayEdit())
        return;
    auto *line = new VelQuickEntry(this, place, start, end);
    connect(line, &VelQuickEntry::entered, this,
            [this, start, end](const QString &title) { addNewEntry(title, start, end); });
}

void VelView::editSelected()
{
    const VelEntry *entry = getSelectedEntry();
    const VelEntry *original = entry ? document()->getOriginalEntry(entry) : nullptr;
    if (!original)
        return;
    if (mayChange(original))
        VelApp::getApp(this)->showEntryDialog(*original, false);
    else
        VelApp::getApp(this)->showEntryInfo(*entry, VelAnswer::Plain);
}

bool VelView::hasInput() const
{
    return findChild<VelQuickEntry *>() != nullptr;
}

void VelView::finishInput()
{
    const QList<VelQuickEntry *> lines = findChildren<VelQuickEntry *>();
    for (VelQuickEntry *line : lines)
        line->finish();
}

void VelView::addNewEntry(const QString &title, const VelDateTime &start, const VelDateTime &end)
{
    if (!VelApp::getApp(this)->mayEdit())
        return;
    std::unique_ptr<VelEntry> entry = document()->newEntry(VelEntry::Event, start, end);
    entry->access = VelEntry::Public;
    entry->display = VelEntry::Busy;
    entry->setTitle(title);
    const VelEntry *added = nullptr;
    {
        const VelStepScope scope(document(), i18nc("what was done", "New Event"));
        added = document()->addEntry(std::move(entry));
    }
    setSelectedEntry(added, false);
    document()->slotUpdateAllViews(nullptr);
}
