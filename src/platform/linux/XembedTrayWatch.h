#pragma once

#include <QAbstractNativeEventFilter>
#include <QObject>

#include <xcb/xcb.h>

/// Knows whether the X screen has a tray that windows are embedded into, and hears when one comes or goes. On other
/// window systems there never is one. Main thread only.
class XembedTrayWatch final : public QObject, private QAbstractNativeEventFilter {
    Q_OBJECT

public:
    explicit XembedTrayWatch(QObject* parent = nullptr);
    ~XembedTrayWatch() override;

    [[nodiscard]] bool trayIsThere() const { return m_tray != XCB_WINDOW_NONE; }

signals:
    /// Comes in a turn of the event loop of its own, never from inside an event of the X server.
    void changed();

private:
    bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;
    void lookAgain();

    xcb_atom_t m_manager = XCB_ATOM_NONE;
    xcb_atom_t m_selection = XCB_ATOM_NONE;
    xcb_window_t m_tray = XCB_WINDOW_NONE;
};
