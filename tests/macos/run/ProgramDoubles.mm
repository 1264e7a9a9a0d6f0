// The application among others, its launch, its windows, what happens in other programs, and the item in the menu bar.
#include "Machinery.h"

#include <QGuiApplication>
#include <QWindow>

#import <CoreServices/CoreServices.h>

using namespace Machinery;
using enum Doubles::Program;

namespace {

struct Monitor {
    NSEventMask events = 0;
    void (^heard)(NSEvent*) = nil;
};

std::vector<Monitor*> monitors;
id reopenHandler = nil;
SEL reopenSelector = nullptr;

NSRunningApplication* otherProgram() {
    static NSRunningApplication* one = [[NSRunningApplication alloc] init];
    return one;
}

struct Entry {
    NSString* title = nil;
    SEL action = nullptr;
    id target = nil;
};

struct Item {
    QHash<NSMenuItem*, Entry> entries;
    NSMenu* menu = nil;
    id target = nil;
    SEL action = nullptr;
};
Item one;

void open(NSMenu* menu, const char* how) {
    if (menu == nil) {
        return;
    }
    tell(how);
    [[NSNotificationCenter defaultCenter] postNotificationName:NSMenuDidBeginTrackingNotification object:menu];
    for (const Entry& entry : one.entries) {
        if (text(entry.title) == world().chosen) {
            [entry.target performSelector:entry.action withObject:nil];
        }
    }
}

}

void Machinery::forgetPrograms() {
    one = {};
    monitors.clear();
    reopenHandler = nil;
}

// Qt's own answers, where it draws by the system.

QString QGuiApplication::platformName() {
    return world().platform;
}

WId QWindow::winId() const {
    if (world().platform != QStringLiteral("cocoa")) {
        return 1;
    }
    static NSView* view = [[NSView alloc] init];
    tell(handle() == nullptr ? "no native window yet" : "native window");
    return reinterpret_cast<WId>(view);
}

@implementation NSResponder
@end

@implementation NSApplication
ONE_OF(NSApplication, sharedApplication)
DOES(-(void)setActivationPolicy : (NSInteger)value, record("policy", value))
- (void)activateIgnoringOtherApps:(BOOL)flag {
    record("activates", flag);
    world().isActive = world().grantsActivation;
    world().inFront = own;
}
DOES(-(void)activate, tell("asks to be activated"))
GIVES(-(BOOL)isActive, world().isActive)
DOES(-(void)hide : (id)sender, tell("hides"))
DOES(-(void)unhideWithoutActivation, tell("unhides"))
- (void)yieldActivationToApplication:(NSRunningApplication*)application {
    tell(application == otherProgram() ? "yields to the other" : "yields");
}
GIVES(-(NSEvent*)currentEvent, world().event ? [[NSEvent alloc] init] : nil)
@end

@implementation NSRunningApplication
ONE_OF(NSRunningApplication, currentApplication)
+ (NSArray*)runningApplicationsWithBundleIdentifier:(NSString*)identifier {
    NSMutableArray* running = [NSMutableArray arrayWithObject:[self currentApplication]];
    if (world().otherRuns && text(identifier) == world().bundle.value_or(text(nil))) {
        [running addObject:otherProgram()];
    }
    return running;
}
GIVES(-(NSURL*)bundleURL, [NSURL URLWithString:self == otherProgram() ? @"file:///other.app" : @"file:///own.app"])
GIVES(-(BOOL)isFinishedLaunching, self == otherProgram() ? world().otherHasLaunched : world().hasLaunched)
- (BOOL)activateWithOptions:(NSApplicationActivationOptions)options {
    record(self == otherProgram() ? "activates the other" : "activates itself", options);
    world().isActive = !world().otherAccepts;
    return YES;
}
@end

@implementation NSWorkspaceOpenConfiguration
GIVES(+(instancetype)configuration, [[self alloc] init])
@end

@implementation NSWorkspace
ONE_OF(NSWorkspace, sharedWorkspace)
- (NSRunningApplication*)frontmostApplication {
    const auto program = world().inFront;
    return program == none ? nil : program == other ? otherProgram() : [NSRunningApplication currentApplication];
}
- (BOOL)openURL:(NSURL*)url {
    record("opens", [url absoluteString]);
    return NO;
}
- (void)openApplicationAtURL:(NSURL*)url
               configuration:(NSWorkspaceOpenConfiguration*)configuration
           completionHandler:(void (^)(NSRunningApplication*, NSError*))handler {
    record("opens", [url absoluteString]);
    answer([handler = kept(handler)] { handler(nil, nil); });
}
@end

@implementation NSAppleEventManager (Doubles)
ONE_OF(NSAppleEventManager, sharedAppleEventManager)
- (void)setEventHandler:(id)handler
            andSelector:(SEL)selector
          forEventClass:(AEEventClass)kind
             andEventID:(AEEventID)event {
    if (kind == kCoreEventClass && event == kAEReopenApplication) {
        reopenHandler = handler;
        reopenSelector = selector;
    }
}
- (void)removeEventHandlerForEventClass:(AEEventClass)kind andEventID:(AEEventID)event {
    if (kind == kCoreEventClass && event == kAEReopenApplication) {
        reopenHandler = nil;
    }
}
@end

