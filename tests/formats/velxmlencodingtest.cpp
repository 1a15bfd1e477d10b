// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "formats/goldenrecords.h"
#include "formats/vellatin.h"
#include "formats/xmltesting.h"

#include <QTest>

using namespace XmlTesting;

namespace
{
const QString Golden = QStringLiteral("golden.xml");

/** The same calendar in UTF-8, with its many characters themselves instead of references. */
QByteArray goldenInUtf8()
{
    const QByteArray bytes = dataFile(Golden);
    QString text = VelLatin::fromLatin9(bytes.constData(), bytes.size());
    text.replace(QLatin1String("ISO-8859-15"), QLatin1String("utf-8"));
    text.replace(QLatin1String("&#128512;"), QStringLiteral("😀"));
    text.replace(QLatin1String("&#1055;"), QStringLiteral("П"));
    return text.toUtf8();
}

QByteArray withTitle(const QByteArray &declaration, const QByteArray &title)
{
    return declaration + "<c><entry><title>" + title
        + "</title><start>2002-3-5 9:5</start><end>2002-3-5 9:5</end>" + "</entry></c>";
}
} // namespace

class VelXmlEncodingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldReadDeclaredEncoding_data()
    {
        QTest::addColumn<QByteArray>("declaration");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("title");
        const QByteArray single("\xA4\xE4");
        const QByteArray utf8("\xE2\x82\xAC\xC3\xA4");
        const QString latin9 = QStringLiteral("€ä");
        const QString latin1 = QStringLiteral("¤ä");
        const auto row = [](const char *declaration, const QByteArray &bytes, const QString &title) {
            QTest::addRow("%s", declaration) << QByteArray(declaration) << bytes << title;
        };
        row("<?xml version = '1.0' encoding = 'ISO-8859-15' ?>\n", single, latin9);
        row("<?xml version=\"1.0\" encoding=\"iso-8859-15\"?>", single, latin9);
        row("<?xml version='1.0' encoding='ISO-8859-15' standalone='yes'?>", single, latin9);
        row("<?xml version='1.0'\n\tencoding\n=\n'ISO-8859-15'?>", single, latin9);
        row("<?xml version='1.0' encoding='ISO-8859-1'?>", single, latin1);
        row("<?xml version='1.0' encoding='UTF-8'?>", utf8, latin9);
        row("<?xml version='1.0' encoding='utf-8'?>", utf8, latin9);
        row("<?xml version='1.0'?>", utf8, latin9);
        row("", utf8, latin9);
        row("<!-- encoding='ISO-8859-15' ?> -->", utf8, latin9);
        row("<?xml-style encoding='ISO-8859-15'?>", utf8, latin9);
        row("\xEF\xBB\xBF", utf8, latin9);
        row("\xEF\xBB\xBF<?xml version='1.0' encoding='UTF-8'?>", utf8, latin9);
        row("<?xml version='1.0' encoding='US-ASCII'?>", "a&#8364;", QStringLiteral("a€"));
        row("<?xml version='1.0' encoding='us-ascii'?>", "a&#xE4;", QStringLiteral("aä"));
    }

    void shouldReadDeclaredEncoding()
    {
        QFETCH(QByteArray, declaration);
        QFETCH(QByteArray, bytes);
        const auto content = read(withTitle(declaration, bytes));
        QVERIFY(content);
        QCOMPARE(content->entries.size(), std::size_t(1));
        QTEST(content->entries.front()->getTitle(), "title");
    }

    void shouldRefuseEncoding_data()
    {
        QTest::addColumn<QByteArray>("declaration");
        QTest::addColumn<QByteArray>("title");
        const auto row = [](const char *declaration, const QByteArray &title) {
            QTest::addRow("%s with %s", declaration, title.toHex().constData())
                << QByteArray(declaration) << title;
        };
        row("<?xml version='1.0' encoding='windows-1252'?>", "a");
        row("<?xml version='1.0' encoding='UTF-16'?>", "a");
        row("<?xml version='1.0' encoding='UTF-7'?>", "a");
        row("<?xml version='1.0' encoding='ISO-8859-2'?>", "a");
        row("<?xml version='1.0' encoding='ISO-8859-150'?>", "a");
        row("<?xml version='1.0' encoding=' UTF-8'?>", "a");
        row("<?xml version='1.0' encoding=''?>", "a");
        row("<?xml version='1.0' encoding=UTF-8?>", "a");
        row("<?xml version='1.0' encoding='UTF-8?>", "a");
        row("<?xml encoding='UTF-8' version='1.0'?>", "a");
        row(" <?xml version='1.0' encoding='UTF-8'?>", "a");
        // Bytes that the declared encoding does not have.
        row("<?xml version='1.0' encoding='UTF-8'?>", "\xE4");
        row("<?xml version='1.0' encoding='UTF-8'?>", "\xC0\x80");
        row("<?xml version='1.0' encoding='UTF-8'?>", "\xED\xA0\x80");
        row("<?xml version='1.0' encoding='UTF-8'?>", "\xF4\x90\x80\x80");
        row("<?xml version='1.0' encoding='US-ASCII'?>", "\xE4");
        row("", "\xE4");
    }

    void shouldRefuseEncoding()
    {
        QFETCH(QByteArray, declaration);
        QFETCH(QByteArray, title);
        const QByteArray bytes = withTitle(declaration, title);
        QVERIFY(!read(bytes));
        QVERIFY(!readInPieces(bytes, 1));
    }

    void shouldNameUnknownEncoding()
    {
        const QByteArray bytes = withTitle("<?xml version='1.0' encoding='koi8-r'?>", "a");
        VelXmlReader reader;
        QVERIFY(!reader.feed(bytes.constData(), static_cast<std::size_t>(bytes.size())));
        QVERIFY2(reader.errorMessage().contains(QLatin1String("koi8-r"), Qt::CaseInsensitive),
                 qPrintable(reader.errorMessage()));
        QVERIFY(!reader.feed("<c/>", 4));
        QVERIFY(!reader.finish());
    }

    void shouldReadPiecesOfEverySize_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("ISO-8859-15") << dataFile(Golden);
        QTest::newRow("UTF-8") << goldenInUtf8();
    }

    void shouldReadPiecesOfEverySize()
    {
        QFETCH(QByteArray, bytes);
        const VelXmlContent expected = GoldenRecords::calendar();
        for (int size = 1; size <= bytes.size(); ++size) {
            const auto content = readInPieces(bytes, size);
            QVERIFY2(content, QByteArray::number(size).constData());
            QCOMPARE(difference(*content, expected), QString());
        }
    }
};

QTEST_GUILESS_MAIN(VelXmlEncodingTest)

#include "velxmlencodingtest.moc"
