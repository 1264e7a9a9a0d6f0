#pragma once

#include "platform/Symbol.h"

#include <QRectF>

class QPainter;

/// A symbol that is drawn again and again: made once for each colour and scale of the screen.
class SymbolImage final {
public:
    explicit SymbolImage(QString name, Symbol::Weight weight = Symbol::Weight::regular);

    [[nodiscard]] bool isNull() const { return m_name.isEmpty(); }

    /// Draws the symbol into a square, at the painter's own scale.
    void draw(QPainter& painter, const QRectF& square, const QColor& colour) const;

private:
    struct Look {
        qreal size = 0;
        QColor colour;
        qreal scale = 0;

        friend bool operator==(const Look&, const Look&) = default;
    };

    QString m_name;
    Symbol::Weight m_weight;
    mutable Look m_look;
    mutable QPixmap m_pixmap;
};
