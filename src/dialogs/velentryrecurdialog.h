// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "dialogs/velrecurchoice.h"

#include <QDialog>

class KMessageWidget;
class QButtonGroup;
class QComboBox;
class QDialogButtonBox;
class QGroupBox;
class QHBoxLayout;
class QLabel;
class QSpinBox;
class QStackedWidget;
class VelWeekDayWidget;
class WDateTimeWidget;

/**
 * The recurrence editor: how often an event repeats, on which days and for how long.
 *
 * While the rule is being set, the dialog describes it in a sentence and names the next dates that come of
 * it. It cannot be left with OK while the rule cannot be followed.
 */
class VelEntryRecurDialog : public QDialog
{
    Q_OBJECT
public:
    /** What the arrows can reach; a rule from elsewhere may go beyond. */
    static constexpr int UsualMaximum = 999;
    /** The controls that only some rules need. */
    enum Page { NoPage, WeekPage, MonthPage };

    /** @p today decides which dates are the next ones. */
    VelEntryRecurDialog(QDate today, QWidget *parent);

    /** Shows the rule of an event that starts on @p start. Without a rule: every day, for ever. */
    void setRule(const VelRecurrenceRule &rule, QDate start);
    /** The rule that the controls show; what Cancel leaves is the rule of the last OK or setRule(). */
    [[nodiscard]] VelRecurrenceRule getRule() const;

    void accept() override;
    void reject() override;

private:
    enum PreviewPage { SentencePage, ProblemPage };

    QHBoxLayout *makeFrequencyRow();
    QWidget *makeWeekPage();
    QWidget *makeMonthPage();
    QStackedWidget *makePages();
    QGroupBox *makeEndBox();
    QStackedWidget *makePreview();
    void orderTabs();
    void connectInputs();

    [[nodiscard]] VelRecurChoice getChoice() const;
    void showChoice(const VelRecurChoice &choice);
    void slotChanged();
    void enableInputs(const VelRecurChoice &choice);
    void showDates(const VelRecurrenceRule &rule);

    QDate m_today;
    QDate m_start;
    VelRecurChoice m_accepted; // what Cancel goes back to
    bool m_isFilling = false;

    QSpinBox *m_every;
    QComboBox *m_rule;
    QStackedWidget *m_pages = nullptr;
    VelWeekDayWidget *m_weekdays;
    QButtonGroup *m_monthBy;
    QSpinBox *m_dayOfMonth;
    QComboBox *m_ordinal;
    QComboBox *m_weekday;
    QButtonGroup *m_end;
    QSpinBox *m_count;
    WDateTimeWidget *m_endDate;
    QStackedWidget *m_preview = nullptr;
    QLabel *m_sentence;
    QLabel *m_dates;
    KMessageWidget *m_problem;
    QDialogButtonBox *m_buttons;
};
