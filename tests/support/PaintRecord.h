#pragma once

#include <QFont>
#include <QImage>
#include <QList>
#include <QPaintDevice>
#include <QWidget>

#include <memory>

/// What a widget really paints: it is rendered onto this device, which writes down every text, symbol and shape, and
/// once more as the picture that a screen would show. Coordinates are the widget's.
class PaintRecord final : public QPaintDevice {
public:
    /// A text, a symbol, or a shape that is filled, outlined or cut out of what is below.
    struct Item final {
        enum class Kind { fill, outline, cut, text, symbol };

        Kind kind;
        QRectF place;     ///< of a text: its start on the baseline
        QColor colour;    ///< the painter's opacity included
        QString shape{};  ///< of a fill, an outline and a cut: what its corners are like, and its line's width
        QString string{}; ///< of a text
        QFont font{};     ///< of a text
        qreal scale = 1;  ///< of a text: what its letters are drawn at, of their font's size
        QImage image{};   ///< of a symbol
        QRectF seen{};    ///< of a text: the part that is in view
        qreal opacity{1}; ///< of a text: the painter's, which is how what is disabled is dimmed
    };

    explicit PaintRecord(QWidget& widget,
                         QWidget::RenderFlags flags = QWidget::DrawWindowBackground | QWidget::DrawChildren);
    ~PaintRecord() override;

    /// Everything that can be seen, in the order in which it was painted.
    [[nodiscard]] const QList<Item>& items() const { return m_items; }
    [[nodiscard]] QList<Item> texts() const;
    [[nodiscard]] const QImage& picture() const { return m_picture; }

    /// What is behind a text: the most frequent colour there.
    [[nodiscard]] QColor groundOf(const Item& text) const;

    [[nodiscard]] QPaintEngine* paintEngine() const override;

protected:
    int metric(PaintDeviceMetric metric) const override { return m_picture.metric(metric); }

private:
    class Engine;
    struct Picture final : QImage {
        explicit Picture(const QImage& image)
            : QImage{image} {}
        using QImage::metric;
    };

    Picture m_picture;
    QList<Item> m_items;
    std::unique_ptr<Engine> m_engine;
};
