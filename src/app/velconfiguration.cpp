// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "app/velconfiguration.h"

#include "model/vellimits.h"

#include <KConfig>
#include <KConfigGui>

#include <QDir>
#include <QFile>
#include <QStandardPaths>

#include <algorithm>
#include <array>
#include <utility>

namespace
{
constexpr int DigestLength = 32;

struct ColorKey {
    const char *key;
    QColor VelLook::*color;
};

constexpr std::array<ColorKey, 8> ColorKeys{{{"DayOffHour", &VelLook::dayOffHour},
                                             {"DayHour", &VelLook::dayHour},
                                             {"MainColor1", &VelLook::mainColor1},
                                             {"MainColor2", &VelLook::mainColor2},
                                             {"EntryBackground", &VelLook::entryBackground},
                                             {"EntryText", &VelLook::entryText},
                                             {"Tentative", &VelLook::tentative},
                                             {"Selection", &VelLook::selection}}};

struct FlagKey {
    const char *key;
    bool VelSettings::*flag;
};

constexpr std::array<FlagKey, 9> FlagKeys{{{"AutoSave", &VelSettings::autoSave},
                                           {"AutoSaveSync", &VelSettings::autoSaveSync},
                                           {"AutoSync", &VelSettings::autoSync},
                                           {"Dock", &VelSettings::dock},
                                           {"Encrypt", &VelSettings::encrypt},
                                           {"EncryptionUntried", &VelSettings::isUntried},
                                           {"DoReminderDialog", &VelSettings::doReminderDialog},
                                           {"DoReminderSound", &VelSettings::doReminderSound},
                                           {"DoReminderExec", &VelSettings::doReminderExec}}};

struct NumberKey {
    const char *key;
    int VelSettings::*number;
    int lowest;
    int highest;
};

constexpr std::array<NumberKey, 4> NumberKeys{
    {{"Port", &VelSettings::port, 1, VelLimits::HighestPort},
     {"AutoSaveInterval", &VelSettings::autoSaveInterval, 1, VelLimits::LongestInterval},
     {"AutoSyncInterval", &VelSettings::autoSyncInterval, 1, VelLimits::LongestInterval},
     {"ReminderDefault", &VelSettings::reminderDefault, 0, VelLimits::LongestReminder}}};

struct UrlKey {
    const char *key;
    QUrl VelSettings::*url;
};

constexpr std::array<UrlKey, 3> UrlKeys{{{"ArchiveFile", &VelSettings::archiveFile},
                                         {"ReminderSound", &VelSettings::reminderSound},
                                         {"ReminderExec", &VelSettings::reminderExec}}};

constexpr std::array<std::pair<int, Qt::ToolBarArea>, 4> ToolBarPlaces{
    {{VelWindowOptions::TopToolBar, Qt::TopToolBarArea},
     {3, Qt::BottomToolBarArea},
     {4, Qt::RightToolBarArea},
     {5, Qt::LeftToolBarArea}}};

/** A time is stored as a date-time of which only the time counts. */
QTime readTime(const KConfigGroup &group, const char *key, QTime usual)
{
    const QTime time = group.readEntry(key, QDateTime()).time();
    return time.isValid() ? time : usual;
}

void writeTime(KConfigGroup &group, const char *key, QTime time)
{
    group.writeEntry(key, QDateTime(QDate(2000, 1, 1), time));
}

/** The digest of a password, or nothing: whatever else stands there is none and is not sent anywhere. */
QString readDigest(const KConfigGroup &group)
{
    const QString digest = group.readEntry("Pass", QString());
    const bool isDigest =
        digest.size() == DigestLength && std::all_of(digest.begin(), digest.end(), [](QChar c) {
            return (c >= QLatin1Char('0') && c <= QLatin1Char('9'))
                || (c >= QLatin1Char('a') && c <= QLatin1Char('f'));
        });
    return isDigest ? digest : QString();
}

QList<int> readSizes(const KConfigGroup &group, const char *key)
{
    const QList<int> sizes = group.readEntry(key, QList<int>());
    const bool isUsable = std::all_of(sizes.begin(), sizes.end(), [](int size) { return size >= 0; });
    return isUsable ? sizes : QList<int>();
}
} // namespace

namespace VelConfiguration
{
void protect(const KConfig &config)
{
    const QString name = config.name();
    if (name.isEmpty())
        return; // kept in memory only
    const QString path = QDir(QStandardPaths::writableLocation(config.locationType())).filePath(name);
    const QFile::Permissions others = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup
        | QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;
    if ((QFile::permissions(path) & others) != 0)
        QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner);
}

void save(KConfig &config)
{
    protect(config); // what is written beside it takes over its rights
    config.sync();
    protect(config);
}

KConfigGroup preferences(KConfig *config)
{
    // Names the library that can keep colours and fonts: the linker leaves out what nobody names.
    static_cast<void>(KConfigGui::hasSessionConfig());
    return config->group(QStringLiteral("Preferences"));
}

KConfigGroup generalOptions(KConfig *config)
{
    return config->group(QStringLiteral("General Options"));
}

