// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "document/velurl.h"

namespace VelUrl
{
void setSuffix(QUrl &url, const QString &suffix)
{
    if (!url.fileName().endsWith(suffix))
        url.setPath(url.path() + suffix);
}
} // namespace VelUrl
