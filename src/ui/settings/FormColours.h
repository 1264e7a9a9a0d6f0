#pragma once

#include <QColor>
#include <QPalette>

/// The colours of grouped forms. Each is derived from the desktop's palette when something is painted, so that the
/// forms follow it at once, and each text colour is readable on a group and on the window.
namespace FormColours {

/// The fill of a rounded group or a list, a little apart from the window.
[[nodiscard]] QColor group(const QPalette& palette);
[[nodiscard]] QColor outline(const QPalette& palette);
[[nodiscard]] QColor text(const QPalette& palette);
[[nodiscard]] QColor secondaryText(const QPalette& palette);
/// What can be pressed, or is chosen.
[[nodiscard]] QColor accent(const QPalette& palette);
/// Laid over what the pointer is on, or presses.
[[nodiscard]] QColor hover(const QPalette& palette);
[[nodiscard]] QColor pressed(const QPalette& palette);
[[nodiscard]] QColor selection(const QPalette& palette);

/// How well one colour stands out from another: from 1 (not at all) to 21.
[[nodiscard]] qreal contrast(const QColor& one, const QColor& other);

}
