#include "platform/Desktop.h"
#include "platform/StatusItem.h"

#include <QAction>
#include <QApplication>
#include <QCursor>
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
