#pragma once

#include <QString>

/// The platform's local development domain, which stands here once. It names this machine without any set-up.
namespace DevelopmentDomain {

inline constexpr QStringView name = u"vorna.localhost";

/// ".vorna.localhost"
inline const QString wildcard = u'.' + name;

/// The origins of the web dashboard and of the Facet web app: "https://vorna.localhost",
/// "https://facet.vorna.localhost"
inline const QString dashboardOrigin = u"https://" + name;
inline const QString facetOrigin = u"https://facet" + wildcard;

}
