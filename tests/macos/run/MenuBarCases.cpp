#include "Cases.h"
#include "platform/macos/MenuBar.h"

using Doubles::tell;

namespace {

/// The item is on the first; the second is to its right and lower, its bar is higher; on the third the bar hides
/// itself.
const QList<MenuBar::Screen> screens{
    {.geometry = {0, 0, 1440, 900}, .workArea = {0, 25, 1440, 875}},
    {.geometry = {1440, 100, 1920, 1080}, .workArea = {1440, 137, 1920, 1043}},
    {.geometry = {-1000, 0, 1000, 800}, .workArea = {-1000, 0, 1000, 800}},
};
constexpr QRect item{1000, 1, 30, 24};

auto pointerAt(int x, int y) {
    return [=] { tell(MenuBar::isOnItem({x, y}, item, screens)); };
}

auto anchorAfter(std::optional<QPoint> click) {
    return [=] { tell(MenuBar::anchor(item, click, screens)); };
}

constexpr auto anchoredAtTheItem = "QRect(1000,1 30x24)";

}

const QList<Case> menuBarCases{
    {"pointer in the middle of the item", pointerAt(1015, 12), "true"},
    {"pointer at the screen's upper edge", pointerAt(1000, 0), "true"},
    {"pointer at the bar's lower edge", pointerAt(1029, 24), "true"},
    {"pointer below the bar", pointerAt(1015, 25), "false"},
    {"pointer to the left", pointerAt(999, 12), "false"},
    {"pointer to the right", pointerAt(1030, 12), "false"},
    {"pointer on the item's copy on the second screen", pointerAt(2920, 100), "true"},
    {"pointer on its copy, in the higher bar", pointerAt(2949, 136), "true"},
    {"pointer beside its copy", pointerAt(2950, 110), "false"},
    {"pointer below the higher bar", pointerAt(2930, 137), "false"},
    {"pointer on its copy in a bar that hides itself", pointerAt(-440, 23), "true"},
    {"pointer below that", pointerAt(-440, 24), "false"},
    {"pointer on no screen", pointerAt(5000, 12), "false"},
    {"on no known screen the item is where it says",
     [] {
         tell(MenuBar::isOnItem({1015, 12}, item, {}));
         tell(MenuBar::isOnItem({1015, 0}, item, {}));
     },
     "true; false"},
    {"the panel hangs from the item without a click", anchorAfter({}), anchoredAtTheItem},
    {"the panel hangs from the item after a click on it", anchorAfter(QPoint{1001, 12}), anchoredAtTheItem},
    {"the panel hangs from the click on another screen", anchorAfter(QPoint{2930, 101}), "QRect(2915,100 30x37)"},
    {"the panel hangs from the click in the same bar", anchorAfter(QPoint{700, 3}), "QRect(685,0 30x25)"},
    {"the panel hangs from the item after a screen reader's click", anchorAfter(QPoint{700, 400}), anchoredAtTheItem},
    {"the panel hangs from the item after a click on no screen", anchorAfter(QPoint{5000, 3}), anchoredAtTheItem},
};
