#pragma once

#include <QColor>

/// What a colour is for. Which colour a role has at the moment, a window's `Colours` tell.
enum class ColourRole {
    background,
    surface,
    surfaceElevated,
    border,
    text,
    textMuted,
    accent,
    success,
    warning,
    danger
};

/// The colour of a role, transparent as far as `opacity` is below 1.
struct Tint final {
    ColourRole role;
    float opacity = 1;

    friend bool operator==(const Tint&, const Tint&) = default;
};

/// The colours of a window by their roles. Its widgets hold it and ask whenever they paint: after a change of colours
/// the window needs one `update()` and nothing else. It must outlive the widgets. Main thread only.
class Colours {
public:
    virtual ~Colours() = default;

    [[nodiscard]] virtual QColor of(ColourRole role) const = 0;

    [[nodiscard]] QColor of(const Tint& tint) const {
        QColor colour = of(tint.role);
        colour.setAlphaF(tint.opacity);
        return colour;
    }
};
