#pragma once

#include "ui/kit/ColourRole.h"
#include "ui/kit/Decoration.h"

/// A horizontal rule across its parent, as many whole pixels high as a point surely has.
class Divider final : public Decoration {
    Q_OBJECT

public:
    static constexpr int thickness = 1; ///< points

    explicit Divider(const Colours& colours, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const Colours& m_colours;
};
