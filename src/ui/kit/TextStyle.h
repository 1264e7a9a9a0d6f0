#pragma once

#include <QFont>

/// How a text is set. Sizes are points, of which each is one device-independent pixel.
struct TextStyle final {
    enum class Design { system, monospaced };

    int size;
    QFont::Weight weight = QFont::Normal;
    Design design = Design::system;
    qreal tracking = 0;     ///< added between letters
    int lines = 1;          ///< at most so many; the last one is cut with an ellipsis
    qreal minimumScale = 1; ///< how far a single line may shrink before it is cut

    /// The desktop's own font for the design, at this size and weight.
    [[nodiscard]] QFont font() const;
};
