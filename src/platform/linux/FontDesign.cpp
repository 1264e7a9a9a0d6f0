#include "platform/FontDesign.h"

#include <QFontDatabase>
#include <QStringList>

#include <algorithm>
#include <array>

/// Widespread families with rounded ends, the best match for a desktop's text first.
static constexpr std::array roundedFamilies{"Nunito", "Varela Round", "M PLUS Rounded 1c", "Quicksand", "Comfortaa"};

QString familyOf(FontDesign design) {
    if (design != FontDesign::rounded) {
        return {};
    }
    const QStringList installed = QFontDatabase::families(); // asking for one costs as much as asking for all
    const auto* const found = std::ranges::find_if(
        roundedFamilies, [&](const char* family) { return installed.contains(QLatin1StringView{family}); });
    return found == roundedFamilies.end() ? QString{} : QString::fromLatin1(*found);
}
