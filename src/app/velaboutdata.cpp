// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "app/velaboutdata.h"

#include <KLocalizedString>

KAboutData velAboutData()
{
    KAboutData about(QStringLiteral("delmasttime"), i18n("Delmast Time"), QStringLiteral("1.0"),
                     i18n("Delmast Time - Group calendar for organisations."), KAboutLicense::BSDL,
                     i18n("Copyright 2026 The Delmast Time authors"));
    about.addAuthor(i18n("The Delmast Time authors"));
    // Reports go to whoever runs the calendar's server; the frameworks' own address is not ours.
    about.setBugAddress(QByteArray());
    about.setDesktopFileName(QStringLiteral("org.delmasttime.delmasttime"));
    return about;
}
