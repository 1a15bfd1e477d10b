// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogs/veldialogsize.h"

#include <KConfigGroup>
#include <KSharedConfig>

#include <QDialog>
#include <QLayout>
#include <QScreen>

namespace
{
/** Of the screen's height and width. */
constexpr qreal ScreenShare = 0.9;
constexpr char GivenSize[] = "delmastGivenSize";

KConfigGroup sizes()
{
    return KSharedConfig::openConfig()->group(QStringLiteral("Dialog Sizes"));
}
} // namespace

namespace VelDialogSize
{
void restore(QDialog &dialog, const QString &name, const QSize &usual)
{
    const QSize room = (QSizeF(dialog.screen()->availableSize()) * ScreenShare).toSize();
    const QSize wanted = sizes().readEntry(name, usual);
    dialog.layout()->activate(); // what is in it says how small it may be
    dialog.resize((wanted.isValid() ? wanted : usual).boundedTo(room));
    dialog.setProperty(GivenSize, dialog.size());
}

void save(const QDialog &dialog, const QString &name)
{
    KConfigGroup group = sizes();
    if (dialog.property(GivenSize).toSize() != dialog.size())
        group.writeEntry(name, dialog.size());
}
} // namespace VelDialogSize
