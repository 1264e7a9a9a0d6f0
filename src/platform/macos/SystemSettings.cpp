#include "platform/SystemSettings.h"

#include "platform/Launch.h"

#include <algorithm>
#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

using SystemSettings::Pane;

constexpr std::array links{
    std::pair{Pane::notifications, u"x-apple.systempreferences:com.apple.Notifications-Settings.extension"},
    std::pair{Pane::accessibility, u"x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility"},
    std::pair{Pane::automation, u"x-apple.systempreferences:com.apple.preference.security?Privacy_Automation"},
    std::pair{Pane::fullDiskAccess, u"x-apple.systempreferences:com.apple.preference.security?Privacy_AllFiles"},
    std::pair{Pane::developerTools, u"x-apple.systempreferences:com.apple.preference.security?Privacy_DevTools"},
};

}

std::optional<QUrl> SystemSettings::link(Pane pane) {
    const auto* const found = std::ranges::find(links, pane, &decltype(links)::value_type::first);
    const QUrl url = found == links.end() ? QUrl{} : QUrl{QString{found->second}};
    return url.isValid() ? std::optional{url} : std::nullopt;
}

void SystemSettings::open(const QUrl& link) {
    Launch::openUrl(link);
}
