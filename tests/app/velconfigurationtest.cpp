// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "app/velconfiguration.h"
#include "app/velfilechooser.h"
#include "app/velfilecommands.h"

#include <KConfig>

#include <QPalette>
#include <QTemporaryDir>
#include <QTest>

namespace
{
QPalette palette(bool dark)
{
    return dark ? QPalette(Qt::black) : QPalette(Qt::lightGray);
}
} // namespace

class VelConfigurationTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void emptyConfigurationShouldGiveTheDefaults();
    void preferencesShouldSurvive();
    void optionsShouldSurvive();
    void hostileValuesShouldNotGetThrough_data();
    void hostileValuesShouldNotGetThrough();
    void fileShouldBeForItsOwnerOnly();
    void unchosenColoursShouldFollowThePalette();
    void filterShouldBeWrittenAsTheToolkitWantsIt();
};

void VelConfigurationTest::emptyConfigurationShouldGiveTheDefaults()
{
    KConfig config(QString(), KConfig::SimpleConfig);
    VelSettings settings;
    settings.port = 1;
    settings.encrypt = true;
    settings.autoSync = false;
    settings.doReminderSound = true;
    VelLook look;
    VelConfiguration::readPreferences(VelConfiguration::preferences(&config), settings, look,
                                      VelLook::defaults(palette(false)));
    QCOMPARE(settings.port, 7070);
    QVERIFY(!settings.encrypt);
    QVERIFY(settings.autoSave && settings.autoSync && settings.autoSaveSync);
    QCOMPARE(settings.autoSaveInterval, 10);
    QCOMPARE(settings.autoSyncInterval, 10);
    QVERIFY(settings.doReminderDialog && !settings.doReminderSound && !settings.doReminderExec);
    QCOMPARE(settings.getWorkdays(), QVector<int>({1, 2, 3, 4, 5}));
    QCOMPARE(settings.workdayBegin, QTime(9, 0));
    QCOMPARE(settings.workdayEnd, QTime(17, 0));
    const VelWindowOptions options = VelConfiguration::readOptions(VelConfiguration::generalOptions(&config));
    QCOMPARE(options.geometry, QSize(800, 500));
    QVERIFY(options.showToolbar && options.showStatusbar && !options.docked);
    QVERIFY(options.docUrl.isEmpty());
}

void VelConfigurationTest::preferencesShouldSurvive()
{
    KConfig config(QString(), KConfig::SimpleConfig);
    const VelLook defaults = VelLook::defaults(palette(false));
    VelSettings written;
    written.setWorkdays({7, 2});
    written.workdayBegin = QTime(8, 30);
    written.user = QStringLiteral("päivi, \"R&D\"");
    written.pass = QStringLiteral("d41d8cd98f00b204e9800998ecf8427e");
    written.origUserid = 3000000000U;
    written.port = 7071;
    written.encrypt = true;
    written.isUntried = true;
    written.autoSave = false;
    written.dock = true;
    written.reminderExec = QUrl(QStringLiteral("file:///usr/bin/beep%20loud"));
    VelLook writtenLook = defaults;
    writtenLook.selection = QColor(1, 2, 3);
    writtenLook.entryFont = QFont(QStringLiteral("Courier"), 17);
    VelConfiguration::writePreferences(VelConfiguration::preferences(&config), written, writtenLook,
                                       defaults);

    VelSettings read;
    VelLook look;
    VelConfiguration::readPreferences(VelConfiguration::preferences(&config), read, look, defaults);
    QCOMPARE(read.getWorkdays(), QVector<int>({2, 7}));
    QCOMPARE(read.workdayBegin, written.workdayBegin);
    QCOMPARE(read.user, written.user);
    QCOMPARE(read.pass, written.pass);
    QCOMPARE(read.origUserid, written.origUserid);
    QCOMPARE(read.port, 7071);
    QVERIFY(read.encrypt && read.isUntried);
    QVERIFY(!read.autoSave && read.dock);
    QCOMPARE(read.reminderExec, written.reminderExec);
    QCOMPARE(look.selection, QColor(1, 2, 3));
    QCOMPARE(look.entryFont.family(), QStringLiteral("Courier"));
    QCOMPARE(look.dayHour, defaults.dayHour);
}

void VelConfigurationTest::optionsShouldSurvive()
{
    KConfig config(QString(), KConfig::SimpleConfig);
    VelWindowOptions written;
    written.geometry = QSize(1024, 333);
    written.showToolbar = false;
    written.toolBarPos = VelConfiguration::toolBarPosition(Qt::LeftToolBarArea);
    written.splitterSizes1 = {300, 12};
    written.docked = true;
    written.docUrl = QUrl::fromLocalFile(QStringLiteral("/tmp/Über & co.xml"));
    VelConfiguration::writeOptions(VelConfiguration::generalOptions(&config), written);
    const VelWindowOptions read = VelConfiguration::readOptions(VelConfiguration::generalOptions(&config));
    QCOMPARE(read.geometry, written.geometry);
    QVERIFY(!read.showToolbar && read.showStatusbar && read.docked);
    QCOMPARE(VelConfiguration::toolBarArea(read.toolBarPos), Qt::LeftToolBarArea);
    QCOMPARE(read.splitterSizes1, written.splitterSizes1);
    QCOMPARE(read.docUrl, written.docUrl);
}

