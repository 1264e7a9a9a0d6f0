#include "platform/macos/NativeWindow.h"

#include <QGuiApplication>
#include <QWindow>

using namespace Qt::StringLiterals;

NSWindow* NativeWindow::of(const QWindow& window) {
    if (QGuiApplication::platformName() != u"cocoa"_s) {
        return nil; // what Qt calls a window is a number there
    }
    NSView* view = (__bridge NSView*)reinterpret_cast<void*>(window.winId());
    return view.window;
}
