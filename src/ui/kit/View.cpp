#include "ui/kit/View.h"

#include "support/ObservableObject.h"

#include <utility>

View::View(QWidget* parent)
    : QWidget{parent} {}

void View::observe(ObservableObject& model) {
    connect(&model, &ObservableObject::objectWillChange, this, &View::invalidate);
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

void View::invalidate() {
    m_pending = true;
    if (m_scheduled || !isVisible()) {
        return;
    }
    m_scheduled = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_scheduled = false;
            if (isVisible()) {
                renderIfPending();
            }
        },
        Qt::QueuedConnection);
}

void View::renderIfPending() {
    if (std::exchange(m_pending, false)) {
        render();
    }
}

#include "moc_View.cpp"
