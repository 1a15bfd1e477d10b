// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QString>
#include <QVector>

/** A person or a bookable resource of the server, or somebody invited to an entry. */
struct VelAccount {
    /** What an account is. */
    enum Type { NoType = 0, Person = 1, Resource = 2 };
    /** The answer to an invitation; 1 counts as unanswered too. */
    enum Status { Unanswered = 0, Declined = 2, Tentative = 3, Accepted = 4 };
    /** The role in an entry. */
    enum Attendee { RequiredAttendee = 0, OptionalAttendee = 1, ResourceAttendee = 2 };

    VelAccount() = default;
    VelAccount(const QString &name, const QString &email, quint32 id);

    /** Equal when id, name and e-mail are; type, status and role do not count. */
    bool operator==(const VelAccount &other) const
    {
        return id == other.id && name == other.name && email == other.email;
    }

    /** "Declined", "Accepted tentatively", "Accepted" or, for anything else, "Unanswered". */
    [[nodiscard]] QString getStatusStr() const;
    /** Name of the answer's icon: "no", "tentative", "yes", or empty for none. */
    [[nodiscard]] QString getStatusPix() const;
    /** Name of the type's icon: "person", "resource", or empty for none. */
    [[nodiscard]] QString getTypePix() const;
    /** The heading of the role's group in a list. */
    [[nodiscard]] QString getAttendeeStr() const;

    quint32 id = 0; ///< on the server; 0 for somebody whom the server does not know
    QString name;
    QString email; ///< may be empty
    int type = NoType;
    int status = Unanswered;
    int attendee = RequiredAttendee;
};

Q_DECLARE_TYPEINFO(VelAccount, Q_MOVABLE_TYPE);

/** Accounts by value; copies share their memory until one is changed. */
class VelAccountList : public QVector<VelAccount>
{
public:
    using QVector<VelAccount>::QVector;

    /** The first member with that id, or null. Valid until the list changes. */
    [[nodiscard]] const VelAccount *get(quint32 id) const;
    [[nodiscard]] VelAccount *get(quint32 id);

    /**
     * Negative, 0 or positive: 0 for equal accounts, less when the name of @p a sorts before that of @p b
     * (plain, case-sensitive), greater in every other case, also for equal names with another id or e-mail.
     */
    [[nodiscard]] static int compareItems(const VelAccount &a, const VelAccount &b);

    /** By name, plain and case-sensitive; equal names keep their order. */
    void sort();
};
