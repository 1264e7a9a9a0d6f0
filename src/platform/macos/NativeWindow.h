#pragma once

#import <AppKit/AppKit.h>

class QWindow;

/// The system's side of our windows.
namespace NativeWindow {

/// The system's window of one of ours that has been shown.
[[nodiscard]] NSWindow* of(const QWindow& window);

}
