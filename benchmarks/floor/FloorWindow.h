#pragma once

#include <QNetworkAccessManager>
#include <QSystemTrayIcon>
#include <QTimer>
#include <QWidget>

/// The least that a Qt program can do and still be a tray item that polls: an icon whose click shows or hides an empty
/// window as wide as the panel, and two requests to the bridge every five seconds once it has been shown.
class FloorWindow final : public QWidget {
    Q_OBJECT

public:
    explicit FloorWindow(const QUrl& bridge);

private:
    void toggle();
    void poll();
    void get(const QUrl& url);

    QUrl m_bridge;
    QSystemTrayIcon m_icon;
    QNetworkAccessManager m_network;
    QTimer m_timer;
};
