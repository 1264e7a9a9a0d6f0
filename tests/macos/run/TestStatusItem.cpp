#include "platform/StatusItem.h"

#include "Doubles.h"

#include <QCursor>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

constexpr long leftMouseDown = 1;
constexpr long rightMouseDown = 3;
constexpr quint64 leftOrRightMouseDown = (1U << 1U) | (1U << 3U);
constexpr quint64 anyMouseDown = leftOrRightMouseDown | (1U << 25U);
constexpr quint64 rightMouseUp = 1U << 4U;
constexpr quint64 control = 1U << 18U;
constexpr double variableLength = -1;
constexpr qsizetype entries = 4;
constexpr QPoint onTheItem{510, 0};
constexpr QPoint outside{200, 300};

std::unique_ptr<StatusItem> makeItem() {
    auto item = StatusItem::create(u"vorna"_s);
    item->setSymbol(u"bell"_s, u"all well"_s);
    return item;
}

const Doubles::Button& button() {
    return Doubles::state().button;
}

}

class TestStatusItem final : public QObject {
    Q_OBJECT

private slots:
    void init();
    void takesOnePlaceOfVariableLength();
    void isCalledByItsTitle();
    void showsTheSymbolAsATemplateAndSaysWhatItMeans();
    void showsItsTitleWhereThereIsNoSuchSymbol();
    void drawsAgainOnlyWhatChanged();
    void aPressIsAClick();
    void aPressWithoutAnEventIsAClick();
    void theSecondaryPressOpensTheMenu_data();
    void theSecondaryPressOpensTheMenu();
    void entriesOfTheMenuAreHeard_data();
    void entriesOfTheMenuAreHeard();
    void aRightReleaseOnTheItemOpensTheMenu();
    void oneClickOpensTheMenuOnce();
    void popsTheMenuUpWhereAClickOpensNothing();
    void anchorIsWhereTheButtonIs_data();
    void anchorIsWhereTheButtonIs();
    void anchorIsWhereTheClickWas();
    void anchorIsThePointerWhereThereIsNoPlace();
    void pressesElsewhereAreHeardWhileThePanelIsOpen();
    void looksPressedWhileThePanelIsOpen();
    void leavesNothingBehind();
};

void TestStatusItem::init() {
    Doubles::reset();
}

void TestStatusItem::takesOnePlaceOfVariableLength() {
    const auto item = makeItem();
    QCOMPARE(Doubles::state().items, 1);
    QCOMPARE(Doubles::state().itemLength, variableLength);
}

void TestStatusItem::isCalledByItsTitle() {
    const auto item = StatusItem::create(u"vorna"_s);
    QCOMPARE(button().title, u"vorna"_s);
    QCOMPARE(button().accessibilityLabel, u"vorna"_s);
    QVERIFY(button().showsTitle);
}

void TestStatusItem::showsTheSymbolAsATemplateAndSaysWhatItMeans() {
    const auto item = makeItem();
    QCOMPARE(button().imageName, u"bell"_s);
    QCOMPARE(button().imageDescription, u"all well"_s);
    QVERIFY(button().imageIsTemplate);
    QVERIFY(button().showsImage);
    QCOMPARE(button().toolTip, u"all well"_s);
    QCOMPARE(button().accessibilityValue, u"all well"_s);
    QCOMPARE(button().accessibilityLabel, u"vorna"_s);
}

void TestStatusItem::showsItsTitleWhereThereIsNoSuchSymbol() {
    const auto item = makeItem();
    item->setSymbol(u"no.such.symbol"_s, u"down"_s);
    QVERIFY(button().imageName.isEmpty());
    QVERIFY(button().showsTitle);
    QCOMPARE(button().toolTip, u"down"_s);
}

void TestStatusItem::drawsAgainOnlyWhatChanged() {
    const auto item = makeItem();
    QCOMPARE(Doubles::state().imagesMade, 1);
    item->setSymbol(u"bell"_s, u"all well"_s);
    QCOMPARE(Doubles::state().imagesMade, 1);
    item->setSymbol(u"bell"_s, u"degraded"_s);
    QCOMPARE(Doubles::state().imagesMade, 2);
    QCOMPARE(button().toolTip, u"degraded"_s);
    item->setSymbol(u"power"_s, u"degraded"_s);
    QCOMPARE(Doubles::state().imagesMade, 3);
    QCOMPARE(button().imageName, u"power"_s);
}

