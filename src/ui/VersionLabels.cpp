#include "ui/VersionLabels.h"

using namespace Qt::StringLiterals;

namespace {

QString known(const std::optional<QString>& text) {
    return text.value_or(u"?"_s);
}

}

QString VersionLabels::caption(const std::optional<QString>& shortVersion, const std::optional<QString>& build) {
    return u'v' + known(shortVersion) + u" (" + known(build) + u')';
}

QString VersionLabels::label(const std::optional<QString>& shortVersion, const std::optional<QString>& build) {
    return u'v' + known(shortVersion) + u" (build " + known(build) + u')';
}
