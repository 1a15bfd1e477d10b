// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QSize>
#include <QString>

class QDialog;

/** The sizes that the user gave dialogs, kept by name from one start of the program to the next. */
namespace VelDialogSize
{
/**
 * Gives @p dialog, when all is in it, the size that is kept, or else @p usual; never more than its screen has room for.
 */
void restore(QDialog &dialog, const QString &name, const QSize &usual);
/** Keeps the size when the user has changed it. */
void save(const QDialog &dialog, const QString &name);
} // namespace VelDialogSize
