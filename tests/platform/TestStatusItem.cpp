#include "platform/Desktop.h"
#include "platform/StatusItem.h"

#include <QCursor>
#include <QSystemTrayIcon>
#include <QTest>
#include <QWidget>

using namespace Qt::StringLiterals;

/// What holds where there is no tray at all.
class TestStatusItem final : public QObject {
    Q_OBJECT

private slots:
    void itemWithoutATrayWaitsAndDoesNothing();
    void anchorWithoutATrayIsThePointer();
    void panelWithoutATrayStandsAboveOthers();
    void windowsOutsideOfX11AreBlended();
};

void TestStatusItem::itemWithoutATrayWaitsAndDoesNothing() {
    const auto item = StatusItem::create(u"vorna"_s);
    for (const QString& name : {u"circle.dashed"_s, u"no.such.symbol"_s, QString{}}) {
        item->setSymbol(name, u"meaning"_s);
        item->setSymbol(name, u"meaning"_s);
    }
    QVERIFY(!item->findChild<QSystemTrayIcon*>());
    QVERIFY(QApplication::topLevelWidgets().isEmpty() || !QApplication::topLevelWidgets().constFirst()->isVisible());
}

void TestStatusItem::anchorWithoutATrayIsThePointer() {
    const auto item = StatusItem::create(u"vorna"_s);
    QCursor::setPos(123, 45);
    QCOMPARE(item->anchor().topLeft(), QCursor::pos());
    QVERIFY(item->anchor().isEmpty());
}

void TestStatusItem::panelWithoutATrayStandsAboveOthers() {
    const Qt::WindowFlags flags = Desktop::panelFlags();
    QCOMPARE(flags & Qt::WindowType_Mask, Qt::WindowFlags{Qt::Tool});
    QVERIFY(flags.testFlag(Qt::FramelessWindowHint));
    QVERIFY(flags.testFlag(Qt::WindowStaysOnTopHint));
}

void TestStatusItem::windowsOutsideOfX11AreBlended() {
    QVERIFY(Desktop::blendsWindows());
}

QTEST_MAIN(TestStatusItem)
#include "TestStatusItem.moc"
