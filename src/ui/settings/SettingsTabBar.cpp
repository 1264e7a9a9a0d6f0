#include "ui/settings/SettingsTabBar.h"

#include "platform/Symbol.h"
#include "ui/settings/FormColours.h"
#include "ui/settings/FormMetrics.h"
#include "ui/settings/FormPainting.h"
#include "ui/settings/FormText.h"
#include "ui/settings/TabListAccessible.h"

#include <QPainter>
#include <QStyle>

#include <algorithm>

using namespace FormMetrics;

namespace {

constexpr int leastTabWidth = 84;
constexpr int tabPadding = 12;
constexpr int tabPaddingVertical = 7;
constexpr int symbolGap = 3;
constexpr qreal symbolScale = 1.5;

int symbolSize(const QFontMetrics& metrics) {
    return qRound(metrics.height() * symbolScale);
}

}

SettingsTabBar::SettingsTabBar(QWidget* parent)
    : QTabBar{parent} {
    [[maybe_unused]] static const bool isInstalled = (QAccessible::installFactory(TabListAccessible::create), true);
    setAttribute(Qt::WA_Hover);
    setDrawBase(false);
    setExpanding(false);
    setUsesScrollButtons(false);
    setFocusPolicy(Qt::StrongFocus);
}

void SettingsTabBar::addTab(const QString& title, const QString& symbolName) {
    setTabData(QTabBar::addTab(title), symbolName);
}

QSize SettingsTabBar::tabSizeHint(int index) const {
    const QFontMetrics metrics{titleFont()};
    return {std::max(leastTabWidth, metrics.horizontalAdvance(tabText(index)) + 2 * tabPadding),
            symbolSize(fontMetrics()) + symbolGap + metrics.height() + 2 * tabPaddingVertical};
}

void SettingsTabBar::paintEvent(QPaintEvent*) {
    QPainter painter{this};
    for (int index = 0; index < count(); ++index) {
        paintTab(painter, index);
    }
}

QFont SettingsTabBar::titleFont() const {
    return FormText::fontOf(FormText::Style::caption, font());
}

void SettingsTabBar::paintTab(QPainter& painter, int index) const {
    const auto isCurrent = index == currentIndex();
    const auto tab = tabRect(index);
    const auto area = QRectF{tab}.adjusted(2, 0, -2, 0);
    painter.setRenderHint(QPainter::Antialiasing);
    if (isCurrent || (underMouse() && tab.contains(mapFromGlobal(QCursor::pos())))) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(isCurrent ? FormColours::selection(palette()) : FormColours::hover(palette()));
        painter.drawRoundedRect(area, highlightRadius, highlightRadius);
    }
    if (isCurrent) {
        FormPainting::paintFocusRing(painter, *this, area);
    }

    const auto side = symbolSize(fontMetrics());
    const auto colour = isCurrent ? FormColours::accent(palette()) : FormColours::secondaryText(palette());
    const QRect symbol{tab.center().x() - side / 2 + 1, tab.top() + tabPaddingVertical, side, side};
    painter.drawPixmap(symbol, Symbol::pixmap(tabData(index).toString(), side, colour, devicePixelRatioF()));

    painter.setFont(titleFont());
    painter.setPen(isCurrent ? FormColours::accent(palette()) : FormColours::text(palette()));
    const QRect title{tab.left(), symbol.bottom() + 1 + symbolGap, tab.width(), tab.bottom() - symbol.bottom()};
    painter.drawText(title, Qt::AlignHCenter | Qt::AlignTop, tabText(index));
}

#include "moc_SettingsTabBar.cpp"
