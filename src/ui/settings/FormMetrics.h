#pragma once

#include "ui/kit/TextStyle.h"

/// The sizes of the settings' pages, in points, and the styles of their texts.
namespace FormMetrics {

inline constexpr int pagePadding = 20;
inline constexpr int maximumFormWidth = 39; ///< heights of a line of text
inline constexpr int sectionSpacing = 22;
inline constexpr int headingSpacing = 7;
inline constexpr int cardRadius = 10;
inline constexpr int rowPadding = 14;
inline constexpr int rowPaddingVertical = 9;
inline constexpr int rowSpacing = 16;
inline constexpr int dotSize = 8;
inline constexpr int dotSpacing = 7;
inline constexpr int introductionSpacing = 14;
inline constexpr int permissionPadding = 4;
inline constexpr int permissionSpacing = 4;
inline constexpr int permissionGap = 8;

inline constexpr int maximumLines = 6;
inline constexpr qreal captionScale = 0.85;

inline constexpr TextStyle body{.lines = maximumLines};
inline constexpr TextStyle headline{.weight = QFont::DemiBold, .lines = maximumLines};
inline constexpr TextStyle monospaced{.design = FontDesign::monospaced, .lines = maximumLines};
inline constexpr TextStyle caption{.scale = captionScale, .colour = {ColourRole::textMuted}, .lines = maximumLines};
inline constexpr TextStyle captionMonospaced{
    .scale = captionScale, .design = FontDesign::monospaced, .colour = {ColourRole::textMuted}, .lines = maximumLines};

}
