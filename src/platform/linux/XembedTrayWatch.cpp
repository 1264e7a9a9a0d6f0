#include "platform/linux/XembedTrayWatch.h"

#include "platform/linux/X11.h"

#include <QCoreApplication>

static constexpr auto traySelection = "_NET_SYSTEM_TRAY_S";
static constexpr uint8_t eventCode = 0x7f;

XembedTrayWatch::XembedTrayWatch(QObject* parent)
    : QObject{parent} {
    if (X11::connection() == nullptr) {
        return;
    }
    m_manager = X11::atom("MANAGER");
    m_selection = X11::screenSelection(traySelection);
    QCoreApplication::instance()->installNativeEventFilter(this);
    lookAgain();
}

XembedTrayWatch::~XembedTrayWatch() = default;

bool XembedTrayWatch::nativeEventFilter(const QByteArray& type, void* message, qintptr*) {
    const auto* const event = static_cast<const xcb_generic_event_t*>(message);
    const int code = type == "xcb_generic_event_t" ? event->response_type & eventCode : 0;
    const auto* const announced = reinterpret_cast<const xcb_client_message_event_t*>(event);
    const auto* const gone = reinterpret_cast<const xcb_destroy_notify_event_t*>(event);
    if ((code == XCB_CLIENT_MESSAGE && announced->type == m_manager && announced->data.data32[1] == m_selection) ||
        (code == XCB_DESTROY_NOTIFY && gone->window == m_tray)) {
        QMetaObject::invokeMethod(this, &XembedTrayWatch::lookAgain, Qt::QueuedConnection);
    }
    return false;
}

void XembedTrayWatch::lookAgain() {
    const xcb_window_t owner = X11::ownerOfScreenSelection(traySelection);
    const xcb_window_t tray = X11::watchForDestruction(owner) ? owner : static_cast<xcb_window_t>(XCB_WINDOW_NONE);
    if (tray == m_tray) {
        return;
    }
    m_tray = tray;
    emit changed();
}

#include "moc_XembedTrayWatch.cpp"
