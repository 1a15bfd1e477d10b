// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "hub/velprintout.h"
#include "model/velentry.h"
#include "views/velflow.h"

/** Everything that is known of one entry or occurrence. */
class VelEntryPrintout : public VelPrintout
{
public:
    /** Copies @p entry. @p owner is the name of its owner, empty when that is the local user or not known. */
    VelEntryPrintout(const VelEntry &entry, const QString &owner);

    [[nodiscard]] QString title() const override;
    int layOut(const QSizeF &size, const QPaintDevice *device) override;
    void paintPage(QPainter &painter, int page) const override { m_flow.paintPage(painter, page); }

private:
    void addProperties();
    void addAccounts();

    VelEntry m_entry;
    QString m_owner;
    VelFlow m_flow;
};
