#include "support/PaintRecord.h"

#include <QMap>
#include <QPaintEngine>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr double inchesInAMetre = 39.37;

QColor over(const QColor& upper, const QColor& lower) {
    const float share = upper.alphaF();
    const auto mix = [share](float above, float below) { return above * share + below * (1 - share); };
    return QColor::fromRgbF(mix(upper.redF(), lower.redF()), mix(upper.greenF(), lower.greenF()),
                            mix(upper.blueF(), lower.blueF()));
}

}

/// Passes everything on to the picture, and texts and symbols to the record as well.
class PaintRecord::Engine final : public QPaintEngine {
public:
    explicit Engine(PaintRecord& record)
        : QPaintEngine{AllFeatures}
        , m_record{record} {}

    Type type() const override { return User; }
    bool begin(QPaintDevice* /*device*/) override { return m_painter.begin(&m_record.m_picture); }
    bool end() override { return m_painter.end(); }
    void updateState(const QPaintEngineState& /*state*/) override {}

    void drawPath(const QPainterPath& path) override {
        addShape(path);
        prepared().drawPath(path);
    }
    void drawPolygon(const QPointF* points, int count, PolygonDrawMode mode) override {
        QPainterPath path;
        path.addPolygon(QPolygonF{QList<QPointF>{points, points + count}});
        addShape(path);
        if (mode == PolylineMode) {
            prepared().drawPolyline(points, count);
        } else {
            prepared().drawPolygon(points, count, mode == WindingMode ? Qt::WindingFill : Qt::OddEvenFill);
        }
    }
    void drawPixmap(const QRectF& place, const QPixmap& pixmap, const QRectF& source) override {
        addImage(place, pixmap.toImage());
        prepared().drawPixmap(place, pixmap, source);
    }
    void drawImage(const QRectF& place, const QImage& image, const QRectF& source,
                   Qt::ImageConversionFlags flags) override {
        addImage(place, image);
        prepared().drawImage(place, image, source, flags);
    }
    void drawTextItem(const QPointF& position, const QTextItem& item) override {
        const QRectF place{position.x(), position.y() - item.ascent(), item.width(), item.ascent() + item.descent()};
        m_record.addText(item.text(), inView(place), state->pen().color(), state->opacity(), item.font());
        addText(position, item, inView(place));
        prepared().drawTextItem(position, item);
    }

private:
    using Item = PaintRecord::Item;

    [[nodiscard]] QColor seen(QColor colour) const {
        colour.setAlphaF(colour.alphaF() * static_cast<float>(state->opacity()));
        return colour;
    }

    void addShape(const QPainterPath& path) {
        const QPainterPath mapped = state->transform().map(path);
        if (inView(path.boundingRect()).isEmpty()) {
            return;
        }
        const bool isCut = state->compositionMode() == QPainter::CompositionMode_DestinationOut;
        if (state->brush().style() != Qt::NoBrush) {
            const auto [place, corners] = shapeOf(mapped);
            m_record.m_items +=
                {isCut ? Item::Kind::cut : Item::Kind::fill, place, seen(state->brush().color()), corners};
        }
        if (state->pen().style() != Qt::NoPen) {
            const qreal width = state->pen().widthF();
            const auto [place, corners] = shapeOf(mapped);
            m_record.m_items += {Item::Kind::outline, place.adjusted(-width / 2, -width / 2, width / 2, width / 2),
                                 seen(state->pen().color()), corners + QStringLiteral(" width %1").arg(width)};
        }
    }

    void addImage(const QRectF& place, const QImage& image) {
        m_record.m_symbols += inView(place);
        m_record.m_items +=
            {Item::Kind::symbol, state->transform().mapRect(place), seen(Qt::black), {}, {}, {}, 1, image};
    }

    /// What is set in one line and one style is one text, however many pieces it is drawn in.
    void addText(const QPointF& position, const QTextItem& item, const QRectF& inView) {
        if (inView.isEmpty()) {
            return;
        }
        const QPointF start = state->transform().map(position);
        const qreal scale = state->transform().m11();
        const QRectF place{start, QSizeF{item.width() * scale, 0}};
        const QColor colour = seen(state->pen().color());
        constexpr qreal gap = 1;
        if (!m_record.m_items.isEmpty()) {
            Item& last = m_record.m_items.last();
            if (last.kind == Item::Kind::text && last.font == item.font() && last.colour == colour &&
                last.place.y() == start.y() && std::abs(last.place.right() - start.x()) < gap) {
                last.string += item.text();
                last.place.setRight(place.right());
                return;
            }
        }
        m_record.m_items += {Item::Kind::text, place, colour, {}, item.text(), item.font(), scale};
    }

