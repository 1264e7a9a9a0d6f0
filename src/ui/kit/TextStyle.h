#pragma once

#include "platform/FontDesign.h"
#include "ui/kit/ColourRole.h"

/// How a text is set.
struct TextStyle final {
    int size = 0;    ///< points, of which each is one device-independent pixel; 0 is the desktop's own size
    qreal scale = 1; ///< of the desktop's own size
    QFont::Weight weight = QFont::Normal;
    FontDesign design = FontDesign::system;
    qreal tracking = 0; ///< added between letters
    Tint colour{ColourRole::text};
    int lines = 1;          ///< at most so many; the last one is cut with an ellipsis
    qreal minimumScale = 1; ///< how far a single line may shrink before it is cut

    /// The font for this style where `desktop` is the font of ordinary text.
    [[nodiscard]] QFont font(const QFont& desktop) const;
};
