// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <KAboutData>

/** Who the program is, for the frameworks, the command line and the About box. */
[[nodiscard]] KAboutData velAboutData();
