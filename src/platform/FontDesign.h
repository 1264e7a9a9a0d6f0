#pragma once

#include <QFont>

/// The designs that a desktop draws its letters in.
enum class FontDesign { system, rounded, monospaced };

/// The desktop's font of the design at the size of `font`; `font` itself where the desktop has none of it. Main thread
/// only.
[[nodiscard]] QFont inDesign(const QFont& font, FontDesign design);
