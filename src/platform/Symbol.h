#pragma once

#include <QColor>
#include <QPixmap>
#include <QString>

/// Pictures by the name of their symbol.
namespace Symbol {

enum class Weight { regular, semibold };

/// What a symbol that is wider than high does: gets smaller, or a picture as much wider on both sides.
enum class Fit { square, height };

/// The symbol in one colour on a transparent square of `size` points, as it goes with a text of three quarters of that
/// size, for a screen of the given scale. A name without a symbol gives a transparent picture of the same size.
[[nodiscard]] QPixmap pixmap(const QString& name, qreal size, const QColor& colour, qreal scale,
                             Weight weight = Weight::regular, Fit fit = Fit::square);

}
