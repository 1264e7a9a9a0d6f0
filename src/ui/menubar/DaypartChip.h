#pragma once

#include "daypart/DaypartPalette.h"
#include "ui/kit/SymbolImage.h"
#include "ui/menubar/PanelButton.h"

#include <optional>

/// One daypart to choose: its symbol over its title, filled with the accent while it is the current one, and checked.
class DaypartChip final : public PanelButton {
    Q_OBJECT

public:
    explicit DaypartChip(Daypart daypart, QWidget* parent = nullptr);

    void display(bool isSelected, const DaypartPalette& palette);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void draw(QPainter& painter) override;

    /// A press leaves the choice to whoever hears of it.
    void nextCheckState() override;

private:
    const SymbolImage m_symbol;
    const QFont m_font;
    int m_titleHeight = 0;
    std::optional<DaypartPalette> m_palette;
};
