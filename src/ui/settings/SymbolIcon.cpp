#include "ui/settings/SymbolIcon.h"

#include "platform/Symbol.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>

#include <algorithm>
#include <utility>

namespace {

class SymbolEngine final : public QIconEngine {
public:
    explicit SymbolEngine(QString name)
        : m_name{std::move(name)} {}

    QIconEngine* clone() const override { return new SymbolEngine{m_name}; }

    void paint(QPainter* painter, const QRect& place, QIcon::Mode mode, QIcon::State state) override {
        painter->drawPixmap(place, scaledPixmap(place.size(), mode, state, painter->device()->devicePixelRatioF()));
    }

    /// The size is in the screen's pixels.
    QPixmap pixmap(const QSize& size, QIcon::Mode, QIcon::State) override {
        const auto colour = QGuiApplication::palette().color(QPalette::WindowText);
        return Symbol::pixmap(m_name, std::min(size.width(), size.height()), colour, 1);
    }

private:
    QString m_name;
};

}

QIcon symbolIcon(const QString& name) {
    return QIcon{new SymbolEngine{name}};
}
