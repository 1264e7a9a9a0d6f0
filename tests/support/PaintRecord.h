#pragma once

#include <QColor>
#include <QFont>
#include <QImage>
#include <QList>
#include <QPaintDevice>
#include <QRectF>
#include <QString>
#include <QWidget>

#include <memory>

/// What a widget really paints: it is rendered once onto this device, which writes down every text with its colours
/// and draws the picture that a screen would show. Coordinates are the widget's.
class PaintRecord final : public QPaintDevice {
public:
    struct Text final {
        QString string;
        QRectF place;  ///< the part that is in view
        QColor ink;    ///< as it is seen: what was laid over what
        QColor ground; ///< the most frequent colour that was there before the text
        qreal opacity; ///< of the painter, which is how what is disabled is dimmed
        QFont font;
    };

    /// A text, a symbol, or a shape that is filled, outlined or cut out of what is below.
    struct Item final {
        enum class Kind { fill, outline, cut, text, symbol };

        Kind kind;
        QRectF place;     ///< of a text: its start on the baseline
        QColor colour;    ///< the painter's opacity included
        QString shape;    ///< of a fill, an outline and a cut: what its corners are like, and its line's width
        QString string{}; ///< of a text
        QFont font{};     ///< of a text
        qreal scale = 1;  ///< of a text: what its letters are drawn at, of their font's size
        QImage image{};   ///< of a symbol
    };

    /// Everything that can be seen, in the order in which it was painted.
    [[nodiscard]] const QList<Item>& items() const { return m_items; }

    explicit PaintRecord(QWidget& widget,
                         QWidget::RenderFlags flags = QWidget::DrawWindowBackground | QWidget::DrawChildren);
    ~PaintRecord() override;

    /// In the order in which they were painted.
    [[nodiscard]] const QList<Text>& texts() const { return m_texts; }

    /// Where pixmaps and images were painted.
    [[nodiscard]] const QList<QRectF>& symbols() const { return m_symbols; }

    [[nodiscard]] const QImage& picture() const { return m_picture; }

    [[nodiscard]] QPaintEngine* paintEngine() const override;

protected:
    int metric(PaintDeviceMetric metric) const override;

private:
    class Engine;

    void addText(const QString& string, const QRectF& place, QColor pen, qreal opacity, const QFont& font);
    [[nodiscard]] QColor groundAt(const QRect& place) const;

    QImage m_picture;
    QList<Text> m_texts;
    QList<QRectF> m_symbols;
    QList<Item> m_items;
    std::unique_ptr<Engine> m_engine;
};