    /// The bounds of the path's first figure, and how far from a corner its upper edge begins to be straight.
    static std::pair<QRectF, QString> shapeOf(const QPainterPath& path) {
        QPainterPath figure;
        bool hasLines = false;
        bool hasCurves = false;
        for (int i = 0; i < path.elementCount() && (i == 0 || !path.elementAt(i).isMoveTo()); ++i) {
            hasLines |= path.elementAt(i).isLineTo();
            hasCurves |= path.elementAt(i).isCurveTo();
            i == 0 ? figure.moveTo(path.elementAt(i)) : figure.lineTo(path.elementAt(i));
        }
        const QRectF bounds = figure.boundingRect();
        if (!hasCurves) {
            return {bounds, QStringLiteral("square")};
        }
        if (!hasLines) {
            return {bounds, QStringLiteral("round")};
        }
        const QPointF first = path.elementAt(0);
        return {bounds,
                QStringLiteral("corner %1").arg(std::min(first.x() - bounds.left(), bounds.right() - first.x()))};
    }

    QPainter& prepared() {
        m_painter.setTransform({});
        m_painter.setClipping(false);
        if (!systemClip().isEmpty()) {
            m_painter.setClipRegion(systemClip());
        }
        m_painter.setTransform(state->transform());
        if (painter()->hasClipping()) {
            m_painter.setClipPath(painter()->clipPath(), Qt::IntersectClip);
        }
        m_painter.setPen(state->pen());
        m_painter.setBrush(state->brush());
        m_painter.setBrushOrigin(state->brushOrigin());
        m_painter.setFont(state->font());
        m_painter.setRenderHints(m_painter.renderHints(), false);
        m_painter.setRenderHints(state->renderHints());
        m_painter.setCompositionMode(state->compositionMode());
        m_painter.setOpacity(state->opacity());
        return m_painter;
    }

    [[nodiscard]] QRectF inView(const QRectF& place) const {
        QRectF seen = state->transform().mapRect(place);
        if (!systemClip().isEmpty()) {
            seen &= systemClip().boundingRect();
        }
        if (painter()->hasClipping()) {
            seen &= state->transform().mapRect(painter()->clipBoundingRect());
        }
        return seen;
    }

    PaintRecord& m_record;
    QPainter m_painter;
};

PaintRecord::PaintRecord(QWidget& widget, QWidget::RenderFlags flags)
    : m_picture{widget.size(), QImage::Format_ARGB32_Premultiplied}
    , m_engine{std::make_unique<Engine>(*this)} {
    m_picture.fill(Qt::transparent);
    widget.render(this, {}, {}, flags);
}

PaintRecord::~PaintRecord() = default;

QPaintEngine* PaintRecord::paintEngine() const {
    return m_engine.get();
}

int PaintRecord::metric(PaintDeviceMetric metric) const {
    constexpr int depth = 32;
    switch (metric) {
    case PdmWidth:
        return m_picture.width();
    case PdmHeight:
        return m_picture.height();
    case PdmWidthMM:
        return qRound(1000 * m_picture.width() / (m_picture.logicalDpiX() * inchesInAMetre));
    case PdmHeightMM:
        return qRound(1000 * m_picture.height() / (m_picture.logicalDpiY() * inchesInAMetre));
    case PdmDpiX:
    case PdmPhysicalDpiX:
        return m_picture.logicalDpiX();
    case PdmDpiY:
    case PdmPhysicalDpiY:
        return m_picture.logicalDpiY();
    case PdmDepth:
        return depth;
    case PdmNumColors:
        return 0;
    case PdmDevicePixelRatio:
        return 1;
    case PdmDevicePixelRatioScaled:
        return static_cast<int>(devicePixelRatioFScale());
    }
    return 0;
}

void PaintRecord::addText(const QString& string, const QRectF& place, QColor pen, qreal opacity, const QFont& font) {
    if (place.isEmpty() || string.trimmed().isEmpty()) {
        return;
    }
    const QColor ground = groundAt(place.toAlignedRect() & m_picture.rect());
    pen.setAlphaF(pen.alphaF() * static_cast<float>(opacity));
    m_texts += {string, place, over(pen, ground), ground, opacity, font};
}

QColor PaintRecord::groundAt(const QRect& place) const {
    QMap<QRgb, int> counts;
    for (int y = place.top(); y <= place.bottom(); ++y) {
        for (int x = place.left(); x <= place.right(); ++x) {
            ++counts[m_picture.pixel(x, y)];
        }
    }
    const auto most = std::ranges::max_element(std::as_const(counts));
    return most == counts.cend() ? QColor{} : QColor{most.key()};
}
