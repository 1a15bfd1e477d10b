// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QDate>
#include <QDialog>
#include <QUrl>

#include <functional>

class KUrlRequester;
class QLabel;
class QPushButton;
class WDateTimeWidget;

/** Asks which entries to archive, and where, and tells how many that would be. */
class VelArchive : public QDialog
{
    Q_OBJECT
public:
    /** How many entries are over on that day. */
    using Count = std::function<int(QDate)>;

    /** Begins with @p date and the file @p url, which may be empty. */
    VelArchive(Count count, QDate date, const QUrl &url, QWidget *parent);
    ~VelArchive() override;

    /** Entries that ended before this day are to be archived. */
    [[nodiscard]] QDate getDate() const;
    /** The archive file; empty when none is named. */
    [[nodiscard]] QUrl getURL() const;

    /** With what is typed, if there is anything to archive then. */
    void accept() override;

private:
    void buildLayout();
    void slotDateChanged();
    void updateOk();

    Count m_countEntries;
    WDateTimeWidget *m_date;
    KUrlRequester *m_file;
    QLabel *m_countLabel;
    QPushButton *m_ok = nullptr;
    int m_count = 0;
};
