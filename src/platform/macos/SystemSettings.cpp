#include "platform/SystemSettings.h"

#include "platform/Desktop.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

using SystemSettings::Pane;

struct PaneLink {
    Pane pane;
    QLatin1StringView link;
};

constexpr std::array links{
    PaneLink{Pane::notifications, "x-apple.systempreferences:com.apple.Notifications-Settings.extension"_L1},
    PaneLink{Pane::accessibility, "x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility"_L1},
    PaneLink{Pane::automation, "x-apple.systempreferences:com.apple.preference.security?Privacy_Automation"_L1},
    PaneLink{Pane::fullDiskAccess, "x-apple.systempreferences:com.apple.preference.security?Privacy_AllFiles"_L1},
    PaneLink{Pane::developerTools, "x-apple.systempreferences:com.apple.preference.security?Privacy_DevTools"_L1},
};

}

std::optional<QUrl> SystemSettings::link(Pane pane) {
    const auto* const found = std::ranges::find(links, pane, &PaneLink::pane);
    const QUrl link = found == links.end() ? QUrl{} : QUrl{QString{found->link}};
    return link.isValid() ? std::optional{link} : std::nullopt;
}

void SystemSettings::open(const QUrl& link) {
    Desktop::openUrl(link);
}
