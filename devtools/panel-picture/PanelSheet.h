#pragma once

#include "ui/DaypartColours.h"

#include <QImage>
#include <QStringList>
#include <QWidget>

class MenuBarView;
class PanelFrame;

/// The panel as a picture and as text, whole however high it is. Nothing appears on a screen.
class PanelSheet final : public QWidget {
public:
    PanelSheet(std::unique_ptr<MenuBarView> content, DaypartController& daypart);

    /// The panel as it is now, with round corners, at `scale` pixels a point.
    [[nodiscard]] QImage draw(qreal scale);

    /// What the panel says, in reading order.
    [[nodiscard]] QStringList texts() const;

private:
    void settle();

    const DaypartColours m_colours;
    MenuBarView* m_content;
    PanelFrame* m_frame;
};
