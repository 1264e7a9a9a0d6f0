#pragma once

#include "ui/menubar/ButtonLabel.h"
#include "ui/menubar/PanelButton.h"
#include "ui/menubar/VornaAccentButtonStyle.h"

#include <optional>

/// A quick action: symbol and title in the middle of an accent fill.
class VornaAccentButton final : public PanelButton {
    Q_OBJECT

public:
    VornaAccentButton(const QString& title, const QString& symbolName, QWidget* parent = nullptr);

    void setButtonStyle(const VornaAccentButtonStyle& style);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void draw(QPainter& painter) override;

private:
    const ButtonLabel m_label;
    std::optional<VornaAccentButtonStyle> m_style;
};
