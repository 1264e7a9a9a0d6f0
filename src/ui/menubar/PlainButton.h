#pragma once

#include "ui/kit/TextStyle.h"
#include "ui/menubar/PanelButton.h"

#include <QColor>

/// A title that can be pressed, without any ground. There is room for its focus ring at both of its ends.
class PlainButton final : public PanelButton {
    Q_OBJECT

public:
    PlainButton(const QString& title, const TextStyle& style, QWidget* parent = nullptr);

    void setColour(const QColor& colour);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void draw(QPainter& painter) override;

private:
    const QFont m_font;
    QColor m_colour;
};
