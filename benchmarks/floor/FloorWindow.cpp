#include "floor/FloorWindow.h"

#include <QNetworkReply>
#include <QNetworkRequest>

#include <chrono>

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

constexpr QSize windowSize{340, 480};
constexpr QSize iconSize{22, 22};

QIcon plainIcon() {
    QPixmap pixmap(iconSize);
    pixmap.fill(Qt::darkGreen);
    return {pixmap};
}

} // namespace

FloorWindow::FloorWindow(const QUrl& bridge)
    : m_bridge(bridge)
    , m_icon(plainIcon()) {
    setWindowFlags(Qt::FramelessWindowHint);
    setFixedSize(windowSize);
    connect(&m_icon, &QSystemTrayIcon::activated, this, &FloorWindow::toggle);
    connect(&m_timer, &QTimer::timeout, this, &FloorWindow::poll);
    m_icon.show();
}

void FloorWindow::toggle() {
    setVisible(!isVisible());
    if (!m_timer.isActive()) {
        m_timer.start(5s);
        poll();
    }
}

void FloorWindow::poll() {
    get(m_bridge.resolved(QUrl(u"/health"_s)));
    get(m_bridge.resolved(QUrl(u"/monitor/desktop?probe_sites=true"_s)));
}

void FloorWindow::get(const QUrl& url) {
    QNetworkReply* reply = m_network.get(QNetworkRequest(url));
    connect(reply, &QNetworkReply::finished, reply, &QObject::deleteLater);
}

#include "moc_FloorWindow.cpp"
