// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "dialogs/velfreetimesearch.h"

#include <QWidget>

class QCheckBox;
class QComboBox;
class QGridLayout;
class QLabel;
class QPushButton;
class QSpinBox;
class WDateTimeWidget;

/** The panel of the meeting planner: what is looked for, the button that looks for it, and what is proposed. */
class VelFindTimeWidget : public QWidget
{
    Q_OBJECT
public:
    /** Begins with the length and the times of @p entry. Keeps a reference to @p source, which the search goes by. */
    VelFindTimeWidget(VelFreeTimeSearch::Source &source, const VelEntry &entry, QWidget *parent);

    /** Takes length, first day and proposal from an entry. */
    void setEntry(const VelEntry &entry);
    [[nodiscard]] bool isWorkDays() const;
    /** What is proposed. */
    [[nodiscard]] QDateTime getStart() const;
    [[nodiscard]] QDateTime getEnd() const;
    /** True from the button's press until there is a proposal, or there is none to be had. */
    [[nodiscard]] bool isSearching() const { return m_search.isSearching(); }
    /** Gives a search up; the button can be pressed again. */
    void stop();
    /** Says what goes on; empty when there is nothing to say. */
    void showStatus(const QString &text);
    /** Says under the proposal who is busy then. */
    void showBusy(const QString &text);

    /**
     * Takes what is being typed, before somebody acts on it. What cannot be read gets the focus, and a sentence for the
     * user is returned.
     */
    QString finishInput();
    /** Looks for the next time. */
    void slotFind();
    /** Goes on with a search that rests. */
    void slotContinue();
    /** Proposes what the user has selected; an empty selection changes nothing. */
    void slotSelectionChanged(const QDateTime &start, const QDateTime &end);

Q_SIGNALS:
    /** Other days are to be shown: those off work are wanted, or not wanted any more. */
    void workDaysClicked();
    /** The proposed start or end is another one. */
    void proposalChanged();

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void makeInputs();
    void makeLayout();
    void explain();
    [[nodiscard]] VelFreeTimeSearch::Terms terms() const;
    void take(const VelFreeTimeSearch::Outcome &outcome);
    void enableFind();
    void setProposal(const QDateTime &start, const QDateTime &end);

    VelFreeTimeSearch m_search;
    QSpinBox *m_length;
    QComboBox *m_unit;
    WDateTimeWidget *m_begin;
    WDateTimeWidget *m_end;
    WDateTimeWidget *m_from;
    QCheckBox *m_workDays;
    QPushButton *m_find;
    WDateTimeWidget *m_proposedStart;
    WDateTimeWidget *m_proposedEnd;
    QLabel *m_status;
    QLabel *m_busy; ///< who is, when the proposed appointment takes place
    bool m_isFocusTaken = false; // from the button, by the search
};
