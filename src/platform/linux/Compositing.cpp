#include "platform/Compositing.h"

#include "platform/linux/X11.h"

bool Compositing::isActive() {
    return X11::connection() == nullptr || X11::ownerOfScreenSelection("_NET_WM_CM_S") != XCB_WINDOW_NONE;
}
