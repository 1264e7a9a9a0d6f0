// The application among others, its windows, and what happens in other programs.
#include "Machinery.h"

#include <QGuiApplication>
#include <QWindow>

using namespace Machinery;
using enum Doubles::Program;

namespace {

struct Monitor {
    NSEventMask events = 0;
    void (^heard)(NSEvent*) = nil;
};

std::vector<Monitor*>& monitors() {
    static std::vector<Monitor*> all;
    return all;
}

NSRunningApplication* otherProgram() {
    static NSRunningApplication* one = [[NSRunningApplication alloc] init];
    return one;
}

Doubles::Program programOf(NSRunningApplication* application) {
    return application == nil ? none : application == otherProgram() ? other : own;
}

NSWindow* theWindow() {
    static NSWindow* one = [[NSWindow alloc] init];
    return one;
}

}

void Machinery::forgetPrograms() {
    monitors().clear();
}

// Qt's own answers, where it draws by the system.

QString QGuiApplication::platformName() {
    return now().platform;
}

WId QWindow::winId() const {
    if (now().platform != QStringLiteral("cocoa")) {
        return 1;
    }
    static NSView* view = [[NSView alloc] init];
    now().nativeWindowWasVisible = isVisible();
    return reinterpret_cast<WId>(view);
}

@implementation NSResponder
@end

@implementation NSApplication
ONE_OF(NSApplication, sharedApplication)
- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)policy {
    now().activationPolicy = policy;
    return YES;
}
- (void)activateIgnoringOtherApps:(BOOL)flag {
    now().activations += flag ? 1 : 0;
    now().isActive = now().grantsActivation;
    now().inFront = own;
}
- (void)activate {
    ++now().requestsToActivate;
}
- (BOOL)isActive {
    return now().isActive;
}
- (void)hide:(id)sender {
    now().isHidden = true;
}
- (void)unhideWithoutActivation {
    now().isHidden = false;
}
- (void)yieldActivationToApplication:(NSRunningApplication*)application {
    now().yieldedTo = programOf(application);
}
- (NSEvent*)currentEvent {
    return now().currentEvent ? [[NSEvent alloc] init] : nil;
}
@end

@implementation NSRunningApplication
ONE_OF(NSRunningApplication, currentApplication)
+ (NSArray*)runningApplicationsWithBundleIdentifier:(NSString*)identifier {
    NSMutableArray* running = [NSMutableArray arrayWithObject:[self currentApplication]];
    if (now().otherInstanceRuns && text(identifier) == now().bundleIdentifier) {
        [running addObject:otherProgram()];
    }
    return running;
}
- (NSURL*)bundleURL {
    return [NSURL URLWithString:self == otherProgram() ? @"file:///other.app" : @"file:///own.app"];
}
- (BOOL)isFinishedLaunching {
    return self == otherProgram() ? now().otherHasFinishedLaunching : now().hasFinishedLaunching;
}
- (BOOL)activateWithOptions:(NSApplicationActivationOptions)options {
    if (programOf(self) != other || now().yieldedTo != other) {
        return NO;
    }
    now().otherActivations.append(static_cast<quint64>(options));
    now().isActive = !now().otherAccepts;
    return YES;
}
@end

@implementation NSWorkspaceOpenConfiguration
+ (instancetype)configuration {
    return [[self alloc] init];
}
@end

@implementation NSWorkspace
ONE_OF(NSWorkspace, sharedWorkspace)
- (NSRunningApplication*)frontmostApplication {
    const auto program = now().inFront;
    return program == none ? nil : program == other ? otherProgram() : [NSRunningApplication currentApplication];
}
- (BOOL)openURL:(NSURL*)url {
    now().openedUrls.append(text([url absoluteString]));
    return NO;
}
- (void)openApplicationAtURL:(NSURL*)url
               configuration:(NSWorkspaceOpenConfiguration*)configuration
           completionHandler:(void (^)(NSRunningApplication*, NSError*))handler {
    now().openedApplications.append(text([url absoluteString]));
    handler = kept(handler);
    answer([handler] {
        handler(nil, nil);
        drop(handler);
    });
}
@end

@implementation NSWindow
- (NSRect)convertRectToScreen:(NSRect)rect {
    return NSOffsetRect(rect, now().windowOnScreen.x(), now().windowOnScreen.y());
}
- (void)setCollectionBehavior:(NSWindowCollectionBehavior)behavior {
    now().windowBehavior = behavior;
}
- (void)orderFrontRegardless {
    ++now().ordersToTheFront;
}
@end

@implementation NSView
- (NSWindow*)window {
    return now().hasWindow ? theWindow() : nil;
}
- (NSRect)bounds {
    return NSMakeRect(0, 0, now().buttonInWindow.width(), now().buttonInWindow.height());
}
- (NSRect)convertRect:(NSRect)rect toView:(NSView*)view {
    return view == nil ? NSOffsetRect(rect, now().buttonInWindow.x(), now().buttonInWindow.y()) : rect;
}
- (void)setToolTip:(NSString*)value {
    now().button.toolTip = text(value);
}
- (void)setAccessibilityLabel:(NSString*)value {
    now().button.accessibilityLabel = text(value);
}
- (void)setAccessibilityValue:(id)value {
    now().button.accessibilityValue = text(value);
}
@end

@implementation NSEvent
- (NSEventType)type {
    return now().currentEvent.value_or(0);
}
- (NSEventModifierFlags)modifierFlags {
    return now().currentModifiers;
}
+ (id)addGlobalMonitorForEventsMatchingMask:(NSEventMask)mask handler:(void (^)(NSEvent*))block {
    monitors().push_back(new Monitor{mask, kept(block)});
    return (id)monitors().back();
}
+ (void)removeMonitor:(id)monitor {
    std::erase(monitors(), (Monitor*)monitor);
}
@end

QList<quint64> Doubles::monitoredEvents() {
    QList<quint64> masks;
    for (const Monitor* monitor : monitors()) {
        masks.append(monitor->events);
    }
    return masks;
}

void Doubles::happensElsewhere(quint64 event) {
    for (const Monitor* monitor : std::vector{monitors()}) {
        if ((monitor->events & event) != 0) {
            monitor->heard([[NSEvent alloc] init]);
        }
    }
}
