// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QWidget>

class QDateTime;
class WDateTimeWidget;

/** The bar above the big list: the first and the last date whose entries are listed. */
class VelListViewWidget : public QWidget
{
    Q_OBJECT
public:
    /** How many days are listed until the user chooses otherwise. */
    static constexpr int DefaultSpan = 30;

    /** Starts with @p start and the default span. */
    explicit VelListViewWidget(QDate start, QWidget *parent = nullptr);

    [[nodiscard]] QDate getStart() const;
    [[nodiscard]] QDate getEnd() const;
    /** Moves the range to @p date and keeps its length. Says nothing. */
    void setFilter(QDate date);

Q_SIGNALS:
    /** The user chose another range. */
    void dateChanged(const QDateTime &start, const QDateTime &end);

private:
    void slotStartChanged();
    void slotEndChanged();
    void report();

    WDateTimeWidget *m_start;
    WDateTimeWidget *m_end;
};
