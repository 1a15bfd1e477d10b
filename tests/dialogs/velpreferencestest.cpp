// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogs/velpreferences.h"
#include "app/velconfiguration.h"
#include "dialogs/vellooksample.h"
#include "widgets/wdatetimewidget.h"
#include "widgets/wfileedit.h"
#include "widgets/wtimeinput.h"

#include <KColorButton>
#include <KConfig>
#include <KMessageWidget>

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QLineEdit>
#include <QListWidget>
#include <QMetaProperty>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>

using Button = QDialogButtonBox::StandardButton;
using Fields = QMap<QString, QString>;

namespace
{
/** Preferences none of which is as at first, in the words of the configuration. */
const QVector<std::pair<const char *, const char *>> Unusual{{"DayOffHour", "1,2,3"},
                                                             {"DayHour", "4,5,6"},
                                                             {"MainColor1", "7,8,9"},
                                                             {"MainColor2", "10,11,12"},
                                                             {"EntryBackground", "13,14,15"},
                                                             {"EntryText", "16,17,18"},
                                                             {"Tentative", "19,20,21"},
                                                             {"Selection", "22,23,24"},
                                                             {"WorkdayBegin", "2000,1,1,7,30,0"},
                                                             {"WorkdayEnd", "2000,1,1,15,45,0"},
                                                             {"Workdays", "2,7"},
                                                             {"User", " päivi "},
                                                             {"Pass", "d41d8cd98f00b204e9800998ecf8427e"},
                                                             {"OrigUserid", "3000000000"},
                                                             {"Server", "time.example.org"},
                                                             {"Port", "65535"},
                                                             {"Encrypt", "true"},
                                                             {"AutoSave", "false"},
                                                             {"AutoSaveInterval", "10080"},
                                                             {"AutoSaveSync", "false"},
                                                             {"AutoSync", "false"},
                                                             {"AutoSyncInterval", "1"},
                                                             {"Dock", "true"},
                                                             {"ArchiveFile", "file:///old/ä %231.xml"},
                                                             {"DoReminderDialog", "false"},
                                                             {"DoReminderSound", "true"},
                                                             {"DoReminderExec", "true"},
                                                             {"ReminderSound", "https://example.org/a.wav"},
                                                             {"ReminderExec", "file:beep -l 3"},
                                                             {"ReminderDefault", "2880"}};

/** The dialog, open on the unusual preferences, and what it hands over. */
struct Dialog {
    Dialog()
    {
        KConfigGroup group = VelConfiguration::preferences(&config);
        for (const auto &[key, value] : Unusual)
            group.writeEntry(key, QString::fromUtf8(value));
        group.writeEntry("CalendarFont", QFont(QStringLiteral("Courier"), 17));
        group.writeEntry("EntryFont", QFont(QStringLiteral("Courier"), 19));
        VelConfiguration::readPreferences(group, settings, look, usual);
        before = fields(settings, look);
        QObject::connect(&dialog, &VelPreferences::settingsChanged, &dialog,
                         [this](const VelSettings &newSettings, const VelLook &newLook) {
                             after = fields(newSettings, newLook);
                             ++changes;
                         });
        dialog.refresh(settings, look);
        dialog.QDialog::show();
    }
    [[nodiscard]] Fields fields(const VelSettings &s, const VelLook &l) const
    {
        KConfig written(QString(), KConfig::SimpleConfig);
        const KConfigGroup group = VelConfiguration::preferences(&written);
        VelConfiguration::writePreferences(group, s, l, usual);
        return group.entryMap();
    }
    template <typename Widget>
    [[nodiscard]] Widget *find(const char *name) const
    {
        return dialog.findChild<Widget *>(QLatin1String(name));
    }
    [[nodiscard]] QPushButton *button(Button which) const
    {
        return dialog.findChild<QDialogButtonBox *>()->button(which);
    }

    KConfig config{QString(), KConfig::SimpleConfig};
    VelLook usual = VelLook::defaults(QPalette(Qt::lightGray));
    VelSettings settings;
    VelLook look;
    Fields before;
    Fields after;
    int changes = 0;
    VelPreferences dialog{nullptr};
};

QWidget *inputOf(const Dialog &dialog, const QString &name)
{
    QWidget *input = dialog.dialog.findChild<QWidget *>(name);
    if (name == QLatin1String("Workdays")) // the first of them, Monday
        return input->findChild<QCheckBox *>();
    return name == QLatin1String("ReminderDefault") ? input->findChild<QSpinBox *>() : input;
}
} // namespace

class VelPreferencesTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany)); }
    void everyFieldShouldBeStoredAlone_data();
    void everyFieldShouldBeStoredAlone();
    void cancelShouldForget();
    void whatCannotBeStoredShouldBeRefused_data();
    void whatCannotBeStoredShouldBeRefused();
    void defaultsShouldResetThePage();
    void numbersShouldStayInTheirRanges();
    void filesShouldBeUnderstood_data();
    void filesShouldBeUnderstood();
    void shouldFitOnSmallScreensAndRememberItsSize();
};

