#include "platform/SystemSettings.h"

#include "platform/Desktop.h"

#include <array>

using namespace Qt::StringLiterals;

namespace {

/// In the order of the panes.
constexpr std::array links{
    "x-apple.systempreferences:com.apple.Notifications-Settings.extension"_L1,
    "x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility"_L1,
    "x-apple.systempreferences:com.apple.preference.security?Privacy_Automation"_L1,
    "x-apple.systempreferences:com.apple.preference.security?Privacy_AllFiles"_L1,
    "x-apple.systempreferences:com.apple.preference.security?Privacy_DevTools"_L1,
};

}

std::optional<QUrl> SystemSettings::link(Pane pane) {
    return QUrl{links.at(static_cast<std::size_t>(pane))};
}

void SystemSettings::open(const QUrl& link) {
    Desktop::openUrl(link);
}
