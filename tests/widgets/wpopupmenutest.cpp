// SPDX-FileCopyrightText: 2026 The Delmast Time authors
// SPDX-License-Identifier: BSD-3-Clause

#include "widgets/wpopupmenu.h"

#include <QAction>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

class WPopupMenuTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void shouldLookLikeActionButCallItsOwnSlot();
    void shouldRefuseActionAfterThirtySecond();
};

void WPopupMenuTest::shouldLookLikeActionButCallItsOwnSlot()
{
    auto action = std::make_unique<QAction>(QIcon(QPixmap(16, 16)), QStringLiteral("Cut"));
    action->setShortcut(QKeySequence(QStringLiteral("Ctrl+X")));
    action->setEnabled(false);
    QSignalSpy own(action.get(), &QAction::triggered);
    int called = 0;
    WPopupMenu menu;
    QAction *item = menu.insertAction(action.get(), this, [&called] { ++called; });
    QCOMPARE(item->text(), QStringLiteral("Cut\tCtrl+X"));
    QVERIFY2(item->shortcut().isEmpty(), "the keys would be ambiguous");
    QCOMPARE(item->icon().cacheKey(), action->icon().cacheKey());
    QVERIFY(!item->isEnabled());
    action->setEnabled(true);
    QVERIFY(item->isEnabled());
    item->trigger();
    QCOMPARE(called, 1);
    QCOMPARE(own.count(), 0);
    action.reset();
    QVERIFY2(!item->isEnabled(), "the action is gone");
}

void WPopupMenuTest::shouldRefuseActionAfterThirtySecond()
{
    QAction action;
    WPopupMenu menu;
    for (int i = 0; i < 32; ++i)
        QVERIFY(menu.insertAction(&action, this, [] {}));
    const QRegularExpression warning(QStringLiteral("^ASSERT: \"pos<32\" in wpopupmenu \\(\\d+\\)$"));
    QTest::ignoreMessage(QtWarningMsg, warning);
    QVERIFY(!menu.insertAction(&action, this, [] {}));
}

QTEST_MAIN(WPopupMenuTest)

#include "wpopupmenutest.moc"
