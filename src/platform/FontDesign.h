#pragma once

#include <QFont>

/// The designs that a desktop draws its letters in.
enum class FontDesign { system, rounded, monospaced };

/// The family of the desktop's own font in a design; empty where it has none. Main thread only.
[[nodiscard]] QString familyOf(FontDesign design);

/// The desktop's font of the design at the size of `font`; `font` itself where the desktop has none of it. Main thread
/// only.
[[nodiscard]] QFont inDesign(const QFont& font, FontDesign design);
