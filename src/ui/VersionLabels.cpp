#include "ui/VersionLabels.h"

using namespace Qt::StringLiterals;

namespace {

constexpr QChar unknown = u'?';

}

QString VersionLabels::caption(const std::optional<QString>& shortVersion, const std::optional<QString>& build) {
    return u"v%1 (%2)"_s.arg(shortVersion.value_or(unknown), build.value_or(unknown));
}

QString VersionLabels::label(const std::optional<QString>& shortVersion, const std::optional<QString>& build) {
    return u"v%1 (build %2)"_s.arg(shortVersion.value_or(unknown), build.value_or(unknown));
}
