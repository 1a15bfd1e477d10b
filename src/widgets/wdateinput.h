// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "widgets/wtypedinput.h"

#include <QDate>

#include <functional>

class WDatePickerFrame;

/** The input of a day, with a calendar that pops up. */
class WDateInput final : public WTypedInput
{
    Q_OBJECT
public:
    /** What says which day is today. */
    using Clock = std::function<QDate()>;

    /** Begins with the first day of 2000, and the clock of the system. */
    explicit WDateInput(QWidget *parent = nullptr);

    /** Whom "tomorrow" and the names of weekdays are read by. */
    void setClock(Clock clock) { m_clock = std::move(clock); }
    /** The last day that was set or could be read. */
    [[nodiscard]] QDate getDate() const { return m_date; }
    /** A valid one. Emits nothing. */
    void setDate(QDate date, Typed typed = Typed::Forget);
    void showPopup() override;
    void hidePopup() override;

Q_SIGNALS:
    /** The user has typed, stepped to or chosen a day, which may be the same one. */
    void dateEntered(QDate date);

protected:
    void changeEvent(QEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    [[nodiscard]] QString problemOf(const QString &text) const override;
    void take(const QString &text) override;
    [[nodiscard]] QString valueText() const override;
    void step(int count, bool isLarge) override;

private:
    void enter(QDate date);
    void fit();

    Clock m_clock;
    QDate m_date{2000, 1, 1};
    WDatePickerFrame *m_frame = nullptr; // made when it is first wanted
};
