#include "platform/Launch.h"

#include "platform/macos/NativeString.h"

#include <QWindow>

#import <AppKit/AppKit.h>

void Launch::becomeAccessory() {
    [[NSApplication sharedApplication] setActivationPolicy:NSApplicationActivationPolicyAccessory];
}

void Launch::openUrl(const QUrl& url) {
    @autoreleasepool {
        NSURL* address = [NSURL URLWithString:NativeString::from(QString::fromLatin1(url.toEncoded()))];
        if (address != nil) {
            [[NSWorkspace sharedWorkspace] openURL:address];
        }
    }
}

void Launch::bringToFront(QWindow& window) {
    [[NSApplication sharedApplication] activateIgnoringOtherApps:YES];
    window.setWindowStates(window.windowStates() & ~Qt::WindowMinimized);
    window.raise();
    window.requestActivate();
}
