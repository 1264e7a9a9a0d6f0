#include "ui/settings/ScrollPage.h"

#include <QApplication>
#include <QLayout>
#include <QPainter>
#include <QScrollBar>
#include <QStyleOptionFocusRect>

ScrollPage::ScrollPage(const QString& name, QWidget& content) {
    setAccessibleName(name);
    setFrameShape(QFrame::NoFrame);
    setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    setFocusPolicy(Qt::NoFocus);
    setWidgetResizable(true);
    setWidget(&content);
    content.setAutoFillBackground(false);
    viewport()->setAutoFillBackground(false);
    connect(verticalScrollBar(), &QScrollBar::rangeChanged, this,
            [this](int least, int most) { setFocusPolicy(most > least ? Qt::StrongFocus : Qt::NoFocus); });
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* focused) {
        // A control under the pointer stays there, or the press would miss it.
        const bool isPress = QGuiApplication::mouseButtons() != Qt::NoButton;
        if (focused != nullptr && widget()->isAncestorOf(focused) && !isPress) {
            ensureWidgetVisible(focused);
        }
    });
}

bool ScrollPage::eventFilter(QObject* watched, QEvent* event) {
    // Layouts within the content's layout remember their heights until it is laid out anew.
    if (watched == widget() && event->type() == QEvent::LayoutRequest) {
        widget()->layout()->activate();
    }
    return QScrollArea::eventFilter(watched, event);
}

void ScrollPage::paintEvent(QPaintEvent*) {
    if (!hasFocus()) {
        return;
    }
    QPainter painter{viewport()};
    QStyleOptionFocusRect frame;
    frame.initFrom(viewport());
    frame.state |= QStyle::State_KeyboardFocusChange;
    frame.backgroundColor = palette().color(QPalette::Window);
    style()->drawPrimitive(QStyle::PE_FrameFocusRect, &frame, &painter, this);
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
