#include "ui/menubar/PanelWindow.h"

#include "daypart/DaypartController.h"
#include "platform/Desktop.h"
#include "ui/menubar/MenuBarView.h"
#include "ui/menubar/PanelFrame.h"
#include "ui/menubar/PanelMetrics.h"
#include "ui/menubar/PanelPlacement.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QPixmap>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto sameClick = 250ms;

/// Where the focus follows the pointer, it goes astray on the way from the icon to a panel that is not next to it.
constexpr auto focusGrace = 1500ms;

constexpr std::array scrollKeys{Qt::Key_Up, Qt::Key_Down, Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_Home, Qt::Key_End};

int distance(const QRect& rect, QPoint point) {
    const QPoint nearest{std::clamp(point.x(), rect.left(), rect.right()),
                         std::clamp(point.y(), rect.top(), rect.bottom())};
    return (point - nearest).manhattanLength();
}

/// The work area of the screen that the point is on, or nearest to.
QRect workAreaAt(QPoint point) {
    const auto screens = QGuiApplication::screens();
    const auto nearest = std::ranges::min_element(
        screens, {}, [point](const QScreen* screen) { return distance(screen->geometry(), point); });
    return nearest == screens.end() ? QRect{} : (*nearest)->availableGeometry();
}

int lowestScreen() {
    int lowest = std::numeric_limits<int>::max();
    for (const QScreen* screen : QGuiApplication::screens()) {
        lowest = std::min(lowest, screen->availableGeometry().height());
    }
    return lowest;
}

QScrollArea* scrollerOf(QWidget* content, QWidget* parent) {
    auto* scroller = new QScrollArea{parent};
    scroller->setFrameShape(QFrame::NoFrame);
    scroller->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroller->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroller->setFocusPolicy(Qt::NoFocus);
    scroller->viewport()->setAutoFillBackground(false);
    scroller->setWidget(content);
    content->setAutoFillBackground(false);
    return scroller;
}

}

PanelWindow::PanelWindow(std::unique_ptr<MenuBarView> content, DaypartController& daypart, Qt::WindowFlags flags,
                         PlacedBy placedBy, Composition isComposited, MonotonicClock clock, Delay delay)
    : m_colours{daypart}
    , m_placedBy{placedBy}
    , m_isComposited{std::move(isComposited)}
    , m_clock{std::move(clock)}
    , m_delay{std::move(delay)}
    , m_content{content.get()}
    , m_scroller{scrollerOf(content.release(), this)}
    , m_frame{new PanelFrame{m_colours, this}} {
    setWindowFlags(flags | Qt::FramelessWindowHint);
    setAttribute(Qt::WA_TranslucentBackground);
    setWindowTitle(u"vorna"_s);
    setFocusPolicy(Qt::ClickFocus);
    setFixedWidth(PanelMetrics::width);
    m_content->installEventFilter(this);
    connect(m_scroller->verticalScrollBar(), &QScrollBar::valueChanged, this, &PanelWindow::showScrollPosition);
    connect(m_scroller->verticalScrollBar(), &QScrollBar::rangeChanged, this, &PanelWindow::showScrollPosition);
    observe(daypart);
    followScreens();
}

void PanelWindow::toggle(const QRect& anchor) {
    if (isVisible()) {
        dismissForUser();
        return;
    }
    const auto closed = std::exchange(m_closedByOthersAt, std::nullopt);
    if (!closed || m_clock() - *closed >= sameClick) {
        showAt(anchor);
    }
}

void PanelWindow::showAt(const QRect& anchor) {
    m_anchor = anchor;
    m_closedByOthersAt.reset();
    m_pointerHasCome = false;
    m_frame->setCorners(m_isComposited() ? PanelFrame::Corners::round : PanelFrame::Corners::square);
    renderPending();
    fit();
    m_scroller->verticalScrollBar()->setValue(0);
    if (!isVisible() && windowHandle() != nullptr && windowHandle() == QGuiApplication::focusWindow()) {
        destroy(); // a native window that kept the focus when it was hidden would never be active again
    }
    winId(); // makes the native window
    Desktop::prepareToShowPanel(*windowHandle());
    show();
    setFocus(Qt::OtherFocusReason);
    Desktop::bringToFront(*windowHandle());
}

