#pragma once

#include <QStringView>

/// The words of the item's menu and of its description, the same on every desktop.
namespace StatusItemMenu {

inline constexpr QStringView showPanel = u"Show panel";
inline constexpr QStringView settings = u"Settings…";
inline constexpr QStringView quit = u"Quit %1"; ///< %1 is the title

}
