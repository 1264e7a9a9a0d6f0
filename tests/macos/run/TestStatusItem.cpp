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
constexpr quint64 control = 1U << 18U;
constexpr double variableLength = -1;

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
    void anchorIsWhereTheButtonIs_data();
    void anchorIsWhereTheButtonIs();
    void anchorIsThePointerWhereThereIsNoPlace_data();
    void anchorIsThePointerWhereThereIsNoPlace();
    void pressesElsewhereAreHeard();
    void aPressOnTheItemItselfIsNotElsewhere();
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
    QCOMPARE(button().accessibilityTitle, u"vorna"_s);
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
    QCOMPARE(button().accessibilityTitle, u"vorna"_s);
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
    QVERIFY(button().menuWhenPressed.isEmpty());
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
    QCOMPARE(button().menuWhenPressed, (QStringList{u"Show panel"_s, u"Settings…"_s, u"---"_s, u"Quit vorna"_s}));
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

void TestStatusItem::anchorIsWhereTheButtonIs_data() {
    QTest::addColumn<QList<QRectF>>("screens");
    QTest::addColumn<QPointF>("window");
    QTest::addColumn<QRect>("anchor");
    const QRectF primary{0, 0, 1440, 900};
    QTest::newRow("one screen") << QList{primary} << QPointF{1000, 876} << QRect{1003, 0, 30, 24};
    QTest::newRow("a larger screen of another scale to the right, its lower edge lower")
        << QList{primary, QRectF{1440, -180, 1920, 1080}} << QPointF{3000, 876} << QRect{3003, 0, 30, 24};
    QTest::newRow("a screen above") << QList{primary, QRectF{0, 900, 2560, 1440}} << QPointF{2000, 2316}
                                    << QRect{2003, -1440, 30, 24};
    QTest::newRow("a screen to the left and below")
        << QList{primary, QRectF{-1280, -600, 1280, 800}} << QPointF{-200, 176} << QRect{-197, 700, 30, 24};
    QTest::newRow("half points") << QList{primary} << QPointF{1000.4, 876} << QRect{1003, 0, 30, 24};
}

void TestStatusItem::anchorIsWhereTheButtonIs() {
    QFETCH(QList<QRectF>, screens);
    QFETCH(QPointF, window);
    const auto item = makeItem();
    Doubles::state().screens = screens;
    Doubles::state().windowOnScreen = window;
    QTEST(item->anchor(), "anchor");
}

void TestStatusItem::anchorIsThePointerWhereThereIsNoPlace_data() {
    QTest::addColumn<bool>("hasWindow");
    QTest::addColumn<bool>("hasScreen");
    QTest::newRow("the item is not shown") << false << true;
    QTest::newRow("there is no screen") << true << false;
}

void TestStatusItem::anchorIsThePointerWhereThereIsNoPlace() {
    QFETCH(bool, hasWindow);
    QFETCH(bool, hasScreen);
    const auto item = makeItem();
    QCursor::setPos(123, 45);
    Doubles::state().hasWindow = hasWindow;
    if (!hasScreen) {
        Doubles::state().screens.clear();
    }
    QCOMPARE(item->anchor(), (QRect{QCursor::pos(), QSize{0, 0}}));
}

void TestStatusItem::pressesElsewhereAreHeard() {
    const auto item = makeItem();
    QSignalSpy elsewhere{item.get(), &StatusItem::clickedElsewhere};
    QCOMPARE(Doubles::state().monitoredEvents, anyMouseDown);
    Doubles::state().pointer = {200, 200};
    Doubles::pressElsewhere();
    QCOMPARE(elsewhere.size(), 1);
    Doubles::state().hasWindow = false;
    Doubles::pressElsewhere();
    QCOMPARE(elsewhere.size(), 2);
}

void TestStatusItem::aPressOnTheItemItselfIsNotElsewhere() {
    const auto item = makeItem();
    QSignalSpy elsewhere{item.get(), &StatusItem::clickedElsewhere};
    Doubles::state().pointer = {1010, 890};
    Doubles::pressElsewhere();
    QCOMPARE(elsewhere.size(), 0);
}

void TestStatusItem::leavesNothingBehind() {
    makeItem().reset();
    QCOMPARE(Doubles::state().items, 0);
    QCOMPARE(Doubles::state().monitors, 0);
    QVERIFY(!button().hasTarget);
    Doubles::pressElsewhere();
}

QTEST_MAIN(TestStatusItem)
#include "TestStatusItem.moc"