void VelPreferencesTest::everyFieldShouldBeStoredAlone_data()
{
    QTest::addColumn<QVariant>("value"); // the user's choice
    QTest::addColumn<QString>("stored"); // in the configuration
    const auto row = [](const char *key, const QVariant &value, const char *stored) {
        QTest::newRow(key) << value << QString::fromUtf8(stored);
    };
    for (int i = 0; i < 8; ++i)
        row(Unusual[i].first, QColor(200, 100, i), qPrintable(QStringLiteral("200,100,%1").arg(i)));
    const QFont font(QStringLiteral("Courier"), 31);
    row("CalendarFont", font, qPrintable(font.toString()));
    row("EntryFont", font, qPrintable(font.toString()));
    row("WorkdayBegin", QTime(0, 15), "2000,1,1,0,15,0");
    row("WorkdayEnd", QTime(23, 59), "2000,1,1,23,59,0");
    row("Workdays", true, "1,2,7");
    row("User", QStringLiteral("anna"), "anna");
    row("Server", QStringLiteral(" other.example.org "), "other.example.org");
    row("Port", 1, "1");
    row("Encrypt", false, "false");
    row("AutoSave", true, "true");
    row("AutoSaveInterval", 77, "77");
    row("AutoSaveSync", true, "true");
    row("AutoSync", true, "true");
    row("AutoSyncInterval", 78, "78");
    row("Dock", false, "false");
    row("ArchiveFile", QUrl(), "");
    row("DoReminderDialog", true, "true");
    row("DoReminderSound", false, "false");
    row("DoReminderExec", false, "false");
    row("ReminderSound", QUrl(QStringLiteral("file:///b.wav")), "file:///b.wav");
    row("ReminderExec", QUrl(QStringLiteral("file:///bin/echo")), "file:///bin/echo");
    row("ReminderDefault", 3, "4320"); // days, as before
}

void VelPreferencesTest::everyFieldShouldBeStoredAlone()
{
    QFETCH(QVariant, value);
    QFETCH(QString, stored);
    const QString key = QString::fromLatin1(QTest::currentDataTag());
    Dialog dialog;
    QVERIFY(!dialog.button(QDialogButtonBox::Apply)->isEnabled());
    dialog.dialog.findChild<QListWidget *>()->setCurrentRow(1); // colours and fonts
    auto *sample = dialog.dialog.findChild<VelLookSample *>();
    const QImage sampleBefore = sample->grab().toImage();
    QWidget *input = inputOf(dialog, key);
    QVERIFY(input);
    const char *property = input->metaObject()->userProperty().name();
    if (auto *time = qobject_cast<WDateTimeWidget *>(input))
        time->setTime(value.toTime());
    else
        QVERIFY(input->setProperty(property, value));
    QCOMPARE(sample->grab().toImage() != sampleBefore,
             value.userType() == QMetaType::QColor || key.endsWith(QLatin1String("Font")));
    dialog.button(QDialogButtonBox::Apply)->click();
    Fields expected = dialog.before;
    QVERIFY(expected.value(key) != stored);
    expected[key] = stored;
    QCOMPARE(dialog.after, expected);
    QVERIFY(dialog.dialog.isVisible() && !dialog.button(QDialogButtonBox::Apply)->isEnabled());

    dialog.button(QDialogButtonBox::Ok)->click(); // nothing is left to hand over
    QCOMPARE(dialog.changes, 1);
    QVERIFY(!dialog.dialog.isVisible());
}

void VelPreferencesTest::cancelShouldForget()
{
    Dialog dialog;
    dialog.find<QLineEdit>("User")->setText(QStringLiteral("somebody"));
    dialog.find<KColorButton>("Selection")->setColor(Qt::green);
    dialog.find<QSpinBox>("Port")->setValue(4);
    QTest::keyClick(&dialog.dialog, Qt::Key_Escape);
    QVERIFY(!dialog.dialog.isVisible());
    QCOMPARE(dialog.changes, 0);
    QCOMPARE(dialog.find<QLineEdit>("User")->text(), QStringLiteral(" päivi "));
    QCOMPARE(dialog.find<QSpinBox>("Port")->value(), 65535);
}

void VelPreferencesTest::whatCannotBeStoredShouldBeRefused_data()
{
    QTest::addColumn<QString>("end"); // typed, and the focus left there
    QTest::addColumn<bool>("hasDay");
    QTest::addColumn<bool>("isRefused");
    QTest::newRow("ends when it begins") << "7.30" << true << true;
    QTest::newRow("ends a minute later") << "731" << true << false;
    QTest::newRow("ends at no time") << "25:99" << true << true;
    QTest::newRow("no working day") << "15:45" << false << true;
}

