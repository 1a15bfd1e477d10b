// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "model/wsecurity.h"

#include <QCryptographicHash>

QString WSecurity::md5(const QString &password)
{
    return QString::fromLatin1(
        QCryptographicHash::hash(password.toLatin1(), QCryptographicHash::Md5).toHex());
}
