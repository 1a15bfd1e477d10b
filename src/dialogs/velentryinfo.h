// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "document/velanswer.h"

#include <QDialog>

class QBoxLayout;
class QDialogButtonBox;
class QScrollArea;
struct VelEntryRow;

/** Shows one entry to be read, and takes the user's answer when it is an invitation. */
class VelEntryInfo : public QDialog
{
    Q_OBJECT
public:
    /**
     * Shows @p entry as it is now; it may go before the dialog does. @p parent is in the window of its calendar.
     * @p text tells above it what has happened to it; it may be empty. Only with @p mayAnswer can an answer be chosen.
     */
    VelEntryInfo(const VelEntry &entry, QWidget *parent, VelAnswer::Mode wanted, const QString &text,
                 bool mayAnswer);
    ~VelEntryInfo() override;

    /** Offers to put this and @p others that wait behind it off, when there are any. */
    void offerLater(int others);
    /**
     * The answer that was chosen, a value of VelAccount::Status, or 0; it counts when the dialog was accepted. Else
     * VelAnswer::AllLater or 0.
     */
    [[nodiscard]] int getAnswer() const { return m_answer; }

public Q_SLOTS:
    void slotAccept();
    void slotTentative();
    void slotDecline();
    void slotOk();

private:
    void addAnswers(QBoxLayout *layout, const VelAnswer::Offer &offer);
    [[nodiscard]] QScrollArea *makeRows(const std::vector<VelEntryRow> &rows);
    [[nodiscard]] QSize usualSize(const QScrollArea &rows) const;
    [[nodiscard]] QWidget *makeText(const QString &text, QWidget *parent) const;
    [[nodiscard]] QWidget *makePeople(const VelAccountList &people, QWidget *parent) const;
    void answer(int status);

    QDialogButtonBox *m_box = nullptr;
    int m_answer = VelAccount::Unanswered;
};
