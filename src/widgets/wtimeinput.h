// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "widgets/wtypedinput.h"

#include <QTime>

/** The input of a time to the minute, with a list of times that pops up. */
class WTimeInput final : public WTypedInput
{
    Q_OBJECT
public:
    /** Minutes between the times of the list, and the small step of keys and wheel; the large one is an hour. */
    static constexpr int Interval = 15;

    /** Begins with midnight. */
    explicit WTimeInput(QWidget *parent = nullptr);

    /** The last time that was set or could be read. */
    [[nodiscard]] QTime getTime() const { return m_time; }
    /** A valid one. Emits nothing. */
    void setTime(QTime time, Typed typed = Typed::Forget);
    void showPopup() override;

Q_SIGNALS:
    /** The user has typed, stepped to or chosen a time, which may be the same one. */
    void timeEntered(QTime time);

protected:
    void changeEvent(QEvent *event) override;
    [[nodiscard]] QString problemOf(const QString &text) const override;
    void take(const QString &text) override;
    [[nodiscard]] QString valueText() const override;
    void step(int count, bool isLarge) override;

private:
    void enter(QTime time);
    void fillList();
    void fit();

    QTime m_time{0, 0};
};
