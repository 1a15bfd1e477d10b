// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "document/velmessages.h"
#include "formats/velxmlwriter.h"

#include <QObject>
#include <QPointer>
#include <QString>

#include <functional>
#include <optional>

class VelDoc;
class VelSettings;

/**
 * Keeps a window's calendar from being synchronised with what it does not belong to: an archive with anything, a calendar
 * with the account of another one, before the user has said what is to become of it. What a synchronisation takes away is
 * kept in a copy.
 */
class VelSyncGuard : public QObject
{
    Q_OBJECT
public:
    /** All of these must outlive this. */
    struct Context {
        VelDoc &doc;
        const VelSettings &settings;
        VelMessages &messages;
        std::function<void(const QString &)> notice; ///< tells something that is to be read for a while
    };

    explicit VelSyncGuard(Context context);

    /**
     * True when the calendar may be synchronised now. May ask the user, and so run an event loop in which this may go; what
     * was once put off is asked about again only @p byHand, or when calendar or account are others.
     */
    [[nodiscard]] bool maySync(bool byHand);
    /** Asks, when a calendar has just been opened, what would otherwise be asked in the middle of other work. */
    void checkOpened();
    /** Notes with whom the calendar was synchronised. True when that is news that are to be saved. */
    bool noteSynchronized();
    /** The synchronisation that maySync() allowed is over: unless it was noted as one, what was to be replaced stays. */
    void noteEnded();
    /** Writes a copy of what is about to be taken away. False, and told, when that cannot be. */
    [[nodiscard]] bool keepCopy();
    /** Where the last copy is, as a sentence, once; empty when none was written since. */
    [[nodiscard]] QString takeCopyNotice();

private:
    using Ask = bool (VelSyncGuard::*)();

    [[nodiscard]] VelServerAccount account() const;
    [[nodiscard]] QString situation() const;
    [[nodiscard]] bool askOnce(bool byHand, Ask ask);
    [[nodiscard]] bool askWhetherArchive();
    [[nodiscard]] bool askWhatBecomesOfIt();
    [[nodiscard]] bool follow(int choice);
    [[nodiscard]] bool startAnew(bool keepsOwn);
    void tellArchive();
    void saveNote();

    Context m_context;
    VelServerAccount m_allowed; // with which the last synchronisation was allowed
    QString m_putOff; // the situation that the user does not want to be asked about again
    QString m_copy; // the last one; empty when it has been told of
    struct Replaced {
        QString copy;
        bool wasModified = false;
    };
    std::optional<Replaced> m_replaced; // the calendar that the server's is to take the place of
    bool m_isAsking = false;
    bool m_hasCopyFailed = false; // and the user has been told
};
