#include "ui/settings/SettingsView.h"

#include "system/PermissionCenter.h"
#include "ui/kit/Button.h"
#include "ui/kit/Drawing.h"
#include "ui/settings/SymbolIcon.h"
#include "ui/settings/TabListAccessible.h"

#include <QApplication>
#include <QEvent>
#include <QGridLayout>
#include <QPainter>
#include <QRadioButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QShortcut>
#include <QTabBar>
#include <QTabWidget>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr QSize smallestSize{440, 380};
constexpr int smallestSymbol = 16;

/// Lies over a page while that has the keyboard: no style draws a frame there that shows on every ground.
class FocusFrame final : public QWidget {
public:
    FocusFrame(QWidget& page, const Colours& colours)
        : QWidget{&page}
        , m_colours{colours} {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        hide();
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter{this};
        Drawing::strokeRounded(painter, rect(), 0, m_colours.of(ColourRole::accent), Button::focusRingWidth);
    }

private:
    const Colours& m_colours;
};

/// A page, which scrolls when it is higher than its room. What gets the keyboard by a key comes into view. The page
/// itself takes the keyboard, to be scrolled, only while there is something to scroll.
class ScrollPage final : public QScrollArea {
public:
    ScrollPage(const QString& name, QWidget& content, const Colours& colours)
        : m_frame{new FocusFrame{*this, colours}} {
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
            m_frame->setVisible(focused == this);
            // A control under the pointer stays there, or the press would miss it.
            const bool isPress = QGuiApplication::mouseButtons() != Qt::NoButton;
            if (focused != nullptr && widget()->isAncestorOf(focused) && !isPress) {
                ensureWidgetVisible(focused);
            }
        });
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        // Layouts within the content's layout remember their heights until it is laid out anew.
        if (watched == widget() && event->type() == QEvent::LayoutRequest) {
            widget()->layout()->activate();
        }
        return QScrollArea::eventFilter(watched, event);
    }

    void resizeEvent(QResizeEvent* event) override {
        QScrollArea::resizeEvent(event);
        m_frame->setGeometry(viewport()->geometry());
    }

private:
    FocusFrame* m_frame;
};

}

SettingsView::SettingsView(StatusModel& status, DaypartController& daypart,
                           std::unique_ptr<PermissionCenter> permissions, const SettingsLinks& links, QWidget* parent)
    : QWidget{parent}
    , m_colours{daypart}
    , m_permissions{std::move(permissions)}
    , m_tabs{new QTabWidget{this}} {
    TabListAccessible::install();
    auto* const layout = new QGridLayout{this};
    layout->setContentsMargins({});
    layout->setColumnMinimumWidth(0, smallestSize.width());
    layout->setRowMinimumHeight(0, smallestSize.height());
    layout->addWidget(m_tabs, 0, 0);
    m_tabs->setDocumentMode(true);
    m_tabs->setUsesScrollButtons(false);
    m_tabs->tabBar()->setFocusPolicy(Qt::StrongFocus);
    m_tabs->tabBar()->lower(); // assistive programs read children from the lowest on

    addTab(u"Bridge"_s, u"network"_s, *Tabs::bridge(status, daypart, m_colours));
    addTab(u"Permissions"_s, u"lock.shield"_s, *Tabs::permissions(*m_permissions, links.openPane, m_colours));
    addTab(u"Daypart"_s, u"sun.horizon"_s, *Tabs::daypart(daypart, m_colours));
    addTab(u"About"_s, u"info.circle"_s, *Tabs::about(links.openPage, m_colours));
    // Else the keyboard would go from a control of the old page to the new page itself, which has no name.
    connect(m_tabs, &QTabWidget::currentChanged, this, [this] { m_tabs->tabBar()->setFocus(); });
    const int count = m_tabs->count();
    for (const auto& [key, step] : {std::pair{QKeySequence::NextChild, 1}, {QKeySequence::PreviousChild, count - 1}}) {
        connect(new QShortcut{key, this}, &QShortcut::activated, this,
                [this, step, count] { m_tabs->setCurrentIndex((m_tabs->currentIndex() + step) % count); });
    }
    m_tabs->tabBar()->setFocus();
    fitSymbols();
}

/// The tabs look at the permission center and the colours until they are gone, so they go first.
SettingsView::~SettingsView() {
    delete m_tabs;
}

void SettingsView::addTab(const QString& title, const QString& symbolName, QWidget& page) {
    m_tabs->addTab(new ScrollPage{title, page, m_colours}, symbolIcon(symbolName), title);
}

void SettingsView::fitSymbols() {
    const int side = std::max(smallestSymbol, fontMetrics().height());
    m_tabs->setIconSize({side, side});
    for (auto* choice : findChildren<QRadioButton*>()) {
        choice->setIconSize({side, side});
    }
}

void SettingsView::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        fitSymbols();
    }
}

#include "moc_SettingsView.cpp"
