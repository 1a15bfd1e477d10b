// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogs/velentrydialog.h"

#include "dialogs/veldialogsize.h"
#include "dialogs/velentryrecurdialog.h"
#include "dialogs/velfindtimedialog.h"
#include "dialogs/velpeoplepage.h"
#include "dialogs/velreminderwidget.h"
#include "document/veldoc.h"
#include "document/velmessages.h"
#include "document/velstep.h"
#include "hub/velapp.h"
#include "model/velsettings.h"
#include "widgets/wdatetimewidget.h"

#include <KConfigGroup>
#include <KLocalizedString>
#include <KSharedConfig>

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QSpinBox>
#include <QTabWidget>

namespace
{
/** Of a kind that the recurrence editor has: others never repeat, and are left alone. */
bool repeats(const VelRecurrenceRule &rule)
{
    return rule.recurringtype >= VelRecurrenceRule::Daily && rule.recurringtype <= VelRecurrenceRule::Yearly;
}
} // namespace

VelEntryDialog::VelEntryDialog(VelApp &app, VelAddressBook &book, const VelEntry &entry, bool isNew,
                               Written written)
    : QDialog(&app)
    , m_app(app)
    , m_doc(*app.document())
    , m_book(book)
    , m_written(std::move(written))
    , m_entry(entry)
    , m_isStored(!isNew)
{
    setWindowTitle(isEvent() ? i18n("Event") : i18n("To-Do task"));
    setModal(true);
    makeLayout();
    explain();
    fill(VelEntryForm::of(m_entry));
    // An entry of another calendar may have the same id.
    connect(&m_doc, &VelDoc::contentsReplaced, this, &VelEntryDialog::abandon);
    if (isEvent()) {
        connect(&app, &VelApp::accountsReady, this, &VelEntryDialog::slotAccountsReady);
        app.requestAccounts(true);
    }
    m_title->setFocus();
    // The lists of people would take all the height that there is.
    constexpr int usualLines = 32;
    VelDialogSize::restore(
        *this, sizeName(),
        {sizeHint().width(), qMin(sizeHint().height(), fontMetrics().height() * usualLines)});
}

VelEntryDialog::~VelEntryDialog()
{
    VelDialogSize::save(*this, sizeName());
}

/** What to-dos have needs less room. */
QString VelEntryDialog::sizeName() const
{
    return isEvent() ? QStringLiteral("EventEditor") : QStringLiteral("TodoEditor");
}

/** The planner, the recurrence or a box for a new person would go on without what it is about. */
void VelEntryDialog::abandon()
{
    const QList<QDialog *> nested = findChildren<QDialog *>();
    for (QDialog *dialog : nested) {
        if (dialog->isVisible())
            dialog->reject();
    }
    done(Rejected);
}

void VelEntryDialog::slotAccountsReady()
{
    m_people->setServerAccounts(m_app.getAccounts());
}

void VelEntryDialog::fill(const VelEntryForm &form)
{
    m_title->setText(form.title);
    m_shownTitle = m_title->text();
    m_noTimes->setChecked(form.notime);
    m_start->setDateTime(form.start.toQDateTime());
    m_end->setDateTime(form.end.toQDateTime());
    m_description->setPlainText(form.description);
    m_reminder->setReminder(form.reminder);
    if (form.reminder == 0)
        m_reminder->setDefault(static_cast<quint32>(m_app.settings()->reminderDefault));
    if (isEvent()) {
        m_access->setCurrentIndex(form.access - 1);
        m_display->setCurrentIndex(form.display - 1);
        m_recurDialog->setRule(form.rule, form.start.date());
        m_recurring->setChecked(repeats(form.rule));
        slotAccountsReady();
        m_people->setAccounts(form.accounts);
    } else {
        m_complete->setChecked(form.complete);
        m_priority->setValue(form.priority);
    }
    slotNoTime(form.notime);
    showRecurrence();
}

VelEntryForm VelEntryDialog::form() const
{
    VelEntryForm form = VelEntryForm::of(m_entry);
    // The input cuts very long ones and joins lines; what nobody has touched stays as it is.
    if (m_title->text() != m_shownTitle)
        form.title = m_title->text();
    form.start = VelDateTime::fromQDateTime(m_start->getDateTime());
    form.end = VelDateTime::fromQDateTime(m_end->getDateTime());
    form.description = m_description->toPlainText();
    form.notime = m_noTimes->isChecked();
    if (form.notime && !form.isInOrder() && form.start.date() <= form.end.date()) {
        // Times that nobody sees are no reason to refuse the days.
        form.start = form.start.withTime(QTime(0, 0));
        form.end = form.end.withTime(QTime(23, 59));
    }
    form.reminder = m_reminder->getReminder();
    if (isEvent()) {
        form.accounts = m_people->getAccounts();
        form.access = m_access->currentIndex() + 1;
        form.display = m_display->currentIndex() + 1;
        if (m_recurring->isChecked())
            form.rule = m_recurDialog->getRule();
        else if (repeats(form.rule))
            form.rule.clear();
    } else {
        form.complete = m_complete->isChecked();
        form.priority = m_priority->value();
    }
    return form;
}

