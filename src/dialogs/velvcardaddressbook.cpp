// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogs/velvcardaddressbook.h"

#include "model/compat.h"

#include <KContacts/Addressee>
#include <KContacts/VCardConverter>

#include <QDir>
#include <QFile>
#include <QSaveFile>
#include <QStandardPaths>
#include <QUuid>

namespace
{
/** Characters of a name or an address that anybody may want to see. */
constexpr int MaxText = 300;

/** The bytes of a file of bearable size that may hold cards, or nothing. */
QByteArray readFile(const QFileInfo &info)
{
    // A pipe or a device would make the reader wait, perhaps for ever.
    if (!info.isFile() || info.size() > VelVCardAddressBook::MaxFileSize)
        return {};
    QFile file(info.filePath());
    if (!file.open(QIODevice::ReadOnly))
        return {};
    // One byte more tells a file that has grown meanwhile.
    const QByteArray bytes = file.read(VelVCardAddressBook::MaxFileSize + 1);
    return bytes.size() > VelVCardAddressBook::MaxFileSize ? QByteArray() : bytes;
}

/** Where the name of a property ends. */
VelSize nameEnd(const QByteArray &line)
{
    VelSize end = 0;
    while (end < line.size() && line[end] != ':' && line[end] != ';')
        ++end;
    return end;
}

/** The line without the group that some programs put its property in, "item1.EMAIL:...", which the parser ignores. */
QByteArray withoutGroup(const QByteArray &line)
{
    return line.mid(line.left(nameEnd(line)).lastIndexOf('.') + 1);
}

/** Picks the properties of a file that tell who somebody is, each whole in a line. */
class LineFilter
{
public:
    void add(const QByteArray &line)
    {
        if (line.startsWith(' ') || line.startsWith('\t')) {
            m_property += line.mid(1);
        } else if (m_property.endsWith('=') && isQuoted()) {
            // In quoted-printable an equals sign at the end goes on without a blank.
            m_property.chop(1);
            m_property += line;
        } else {
            finish();
            m_property = line;
        }
    }

    void finish()
    {
        QByteArray property = withoutGroup(m_property);
        // Quoted-printable that ends open sends the parser round for ever.
        VelSize end = property.size();
        while (end > 0 && property.at(end - 1) == '=')
            --end;
        if (property.contains(';'))
            property.truncate(end);
        if (isWanted(property.left(nameEnd(property)).toUpper()))
            m_kept.append(property).append("\r\n");
        m_property.clear();
    }

    [[nodiscard]] QByteArray kept() const { return m_kept; }

private:
    /** Only the head may say so; it is short unless somebody wants this to take long. */
    [[nodiscard]] bool isQuoted() const
    {
        constexpr int headSize = 200;
        return m_property.left(headSize).toUpper().contains("QUOTED-PRINTABLE");
    }

    bool isWanted(const QByteArray &name)
    {
        static const QByteArrayList wanted = {"BEGIN", "END", "VERSION", "FN", "N", "NAME", "ORG", "KIND"};
        if (name == "BEGIN")
            m_emails = 0;
        return wanted.contains(name) || (name == "EMAIL" && m_emails++ < MaxEmails);
    }

    static constexpr int MaxEmails = 50;
    QByteArray m_property;
    QByteArray m_kept;
    int m_emails = 0; ///< of this card
};

/**
 * The cards without all that a list of people does not show. Pictures are most of a file, and the time for a
 * card grows with the square of its addresses: one made for that would hold up the program for hours.
 */
QByteArray essentialLines(QByteArray bytes)
{
    // Some programs begin a file with a byte order mark.
    if (bytes.startsWith("\xef\xbb\xbf"))
        bytes.remove(0, 3);
    bytes.replace("\r\n", "\n").replace('\r', '\n');
    LineFilter filter;
    VelSize start = 0;
    while (start < bytes.size()) {
        const VelSize found = bytes.indexOf('\n', start);
        const VelSize end = found < 0 ? bytes.size() : found;
        filter.add(bytes.mid(start, end - start));
        start = end + 1;
    }
    filter.finish();
    return filter.kept();
}

VelAddressee fromCard(const KContacts::Addressee &card)
{
    // Line breaks in a value are legal in vCards and useless in a list.
    return {card.realName().left(MaxText).simplified(), card.preferredEmail().left(MaxText).simplified()};
}

bool isNobody(const VelAddressee &addressee)
{
    return addressee.name.isEmpty() && addressee.email.isEmpty();
}

bool isGroup(const KContacts::Addressee &card)
{
    return card.kind().compare(QLatin1String("group"), Qt::CaseInsensitive) == 0;
}
} // namespace

VelVCardAddressBook::VelVCardAddressBook(const QString &folder)
    : m_folder(folder)
{
}

QString VelVCardAddressBook::defaultFolder()
{
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    return data + QLatin1String("/contacts");
}

QVector<VelAddressee> VelVCardAddressBook::fromCards(const QByteArray &bytes)
{
    QVector<VelAddressee> found;
    const KContacts::Addressee::List cards = KContacts::VCardConverter().parseVCards(essentialLines(bytes));
    for (const KContacts::Addressee &card : cards) {
        const VelAddressee addressee = fromCard(card);
        if (!isGroup(card) && !isNobody(addressee))
            found.append(addressee);
    }
    return found;
}

QByteArray VelVCardAddressBook::toCard(const VelAddressee &addressee, const QString &uid)
{
    const VelAddressee clean = {addressee.name.simplified(), addressee.email.simplified()};
    if (isNobody(clean))
        return {};
    KContacts::Addressee card;
    card.setUid(uid);
    card.setNameFromString(clean.name);
    card.setFormattedName(clean.name);
    if (!clean.email.isEmpty())
        card.addEmail(KContacts::Email(clean.email));
    return KContacts::VCardConverter().exportVCard(card, KContacts::VCardConverter::v3_0);
}

QVector<VelAddressee> VelVCardAddressBook::addressees() const
{
    QVector<VelAddressee> found;
    const QFileInfoList files =
        QDir(m_folder).entryInfoList({QStringLiteral("*.vcf")}, QDir::Files, QDir::Name);
    for (const QFileInfo &info : files)
        found += fromCards(readFile(info));
    return found;
}

bool VelVCardAddressBook::add(const VelAddressee &addressee)
{
    const QString uid = QUuid::createUuid().toString(QUuid::WithoutBraces);
    const QByteArray card = toCard(addressee, uid);
    if (card.isEmpty() || !QDir().mkpath(m_folder))
        return false;
    QSaveFile file(m_folder + QLatin1Char('/') + uid + QLatin1String(".vcf"));
    if (!file.open(QIODevice::WriteOnly))
        return false;
    file.write(card);
    return file.commit();
}