void readPreferences(const KConfigGroup &group, VelSettings &settings, VelLook &look, const VelLook &defaults)
{
    look = defaults;
    for (const ColorKey &each : ColorKeys) {
        const QColor color = group.readEntry(each.key, defaults.*each.color);
        if (color.isValid())
            look.*each.color = color;
    }
    look.calendarFont = group.readEntry("CalendarFont", defaults.calendarFont);
    look.entryFont = group.readEntry("EntryFont", defaults.entryFont);

    const VelSettings usual;
    for (const FlagKey &each : FlagKeys)
        settings.*each.flag = group.readEntry(each.key, usual.*each.flag);
    for (const NumberKey &each : NumberKeys)
        settings.*each.number =
            std::clamp(group.readEntry(each.key, usual.*each.number), each.lowest, each.highest);
    for (const UrlKey &each : UrlKeys)
        settings.*each.url = QUrl(group.readEntry(each.key, QString()));
    settings.workdayBegin = readTime(group, "WorkdayBegin", usual.workdayBegin);
    settings.workdayEnd = readTime(group, "WorkdayEnd", usual.workdayEnd);
    const QList<int> days = group.readEntry("Workdays", QList<int>());
    settings.setWorkdays(QVector<int>(days.begin(), days.end()));
    settings.user = group.readEntry("User", QString());
    settings.pass = readDigest(group);
    settings.origUserid = group.readEntry("OrigUserid", 0U);
    settings.server = group.readEntry("Server", QString());
}

void writePreferences(KConfigGroup group, const VelSettings &settings, const VelLook &look,
                      const VelLook &defaults)
{
    for (const ColorKey &each : ColorKeys) {
        // A colour that was never chosen follows the palette, which may be another one next time.
        if (look.*each.color == defaults.*each.color)
            group.deleteEntry(each.key);
        else
            group.writeEntry(each.key, look.*each.color);
    }
    const auto writeFont = [&group](const char *key, const QFont &font, const QFont &usual) {
        if (font == usual)
            group.deleteEntry(key);
        else
            group.writeEntry(key, font);
    };
    writeFont("CalendarFont", look.calendarFont, defaults.calendarFont);
    writeFont("EntryFont", look.entryFont, defaults.entryFont);

    for (const FlagKey &each : FlagKeys)
        group.writeEntry(each.key, settings.*each.flag);
    for (const NumberKey &each : NumberKeys)
        group.writeEntry(each.key, settings.*each.number);
    for (const UrlKey &each : UrlKeys)
        group.writeEntry(each.key, (settings.*each.url).toString(QUrl::RemovePassword));
    writeTime(group, "WorkdayBegin", settings.workdayBegin);
    writeTime(group, "WorkdayEnd", settings.workdayEnd);
    const QVector<int> &days = settings.getWorkdays();
    group.writeEntry("Workdays", QList<int>(days.begin(), days.end()));
    group.writeEntry("User", settings.user);
    group.writeEntry("Pass", settings.pass);
    group.writeEntry("OrigUserid", settings.origUserid);
    group.writeEntry("Server", settings.server);
}

VelWindowOptions readOptions(const KConfigGroup &group)
{
    VelWindowOptions options;
    const QSize geometry = group.readEntry("Geometry", options.geometry);
    if (geometry.width() > 0 && geometry.height() > 0)
        options.geometry = geometry;
    options.showToolbar = group.readEntry("Show Toolbar", true);
    options.showStatusbar = group.readEntry("Show Statusbar", true);
    options.toolBarPos = toolBarPosition(toolBarArea(group.readEntry("ToolBarPos", options.toolBarPos)));
    options.splitterSizes1 = readSizes(group, "SplitterSizes1");
    options.splitterSizes2 = readSizes(group, "SplitterSizes2");
    options.docked = group.readEntry("Docked", false);
    options.docUrl = QUrl(group.readEntry("DocURL", QString()));
    return options;
}

void writeOptions(KConfigGroup group, const VelWindowOptions &options)
{
    group.writeEntry("Geometry", options.geometry);
    group.writeEntry("Show Toolbar", options.showToolbar);
    group.writeEntry("Show Statusbar", options.showStatusbar);
    group.writeEntry("ToolBarPos", options.toolBarPos);
    group.writeEntry("SplitterSizes1", options.splitterSizes1);
    group.writeEntry("SplitterSizes2", options.splitterSizes2);
    group.writeEntry("Docked", options.docked);
    group.writeEntry("DocURL", options.docUrl.toString(QUrl::RemovePassword));
}

Qt::ToolBarArea toolBarArea(int position)
{
    for (const auto &[number, area] : ToolBarPlaces) {
        if (number == position)
            return area;
    }
    return Qt::TopToolBarArea;
}

int toolBarPosition(Qt::ToolBarArea area)
{
    for (const auto &[number, place] : ToolBarPlaces) {
        if (place == area)
            return number;
    }
    return VelWindowOptions::TopToolBar;
}
} // namespace VelConfiguration
