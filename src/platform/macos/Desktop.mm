#include "platform/Desktop.h"

#include "platform/macos/Action.h"
#include "platform/macos/NativeString.h"

#include <QGuiApplication>
#include <QUrl>
#include <QWindow>

#include <algorithm>

#import <AppKit/AppKit.h>
#include <ApplicationServices/ApplicationServices.h>
#include <malloc/malloc.h>

using namespace Qt::StringLiterals;

namespace {

/// Who was in front before us.
NSRunningApplication* programBefore = nil;

void rememberProgramInFront() {
    NSRunningApplication* front = [[NSWorkspace sharedWorkspace] frontmostApplication];
    if (front != nil && ![front isEqual:[NSRunningApplication currentApplication]]) {
        programBefore = front;
    }
}

/// The system's window of one of ours, which is made if need be; nil where Qt draws without the system.
NSWindow* nativeWindow(const QWindow& window) {
    if (QGuiApplication::platformName() != u"cocoa"_s) {
        return nil; // what Qt calls a window is a number there
    }
    return ((__bridge NSView*)reinterpret_cast<void*>(window.winId())).window;
}

/// Lets windows open on the space that is in front, another program's full screen as well, where the system would else
/// switch to theirs. Qt has made the system's window when it tells that it shows one, and shows it only afterwards.
class WindowOpener final : public QObject {
    bool eventFilter(QObject* watched, QEvent* event) override {
        auto* window = event->type() == QEvent::Show ? qobject_cast<QWindow*>(watched) : nullptr;
        if (window != nullptr && window->type() == Qt::Window) {
            nativeWindow(*window).collectionBehavior =
                NSWindowCollectionBehavior{NSWindowCollectionBehaviorMoveToActiveSpace} |
                NSWindowCollectionBehavior{NSWindowCollectionBehaviorFullScreenAuxiliary};
        }
        return false;
    }
};

bool hasVisibleWindow() {
    return std::ranges::any_of(QGuiApplication::topLevelWindows(), &QWindow::isVisible);
}

// Since macOS 14 activation is a request that the system may refuse.
void insist(const QWindow& window) {
    NSApplication* own = [NSApplication sharedApplication];
    if (window.isVisible() && ![own isActive]) {
        [own activate];
        [nativeWindow(window) orderFrontRegardless];
    }
}

void hideWhenStillActive() {
    NSApplication* own = [NSApplication sharedApplication];
    if ([own isActive] && !hasVisibleWindow()) {
        [own hide:nil];
    }
}

/// While it is set, Qt does not bring the program to the front when it has launched.
constexpr auto launchVariable = "QT_MAC_DISABLE_FOREGROUND_APPLICATION_TRANSFORM";

}

namespace Desktop {

// Qt reads the variable when the launch ends; programs that are started later shall not have it.
void prepareLaunch() {
    qputenv(launchVariable, "1");
    const auto forget = [] { qunsetenv(launchVariable); };
    static VornaAction* const launched = [[VornaAction alloc]
        initWithFunction:[forget] { QMetaObject::invokeMethod(qApp, forget, Qt::QueuedConnection); }];
    [launched performOn:NSApplicationDidFinishLaunchingNotification of:nil];
}

void becomeAccessory() {
    [[NSApplication sharedApplication] setActivationPolicy:NSApplicationActivationPolicyAccessory];
    static WindowOpener opener;
    qApp->installEventFilter(&opener);
}

void openUrl(const QUrl& url) {
    NSURL* address = [NSURL URLWithString:NativeString::from(QString::fromLatin1(url.toEncoded()))];
    if (address != nil) {
        [[NSWorkspace sharedWorkspace] openURL:address];
    }
}

void bringToFront(QWindow& window) {
    rememberProgramInFront();
    [[NSApplication sharedApplication] unhideWithoutActivation];
    [[NSApplication sharedApplication] activateIgnoringOtherApps:YES];
    window.setWindowStates(window.windowStates() & ~Qt::WindowMinimized);
    window.raise();
    window.requestActivate();
    QMetaObject::invokeMethod(&window, [&window] { insist(window); }, Qt::QueuedConnection);
}

void activatePreviousProgram() {
    NSApplication* own = [NSApplication sharedApplication];
    if (![own isActive] || hasVisibleWindow()) {
        return;
    }
    if (programBefore != nil) {
        [own yieldActivationToApplication:programBefore];
        [programBefore activateWithOptions:0];
        programBefore = nil;
    }
    QMetaObject::invokeMethod(qApp, hideWhenStillActive, Qt::QueuedConnection);
}

bool trustsAccessibility() {
    return AXIsProcessTrusted();
}

Qt::WindowFlags panelFlags() {
    // Not a popup, which cannot take the keyboard here, nor a tool, which the system hides behind Qt's back. The last
    // one keeps Qt from giving the window a full screen of its own.
    return Qt::Window | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint | Qt::CustomizeWindowHint;
}

void prepareToShowPanel(QWindow&) {}

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
