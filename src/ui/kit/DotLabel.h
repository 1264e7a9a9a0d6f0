#pragma once

#include <QColor>
#include <QLabel>

/// A coloured circle that stands for a state, with the state's name for those who cannot see it.
class DotLabel final : public QLabel {
    Q_OBJECT

public:
    /// A halo of the same colour, mostly transparent, surrounds the dot where its diameter is larger.
    explicit DotLabel(int diameter, QWidget* parent = nullptr, int haloDiameter = 0, float haloOpacity = 0);

    void display(const QColor& colour, const QString& state);

    [[nodiscard]] const QColor& colour() const { return m_colour; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const int m_diameter;
    const int m_haloDiameter;
    const float m_haloOpacity;
    QColor m_colour;
};
