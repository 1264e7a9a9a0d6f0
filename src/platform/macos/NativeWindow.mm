#include "platform/macos/NativeWindow.h"

#include <QWindow>

NSWindow* NativeWindow::of(const QWindow& window) {
    NSView* view = (__bridge NSView*)reinterpret_cast<void*>(window.winId());
    return view.window;
}
