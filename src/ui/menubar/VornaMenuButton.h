#pragma once

#include "ui/menubar/ButtonLabel.h"
#include "ui/menubar/PanelButton.h"
#include "ui/menubar/VornaMenuButtonStyle.h"

#include <optional>

/// A row of a menu: symbol and title at its leading edge.
class VornaMenuButton final : public PanelButton {
    Q_OBJECT

public:
    VornaMenuButton(const QString& title, const QString& symbolName, QWidget* parent = nullptr);

    void setButtonStyle(const VornaMenuButtonStyle& style);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void draw(QPainter& painter) override;

private:
    const ButtonLabel m_label;
    std::optional<VornaMenuButtonStyle> m_style;
};