void VelConfigurationTest::hostileValuesShouldNotGetThrough_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");
    QTest::newRow("port") << QStringLiteral("Port") << QStringLiteral("99999999");
    QTest::newRow("negative interval") << QStringLiteral("AutoSaveInterval") << QStringLiteral("-5");
    QTest::newRow("endless interval") << QStringLiteral("AutoSaveInterval") << QStringLiteral("2000000000");
    QTest::newRow("no weekdays") << QStringLiteral("Workdays") << QStringLiteral("0,8,-1");
    QTest::newRow("typed password") << QStringLiteral("Pass") << QStringLiteral("secret");
    QTest::newRow("colour") << QStringLiteral("Selection") << QStringLiteral("not a colour");
    QTest::newRow("time") << QStringLiteral("WorkdayBegin") << QStringLiteral("x");
}

void VelConfigurationTest::hostileValuesShouldNotGetThrough()
{
    QFETCH(QString, key);
    QFETCH(QString, value);
    KConfig config(QString(), KConfig::SimpleConfig);
    VelConfiguration::preferences(&config).writeEntry(key, value);
    VelSettings settings;
    VelLook look;
    VelConfiguration::readPreferences(VelConfiguration::preferences(&config), settings, look,
                                      VelLook::defaults(palette(false)));
    QVERIFY(settings.port >= 1 && settings.port <= 65535);
    QVERIFY(settings.autoSaveInterval >= 1);
    QVERIFY(settings.autoSaveInterval < std::numeric_limits<int>::max() / 60000); // a timer's milliseconds
    QVERIFY(settings.getFirstWorkingDay() >= 1 && settings.getLastWorkingDay() <= 7);
    QVERIFY(settings.pass.isEmpty());
    QVERIFY(look.selection.isValid());
    QCOMPARE(settings.workdayBegin, QTime(9, 0));
}

void VelConfigurationTest::fileShouldBeForItsOwnerOnly()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("rc"));
    KConfig config(path, KConfig::SimpleConfig);
    for (const bool isThere : {false, true}) {
        const auto open = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::ReadOther;
        QVERIFY(!isThere || QFile::setPermissions(path, open));
        VelConfiguration::preferences(&config).writeEntry("Pass", isThere);
        VelConfiguration::save(config);
        QCOMPARE(QFile::permissions(path) & (open | QFile::WriteGroup | QFile::WriteOther),
                 QFile::ReadOwner | QFile::WriteOwner);
    }
}

void VelConfigurationTest::unchosenColoursShouldFollowThePalette()
{
    KConfig config(QString(), KConfig::SimpleConfig);
    const VelLook light = VelLook::defaults(palette(false));
    const VelLook dark = VelLook::defaults(palette(true));
    VelConfiguration::writePreferences(VelConfiguration::preferences(&config), VelSettings(), light, light);
    VelSettings settings;
    VelLook look;
    VelConfiguration::readPreferences(VelConfiguration::preferences(&config), settings, look, dark);
    QCOMPARE(look.dayHour, dark.dayHour);
    QVERIFY(look.dayHour.lightness() < 128);
    QVERIFY(light.dayHour.lightness() > 128);
}

void VelConfigurationTest::filterShouldBeWrittenAsTheToolkitWantsIt()
{
    QCOMPARE(VelFileCommands::getFilter(), QStringLiteral("*.xml|Calendar files\n*|All files"));
    const QString kinds = QStringLiteral(
        "vCalendar files (*.vcs);;iCalendar files (*.ics);;Calendar files (*.xml);;All files (*)");
    QCOMPARE(VelFileDialogs::nameFilter(VelFileCommands::getExtFilter()), kinds);
    QCOMPARE(VelFileDialogs::nameFilter(VelFileCommands::getImportFilter()),
             QString(QStringLiteral("Calendar files of all kinds (*.vcs *.ics *.xml);;") + kinds));
    for (const QString &kind : kinds.split(QStringLiteral(";;"))) {
        const QString suffix = kind.section(QLatin1Char('.'), 1).remove(QLatin1Char(')'));
        QCOMPARE(VelFileDialogs::withSuffixOf(QStringLiteral("my.old.vcs"), kind),
                 QString(QStringLiteral("my.old.") + (suffix.size() == 3 ? suffix : QStringLiteral("vcs"))));
    }
}

QTEST_MAIN(VelConfigurationTest)

#include "velconfigurationtest.moc"
