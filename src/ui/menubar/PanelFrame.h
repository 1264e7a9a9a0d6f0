#pragma once

#include "ui/kit/Decoration.h"

#include <QColor>

/// Lies over the whole panel, untouchable: cuts its corners round, outlines it, and shows how far it is scrolled.
class PanelFrame final : public Decoration {
    Q_OBJECT

public:
    enum class Corners { square, round };

    explicit PanelFrame(QWidget* parent);

    void setCorners(Corners corners);
    void setColours(const QColor& border, const QColor& scrollMark);

    /// The part of the content that is in view, as fractions of its height.
    void setView(qreal start, qreal length);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void cutCorners(QPainter& painter) const;
    void drawScrollMark(QPainter& painter) const;

    Corners m_corners = Corners::square;
    QColor m_border;
    QColor m_scrollMark;
    qreal m_viewStart = 0;
    qreal m_viewLength = 1;
};
