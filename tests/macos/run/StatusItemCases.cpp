#include "Cases.h"
#include "platform/StatusItem.h"

#include <QCursor>

using namespace Qt::StringLiterals;
using namespace Doubles;

namespace {

std::unique_ptr<StatusItem> item;

void create() {
    item = StatusItem::create(u"vorna"_s);
    const auto say = [](const char* what) { return [what] { tell(QString::fromUtf8(what)); }; };
    QObject::connect(item.get(), &StatusItem::clicked, item.get(), say("clicked"));
    QObject::connect(item.get(), &StatusItem::clickedElsewhere, item.get(), say("clicked elsewhere"));
    QObject::connect(item.get(), &StatusItem::showPanelChosen, item.get(), say("panel chosen"));
    QObject::connect(item.get(), &StatusItem::settingsChosen, item.get(), say("settings chosen"));
    QObject::connect(item.get(), &StatusItem::quitChosen, item.get(), say("quit chosen"));
}

void press(long event) {
    world().event = event > 0 ? std::optional{event} : std::nullopt;
    pressButton();
}

void anchor() {
    tell(item->anchor());
}

#define MADE                                                                                                           \
    "item of length -1; title vorna; shows the title; named vorna; acts on 10; entry Show panel; entry Settings…; "    \
    "entry ---; entry Quit vorna; watches 16"
#define SHOWN(SYMBOL, MEANING)                                                                                         \
    SYMBOL " that means " MEANING "; template 1; image; shows the image; tip " MEANING "; says " MEANING

}

const Area& statusItemArea() {
    static const Area area{
        "status item",
        {
            {u"create"_s, [](auto&) { create(); }},
            {u"destroy"_s, [](auto&) { item.reset(); }},
            {u"symbol"_s, [](auto& words) { item->setSymbol(words.section(u' ', 0, 0), words.section(u' ', 1)); }},
            {u"panel"_s, [](auto& state) { item->setPanelOpen(state == u"open"_s); }},
            {u"left"_s, [](auto&) { press(1); }},
            {u"right"_s, [](auto&) { press(3); }},
            {u"press"_s, [](auto&) { press(0); }},
            {u"control"_s, [](auto&) { world().modifiers = 1U << 18U; }},
            {u"choose"_s, [](auto& entry) { world().chosen = entry; }},
            {u"deaf"_s, [](auto&) { world().clickOpensMenu = false; }},
            {u"pointer"_s, [](auto& at) { QCursor::setPos(int(numbers(at).at(0)), int(numbers(at).at(1))); }},
            {u"elsewhere"_s, [](auto& event) { happensElsewhere(event == u"left"_s ? 1U << 1U : 1U << 4U); }},
            {u"window"_s, [](auto& at) { world().itemWindow = {numbers(at).at(0), numbers(at).at(1)}; }},
            {u"windowless"_s, [](auto&) { world().itemHasWindow = false; }},
            {u"anchor"_s, [](auto&) { anchor(); }},
            {u"anchors"_s,
             [](auto&) {
                 QObject::connect(item.get(), &StatusItem::clicked, item.get(), anchor);
                 QObject::connect(item.get(), &StatusItem::showPanelChosen, item.get(), anchor);
             }},
        },
        {
            {"it takes the room that it needs, is called by its title, and leaves nothing behind",
             "destroy; create; say panel; panel open; destroy; turn; left; elsewhere left; elsewhere right",
             "pressed 0; watches no more 16; item removed; " MADE "; panel; watches 33554442; pressed 1; "
             "watches no more 33554442; pressed 0; watches no more 16; "
             "item removed"},
            {"it shows a template and says what it means, anew only where something changed",
             "symbol bell well; symbol bell well; say changed; symbol bell ill; say changed; symbol power ill",
             SHOWN("bell", "well") "; changed; " SHOWN("bell", "ill") "; changed; " SHOWN("power", "ill")},
            {"it shows its title where there is no such symbol", "symbol no.such down",
             "no.such that means down; no image; shows the title; tip down; says down"},
            {"a press is a click, also without an event", "left; left; control; press", "clicked; clicked; clicked"},
            {"the right button opens the menu, the left one still clicks", "right; left", "menu opens; clicked"},
            {"the left button with control opens the menu", "control; left", "menu opens"},
            {"the panel can be chosen", "choose Show panel; right", "menu opens; panel chosen"},
            {"the settings can be chosen", "choose Settings…; right", "menu opens; settings chosen"},
            {"quitting can be chosen", "choose Quit vorna; right", "menu opens; quit chosen"},
            {"a right release that only the monitor hears of opens the menu",
             "pointer 200 300; elsewhere right; say on it; pointer 510 0; elsewhere right", "on it; menu opens"},
            {"a click that is heard of twice opens the menu once",
             "pointer 510 0; right; elsewhere right; say later; wait 310; elsewhere right",
             "menu opens; later; menu opens"},
            {"the menu pops up where a click opens nothing", "right; deaf; wait 310; right",
             "menu opens; menu pops up"},
            {"the anchor is on the primary screen, a lower one to the right, one above, at half points",
             "pointer 200 300; anchor; window 3000 676; anchor; window 2000 2216; anchor; window 500.4 776; anchor",
             "QRect(503,0 30x24); QRect(3003,100 30x24); QRect(2003,-1440 30x24); QRect(503,0 30x24)"},
            {"the anchor is where the click was, as long as it is handled",
             "anchors; choose Show panel; pointer 200 0; left; anchor; right; anchor",
             "clicked; QRect(185,0 30x24); QRect(503,0 30x24); "
             "menu opens; panel chosen; QRect(185,0 30x24); QRect(503,0 30x24)"},
            {"the anchor is the pointer where the item has no place", "pointer 123 45; windowless; anchor",
             "QRect(123,45 0x0)"},
            {"presses elsewhere are watched, once, while the panel is open",
             "pointer 200 300; elsewhere left; panel open; panel open; elsewhere left; panel closed; "
             "elsewhere left; panel open",
             "watches 33554442; pressed 1; pressed 1; clicked elsewhere; watches no more 33554442; pressed 0; "
             "watches 33554442; pressed 1"},
            {"a press on the item is left to the item",
             "pointer 510 0; panel open; elsewhere left; say without a place; windowless; elsewhere left",
             "watches 33554442; pressed 1; without a place; clicked elsewhere"},
            {"it looks pressed while the panel is open, also after the click", "panel open; turn; panel closed; turn",
             "watches 33554442; pressed 1; pressed 1; watches no more 33554442; pressed 0; pressed 0"},
        },
        [] {
            create();
            (void)told();
        },
        [] { item.reset(); }};
    return area;
}
