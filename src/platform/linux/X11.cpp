#include "platform/linux/X11.h"

#include <QGuiApplication>
#include <QScopedPointer>

#include <array>
#include <cstdlib>

namespace {

template <typename T>
using Reply = QScopedPointer<T, QScopedPointerPodDeleter>;

int screenNumber() {
    int number = 0;
    int display = 0;
    char* host = nullptr;
    xcb_parse_display(nullptr, &host, &display, &number);
    std::free(host);
    return number;
}

}

xcb_connection_t* X11::connection() {
    const auto* application =
        qGuiApp == nullptr ? nullptr : qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return application == nullptr ? nullptr : application->connection();
}

xcb_atom_t X11::atom(const QByteArray& name) {
    if (xcb_connection_t* const x = connection()) {
        const auto request = xcb_intern_atom(x, 0, static_cast<uint16_t>(name.size()), name.constData());
        const Reply<xcb_intern_atom_reply_t> reply{xcb_intern_atom_reply(x, request, nullptr)};
        return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
    }
    return XCB_ATOM_NONE;
}

xcb_atom_t X11::screenSelection(const QByteArray& prefix) {
    return atom(QByteArray{prefix}.append(QByteArray::number(screenNumber())));
}

xcb_window_t X11::ownerOfScreenSelection(const QByteArray& prefix) {
    if (xcb_connection_t* const x = connection()) {
        const auto request = xcb_get_selection_owner(x, screenSelection(prefix));
        const Reply<xcb_get_selection_owner_reply_t> reply{xcb_get_selection_owner_reply(x, request, nullptr)};
        return reply ? reply->owner : static_cast<xcb_window_t>(XCB_WINDOW_NONE);
    }
    return XCB_WINDOW_NONE;
}

void X11::keepOffTaskBar(xcb_window_t window) {
    xcb_connection_t* const x = connection();
    if (x == nullptr) {
        return;
    }
    static const xcb_atom_t state = atom("_NET_WM_STATE");
    static const std::array states{atom("_NET_WM_STATE_SKIP_TASKBAR"), atom("_NET_WM_STATE_SKIP_PAGER")};
    // Qt adds its own when it shows the window.
    xcb_change_property(x, XCB_PROP_MODE_REPLACE, window, state, XCB_ATOM_ATOM, 32, states.size(), states.data());
}

void X11::activate(xcb_window_t window) {
    xcb_connection_t* const x = connection();
    if (x == nullptr) {
        return;
    }
    constexpr uint32_t onTheUsersWord = 2;
    static const xcb_atom_t activeWindow = atom("_NET_ACTIVE_WINDOW");
    xcb_client_message_event_t request{};
    request.response_type = XCB_CLIENT_MESSAGE;
    request.format = 32;
    request.window = window;
    request.type = activeWindow;
    request.data.data32[0] = onTheUsersWord;
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(x));
    for (int number = screenNumber(); number > 0; --number) {
        xcb_screen_next(&screens);
    }
    xcb_send_event(x, 0, screens.data->root, XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&request));
}

bool X11::watchForDestruction(xcb_window_t window) {
    xcb_connection_t* const x = connection();
    if (x == nullptr || window == XCB_WINDOW_NONE) {
        return false;
    }
    const uint32_t events = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    const auto request = xcb_change_window_attributes_checked(x, window, XCB_CW_EVENT_MASK, &events);
    const Reply<xcb_generic_error_t> error{xcb_request_check(x, request)};
    return error.isNull();
}
