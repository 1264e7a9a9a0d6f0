#pragma once

#include "ui/kit/ColourRole.h"

#include <QString>
#include <QWidget>

/// What windows paint, as text that somebody has looked at and approved. Positions are points, rounded to quarters; a
/// colour is told by its role and by its opacity where that is below 100 %. To be the same on every machine it is taken
/// with the fonts of tests/fonts.
namespace ApprovedRecord {

/// One line for each thing that the widget and what is in it paint, positions from its top left corner.
[[nodiscard]] QString painted(QWidget& widget, const Colours& colours,
                              QWidget::RenderFlags flags = QWidget::DrawChildren);

/// Where the widgets directly in the window are, by their object names, what the window paints below them, then what
/// each of them paints.
[[nodiscard]] QString sections(QWidget& window, const Colours& colours);

/// What is left of `sections` without the ones that are word by word in `base`.
[[nodiscard]] QString withoutSectionsOf(const QString& base, const QString& sections);

enum class Places { count, differ };

/// Nothing where `text` is what tests/approved/NAME.txt holds, be it without the places; else how they differ. Then the
/// text is in the build folder as well, where `script/approve` takes it from.
[[nodiscard]] QString difference(const QString& name, const QString& text, Places places = Places::count);

}
