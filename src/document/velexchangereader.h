// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include "formats/velforeigncontent.h"

#include <QString>

#include <memory>

/** Reads a file that may be of another program in pieces, so that a long one can be shown on its way and stopped. */
class VelExchangeReader
{
public:
    /** The local file @p path, whose content tells what it is: vCalendar, iCalendar or a calendar file. */
    explicit VelExchangeReader(const QString &path);
    ~VelExchangeReader();
    Q_DISABLE_COPY_MOVE(VelExchangeReader)

    /** False when there is no such file, or it cannot be read. */
    [[nodiscard]] bool isOpen() const { return m_isOpen; }
    /** Reads on, for some hundredths of a second at most with usual files; false when that was all. */
    bool readSome();
    /** How much has been done, in thousandths. */
    [[nodiscard]] int progress() const;
    /** What was read: call it when readSome() has come to the end. */
    [[nodiscard]] VelForeignContent takeContent();

    /** One of the formats. */
    class Format;

private:
    bool m_isOpen = false;
    std::unique_ptr<Format> m_format; // none for a file that is too large
};