NSString* NSApplicationWillFinishLaunchingNotification = @"NSApplicationWillFinishLaunchingNotification";
NSString* NSApplicationDidFinishLaunchingNotification = @"NSApplicationDidFinishLaunchingNotification";

void Doubles::finishLaunching() {
    for (NSString* step in
         @[ NSApplicationWillFinishLaunchingNotification, NSApplicationDidFinishLaunchingNotification ]) {
        [[NSNotificationCenter defaultCenter] postNotificationName:step object:nil];
    }
}

void Doubles::reopen() {
    if (reopenHandler == nil) {
        tell("nobody hears of it");
    }
    [reopenHandler performSelector:reopenSelector withObject:nil withObject:nil];
}

@implementation NSWindow
DOES(-(void)setCollectionBehavior : (NSUInteger)value, record("behaviour", value))
GIVES(-(NSRect)convertRectToScreen : (NSRect)rect, NSOffsetRect(rect, world().itemWindow.x(), world().itemWindow.y()))
DOES(-(void)orderFrontRegardless, tell("orders to the front"))
@end

@implementation NSView
DOES(-(void)setToolTip : (NSString*)value, record("tip", value))
DOES(-(void)setAccessibilityLabel : (NSString*)value, record("named", value))
DOES(-(void)setAccessibilityValue : (NSString*)value, record("says", value))
- (NSWindow*)window {
    static NSWindow* one = [[NSWindow alloc] init];
    return world().itemHasWindow ? one : nil;
}
GIVES(-(NSRect)bounds, NSMakeRect(0, 0, 30, 24))
GIVES(-(NSRect)convertRect : (NSRect)rect toView : (NSView*)view, view == nil ? NSOffsetRect(rect, 3, 0) : rect)
@end

@implementation NSEvent
GIVES(-(NSEventType)type, world().event.value_or(0))
GIVES(-(NSEventModifierFlags)modifierFlags, world().modifiers)
+ (id)addGlobalMonitorForEventsMatchingMask:(NSEventMask)mask handler:(void (^)(NSEvent*))block {
    record("watches", mask);
    monitors.push_back(new Monitor{mask, kept(block)});
    return (id)monitors.back();
}
+ (void)removeMonitor:(id)monitor {
    record("watches no more", ((Monitor*)monitor)->events);
    std::erase(monitors, (Monitor*)monitor);
}
@end

void Doubles::happensElsewhere(quint64 event) {
    for (const Monitor* monitor : std::vector{monitors}) {
        if ((monitor->events & event) != 0) {
            monitor->heard([[NSEvent alloc] init]);
        }
    }
}

NSString* const NSMenuDidBeginTrackingNotification = @"NSMenuDidBeginTrackingNotification";

@implementation NSStatusBar
ONE_OF(NSStatusBar, systemStatusBar)
- (NSStatusItem*)statusItemWithLength:(CGFloat)length {
    record("item of length", length);
    return [[NSStatusItem alloc] init];
}
DOES(-(void)removeStatusItem : (NSStatusItem*)item, tell("item removed"))
@end

@implementation NSStatusItem
- (NSStatusBarButton*)button {
    static NSStatusBarButton* button = [[NSStatusBarButton alloc] init];
    return button;
}
DOES(-(void)setMenu : (NSMenu*)menu, one.menu = menu)
DOES(-(void)popUpStatusItemMenu : (NSMenu*)menu, open(menu, "menu pops up"))
@end

@implementation NSControl
DOES(-(void)sendActionOn : (NSUInteger)value, record("acts on", value))
DOES(-(void)setTarget : (id)target, one.target = target)
DOES(-(void)setAction : (SEL)action, one.action = action)
@end

@implementation NSButton
DOES(-(void)setTitle : (NSString*)value, record("title", value))
DOES(-(void)highlight : (BOOL)value, record("pressed", value))
- (void)setImagePosition:(NSCellImagePosition)position {
    tell(position == NSImageOnly ? "shows the image" : "shows the title");
}
DOES(-(void)setImage : (NSImage*)image, tell(image == nil ? "no image" : "image"))
- (void)performClick:(id)sender {
    if (world().clickOpensMenu) {
        open(one.menu, "menu opens");
    }
}
@end

@implementation NSStatusBarButton
@end

void Doubles::pressButton() {
    if (one.menu == nil) { // a button with a menu opens it and never acts
        [one.target performSelector:one.action withObject:nil];
    }
}

@implementation NSMenu
GIVES(-(id)initWithTitle : (NSString*)title, [self init])
DOES(-(void)addItem : (NSString*)value, record("entry", value))
@end

@implementation NSMenuItem
- (id)initWithTitle:(NSString*)title action:(SEL)action keyEquivalent:(NSString*)key {
    one.entries[self] = {.title = [title copy], .action = action};
    return self;
}
GIVES(+(NSMenuItem*)separatorItem, [[NSMenuItem alloc] initWithTitle:@"---" action:nullptr keyEquivalent:@""])
DOES(-(void)setTarget : (id)target, one.entries[self].target = target)
- (const char*)UTF8String { // as text() asks
    return [one.entries[self].title UTF8String];
}
@end
