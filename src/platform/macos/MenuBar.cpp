#include "platform/macos/MenuBar.h"

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>

namespace {

using MenuBar::Screen;

/// A bar that hides itself leaves its room to the work area; it is as high as the item then.
QRect barOf(const Screen& screen, const QRect& item) {
    const int height = std::max(screen.workArea.top() - screen.geometry.top(), item.height());
    return {screen.geometry.topLeft(), QSize{screen.geometry.width(), height}};
}

const Screen* screenAt(QPoint point, const QList<Screen>& screens) {
    const auto found =
        std::ranges::find_if(screens, [point](const Screen& screen) { return screen.geometry.contains(point); });
    return found == screens.end() ? nullptr : &*found;
}

}

QList<Screen> MenuBar::screens() {
    QList<Screen> all;
    for (const QScreen* screen : QGuiApplication::screens()) {
        all.append({screen->geometry(), screen->availableGeometry()});
    }
    return all;
}

bool MenuBar::isOnItem(QPoint pointer, const QRect& item, const QList<Screen>& screens) {
    const Screen* here = screenAt(pointer, screens);
    const Screen* home = screenAt(item.center(), screens);
    if (here == nullptr || home == nullptr) {
        return item.contains(pointer);
    }
    const int left = item.left() + here->geometry.right() - home->geometry.right();
    return barOf(*here, item).contains(pointer) && pointer.x() >= left && pointer.x() < left + item.width();
}

QRect MenuBar::anchor(const QRect& item, std::optional<QPoint> click, const QList<Screen>& screens) {
    const Screen* here = click ? screenAt(*click, screens) : nullptr;
    const QRect bar = here == nullptr ? QRect{} : barOf(*here, item);
    if (!click || item.contains(*click) || !bar.contains(*click)) {
        return item;
    }
    return {click->x() - item.width() / 2, bar.top(), item.width(), bar.height()};
}
