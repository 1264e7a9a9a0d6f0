#include "platform/Desktop.h"
#include "platform/StatusItem.h"

#include <QAction>
#include <QApplication>
#include <QCursor>
#include <QMenu>
#include <QScopeGuard>
#include <QScreen>
#include <QSystemTrayIcon>
#include <QTest>
#include <QWidget>
#include <QWindow>

using namespace Qt::StringLiterals;

/// What holds where there is no tray at all.
class TestStatusItem final : public QObject {
    Q_OBJECT

private slots:
    void itemWithoutATrayWaitsAndDoesNothing() {
        const auto item = StatusItem::create(u"vorna"_s);
        for (const QString& name : {u"circle.dashed"_s, u"no.such.symbol"_s, QString{}}) {
            item->setSymbol(name, u"meaning"_s);
            item->setSymbol(name, u"meaning"_s);
        }
        QVERIFY(!item->findChild<QSystemTrayIcon*>());
        QVERIFY(QApplication::topLevelWidgets().isEmpty() ||
                !QApplication::topLevelWidgets().constFirst()->isVisible());
    }

    void anchorWithoutATrayIsThePointer() {
        const auto item = StatusItem::create(u"vorna"_s);
        QCursor::setPos(123, 45);
        QCOMPARE(item->anchor().topLeft(), QCursor::pos());
        QVERIFY(item->anchor().isEmpty());
    }

    void entryOfTheMenuLeavesTheAnchorWhereTheMenuWasOpened() {
        const auto item = StatusItem::create(u"vorna"_s);
        QMenu* menu = nullptr;
        for (QWidget* window : QApplication::topLevelWidgets()) {
            menu = qobject_cast<QMenu*>(window);
        }
        QVERIFY(menu);
        QCursor::setPos(300, 20);
        emit menu->aboutToShow();
        QCursor::setPos(310, 80);
        QCOMPARE(item->anchor().topLeft(), QPoint(300, 20));
    }

    void anchorWhereThePointerIsNotKnownIsTheEndOfTheBar() {
        const auto item = StatusItem::create(u"vorna"_s);
        const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
        qputenv("WAYLAND_DISPLAY", "wayland-0");
        const auto cleanup = qScopeGuard([] { qunsetenv("WAYLAND_DISPLAY"); });
        QCursor::setPos(123, 45);
        QCOMPARE(item->anchor().topLeft(), screen.bottomRight());
        QVERIFY(item->anchor().isEmpty());
    }

    void guestIsWhatItIsWhereGuestsArePlaced_data() {
        QTest::addColumn<QList<QByteArray>>(
            "session"); // WAYLAND_DISPLAY, XDG_CURRENT_DESKTOP, DISPLAY, QT_QPA_PLATFORM
        QTest::addColumn<QByteArray>("expected");

        QTest::newRow("Plasma") << QList<QByteArray>{"wayland-0", "KDE", ":0", ""} << QByteArray{"xcb;wayland"};
        QTest::newRow("GNOME") << QList<QByteArray>{"wayland-0", "ubuntu:GNOME", ":0", ""} << QByteArray{"xcb;wayland"};
        QTest::newRow("another") << QList<QByteArray>{"wayland-0", "sway", ":0", ""} << QByteArray{};
        QTest::newRow("none") << QList<QByteArray>{"wayland-0", "", ":0", ""} << QByteArray{};
        QTest::newRow("on X11") << QList<QByteArray>{"", "KDE", ":0", ""} << QByteArray{};
        QTest::newRow("no X server") << QList<QByteArray>{"wayland-0", "KDE", "", ""} << QByteArray{};
        QTest::newRow("chosen") << QList<QByteArray>{"wayland-0", "KDE", ":0", "wayland"} << QByteArray{"wayland"};
    }
    void guestIsWhatItIsWhereGuestsArePlaced() {
        QFETCH(QList<QByteArray>, session);
        QFETCH(QByteArray, expected);
        const QList<QByteArray> names{"WAYLAND_DISPLAY", "XDG_CURRENT_DESKTOP", "DISPLAY", "QT_QPA_PLATFORM"};
        QList<QByteArray> before;
        for (const QByteArray& name : names) {
            before.append(qgetenv(name));
            qputenv(name, session.at(before.size() - 1));
        }
        Desktop::prepareLaunch();
        const QByteArray chosen = qgetenv("QT_QPA_PLATFORM");
        Desktop::becomeAccessory();
        const QByteArray inherited = qgetenv("QT_QPA_PLATFORM");
        for (int number = 0; number < names.size(); ++number) {
            before.at(number).isNull() ? qunsetenv(names.at(number)) : qputenv(names.at(number), before.at(number));
        }
        QCOMPARE(chosen, expected);
        QCOMPARE(inherited, session.at(3)); // by the programs that it starts
    }

    void panelWithoutATrayStandsAboveOthers() {
        const Qt::WindowFlags flags = Desktop::panelFlags();
        QCOMPARE(flags & Qt::WindowType_Mask, Qt::WindowFlags{Qt::Tool});
        QVERIFY(flags.testFlag(Qt::FramelessWindowHint));
        QVERIFY(flags.testFlag(Qt::WindowStaysOnTopHint));
    }

    void windowsOutsideOfX11AreBlended() { QVERIFY(Desktop::blendsWindows()); }

    void menuHasAnEntryForEachThing() {
        const auto item = StatusItem::create(u"vorna"_s);
        QStringList chosen;
        connect(item.get(), &StatusItem::showPanelChosen, this, [&chosen] { chosen.append(u"panel"_s); });
        connect(item.get(), &StatusItem::settingsChosen, this, [&chosen] { chosen.append(u"settings"_s); });
        connect(item.get(), &StatusItem::quitChosen, this, [&chosen] { chosen.append(u"quit"_s); });
        QStringList texts;
        for (const QWidget* window : QApplication::topLevelWidgets()) {
            for (QAction* entry : window->actions()) {
                texts.append(entry->isSeparator() ? u"-"_s : entry->text());
                entry->trigger();
            }
        }
        QCOMPARE(texts, (QStringList{u"Show panel"_s, u"Settings…"_s, u"-"_s, u"Quit vorna"_s}));
        QCOMPARE(chosen, (QStringList{u"panel"_s, u"settings"_s, u"quit"_s}));
    }

    void windowThatComesToTheFrontIsNotMinimized() {
        QWindow window;
        window.showMinimized();
        Desktop::bringToFront(window);
        QVERIFY(!window.windowStates().testFlag(Qt::WindowMinimized));
    }

    void trustIsNotKnown() { QVERIFY(!Desktop::trustsAccessibility()); }
};

QTEST_MAIN(TestStatusItem)
#include "TestStatusItem.moc"
