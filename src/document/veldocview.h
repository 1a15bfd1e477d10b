// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

/** What shows a document and wants to hear of its changes. */
class VelDocView
{
public:
    virtual ~VelDocView() = default;

    /** Show the document as it is now. Pointers to occurrences got before may be gone. */
    virtual void updateView() = 0;
};
