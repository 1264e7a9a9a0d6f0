#pragma once

/// The sizes of grouped forms, in points.
namespace FormMetrics {

inline constexpr int pagePadding = 20;
inline constexpr int maximumFormWidth = 620;
inline constexpr int sectionSpacing = 22;
inline constexpr int headingSpacing = 7;
inline constexpr int groupRadius = 10;
inline constexpr int rowPadding = 14;
inline constexpr int rowPaddingVertical = 9;
inline constexpr int rowSpacing = 16;
inline constexpr int highlightInset = 4;
inline constexpr int highlightRadius = 7;
inline constexpr qreal focusRingWidth = 2;
inline constexpr qreal captionScale = 0.85;

}