void VelPreferencesTest::whatCannotBeStoredShouldBeRefused()
{
    QFETCH(QString, end);
    QFETCH(bool, hasDay);
    QFETCH(bool, isRefused);
    Dialog dialog;
    auto *input = dialog.find<QWidget>("WorkdayEnd")->findChild<WTimeInput *>()->lineEdit();
    input->selectAll();
    QTest::keyClicks(input, end);
    const QList<QCheckBox *> days = dialog.find<QWidget>("Workdays")->findChildren<QCheckBox *>();
    for (QCheckBox *day : days)
        day->setChecked(day->isChecked() && hasDay);
    dialog.button(QDialogButtonBox::Ok)->click();
    QCOMPARE(dialog.dialog.findChild<KMessageWidget *>()->isVisible(), isRefused);
    QCOMPARE(dialog.dialog.isVisible(), isRefused);
    QCOMPARE(dialog.changes, isRefused ? 0 : 1);
}

void VelPreferencesTest::defaultsShouldResetThePage()
{
    Dialog dialog;
    dialog.dialog.setPalette(QPalette(Qt::black));
    dialog.dialog.findChild<QListWidget *>()->setCurrentRow(1);
    dialog.button(QDialogButtonBox::RestoreDefaults)->click();
    QCOMPARE(dialog.find<KColorButton>("DayHour")->color(), VelLook::defaults(QPalette(Qt::black)).dayHour);
    dialog.button(QDialogButtonBox::Ok)->click();
    QCOMPARE(dialog.after.value(QStringLiteral("Port")), QStringLiteral("65535"));
    QVERIFY(!dialog.after.contains(QStringLiteral("EntryFont")));
}

void VelPreferencesTest::numbersShouldStayInTheirRanges()
{
    Dialog dialog;
    for (const char *name : {"Port", "AutoSaveInterval", "AutoSyncInterval"}) {
        for (const int value : {-1, 100000}) {
            dialog.find<QSpinBox>(name)->setValue(value);
            dialog.button(QDialogButtonBox::Apply)->click();
            VelSettings read;
            VelLook look;
            KConfigGroup group = VelConfiguration::preferences(&dialog.config);
            group.writeEntry(name, dialog.after.value(QLatin1String(name)));
            VelConfiguration::readPreferences(group, read, look, dialog.usual);
            QCOMPARE(dialog.fields(read, look).value(QLatin1String(name)), // and the reader agrees
                     dialog.after.value(QLatin1String(name)));
        }
    }
}

void VelPreferencesTest::filesShouldBeUnderstood_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QUrl>("file");
    QTest::addColumn<QUrl>("command");
    const auto row = [](const char *text, const QUrl &file, const QUrl &command) {
        QTest::newRow(text) << QString::fromUtf8(text) << file << command;
    };
    const auto local = [](const QString &path) { return QUrl::fromLocalFile(path); };
    const QString home = QDir::homePath() + QLatin1Char('/');
    row(" ", QUrl(), QUrl());
    row("/a b/50%20#?.wav", local(QStringLiteral("/a b/50%20#?.wav")),
        local(QStringLiteral("/a b/50%20#?.wav")));
    row("~/a.wav", local(home + QStringLiteral("a.wav")), local(home + QStringLiteral("a.wav")));
    row("beep 3", local(home + QStringLiteral("beep 3")), local(QStringLiteral("beep 3")));
    const QUrl remote(QStringLiteral("sftp://host/a.wav"));
    row("sftp://host/a.wav", remote, remote);
}

void VelPreferencesTest::filesShouldBeUnderstood()
{
    QFETCH(QString, text);
    QFETCH(QUrl, file);
    QFETCH(QUrl, command);
    QCOMPARE(WFileEdit::fromText(text, WFileEdit::Kind::OpenFile), file);
    QCOMPARE(WFileEdit::fromText(text, WFileEdit::Kind::Command), command);
    QCOMPARE(WFileEdit::fromText(WFileEdit::toText(file), WFileEdit::Kind::SaveFile), file);
}

void VelPreferencesTest::shouldFitOnSmallScreensAndRememberItsSize()
{
    KConfig config(QString(), KConfig::SimpleConfig);
    const KConfigGroup options = VelConfiguration::generalOptions(&config);
    VelPreferences first(nullptr, options);
    QVERIFY(first.minimumSizeHint().width() <= 800 && first.minimumSizeHint().height() <= 600);
    first.resize(790, 590);
    first.reject();
    QCOMPARE(VelPreferences(nullptr, options).size(), QSize(790, 590));
}

QTEST_MAIN(VelPreferencesTest)

#include "velpreferencestest.moc"
