#include "support/PaintRecord.h"

#include <QMap>
#include <QPaintEngine>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>
#include <utility>

using namespace Qt::StringLiterals;

class PaintRecord::Engine final : public QPaintEngine {
public:
    explicit Engine(QList<Item>& items)
        : QPaintEngine{AllFeatures}
        , m_items{items} {}

    Type type() const override { return User; }
    bool begin(QPaintDevice* /*device*/) override { return true; }
    bool end() override { return true; }
    void updateState(const QPaintEngineState& /*state*/) override {}

    void drawPath(const QPainterPath& path) override {
        if (inView(path.boundingRect()).isEmpty()) {
            return;
        }
        const auto [place, corners] = shapeOf(state->transform().map(path));
        const bool isCut = state->compositionMode() == QPainter::CompositionMode_DestinationOut;
        if (state->brush().style() != Qt::NoBrush) {
            m_items += {isCut ? Item::Kind::cut : Item::Kind::fill, place, seen(state->brush().color()), corners};
        }
        if (state->pen().style() != Qt::NoPen) {
            const qreal width = state->pen().widthF();
            m_items += {Item::Kind::outline, place.adjusted(-width / 2, -width / 2, width / 2, width / 2),
                        seen(state->pen().color()), corners + u" width %1"_s.arg(width)};
        }
    }
    void drawPolygon(const QPointF* points, int count, PolygonDrawMode /*mode*/) override {
        QPainterPath path;
        path.addPolygon(QPolygonF{QList<QPointF>{points, points + count}});
        drawPath(path);
    }
    void drawPixmap(const QRectF& place, const QPixmap& pixmap, const QRectF& source) override {
        drawImage(place, pixmap.toImage(), source, {});
    }
    void drawImage(const QRectF& place, const QImage& image, const QRectF& /*source*/,
                   Qt::ImageConversionFlags /*flags*/) override {
        m_items += {.kind = Item::Kind::symbol,
                    .place = state->transform().mapRect(place),
                    .colour = seen(Qt::black),
                    .image = image};
    }
    /// What is set in one line and one style is one text, however many pieces it is drawn in.
    void drawTextItem(const QPointF& position, const QTextItem& item) override {
        const qreal scale = state->transform().m11();
        const Item text{
            .kind = Item::Kind::text,
            .place = {state->transform().map(position), QSizeF{item.width() * scale, 0}},
            .colour = seen(state->pen().color()),
            .string = item.text(),
            .font = item.font(),
            .scale = scale,
            .seen = inView({position.x(), position.y() - item.ascent(), item.width(), item.ascent() + item.descent()}),
            .opacity = state->opacity()};
        if (text.seen.isEmpty()) {
            return;
        }
        constexpr qreal gap = 1;
        Item* const last = m_items.isEmpty() ? nullptr : &m_items.last();
        if (last != nullptr && last->kind == text.kind && last->font == text.font && last->colour == text.colour &&
            last->place.y() == text.place.y() && std::abs(last->place.right() - text.place.left()) < gap) {
            last->string += text.string;
            last->place.setRight(text.place.right());
            last->seen |= text.seen;
        } else {
            m_items += text;
        }
    }

private:
    [[nodiscard]] QColor seen(QColor colour) const {
        colour.setAlphaF(colour.alphaF() * static_cast<float>(state->opacity()));
        return colour;
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
        const qreal x = path.elementAt(0).x;
        return {bounds, !hasCurves  ? u"square"_s
                        : !hasLines ? u"round"_s
                                    : u"corner %1"_s.arg(std::min(x - bounds.left(), bounds.right() - x))};
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

    QList<Item>& m_items;
};

PaintRecord::PaintRecord(QWidget& widget, QWidget::RenderFlags flags)
    : m_picture{widget.grab().toImage()}
    , m_engine{std::make_unique<Engine>(m_items)} {
    widget.render(this, {}, {}, flags);
}

PaintRecord::~PaintRecord() = default;

QPaintEngine* PaintRecord::paintEngine() const {
    return m_engine.get();
}

QList<PaintRecord::Item> PaintRecord::texts() const {
    QList<Item> found;
    std::ranges::copy_if(m_items, std::back_inserter(found), [](const Item& item) {
        return item.kind == Item::Kind::text && !item.string.trimmed().isEmpty();
    });
    return found;
}

QColor PaintRecord::groundOf(const Item& text) const {
    const QRect place = text.seen.toAlignedRect() & m_picture.rect();
    QMap<QRgb, int> counts;
    for (int i = 0; i < place.width() * place.height(); ++i) {
        ++counts[m_picture.pixel(place.left() + i % place.width(), place.top() + i / place.width())];
    }
    const auto most = std::ranges::max_element(std::as_const(counts));
    return most == counts.cend() ? QColor{} : QColor{most.key()};
}
