#include "platform/FontDesign.h"

#include <QFontDatabase>

#include <algorithm>
#include <array>

/// Widespread families with rounded ends, the best match for a desktop's text first.
static constexpr std::array roundedFamilies{"Nunito", "Varela Round", "M PLUS Rounded 1c", "Quicksand", "Comfortaa"};

QString familyOf(FontDesign design) {
    const auto* const installed = std::ranges::find_if(
        roundedFamilies, [](const char* family) { return QFontDatabase::hasFamily(QString::fromLatin1(family)); });
    return design == FontDesign::rounded && installed != roundedFamilies.end() ? QString::fromLatin1(*installed)
                                                                               : QString{};
}
