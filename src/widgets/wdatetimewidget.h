// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QDateTime>
#include <QWidget>

class KDateComboBox;
class WTimeInput;

/**
 * The input of a day, a time to the minute, or both: typing, arrow keys, wheel, a calendar and a list of times
 * that pop up.
 *
 * It always holds a valid day and time. What is typed is taken with Return, when the input is left, or with
 * finishInput(); what is no day or no time then gives way to the last one that was. Date-times are wall clock times
 * that say they are in UTC.
 */
class WDateTimeWidget : public QWidget
{
    Q_OBJECT
public:
    /** What is asked for: a day, whose time is always midnight; a time on a day that is not shown; or both. */
    enum class Kind { Date, Time, DateTime };

    explicit WDateTimeWidget(Kind kind, QWidget *parent = nullptr);
    ~WDateTimeWidget() override;

    /** Hides or shows the input of the day. The day stays as it is. */
    void hideDate(bool hide = true);
    /** Hides or shows the input of the time, if there is one. The time stays as it is. */
    void hideTime(bool hide = true);

    /**
     * Takes what is being typed as if the input were left. For those who are about to act on the value: a button pressed
     * by its mnemonic leaves the focus where it is.
     */
    void finishInput();
    [[nodiscard]] QDate getDate() const { return m_value.date(); }
    [[nodiscard]] QTime getTime() const { return m_value.time(); }
    [[nodiscard]] QDateTime getDateTime() const { return m_value; }
    /** Sets the day and leaves the time. An invalid one changes nothing. */
    void setDate(const QDate &date);
    /** Sets the time, without the seconds, and leaves the day. An invalid one changes nothing. */
    void setTime(const QTime &time);
    /** Sets day and time, without the seconds. An invalid one changes nothing. */
    void setDateTime(const QDateTime &dateTime);

Q_SIGNALS:
    /** The day or the time is another one, by the user's hand or by a function. */
    void dateChanged(const QDateTime &oldValue, const QDateTime &newValue);

protected:
    void changeEvent(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void addTimeInput();
    void takeInput();
    void showValue();

    QDateTime m_value;
    KDateComboBox *m_dateInput;
    WTimeInput *m_timeInput = nullptr; // none where only a day is asked for
};
