#pragma once

#include "ui/kit/ColourRole.h"

#include <QLabel>

/// A coloured circle that stands for a state, with the state's name for those who cannot see it.
class DotLabel final : public QLabel {
    Q_OBJECT

public:
    /// A second circle of the same colour, mostly transparent, behind the first.
    struct Halo final {
        int diameter;
        float opacity;
    };

    DotLabel(int diameter, const Colours& colours, QWidget* parent = nullptr, Halo halo = {});

    void display(ColourRole role, const QString& state);

    /// "ok" in the colour of success, else "not ok" in `failed`.
    void display(bool ok, ColourRole failed);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const int m_diameter;
    const Colours& m_colours;
    const Halo m_halo;
    ColourRole m_role = ColourRole::textMuted;
};
