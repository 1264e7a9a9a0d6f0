#pragma once

#import <AppKit/AppKit.h>

class QWindow;

/// The system's side of our windows.
namespace NativeWindow {

/// The system's window of one of ours, which is made if need be; nil where Qt draws without the system.
[[nodiscard]] NSWindow* of(const QWindow& window);

}
