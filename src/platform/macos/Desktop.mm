#include "platform/Desktop.h"

#include "platform/macos/NativeString.h"
#include "platform/macos/NativeWindow.h"

#include <QGuiApplication>
#include <QUrl>
#include <QWindow>

#include <algorithm>

#import <AppKit/AppKit.h>
#include <ApplicationServices/ApplicationServices.h>
#include <malloc/malloc.h>

namespace {

/// Who was in front before us.
NSRunningApplication* programBefore = nil;

void rememberProgramInFront() {
    NSRunningApplication* front = [[NSWorkspace sharedWorkspace] frontmostApplication];
    if (front != nil && ![front isEqual:[NSRunningApplication currentApplication]]) {
        programBefore = front;
    }
}

/// Onto the space that is in front, another program's full screen as well, where it would else switch to its own.
void comeToTheUser(const QWindow& window) {
    NativeWindow::of(window).collectionBehavior =
        NSWindowCollectionBehavior{NSWindowCollectionBehaviorMoveToActiveSpace} |
        NSWindowCollectionBehavior{NSWindowCollectionBehaviorFullScreenAuxiliary};
}

}

namespace Desktop {

void becomeAccessory() {
    [[NSApplication sharedApplication] setActivationPolicy:NSApplicationActivationPolicyAccessory];
}

void openUrl(const QUrl& url) {
    @autoreleasepool {
        NSURL* address = [NSURL URLWithString:NativeString::from(QString::fromLatin1(url.toEncoded()))];
        if (address != nil) {
            [[NSWorkspace sharedWorkspace] openURL:address];
        }
    }
}

void bringToFront(QWindow& window) {
    @autoreleasepool {
        rememberProgramInFront();
        comeToTheUser(window);
        [[NSApplication sharedApplication] activateIgnoringOtherApps:YES];
    }
    window.setWindowStates(window.windowStates() & ~Qt::WindowMinimized);
    window.raise();
    window.requestActivate();
}

void activatePreviousProgram() {
    @autoreleasepool {
        NSApplication* own = [NSApplication sharedApplication];
        const bool isNeeded = std::ranges::any_of(QGuiApplication::topLevelWindows(), &QWindow::isVisible);
        if (programBefore == nil || ![own isActive] || isNeeded) {
            return;
        }
        [own yieldActivationToApplication:programBefore];
        [programBefore activateWithOptions:0];
        programBefore = nil;
    }
}

bool trustsAccessibility() {
    return AXIsProcessTrusted();
}

Qt::WindowFlags panelFlags() {
    // Not a popup, which cannot take the keyboard here, nor a tool, which the system hides behind Qt's back.
    return Qt::Window | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint;
}

bool placesPanel() {
    return false;
}

bool blendsWindows() {
    return true;
}

void releaseUnusedMemory() {
    malloc_zone_pressure_relief(nullptr, 0);
}

}
