#include "Cases.h"
#include "platform/macos/MenuBar.h"

using namespace Qt::StringLiterals;

namespace {

/// The item is on the first; the second is to its right and lower, its bar is higher; on the third the bar hides
/// itself.
const QList<MenuBar::Screen> screens{
    {.geometry = {0, 0, 1440, 900}, .workArea = {0, 25, 1440, 875}},
    {.geometry = {1440, 100, 1920, 1080}, .workArea = {1440, 137, 1920, 1043}},
    {.geometry = {-1000, 0, 1000, 800}, .workArea = {-1000, 0, 1000, 800}},
};
constexpr QRect item{1000, 1, 30, 24};

QPoint point(const QString& words) {
    return QPointF{numbers(words).at(0), numbers(words).at(1)}.toPoint();
}

}

const Area& menuBarArea() {
    static const Area area{
        "menu bar",
        {
            {u"pointer"_s, [](auto& at) { Doubles::tell(MenuBar::isOnItem(point(at), item, screens)); }},
            {u"nowhere"_s, [](auto& at) { Doubles::tell(MenuBar::isOnItem(point(at), item, {})); }},
            {u"click"_s, [](auto& at) { Doubles::tell(MenuBar::anchor(item, point(at), screens)); }},
            {u"none"_s, [](auto&) { Doubles::tell(MenuBar::anchor(item, {}, screens)); }},
        },
        {
            {"on the item: its middle, the screen's upper edge, the bar's lower edge",
             "pointer 1015 12; pointer 1000 0; pointer 1029 24", "true; true; true"},
            {"not on it: below the bar, to the left, to the right, on no screen",
             "pointer 1015 25; pointer 999 12; pointer 1030 12; pointer 5000 12", "false; false; false; false"},
            {"on its copy on the second screen, in the higher bar", "pointer 2920 100; pointer 2949 136", "true; true"},
            {"beside its copy, and below the higher bar", "pointer 2950 110; pointer 2930 137", "false; false"},
            {"in a bar that hides itself, and below that", "pointer -440 23; pointer -440 24", "true; false"},
            {"on no known screen it is where it says", "nowhere 1015 12; nowhere 1015 0", "true; false"},
            {"the panel hangs from the item", "none; click 1001 12", "QRect(1000,1 30x24); QRect(1000,1 30x24)"},
            {"the panel hangs from a click on another screen, or elsewhere in the bar", "click 2930 101; click 700 3",
             "QRect(2915,100 30x37); QRect(685,0 30x25)"},
            {"the panel hangs from the item after a click in no bar, as by a screen reader, or on no screen",
             "click 700 400; click 5000 3", "QRect(1000,1 30x24); QRect(1000,1 30x24)"},
        }};
    return area;
}