void PanelWindow::drawUnseen() {
    renderPending();
    fit();
    (void)grab();
}

void PanelWindow::dismiss() {
    m_isDismissing = true;
    hide();
    m_isDismissing = false;
}

void PanelWindow::dismissForUser() {
    dismiss();
    emit dismissedByUser();
}

void PanelWindow::render() {
    update();
}

void PanelWindow::followScreens() {
    const auto follow = [this](const QScreen* screen) {
        connect(screen, &QScreen::availableGeometryChanged, this, &PanelWindow::fitAgain, Qt::QueuedConnection);
    };
    for (const QScreen* screen : QGuiApplication::screens()) {
        follow(screen);
    }
    connect(qGuiApp, &QGuiApplication::screenAdded, this, follow);
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, &PanelWindow::fitAgain, Qt::QueuedConnection);
}

void PanelWindow::fitAgain() {
    if (isVisible()) {
        fit();
    }
}

void PanelWindow::fit() {
    m_content->fitHeight();
    if (m_placedBy == PlacedBy::desktop) {
        fitColumn();
        return;
    }
    const QRect workArea = workAreaAt(m_anchor.center());
    const int contentHeight = m_content->height();
    m_panelHeight = workArea.isEmpty() ? contentHeight : PanelPlacement::height(contentHeight, workArea);
    const QSize size{PanelMetrics::width, m_panelHeight};
    setFixedHeight(m_panelHeight);
    setGeometry(workArea.isEmpty() ? QRect{m_anchor.topLeft(), size} : PanelPlacement::place(size, m_anchor, workArea));
    layOut();
}

void PanelWindow::fitColumn() {
    const int column = PanelPlacement::columnHeight(lowestScreen());
    m_panelHeight = std::min(m_content->height(), column);
    setFixedHeight(column);
    layOut();
}

void PanelWindow::layOut() {
    const QRect panel{0, 0, width(), m_panelHeight};
    m_scroller->setGeometry(panel);
    m_frame->setGeometry(panel);
    m_frame->raise();
    showScrollPosition();
}

void PanelWindow::showScrollPosition() {
    const qreal whole = std::max(1, m_content->height());
    m_frame->setView(m_scroller->verticalScrollBar()->value() / whole,
                     std::min(1.0, m_scroller->viewport()->height() / whole));
}

bool PanelWindow::event(QEvent* event) {
    const bool result = View::event(event);
    if (event->type() == QEvent::WindowDeactivate && isVisible()) {
        focusLost();
    } else if (event->type() == QEvent::WindowActivate) {
        ++m_focusChanges;
    }
    return result;
}

void PanelWindow::focusLost() {
    if (m_placedBy != PlacedBy::desktop || m_pointerHasCome) {
        hide();
        return;
    }
    m_delay(*this, focusGrace, [this, change = ++m_focusChanges] {
        if (change == m_focusChanges) {
            hide();
        }
    });
}

void PanelWindow::enterEvent(QEnterEvent* event) {
    m_pointerHasCome = true;
    View::enterEvent(event);
}

bool PanelWindow::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::LayoutRequest) {
        fitAgain();
    }
    return View::eventFilter(watched, event);
}

void PanelWindow::hideEvent(QHideEvent* event) {
    ++m_focusChanges;
    if (!m_isDismissing) {
        m_closedByOthersAt = m_clock();
    }
    View::hideEvent(event);
    emit closed();
}

void PanelWindow::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Cancel)) {
        dismissForUser();
    } else if (std::ranges::find(scrollKeys, event->key()) != scrollKeys.end()) {
        static_cast<QObject*>(m_scroller->verticalScrollBar())->event(event);
    } else {
        View::keyPressEvent(event);
    }
}

void PanelWindow::mousePressEvent(QMouseEvent* event) {
    if (m_placedBy == PlacedBy::desktop && event->position().y() >= m_panelHeight) {
        hide();
        return;
    }
    View::mousePressEvent(event);
}

void PanelWindow::resizeEvent(QResizeEvent* event) {
    layOut();
    View::resizeEvent(event);
}

#include "moc_PanelWindow.cpp"