/** A button pressed by its mnemonic leaves the focus where somebody types. False, after a message, for what is no time. */
bool VelEntryDialog::finishInput()
{
    for (WDateTimeWidget *input : {m_start, m_end})
        input->finishInput();
    for (const QPointer<WDateTimeWidget> input : {m_start, m_end}) {
        const QString problem = input->getProblem();
        if (problem.isEmpty())
            continue;
        m_app.messages().error(problem);
        if (!input)
            return false; // the dialog went meanwhile
        if (m_pages)
            m_pages->setCurrentIndex(0);
        input->focusProblem();
        return false;
    }
    return true;
}

bool VelEntryDialog::updateData()
{
    if (!finishInput())
        return false;
    const VelEntryForm written = form();
    if (!written.isInOrder()) {
        m_app.messages().error(i18n("Start time may not be later than end time."));
        return false;
    }
    written.applyTo(m_entry);
    m_shownTitle = m_title->text();
    store(written);
    if (isEvent() && m_written)
        m_written(m_entry);
    return true;
}

void VelEntryDialog::store(const VelEntryForm &written)
{
    const QString created =
        isEvent() ? i18nc("what was done", "New Event") : i18nc("what was done", "New To-Do Task");
    const VelStepScope scope(&m_doc, m_isStored ? i18nc("what was done", "Edit") : created);
    // What has gone meanwhile comes back: the user has just said what it is to be.
    if (!m_isStored
        || !m_doc.changeEntry(m_entry.localid, [&written](VelEntry &stored) { written.applyTo(stored); }))
        m_doc.addEntry(std::make_unique<VelEntry>(m_entry));
    m_isStored = true;
}

void VelEntryDialog::slotOk()
{
    const QPointer<VelEntryDialog> alive(this);
    if (!updateData() || !alive)
        return; // or the window was closed while it asked about invitations
    accept();
    m_doc.slotUpdateAllViews(nullptr);
}

void VelEntryDialog::slotApply()
{
    const QPointer<VelEntryDialog> alive(this);
    if (updateData() && alive)
        m_doc.slotUpdateAllViews(nullptr);
}

/** An event whose box was unticked loses its recurrence even so: that is what unticking it means here. */
void VelEntryDialog::slotCancel()
{
    if (isEvent() && !m_recurring->isChecked() && m_isStored && repeats(m_entry.rule)) {
        {
            const VelStepScope scope(&m_doc, i18nc("what was done", "Edit"));
            m_doc.changeEntry(m_entry.localid, [](VelEntry &stored) {
                stored.rule = VelRecurrenceRule();
                stored.uDirty(1);
            });
        }
        m_doc.slotUpdateAllViews(nullptr);
    }
    QDialog::reject();
}

void VelEntryDialog::setDateTime(const QDateTime &start, const QDateTime &end)
{
    m_start->setDateTime(start);
    m_end->setDateTime(end);
}

void VelEntryDialog::slotNoTime(bool notime)
{
    m_start->hideTime(notime);
    m_end->hideTime(notime);
}

void VelEntryDialog::slotRecurring(bool recurring)
{
    m_setRecurrence->setEnabled(recurring);
    showRecurrence();
}

void VelEntryDialog::slotRecurDialog()
{
    if (!finishInput())
        return;
    const QPointer<VelEntryDialog> alive(this);
    m_recurDialog->setRule(m_recurDialog->getRule(), m_start->getDate());
    m_recurDialog->exec();
    if (alive)
        showRecurrence();
}

/** The planner plans what the controls say, which need not be written yet. */
void VelEntryDialog::slotFindDialog()
{
    if (!isEvent() || !finishInput())
        return;
    VelEntry planned = m_entry;
    planned.setStart(VelDateTime::fromQDateTime(m_start->getDateTime()));
    planned.setEnd(VelDateTime::fromQDateTime(m_end->getDateTime()));
    if (!m_findDialog) {
        const KConfigGroup options = KSharedConfig::openConfig()->group(QStringLiteral("General Options"));
        m_findDialog = new VelFindTimeDialog(planned, options, this);
        connect(m_findDialog, &VelFindTimeDialog::timeChosen, this, &VelEntryDialog::setDateTime);
    }
    m_findDialog->setEntry(planned);
    m_findDialog->setAccounts(m_people->getAccounts());
    runFindDialog(*m_findDialog);
}

void VelEntryDialog::runFindDialog(VelFindTimeDialog &dialog)
{
    dialog.exec();
}

/** The sentence of the rule stands on the button's tool tip and beside it. */
void VelEntryDialog::showRecurrence()
{
    if (!isEvent())
        return;
    m_setRecurrence->setEnabled(m_recurring->isChecked());
    m_recurrenceText->setText(m_recurring->isChecked()
                                  ? m_recurDialog->getRule().getRecurrenceText(m_start->getDate())
                                  : QString());
}

void VelEntryDialog::slotStartChanged(const QDateTime &oldStart, const QDateTime &newStart)
{
    m_end->moveTo(velEndForStart(VelDateTime::fromQDateTime(oldStart), VelDateTime::fromQDateTime(newStart),
                                 VelDateTime::fromQDateTime(m_end->getDateTime()))
                      .toQDateTime());
    showRecurrence();
}
