#pragma once

#include "ui/kit/SymbolImage.h"
#include "ui/kit/TextStyle.h"

#include <QString>

/// A button's symbol and its title beside it.
class ButtonLabel final {
public:
    enum class Placement { leading, centred };

    ButtonLabel(QString title, const QString& symbolName, const TextStyle& style);

    [[nodiscard]] QSize size() const;
    void draw(QPainter& painter, const QRectF& room, Placement placement, const QColor& colour) const;

private:
    QString m_title;
    SymbolImage m_symbol;
    QFont m_font;
    int m_titleWidth = 0;
    int m_titleHeight = 0;
};
