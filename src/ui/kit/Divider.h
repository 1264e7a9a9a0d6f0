#pragma once

#include "ui/kit/Decoration.h"

#include <QColor>

/// A horizontal rule across its parent.
class Divider final : public Decoration {
    Q_OBJECT

public:
    static constexpr int thickness = 1; ///< points

    explicit Divider(QWidget* parent = nullptr);

    void setColour(const QColor& colour);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QColor m_colour;
};
