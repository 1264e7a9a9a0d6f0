#include "ui/settings/ScrollPage.h"

#include "ui/settings/FormMetrics.h"
#include "ui/settings/FormPainting.h"

#include <QCoreApplication>
#include <QEvent>
#include <QPainter>
#include <QScrollBar>
#include <QVBoxLayout>

#include <ranges>

ScrollPage::ScrollPage(const QString& name, QWidget* parent)
    : QScrollArea{parent} {
    auto* const page = new QWidget;
    m_content = new QVBoxLayout{page};
    setAccessibleName(name);
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    setFocusPolicy(Qt::NoFocus);
    setWidgetResizable(true);
    setWidget(page);
    page->setAutoFillBackground(false);
    viewport()->setAutoFillBackground(false);
    connect(verticalScrollBar(), &QScrollBar::rangeChanged, this,
            [this](int least, int most) { setFocusPolicy(most > least ? Qt::StrongFocus : Qt::NoFocus); });
}

void ScrollPage::layOutNow() {
    const auto below = widget()->findChildren<QWidget*>();
    for (const QWidget* one : std::views::reverse(below)) {
        if (auto* const layout = one->layout(); layout != nullptr) {
            layout->activate();
        }
    }
    m_content->activate();
    QEvent request{QEvent::LayoutRequest};
    QCoreApplication::sendEvent(this, &request);
}

void ScrollPage::paintEvent(QPaintEvent*) {
    constexpr auto inset = FormMetrics::highlightInset;
    QPainter painter{viewport()};
    FormPainting::paintFocusRing(painter, *this, viewport()->rect().adjusted(inset, inset, -inset, -inset));
}

void ScrollPage::focusInEvent(QFocusEvent* event) {
    QScrollArea::focusInEvent(event);
    viewport()->update();
}

void ScrollPage::focusOutEvent(QFocusEvent* event) {
    QScrollArea::focusOutEvent(event);
    viewport()->update();
}

#include "moc_ScrollPage.cpp"