void TestStatusItem::aPressIsAClick() {
    const auto item = makeItem();
    QSignalSpy clicked{item.get(), &StatusItem::clicked};
    QCOMPARE(button().actionMask, leftOrRightMouseDown);
    Doubles::state().currentEvent = leftMouseDown;
    Doubles::pressButton();
    Doubles::pressButton();
    QCOMPARE(clicked.size(), 2);
    QVERIFY(button().menus.isEmpty());
}

void TestStatusItem::aPressWithoutAnEventIsAClick() {
    const auto item = makeItem();
    QSignalSpy clicked{item.get(), &StatusItem::clicked};
    Doubles::state().currentModifiers = control;
    Doubles::pressButton();
    QCOMPARE(clicked.size(), 1);
}

void TestStatusItem::theSecondaryPressOpensTheMenu_data() {
    QTest::addColumn<int>("event");
    QTest::addColumn<quint64>("modifiers");
    QTest::newRow("right button") << int{rightMouseDown} << quint64{0};
    QTest::newRow("control and left button") << int{leftMouseDown} << control;
}

void TestStatusItem::theSecondaryPressOpensTheMenu() {
    QFETCH(int, event);
    QFETCH(quint64, modifiers);
    const auto item = makeItem();
    QSignalSpy clicked{item.get(), &StatusItem::clicked};
    Doubles::state().currentEvent = event;
    Doubles::state().currentModifiers = modifiers;
    Doubles::pressButton();
    QCOMPARE(button().menus, (QStringList{u"Show panel"_s, u"Settings…"_s, u"---"_s, u"Quit vorna"_s}));
    QCOMPARE(clicked.size(), 0);

    Doubles::state().currentEvent = leftMouseDown;
    Doubles::state().currentModifiers = 0;
    Doubles::pressButton();
    QCOMPARE(clicked.size(), 1);
}

void TestStatusItem::entriesOfTheMenuAreHeard_data() {
    QTest::addColumn<QString>("entry");
    QTest::addColumn<QList<int>>("heard");
    QTest::newRow("panel") << u"Show panel"_s << QList<int>{1, 0, 0};
    QTest::newRow("settings") << u"Settings…"_s << QList<int>{0, 1, 0};
    QTest::newRow("quit") << u"Quit vorna"_s << QList<int>{0, 0, 1};
}

void TestStatusItem::entriesOfTheMenuAreHeard() {
    QFETCH(QString, entry);
    const auto item = makeItem();
    QSignalSpy showPanel{item.get(), &StatusItem::showPanelChosen};
    QSignalSpy settings{item.get(), &StatusItem::settingsChosen};
    QSignalSpy quit{item.get(), &StatusItem::quitChosen};
    Doubles::state().currentEvent = rightMouseDown;
    Doubles::pressButton();
    Doubles::choose(entry);
    const QList<int> heard{int(showPanel.size()), int(settings.size()), int(quit.size())};
    QTEST(heard, "heard");
}

void TestStatusItem::aRightReleaseOnTheItemOpensTheMenu() {
    const auto item = makeItem();
    QCursor::setPos(outside);
    Doubles::happensElsewhere(rightMouseUp);
    QVERIFY(button().menus.isEmpty());
    QCursor::setPos(onTheItem);
    Doubles::happensElsewhere(rightMouseUp);
    QCOMPARE(button().menus.size(), entries);
}

void TestStatusItem::oneClickOpensTheMenuOnce() {
    const auto item = makeItem();
    QCursor::setPos(onTheItem);
    Doubles::state().currentEvent = rightMouseDown;
    Doubles::pressButton();
    Doubles::happensElsewhere(rightMouseUp);
    QCOMPARE(button().menus.size(), entries);
    QTest::qSleep(310);
    Doubles::happensElsewhere(rightMouseUp);
    QCOMPARE(button().menus.size(), 2 * entries);
}

