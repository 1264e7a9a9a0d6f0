#pragma once

#include <QString>

/// The platform's local development domain, which stands here once. It names this machine without any set-up.
namespace DevelopmentDomain {

inline constexpr QStringView name = u"vorna.localhost";

/// ".vorna.localhost"
[[nodiscard]] inline QString wildcard() {
    return u'.' + name;
}

/// The origin of the web dashboard: "https://vorna.localhost"
[[nodiscard]] inline QString dashboard() {
    return u"https://" + name;
}

/// The origin of the Facet web app: "https://facet.vorna.localhost"
[[nodiscard]] inline QString facet() {
    return u"https://facet" + wildcard();
}

}
