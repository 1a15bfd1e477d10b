// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "views/veldayarea.h"

/**
 * The band over the column of a day with the entries that have no times: line by line, so that they can be read
 * and leave the hours to those that have.
 */
class VelDayBand : public VelDayArea
{
    Q_OBJECT
public:
    explicit VelDayBand(VelDayView *view);

    /** Shows the entries of @p date among @p list that have no times, on at most @p maximumLines lines. */
    void updateData(QDate date, const VelEntryList &list, int maximumLines);
    /** Lines that it needs, the one that tells how many more there are included. */
    [[nodiscard]] int lineCount() const { return qMin(static_cast<int>(m_list.size()), m_maximumLines); }
    [[nodiscard]] int lineHeight() const { return m_style.lineHeight + 4; }
    /** Entries that have no line at the moment; they are reached with the wheel and with the keyboard. */
    [[nodiscard]] int hiddenCount() const { return entryCount() - shownCount(); }
    void ensureShown(int index) override;

    [[nodiscard]] QString accessibleText() const override;

protected:
    void layOut() override;
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragLeaveEvent(QDragLeaveEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    [[nodiscard]] QRect lineRect(int line) const;
    /** Entries that have a line: the last one is needed to tell of the others. */
    [[nodiscard]] int shownCount() const
    {
        return entryCount() > m_maximumLines ? m_maximumLines - 1 : entryCount();
    }
    void scrollTo(int first);

    VelEntryList m_list; // those without times
    int m_maximumLines = 1;
    int m_first = 0; // of the entries that have a line
    int m_wheelAngle = 0; // eighths of a degree, not yet a line
    QPoint m_pressPos;
    quint32 m_pressed = 0; // id of the entry that the left button holds
    bool m_isDropTarget = false;
};
