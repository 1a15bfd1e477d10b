// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "widgets/wtypedinput.h"

#include <QDateTime>

#include <functional>

class QLabel;
class WDateInput;
class WTimeInput;

/**
 * The input of a day, a time to the minute, or both: typing, arrow keys, wheel, a calendar and a list of times
 * that pop up.
 *
 * It always holds a valid day and time. What is typed is taken with Return, when the input is left, or with
 * finishInput(), in any usual form; what cannot be read stays, marked, with a sentence below it, and leaves the last
 * value that could be. Date-times are wall clock times that say they are in UTC.
 */
class WDateTimeWidget : public QWidget
{
    Q_OBJECT
public:
    /** What is asked for: a day, whose time is always midnight; a time on a day that is not shown; or both. */
    enum class Kind { Date, Time, DateTime };

    explicit WDateTimeWidget(Kind kind, QWidget *parent = nullptr);
    ~WDateTimeWidget() override;

    /** What a label's letter is to lead to: labels pass over this widget, which is no stop of the keyboard itself. */
    [[nodiscard]] QWidget *getBuddy() const { return focusProxy(); }
    /** Hides or shows the input of the day. The day stays as it is. */
    void hideDate(bool hide = true);
    /** Hides or shows the input of the time, if there is one. The time stays as it is. */
    void hideTime(bool hide = true);
    /** What says which day is today; the clock of the system unless set. */
    void setClock(const std::function<QDate()> &clock);
    /** Leaves it to the window to show getProblem(), which has a better place for it. */
    void leaveProblem() { m_isProblemLeft = true; }

    /**
     * Takes what is being typed as if the input were left. For those who are about to act on the value: a button pressed
     * by its mnemonic leaves the focus where it is. False when an input that is shown and enabled cannot be read; nobody
     * should act on the value then.
     */
    bool finishInput();
    /** A sentence about what is typed and cannot be read; empty when there is nothing, or it does not matter. */
    [[nodiscard]] QString getProblem() const;
    /** Lets the user go on with what cannot be read. */
    void focusProblem();

    [[nodiscard]] QDate getDate() const { return m_value.date(); }
    [[nodiscard]] QTime getTime() const { return m_value.time(); }
    [[nodiscard]] QDateTime getDateTime() const { return m_value; }
    /** @name Values set by others, without seconds. An invalid one changes nothing; what was typed is forgotten */
    /// @{
    void setDate(const QDate &date);
    void setTime(const QTime &time);
    void setDateTime(const QDateTime &dateTime);
    /// @}
    /** Sets day and time likewise, but leaves what the user is typing, or has yet to correct. */
    void moveTo(const QDateTime &dateTime);

Q_SIGNALS:
    /** The day or the time is another one, by the user's hand or by a function. */
    void dateChanged(const QDateTime &oldValue, const QDateTime &newValue);
    /** getProblem() may be another one. */
    void problemChanged();

protected:
    void changeEvent(QEvent *event) override;

private:
    [[nodiscard]] QList<WTypedInput *> inputs() const;
    void addTimeInput();
    void takeInput();
    void set(const QDateTime &dateTime, WTypedInput::Typed typed);
    void slotProblem();
    void showProblem();

    QDateTime m_value;
    WDateInput *m_dateInput;
    WTimeInput *m_timeInput = nullptr; // none where only a day is asked for
    QLabel *m_problem = nullptr; // made when there is first one
    bool m_isProblemLeft = false;
};
