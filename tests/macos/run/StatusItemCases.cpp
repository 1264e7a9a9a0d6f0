#include "Cases.h"
#include "platform/StatusItem.h"

#include <QCursor>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace Doubles;

namespace {

constexpr long left = 1;
constexpr long right = 3;
constexpr quint64 leftPress = 1U << 1U;
constexpr quint64 rightRelease = 1U << 4U;
constexpr quint64 control = 1U << 18U;
constexpr QPoint onTheItem{510, 0};
constexpr QPoint outside{200, 300};
constexpr int longerThanAnEcho = 310;

/// With an item that is there, and what is heard of it.
auto withItem(std::function<void(StatusItem&)> happens) {
    return [happens = std::move(happens)] {
        auto item = StatusItem::create(u"vorna"_s);
        QObject::connect(item.get(), &StatusItem::clicked, item.get(), [] { tell("clicked"); });
        QObject::connect(item.get(), &StatusItem::clickedElsewhere, item.get(), [] { tell("clicked elsewhere"); });
        QObject::connect(item.get(), &StatusItem::showPanelChosen, item.get(), [] { tell("panel chosen"); });
        QObject::connect(item.get(), &StatusItem::settingsChosen, item.get(), [] { tell("settings chosen"); });
        QObject::connect(item.get(), &StatusItem::quitChosen, item.get(), [] { tell("quit chosen"); });
        (void)told();
        happens(*item);
        const QString seen = told();
        item.reset();
        (void)told();
        tell(seen);
    };
}

void press(std::optional<long> event) {
    world().event = event;
    pressButton();
}

auto choose(const QString& entry) {
    return withItem([=](StatusItem&) {
        world().chosen = entry;
        press(right);
    });
}

auto anchorWithWindowAt(QPointF window) {
    return withItem([=](StatusItem& item) {
        QCursor::setPos(outside);
        world().itemWindow = window;
        tell(item.anchor());
    });
}

}

const QList<Case> statusItemCases{
    {"it takes the room that it needs, is called by its title, and leaves nothing behind",
     [] {
         auto item = StatusItem::create(u"vorna"_s);
         tell("panel");
         item->setPanelOpen(true);
         item.reset();
         turn();
         pressButton();
         happensElsewhere(leftPress | rightRelease);
     },
     "item of length -1; title vorna; shows the title; named vorna; acts on 10; entry Show panel; entry Settings…; "
     "entry ---; entry Quit vorna; watches 16; panel; watches 33554442; pressed 1; "
     "watches no more 33554442; pressed 0; watches no more 16; item removed"},
    {"it shows a template and says what it means, anew only where something changed", withItem([](StatusItem& item) {
         item.setSymbol(u"bell"_s, u"well"_s);
         item.setSymbol(u"bell"_s, u"well"_s);
         tell("changed");
         item.setSymbol(u"bell"_s, u"ill"_s);
         tell("changed");
         item.setSymbol(u"power"_s, u"ill"_s);
     }),
     "bell that means well; template 1; image; shows the image; tip well; says well; changed; "
     "bell that means ill; template 1; image; shows the image; tip ill; says ill; changed; "
     "power that means ill; template 1; image; shows the image; tip ill; says ill"},
    {"it shows its title where there is no such symbol",
     withItem([](StatusItem& item) { item.setSymbol(u"no.such.symbol"_s, u"down"_s); }),
     "no.such.symbol that means down; no image; shows the title; tip down; says down"},
    {"a press is a click", withItem([](StatusItem&) {
         press(left);
         press(left);
     }),
     "clicked; clicked"},
    {"a press without an event is a click", withItem([](StatusItem&) {
         world().modifiers = control;
         press(std::nullopt);
     }),
     "clicked"},
    {"the right button opens the menu, the left one still clicks", withItem([](StatusItem&) {
         press(right);
         press(left);
     }),
     "menu opens; clicked"},
    {"the left button with control opens the menu", withItem([](StatusItem&) {
         world().modifiers = control;
         press(left);
     }),
     "menu opens"},
    {"the panel can be chosen", choose(u"Show panel"_s), "menu opens; panel chosen"},
    {"the settings can be chosen", choose(u"Settings…"_s), "menu opens; settings chosen"},
    {"quitting can be chosen", choose(u"Quit vorna"_s), "menu opens; quit chosen"},
    {"a right release that only the monitor hears of opens the menu", withItem([](StatusItem&) {
         QCursor::setPos(outside);
         happensElsewhere(rightRelease);
         tell("on the item");
         QCursor::setPos(onTheItem);
         happensElsewhere(rightRelease);
     }),
     "on the item; menu opens"},
    {"a click that is heard of twice opens the menu once", withItem([](StatusItem&) {
         QCursor::setPos(onTheItem);
         press(right);
         happensElsewhere(rightRelease);
         tell("later");
         QTest::qSleep(longerThanAnEcho);
         happensElsewhere(rightRelease);
     }),
     "menu opens; later; menu opens"},
    {"the menu pops up where a click opens nothing", withItem([](StatusItem&) {
         press(right);
         world().clickOpensMenu = false;
         QTest::qSleep(longerThanAnEcho);
         press(right);
     }),
     "menu opens; menu pops up"},
    {"anchor on the primary screen", anchorWithWindowAt({500, 776}), "QRect(503,0 30x24)"},
    {"anchor on a lower screen to the right", anchorWithWindowAt({3000, 676}), "QRect(3003,100 30x24)"},
    {"anchor on a screen above", anchorWithWindowAt({2000, 2216}), "QRect(2003,-1440 30x24)"},
    {"anchor at half points", anchorWithWindowAt({500.4, 776}), "QRect(503,0 30x24)"},
    {"the anchor is where the click was, as long as it is handled", withItem([](StatusItem& item) {
         const auto anchor = [&item] { tell(item.anchor()); };
         QObject::connect(&item, &StatusItem::clicked, &item, anchor);
         QObject::connect(&item, &StatusItem::showPanelChosen, &item, anchor);
         world().chosen = u"Show panel"_s;
         QCursor::setPos(outside.x(), 0);
         press(left);
         press(right);
         anchor();
     }),
     "clicked; QRect(185,0 30x24); menu opens; panel chosen; QRect(185,0 30x24); QRect(503,0 30x24)"},
    {"the anchor is the pointer where the item has no place", withItem([](StatusItem& item) {
         QCursor::setPos(123, 45);
         world().itemHasWindow = false;
         tell(item.anchor());
     }),
     "QRect(123,45 0x0)"},
    {"presses elsewhere are watched, once, while the panel is open", withItem([](StatusItem& item) {
         QCursor::setPos(outside);
         happensElsewhere(leftPress);
         item.setPanelOpen(true);
         item.setPanelOpen(true);
         happensElsewhere(leftPress);
         item.setPanelOpen(false);
         happensElsewhere(leftPress);
     }),
     "watches 33554442; pressed 1; pressed 1; clicked elsewhere; watches no more 33554442; pressed 0"},
    {"a press on the item is left to the item", withItem([](StatusItem& item) {
         QCursor::setPos(onTheItem);
         item.setPanelOpen(true);
         happensElsewhere(leftPress);
         tell("without a place");
         world().itemHasWindow = false;
         happensElsewhere(leftPress);
     }),
     "watches 33554442; pressed 1; without a place; clicked elsewhere"},
    {"it looks pressed while the panel is open, also after the click", withItem([](StatusItem& item) {
         item.setPanelOpen(true);
         turn();
         item.setPanelOpen(false);
         turn();
     }),
     "watches 33554442; pressed 1; pressed 1; watches no more 33554442; pressed 0; pressed 0"},
};
