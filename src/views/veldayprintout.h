// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "hub/velprintout.h"
#include "model/velentrylist.h"
#include "views/velagendaprintout.h"
#include "views/velpaper.h"

#include <QTime>

#include <memory>

class VelDaySource;
class VelSettings;
struct VelOl;

/**
 * Some days side by side on one page, their entries as boxes on an axis of hours. When any text is cut short
 * there, pages with a list of all entries follow.
 */
class VelDayPrintout : public VelPrintout
{
public:
    /** Of @p settings the working hours count. */
    VelDayPrintout(std::unique_ptr<const VelDaySource> source, const VelSettings &settings, QDate start,
                   int days);
    ~VelDayPrintout() override;

    [[nodiscard]] QString title() const override;
    int layOut(const QSizeF &size, const QPaintDevice *device) override;
    void paintPage(QPainter &painter, int page) const override;

    /**
     * Columns for entries that are sorted by start; those that hang together by overlaps are equally wide. On the
     * screen neighbours may cover each other in part, on paper nobody could move them apart.
     */
    [[nodiscard]] static std::vector<VelOl> sideBySide(const VelEntryList &entries);

private:
    /** The entries of one day, those that take all of it apart. */
    struct Day {
        QDate date;
        VelEntryList allDay;
        VelEntryList timed;
    };
    struct Box {
        QRectF rect;
        QStringList lines;
        bool isDashed;
    };
    struct Label {
        QRectF rect;
        QString text;
        VelPaper::Face face;
        Qt::Alignment alignment;
    };

    [[nodiscard]] std::vector<Day> readDays() const;
    void setHours(const std::vector<Day> &days);
    [[nodiscard]] qreal yOf(int minute) const;
    void setGrid(const std::vector<Day> &days);
    void addRuler();
    void addHead(const Day &day, int column);
    void addAllDay(const Day &day, int column);
    void addTimed(const Day &day, int column);
    void addBox(const VelEntryRef &ref, const Day &day, const VelOl &place, const QRectF &column);
    [[nodiscard]] QStringList boxLines(const VelEntryRef &ref, QDate day, const QSizeF &size);
    [[nodiscard]] QRectF columnRect(int column, qreal top, qreal bottom) const;
    void paintGrid(QPainter &painter) const;

    std::unique_ptr<const VelDaySource> m_source;
    QTime m_workdayBegin;
    QTime m_workdayEnd;
    QDate m_start;
    int m_dayCount;
    VelAgendaPrintout m_agenda;

    VelPaper m_paper;
    QSizeF m_size;
    int m_firstHour = 0;
    int m_endHour = 24;
    qreal m_rulerWidth = 0;
    qreal m_bandTop = 0; // of the entries that take all day
    qreal m_gridTop = 0; // of the hours
    qreal m_gridBottom = 0;
    std::vector<Box> m_boxes;
    std::vector<Label> m_labels;
    bool m_hasMarks = false;
    bool m_isComplete = true;
};
