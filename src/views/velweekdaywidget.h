// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QVector>
#include <QWidget>

#include <array>

class QCheckBox;

/** Seven check boxes in a row, one for each weekday, in the order of the locale's week. */
class VelWeekDayWidget : public QWidget
{
    Q_OBJECT
public:
    explicit VelWeekDayWidget(QWidget *parent = nullptr);

    /** The checked days, 1 = Monday to 7 = Sunday, in the order in which they stand. */
    [[nodiscard]] QVector<int> getList() const;
    /** Checks exactly these days. */
    void setList(const QVector<int> &days);

private:
    struct Box {
        int day = 0;
        QCheckBox *box = nullptr;
    };
    std::array<Box, 7> m_boxes{};
};