void TestStatusItem::popsTheMenuUpWhereAClickOpensNothing() {
    const auto item = makeItem();
    Doubles::state().currentEvent = rightMouseDown;
    Doubles::pressButton();
    QVERIFY(button().poppedUp.isEmpty());
    Doubles::state().clickOpensMenu = false;
    QTest::qSleep(310);
    Doubles::pressButton();
    QCOMPARE(button().poppedUp.size(), entries);
}

void TestStatusItem::anchorIsWhereTheButtonIs_data() {
    QTest::addColumn<QPointF>("window");
    QTest::addColumn<QRect>("anchor");
    QTest::newRow("primary screen") << QPointF{500, 776} << QRect{503, 0, 30, 24};
    QTest::newRow("a screen to the right, its upper edge lower") << QPointF{3000, 676} << QRect{3003, 100, 30, 24};
    QTest::newRow("a screen above") << QPointF{2000, 2216} << QRect{2003, -1440, 30, 24};
    QTest::newRow("half points") << QPointF{500.4, 776} << QRect{503, 0, 30, 24};
}

void TestStatusItem::anchorIsWhereTheButtonIs() {
    QFETCH(QPointF, window);
    const auto item = makeItem();
    QCursor::setPos(outside);
    Doubles::state().windowOnScreen = window;
    QTEST(item->anchor(), "anchor");
}

void TestStatusItem::anchorIsWhereTheClickWas() {
    const QRect aroundThePointer{outside.x() - 15, 0, 30, 24};
    const auto item = makeItem();
    QList<QRect> anchors;
    connect(item.get(), &StatusItem::clicked, this, [&] { anchors.append(item->anchor()); });
    connect(item.get(), &StatusItem::showPanelChosen, this, [&] { anchors.append(item->anchor()); });
    QCursor::setPos(outside.x(), 0);
    Doubles::pressButton();
    Doubles::state().currentEvent = rightMouseDown;
    Doubles::state().chosen = u"Show panel"_s;
    Doubles::pressButton();
    QCOMPARE(anchors, (QList{aroundThePointer, aroundThePointer}));
    QCOMPARE(item->anchor(), (QRect{503, 0, 30, 24}));
}

void TestStatusItem::anchorIsThePointerWhereThereIsNoPlace() {
    const auto item = makeItem();
    QCursor::setPos(123, 45);
    Doubles::state().hasWindow = false;
    QCOMPARE(item->anchor(), (QRect{QCursor::pos(), QSize{0, 0}}));
}

void TestStatusItem::pressesElsewhereAreHeardWhileThePanelIsOpen() {
    const auto item = makeItem();
    QSignalSpy elsewhere{item.get(), &StatusItem::clickedElsewhere};
    QCOMPARE(Doubles::monitoredEvents(), QList{rightMouseUp});
    item->setPanelOpen(true);
    item->setPanelOpen(true);
    QCOMPARE(Doubles::monitoredEvents(), (QList{rightMouseUp, anyMouseDown}));
    QCursor::setPos(outside);
    Doubles::happensElsewhere(leftOrRightMouseDown);
    QCOMPARE(elsewhere.size(), 1);
    QCursor::setPos(onTheItem);
    Doubles::happensElsewhere(leftOrRightMouseDown);
    QCOMPARE(elsewhere.size(), 1);
    Doubles::state().hasWindow = false;
    Doubles::happensElsewhere(leftOrRightMouseDown);
    QCOMPARE(elsewhere.size(), 2);
    item->setPanelOpen(false);
    QCOMPARE(Doubles::monitoredEvents(), QList{rightMouseUp});
}

void TestStatusItem::looksPressedWhileThePanelIsOpen() {
    const auto item = makeItem();
    item->setPanelOpen(true);
    QVERIFY(button().isHighlighted);
    Doubles::state().button.isHighlighted = false; // the end of the click
    QCoreApplication::processEvents();
    QVERIFY(button().isHighlighted);
    item->setPanelOpen(false);
    QVERIFY(!button().isHighlighted);
}

void TestStatusItem::leavesNothingBehind() {
    auto item = makeItem();
    item->setPanelOpen(true);
    item.reset();
    QCOMPARE(Doubles::state().items, 0);
    QVERIFY(Doubles::monitoredEvents().isEmpty());
    QVERIFY(!button().hasTarget);
    QCoreApplication::processEvents();
}

QTEST_MAIN(TestStatusItem)
#include "TestStatusItem.moc"
