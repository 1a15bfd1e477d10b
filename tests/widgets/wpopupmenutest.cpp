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
    void shouldCallSlotOfReceiverInsteadOfAction();
    void shouldFollowAction();
    void shouldShowKeysWithoutTakingThem();
    void shouldTakeSameActionTwice();
    void shouldDisableItemOfActionThatIsGone();
    void shouldRefuseActionAfterThirtySecond();
    void shouldTakeActionsAgainAfterClear();
};

void WPopupMenuTest::shouldCallSlotOfReceiverInsteadOfAction()
{
    QAction action(QStringLiteral("Cut"));
    QAction receiver;
    QSignalSpy own(&action, &QAction::triggered);
    QSignalSpy received(&receiver, &QAction::triggered);
    int lambdas = 0;
    WPopupMenu menu;
    menu.insertAction(&action, &receiver, &QAction::trigger)->trigger();
    menu.insertAction(&action, this, [&lambdas] { ++lambdas; })->trigger();
    QCOMPARE(received.count(), 1);
    QCOMPARE(lambdas, 1);
    QCOMPARE(own.count(), 0);
}

void WPopupMenuTest::shouldFollowAction()
{
    QPixmap pixmap(16, 16);
    pixmap.fill(Qt::red);
    QAction action(QIcon(pixmap), QStringLiteral("Cut"));
    action.setEnabled(false);
    WPopupMenu menu;
    const QAction *item = menu.insertAction(&action, this, [] {});
    QCOMPARE(item->text(), QStringLiteral("Cut"));
    QCOMPARE(item->icon().cacheKey(), action.icon().cacheKey());
    QVERIFY(!item->isEnabled());
    action.setEnabled(true);
    QVERIFY(item->isEnabled());
    action.setEnabled(false);
    QVERIFY(!item->isEnabled());
}

void WPopupMenuTest::shouldShowKeysWithoutTakingThem()
{
    QAction action(QStringLiteral("Cut"));
    action.setShortcut(QKeySequence(QStringLiteral("Ctrl+X")));
    WPopupMenu menu;
    const QAction *item = menu.insertAction(&action, this, [] {});
    QCOMPARE(item->text(), QStringLiteral("Cut\tCtrl+X"));
    QVERIFY(item->shortcut().isEmpty());
}

void WPopupMenuTest::shouldTakeSameActionTwice()
{
    QAction action(QStringLiteral("Cut"));
    WPopupMenu menu;
    const QAction *first = menu.insertAction(&action, this, [] {});
    const QAction *second = menu.insertAction(&action, this, [] {});
    action.setEnabled(false);
    QVERIFY(!first->isEnabled());
    QVERIFY(!second->isEnabled());
}

void WPopupMenuTest::shouldDisableItemOfActionThatIsGone()
{
    auto action = std::make_unique<QAction>(QStringLiteral("Cut"));
    WPopupMenu menu;
    const QAction *item = menu.insertAction(action.get(), this, [] {});
    action.reset();
    QVERIFY(!item->isEnabled());
}

void WPopupMenuTest::shouldRefuseActionAfterThirtySecond()
{
    QAction action(QStringLiteral("Cut"));
    WPopupMenu menu;
    for (int i = 0; i < 32; ++i) {
        menu.addSeparator();
        QVERIFY(menu.insertAction(&action, this, [] {}));
    }
    const QRegularExpression warning(QStringLiteral("^ASSERT: \"pos<32\" in wpopupmenu \\(\\d+\\)$"));
    QTest::ignoreMessage(QtWarningMsg, warning);
    QVERIFY(!menu.insertAction(&action, this, [] {}));
    QCOMPARE(menu.actions().count(), 64);
}

void WPopupMenuTest::shouldTakeActionsAgainAfterClear()
{
    QAction action(QStringLiteral("Cut"));
    WPopupMenu menu;
    for (int round = 0; round < 2; ++round) {
        menu.clear();
        for (int i = 0; i < 32; ++i) {
            QVERIFY(menu.insertAction(&action, this, [] {}));
        }
    }
    action.setEnabled(false);
    QVERIFY(!menu.actions().first()->isEnabled());
}

QTEST_MAIN(WPopupMenuTest)

#include "wpopupmenutest.moc"
