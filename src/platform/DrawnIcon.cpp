#include "platform/DrawnIcon.h"

#include <QIconEngine>
#include <QPainter>

#include <algorithm>
#include <iterator>
#include <utility>

namespace {

class Engine final : public QIconEngine {
public:
    Engine(std::function<QPixmap(int)> draw, QList<int> sides)
        : m_draw{std::move(draw)}
        , m_sides{std::move(sides)} {}

    void paint(QPainter* painter, const QRect& place, QIcon::Mode mode, QIcon::State state) override {
        painter->drawPixmap(place, pixmap(place.size() * painter->device()->devicePixelRatioF(), mode, state));
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode, QIcon::State) override {
        return m_draw(std::min(size.width(), size.height()));
    }
    QList<QSize> availableSizes(QIcon::Mode, QIcon::State) override {
        QList<QSize> sizes;
        std::ranges::transform(m_sides, std::back_inserter(sizes), [](int side) { return QSize{side, side}; });
        return sizes;
    }
    [[nodiscard]] QIconEngine* clone() const override { return new Engine{m_draw, m_sides}; }

private:
    const std::function<QPixmap(int)> m_draw;
    const QList<int> m_sides;
};

}

QIcon drawnIcon(std::function<QPixmap(int side)> draw, QList<int> sides) {
    return QIcon{new Engine{std::move(draw), std::move(sides)}};
}
