#include "ui/kit/View.h"

#include "support/ObservableObject.h"

#include <utility>

View::View(QWidget* parent)
    : QWidget{parent} {}

void View::observe(ObservableObject& model) {
    connect(&model, &ObservableObject::objectWillChange, this, [this] { m_pending = true; });
    connect(&model, &ObservableObject::changed, this, [this] {
        if (isVisible()) {
            renderIfPending();
        }
    });
}

void View::renderPending() {
    renderIfPending();
    const auto below = findChildren<View*>();
    for (auto* view : below) {
        view->renderIfPending();
    }
}

void View::showEvent(QShowEvent* event) {
    renderIfPending();
    QWidget::showEvent(event);
}

void View::renderIfPending() {
    if (std::exchange(m_pending, false)) {
        render();
    }
}

#include "moc_View.cpp"
