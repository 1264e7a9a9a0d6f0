#include "ui/settings/ScrollPage.h"

#include <QCoreApplication>
#include <QEvent>
#include <QScrollBar>
#include <QVBoxLayout>

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
    for (auto iterator = below.crbegin(); iterator != below.crend(); ++iterator) {
        if (auto* const layout = (*iterator)->layout(); layout != nullptr) {
            layout->activate();
        }
    }
    m_content->activate();
    QEvent request{QEvent::LayoutRequest};
    QCoreApplication::sendEvent(this, &request);
}

#include "moc_ScrollPage.cpp"
