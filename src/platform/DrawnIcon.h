#pragma once

#include <QIcon>
#include <QList>
#include <QPixmap>

#include <functional>

/// An icon that is drawn anew whenever a picture is asked for, with a side of so many pixels, and that keeps none;
/// `sides` are the ones that it says it has.
[[nodiscard]] QIcon drawnIcon(std::function<QPixmap(int side)> draw, QList<int> sides = {});
