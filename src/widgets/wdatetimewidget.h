// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QDateTime>
#include <QWidget>

class KDateComboBox;
class KTimeComboBox;

/**
 * The input of a day, or of a day with a time to the minute: typing, arrow keys, wheel and a calendar that
 * pops up.
 *
 * It always holds a valid day. What is typed is taken with Return or when the input is left; what is no day
 * or no time then gives way to the last one that was. Date-times are wall clock times that say they are in
 * UTC.
 */
class WDateTimeWidget : public QWidget
{
    Q_OBJECT
public:
    enum class Kind { Date, DateTime };

    explicit WDateTimeWidget(Kind kind, QWidget *parent = nullptr);

    [[nodiscard]] QDate date() const { return m_value.date(); }
    /** Sets the day and leaves the time. An invalid one changes nothing. */
    void setDate(const QDate &date);
    /** The day with the time, which is midnight where only a day is asked for. */
    [[nodiscard]] QDateTime dateTime() const { return m_value; }
    /** Sets day and time, without the seconds. An invalid one changes nothing. */
    void setDateTime(const QDateTime &dateTime);

Q_SIGNALS:
    /** The day is another one, by the user's hand or by a function. */
    void dateChanged(const QDate &date);
    /** The day or the time is another one. */
    void dateTimeChanged(const QDateTime &dateTime);

protected:
    void changeEvent(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void addTimeInput();
    void takeInput();
    void showValue();

    QDateTime m_value;
    KDateComboBox *m_dateInput;
    KTimeComboBox *m_timeInput = nullptr;
};
