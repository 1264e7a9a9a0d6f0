#include "platform/StatusItem.h"

#include "platform/linux/Session.h"
#include "platform/linux/StatusNotifierHostWatch.h"
#include "platform/linux/TrayIcon.h"
#include "platform/linux/XembedTrayWatch.h"

#include <QCursor>
#include <QGuiApplication>
#include <QMenu>
#include <QScreen>
#include <QSystemTrayIcon>
#include <QTimer>

#include <chrono>
#include <optional>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

using Host = StatusNotifierHostWatch::Host;

/// A panel with both kinds of tray may open the older kind a little before the newer one, which is preferred.
constexpr auto xembedDelay = 400ms;

/// Some hosts report the second press of a double click twice, at once: the second report is there when the first has
/// been answered.
constexpr auto samePress = 40ms;

/// Qt settles on a kind of tray when the first icon is made and keeps to it as long as the process lives: there is no
/// icon before a tray, and later it only shows where a tray of that kind is.
enum class Kind { undecided, statusNotifier, xembed };

/// The corner of the work area that is next to the end of the desktop's bar, where trays are. A guest of a session that
/// speaks Wayland does not know where the pointer is.
QPoint endOfBar() {
    const QScreen* screen = QGuiApplication::primaryScreen();
    if (screen == nullptr) {
        return {};
    }
    const QRect whole = screen->geometry();
    const QRect area = screen->availableGeometry();
    const bool isLevel = area.height() < whole.height();
    const bool isAtLeft = isLevel ? QGuiApplication::isRightToLeft() : area.left() > whole.left();
    const bool isAtTop = area.top() > whole.top();
    return {isAtLeft ? area.left() : area.right(), isAtTop ? area.top() : area.bottom()};
}

class TrayStatusItem final : public StatusItem {
public:
    explicit TrayStatusItem(const QString& title)
        : m_title{title} {
        fillMenu();
        m_xembedTimer.setSingleShot(true);
        m_xembedTimer.setInterval(xembedDelay);
        connect(&m_xembedTimer, &QTimer::timeout, this, [this] {
            if (m_statusNotifier.host() == Host::absent && m_xembed.trayIsThere()) {
                settleOn(Kind::xembed);
            }
        });
        const QString platform = QGuiApplication::platformName();
        if (platform != u"xcb"_s && !platform.startsWith(u"wayland"_s)) {
            return;
        }
        connect(&m_statusNotifier, &StatusNotifierHostWatch::changed, this, &TrayStatusItem::trayChanged);
        connect(&m_xembed, &XembedTrayWatch::changed, this, &TrayStatusItem::trayChanged);
        trayChanged();
    }

    void setSymbol(const QString& symbolName, const QString& meaning) override {
        if (symbolName == m_symbolName && meaning == m_meaning) {
            return;
        }
        m_symbolName = symbolName;
        m_meaning = meaning;
        showSymbol();
    }

    [[nodiscard]] QRect anchor() const override {
        const QRect place = m_icon && m_icon->isVisible() ? m_icon->geometry() : QRect{};
        return place.isValid() ? place : QRect{Session::isWayland() ? endOfBar() : whereUsed(), QSize{0, 0}};
    }

private:
    /// An entry of the menu is not where the icon is.
    [[nodiscard]] QPoint whereUsed() const { return m_lastUse.value_or(QCursor::pos()); }

    void fillMenu() {
        connect(&m_menu, &QMenu::aboutToShow, this, [this] { m_lastUse = QCursor::pos(); });
        const auto add = [this](const QString& text, void (StatusItem::*chosen)()) {
            connect(m_menu.addAction(text), &QAction::triggered, this, chosen);
        };
        add(showPanelText.toString(), &StatusItem::showPanelChosen);
        add(settingsText.toString(), &StatusItem::settingsChosen);
        m_menu.addSeparator();
        add(quitText.toString().arg(m_title), &StatusItem::quitChosen);
    }

    void trayChanged() {
        const bool statusNotifier = m_statusNotifier.host() == Host::present;
        switch (m_kind) {
        case Kind::undecided:
            if (statusNotifier) {
                settleOn(Kind::statusNotifier);
            } else if (m_statusNotifier.host() == Host::absent && m_xembed.trayIsThere()) {
                m_xembedTimer.start();
            }
            break;
        case Kind::statusNotifier:
            m_icon->setVisible(statusNotifier);
            break;
        case Kind::xembed:
            m_icon->setVisible(m_xembed.trayIsThere());
            break;
        }
    }

    void settleOn(Kind kind) {
        m_xembedTimer.stop();
        m_kind = kind;
        m_icon = std::make_unique<QSystemTrayIcon>();
        connect(m_icon.get(), &QSystemTrayIcon::activated, this, &TrayStatusItem::activated);
        m_icon->setContextMenu(&m_menu);
        showSymbol();
        m_icon->setVisible(true);
    }

    void activated(QSystemTrayIcon::ActivationReason reason) {
        // A second press in quick succession comes as a double click alone, and is a click like the first.
        const bool isPress = reason != QSystemTrayIcon::Context && reason != QSystemTrayIcon::Unknown;
        if (isPress && std::chrono::steady_clock::now() - m_lastPress >= samePress) {
            m_lastUse = QCursor::pos();
            emit clicked();
            m_lastPress = std::chrono::steady_clock::now();
        }
    }

    void showSymbol() {
        if (m_icon) {
            m_icon->setIcon(TrayIcon::icon(m_symbolName));
            m_icon->setToolTip(m_meaning.isEmpty() ? m_title : QString{m_title + u" — "_s + m_meaning});
        }
    }

    const QString m_title;
    QString m_symbolName;
    QString m_meaning;
    QMenu m_menu;
    StatusNotifierHostWatch m_statusNotifier;
    XembedTrayWatch m_xembed;
    QTimer m_xembedTimer;
    Kind m_kind = Kind::undecided;
    std::chrono::steady_clock::time_point m_lastPress;
    std::optional<QPoint> m_lastUse;
    std::unique_ptr<QSystemTrayIcon> m_icon;
};

}

std::unique_ptr<StatusItem> StatusItem::create(const QString& title) {
    return std::make_unique<TrayStatusItem>(title);
}
