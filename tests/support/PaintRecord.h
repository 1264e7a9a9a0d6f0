#pragma once

#include <QColor>
#include <QFont>
#include <QImage>
#include <QList>
#include <QPaintDevice>
#include <QRectF>
#include <QString>

#include <memory>

class QWidget;

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

    explicit PaintRecord(QWidget& widget);
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
    std::unique_ptr<Engine> m_engine;
};
