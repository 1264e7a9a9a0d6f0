#pragma once

#include "ui/kit/ColourRole.h"

#include <QWidget>

/// Lies over the whole panel, untouchable: cuts its corners round, outlines it, and shows how far it is scrolled.
class PanelFrame final : public QWidget {
    Q_OBJECT

public:
    enum class Corners { square, round };

    PanelFrame(const Colours& colours, QWidget* parent);

    void setCorners(Corners corners);

    /// The part of the content that is in view, as fractions of its height.
    void setView(qreal start, qreal length);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void cutCorners(QPainter& painter) const;
    void drawScrollMark(QPainter& painter) const;

    const Colours& m_colours;
    Corners m_corners = Corners::square;
    qreal m_viewStart = 0;
    qreal m_viewLength = 1;
};
