#include "ui/VersionLabels.h"

#include "platform/AppInfo.h"

using namespace Qt::StringLiterals;

namespace {

QString known(const std::optional<QString>& text) {
    return text.value_or(u"?"_s);
}

}

QString VersionLabels::caption(const std::optional<QString>& shortVersion, const std::optional<QString>& build) {
    return u'v' + known(shortVersion) + u" (" + known(build) + u')';
}

QString VersionLabels::caption() {
    return caption(AppInfo::shortVersion(), AppInfo::build());
}

QString VersionLabels::label(const std::optional<QString>& shortVersion, const std::optional<QString>& build) {
    return u'v' + known(shortVersion) + u" (build " + known(build) + u')';
}

QString VersionLabels::label() {
    return label(AppInfo::shortVersion(), AppInfo::build());
}
