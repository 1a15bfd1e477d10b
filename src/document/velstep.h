// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "model/velentry.h"

#include <QPointer>
#include <QString>

#include <memory>
#include <vector>

class VelDoc;

/**
 * One change that the user made to a calendar, and may take back and make again: every entry that it touched, as it was
 * and as it became. One kind of record serves all commands, from a drag to an import.
 *
 * What nobody else touched since comes back to the letter: ids, order, the mark of what is still to be sent. What has
 * been sent, has rung or was changed by others meanwhile keeps that: only what the step itself changed is put back, and
 * that as a new change, to be sent in its turn.
 */
class VelStep
{
public:
    struct Change {
        std::unique_ptr<VelEntry> before; ///< null for an entry that the step added
        std::unique_ptr<VelEntry> after; ///< null for one that is gone for good
    };

    /** @p exchange is VelDoc::getExchangeCount() at the time of the step. */
    VelStep(QString text, quint64 exchange, std::vector<Change> changes);

    /** What the user did, in a word or two. */
    [[nodiscard]] const QString &text() const { return m_text; }
    [[nodiscard]] const std::vector<Change> &changes() const { return m_changes; }

    /**
     * Puts @p doc, in which the step was made, back or forth again; the views are the caller's to update. Returns the local
     * ids of what changed: none when all of it is gone.
     */
    std::vector<quint32> undo(VelDoc &doc);
    std::vector<quint32> redo(VelDoc &doc);

private:
    QString m_text;
    quint64 m_exchange;
    std::vector<Change> m_changes;
};

/**
 * What happens to the calendar while this lives is one step of the user. Of scopes inside each other the outermost counts.
 * What happens outside of any, a reminder that rings for one, is nothing to be undone.
 */
class VelStepScope
{
public:
    VelStepScope(VelDoc *doc, const QString &text);
    ~VelStepScope();
    Q_DISABLE_COPY_MOVE(VelStepScope)

private:
    QPointer<VelDoc> m_doc; // may go first when a window is closed under the mouse
};
