// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "document/velexchangereader.h"

#include "formats/velvcalendarreader.h"
#include "formats/velxmlreader.h"
#include "ical/velicalendar.h"
#include "ical/velicalendarreader.h"
#include "model/compat.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace
{
/** More than any exchange file needs; larger ones would only fill the memory. */
constexpr qint64 LargestFile = 512LL << 20;
constexpr std::size_t PieceSize = 64 << 10; // bytes
constexpr int AllOfIt = 1000; // thousandths

bool isXml(const QByteArray &bytes)
{
    // Neither of the other two ever starts so; calendar files need no declaration, and may start with a mark.
    constexpr int markSize = 3;
    return bytes.mid(bytes.startsWith("\xEF\xBB\xBF") ? markSize : 0, 64).trimmed().startsWith('<');
}

int thousandths(std::size_t done, VelSize all)
{
    return all == 0 ? AllOfIt : static_cast<int>(done * AllOfIt / static_cast<std::size_t>(all));
}
} // namespace

class VelExchangeReader::Format
{
public:
    Format() = default;
    virtual ~Format() = default;
    Q_DISABLE_COPY_MOVE(Format)

    virtual bool readSome() = 0;
    [[nodiscard]] virtual int progress() const = 0;
    [[nodiscard]] virtual VelForeignContent takeContent() = 0;
};

namespace
{
class VCalendarFormat : public VelExchangeReader::Format
{
public:
    explicit VCalendarFormat(const QByteArray &bytes)
        : m_size(bytes.size())
        , m_reader(bytes)
    {
    }
    bool readSome() override { return m_reader.readSome(PieceSize); }
    [[nodiscard]] int progress() const override { return thousandths(m_reader.position(), m_size); }
    [[nodiscard]] VelForeignContent takeContent() override { return m_reader.takeContent(); }

private:
    const VelSize m_size;
    VelVCalendarReader m_reader;
};

class ICalendarFormat : public VelExchangeReader::Format
{
public:
    explicit ICalendarFormat(const QByteArray &bytes)
        : m_reader(bytes, QTimeZone::systemTimeZone())
    {
    }
    bool readSome() override { return m_reader.readSome(); }
    [[nodiscard]] int progress() const override { return m_reader.progress(); }
    [[nodiscard]] VelForeignContent takeContent() override { return m_reader.takeContent(); }

private:
    VelICalendarReader m_reader;
};

/** A calendar of this program, or a part of one: its entries become new ones. */
class CalendarFormat : public VelExchangeReader::Format
{
public:
    explicit CalendarFormat(const QByteArray &bytes)
        : m_bytes(bytes)
    {
    }

    bool readSome() override
    {
        const auto rest = static_cast<std::size_t>(m_bytes.size()) - m_position;
        const std::size_t size = std::min(PieceSize, rest);
        m_isReadable = m_reader.feed(m_bytes.constData() + m_position, size);
        m_position += size;
        if (m_isReadable && size < rest)
            return true;
        m_isReadable = m_isReadable && m_reader.finish();
        return false;
    }

    [[nodiscard]] int progress() const override { return thousandths(m_position, m_bytes.size()); }

    [[nodiscard]] VelForeignContent takeContent() override
    {
        VelForeignContent content;
        content.isReadable = m_isReadable;
        if (!m_isReadable)
            return content;
        content.entries = m_reader.takeContent().entries;
        std::erase_if(content.entries, [](const auto &entry) { return entry->isDeleted(); });
        for (const auto &entry : content.entries) {
            entry->localid = 0;
            entry->globalid = 0;
        }
        return content;
    }

private:
    const QByteArray m_bytes;
    std::size_t m_position = 0;
    bool m_isReadable = false;
    VelXmlReader m_reader;
};
} // namespace

VelExchangeReader::VelExchangeReader(const QString &path)
{
    QFile file(path);
    // Pipes and devices may never begin, or never end.
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
        return;
    const QByteArray bytes = file.read(LargestFile + 1);
    m_isOpen = file.error() == QFileDevice::NoError;
    if (!m_isOpen || bytes.size() > LargestFile)
        return;
    if (isXml(bytes))
        m_format = std::make_unique<CalendarFormat>(bytes);
    else if (VelICalendar::isICalendar(bytes))
        m_format = std::make_unique<ICalendarFormat>(bytes);
    else
        m_format = std::make_unique<VCalendarFormat>(bytes);
}

VelExchangeReader::~VelExchangeReader() = default;

bool VelExchangeReader::readSome()
{
    return m_format && m_format->readSome();
}

int VelExchangeReader::progress() const
{
    return m_format ? m_format->progress() : AllOfIt;
}

VelForeignContent VelExchangeReader::takeContent()
{
    if (m_format)
        return m_format->takeContent();
    VelForeignContent content;
    content.isReadable = false;
    return content;
}
