#include "platform/macos/MenuBar.h"

#include <QTest>

using namespace std::chrono_literals;

namespace {

/// The item is on the first; the second is to its right and lower, its bar is higher; on the third the bar hides
/// itself.
const QList<MenuBar::Screen> screens{
    {.geometry = {0, 0, 1440, 900}, .workArea = {0, 25, 1440, 875}},
    {.geometry = {1440, 100, 1920, 1080}, .workArea = {1440, 137, 1920, 1043}},
    {.geometry = {-1000, 0, 1000, 800}, .workArea = {-1000, 0, 1000, 800}},
};
constexpr QRect item{1000, 1, 30, 24};

}

class TestMenuBar final : public QObject {
    Q_OBJECT

private slots:
    void knowsWhetherAPointerIsOnTheItem_data();
    void knowsWhetherAPointerIsOnTheItem();
    void panelHangsFromTheClick_data();
    void panelHangsFromTheClick();
    void anEchoOpensNothing();
};

void TestMenuBar::knowsWhetherAPointerIsOnTheItem_data() {
    QTest::addColumn<QPoint>("pointer");
    QTest::addColumn<bool>("isOn");
    QTest::newRow("in the middle") << QPoint{1015, 12} << true;
    QTest::newRow("at the screen's upper edge") << QPoint{1000, 0} << true;
    QTest::newRow("at the bar's lower edge") << QPoint{1029, 24} << true;
    QTest::newRow("below the bar") << QPoint{1015, 25} << false;
    QTest::newRow("to the left") << QPoint{999, 12} << false;
    QTest::newRow("to the right") << QPoint{1030, 12} << false;
    QTest::newRow("its copy on the second screen") << QPoint{2920, 100} << true;
    QTest::newRow("its copy, in the higher bar") << QPoint{2949, 136} << true;
    QTest::newRow("beside its copy") << QPoint{2950, 110} << false;
    QTest::newRow("below the higher bar") << QPoint{2930, 137} << false;
    QTest::newRow("its copy in a bar that hides itself") << QPoint{-440, 23} << true;
    QTest::newRow("below that") << QPoint{-440, 24} << false;
    QTest::newRow("on no screen") << QPoint{5000, 12} << false;
}

void TestMenuBar::knowsWhetherAPointerIsOnTheItem() {
    QFETCH(QPoint, pointer);
    QTEST(MenuBar::isOnItem(pointer, item, screens), "isOn");
    QCOMPARE(MenuBar::isOnItem(pointer, item, {}), item.contains(pointer));
}

void TestMenuBar::panelHangsFromTheClick_data() {
    QTest::addColumn<std::optional<QPoint>>("click");
    QTest::addColumn<QRect>("anchor");
    QTest::newRow("no click") << std::optional<QPoint>{} << item;
    QTest::newRow("on the item") << std::optional{QPoint{1001, 12}} << item;
    QTest::newRow("in the bar of the second screen") << std::optional{QPoint{2930, 101}} << QRect{2915, 100, 30, 37};
    QTest::newRow("in the same bar, elsewhere") << std::optional{QPoint{700, 3}} << QRect{685, 0, 30, 25};
    QTest::newRow("in no bar, as by a screen reader") << std::optional{QPoint{700, 400}} << item;
    QTest::newRow("on no screen") << std::optional{QPoint{5000, 3}} << item;
}

void TestMenuBar::panelHangsFromTheClick() {
    QFETCH(std::optional<QPoint>, click);
    QTEST(MenuBar::anchor(item, click, screens), "anchor");
}

void TestMenuBar::anEchoOpensNothing() {
    const MenuBar::Openings::Time start{};
    MenuBar::Openings openings;
    QVERIFY(openings.begin(start));
    openings.end(start + 5s);
    QVERIFY(!openings.begin(start + 5299ms));
    QVERIFY(openings.begin(start + 5300ms));
}

QTEST_GUILESS_MAIN(TestMenuBar)
#include "TestMenuBar.moc"
