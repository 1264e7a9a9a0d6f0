#include "Doubles.h"

#include "platform/macos/NativeWindow.h"

#include <QCoreApplication>

#include <thread>
#include <unordered_map>
#include <vector>

#import <AppKit/AppKit.h>
#import <ApplicationServices/ApplicationServices.h>
#include <Block.h>
#import <CoreServices/CoreServices.h>
#import <UserNotifications/UserNotifications.h>
#include <dispatch/dispatch.h>
#include <malloc/malloc.h>

// Everything here is kept for as long as the program runs: there is nothing to count.

namespace {

using Work = std::function<void()>;

struct MenuEntry {
    NSString* title = nil;
    SEL action = nullptr;
    id target = nil;
};

struct Bitmap {
    unsigned char* pixels = nullptr;
    NSInteger width = 0;
    NSInteger height = 0;
    NSInteger bytesPerRow = 0;
};

struct Machinery {
    std::vector<Work> heldAnswers;
    std::unordered_map<NSMenuItem*, MenuEntry> entries;
    std::unordered_map<NSMenu*, std::vector<NSMenuItem*>> menus;
    std::unordered_map<NSImage*, QString> images;
    std::unordered_map<NSImage*, QString> descriptions;
    std::unordered_map<NSImage*, bool> templates;
    NSStatusItem* item = nil;
    NSMenu* menu = nil;
    NSMenu* lastMenu = nil;
    id target = nil;
    SEL action = nullptr;
    void (^monitor)(NSEvent*) = nil;
    id reopenHandler = nil;
    SEL reopenSelector = nullptr;
    std::unordered_map<NSScreen*, NSRect> screens;
    std::unordered_map<NSBitmapImageRep*, Bitmap> bitmaps;
    std::unordered_map<NSGraphicsContext*, NSBitmapImageRep*> contexts;
    NSBitmapImageRep* drawingInto = nil;
    std::vector<NSBitmapImageRep*> graphicsStates;
};

Machinery& machinery() {
    static Machinery one;
    return one;
}

Doubles::State& now() {
    return Doubles::state();
}

QString text(NSString* string) {
    @autoreleasepool {
        return string == nil ? QString{} : QString::fromUtf8([string UTF8String]);
    }
}

NSString* string(const QString& text) {
    return [NSString stringWithUTF8String:text.toUtf8().constData()];
}

void onAnotherThread(const Work& work) {
    std::thread{[&work] {
        GSRegisterCurrentThread();
        @autoreleasepool {
            work();
        }
        GSUnregisterCurrentThread();
    }}.join();
}

void answer(Work work) {
    if (now().holdsAnswers) {
        machinery().heldAnswers.push_back(std::move(work));
    } else {
        onAnotherThread(work);
    }
}

NSError* failure() {
    return now().fails ? [NSError errorWithDomain:@"test" code:1 userInfo:nil] : nil;
}

/// A block is no object to this runtime: it cannot be sent a message.
template <typename Block>
Block kept(Block block) {
    return reinterpret_cast<Block>(_Block_copy(reinterpret_cast<const void*>(block)));
}

template <typename Block>
void drop(Block block) {
    _Block_release(reinterpret_cast<const void*>(block));
}

QStringList titlesOf(NSMenu* menu) {
    QStringList titles;
    for (NSMenuItem* entry : machinery().menus[menu]) {
        titles.append(text(machinery().entries[entry].title));
    }
    return titles;
}

}

Doubles::State& Doubles::state() {
    static State one;
    return one;
}

void Doubles::reset() {
    state() = {};
    machinery() = {};
}

void Doubles::answerAll() {
    const auto held = std::exchange(machinery().heldAnswers, {});
    for (const Work& work : held) {
        onAnotherThread(work);
    }
}

// Dispatch: the main queue is the event loop.

struct dispatch_queue_s {};
static dispatch_queue_s mainQueue;

dispatch_queue_t dispatch_get_main_queue() {
    return &mainQueue;
}

void dispatch_async(dispatch_queue_t queue, dispatch_block_t block) {
    if (queue != &mainQueue) {
        abort();
    }
    block = kept(block);
    QMetaObject::invokeMethod(
        qApp,
        [block] {
            @autoreleasepool {
                block();
                drop(block);
            }
        },
        Qt::QueuedConnection);
}

// The system's allocator

size_t malloc_zone_pressure_relief(malloc_zone_t* zone, size_t goal) {
    if (zone == nullptr) {
        now().reliefGoal = goal;
    }
    return 0;
}

// ApplicationServices

Boolean AXIsProcessTrusted() {
    return now().isTrusted;
}

// Foundation: only what asks for the bundle, and the handlers of Apple events.

@implementation NSBundle (Doubles)
- (NSString*)bundleIdentifier {
    return now().bundleIdentifier ? string(*now().bundleIdentifier) : nil;
}
- (id)objectForInfoDictionaryKey:(NSString*)key {
    if (text(key) == now().keyWithNumber) {
        return [NSNumber numberWithInt:7];
    }
    const auto found = now().information.constFind(text(key));
    return found == now().information.constEnd() ? nil : string(*found);
}
@end

@implementation NSAppleEventManager (Doubles)
+ (NSAppleEventManager*)sharedAppleEventManager {
    static NSAppleEventManager* one = [[self alloc] init];
    return one;
}
- (void)setEventHandler:(id)handler
            andSelector:(SEL)selector
          forEventClass:(AEEventClass)kind
             andEventID:(AEEventID)event {
    if (kind == kCoreEventClass && event == kAEReopenApplication) {
        machinery().reopenHandler = handler;
        machinery().reopenSelector = selector;
    }
}
- (void)removeEventHandlerForEventClass:(AEEventClass)kind andEventID:(AEEventID)event {
    if (kind == kCoreEventClass && event == kAEReopenApplication) {
        machinery().reopenHandler = nil;
    }
}
@end

NSString* NSApplicationWillFinishLaunchingNotification = @"NSApplicationWillFinishLaunchingNotification";

void Doubles::finishLaunching() {
    [[NSNotificationCenter defaultCenter] postNotificationName:NSApplicationWillFinishLaunchingNotification object:nil];
}

bool Doubles::handlesReopening() {
    return machinery().reopenHandler != nil;
}

void Doubles::reopen() {
    [machinery().reopenHandler performSelector:machinery().reopenSelector withObject:nil withObject:nil];
}

std::optional<QString> Doubles::storedText(const QString& key) {
    @autoreleasepool {
        id value = [[NSUserDefaults standardUserDefaults] objectForKey:string(key)];
        return [value isKindOfClass:[NSString class]] ? std::optional{text(value)} : std::nullopt;
    }
}

std::optional<bool> Doubles::storedTruth(const QString& key) {
    @autoreleasepool {
        id value = [[NSUserDefaults standardUserDefaults] objectForKey:string(key)];
        return value == nil ? std::nullopt : std::optional<bool>{[value boolValue]};
    }
}

void Doubles::storeNumber(const QString& key, int number) {
    @autoreleasepool {
        [[NSUserDefaults standardUserDefaults] setObject:[NSNumber numberWithInt:number] forKey:string(key)];
    }
}

void Doubles::clearStored(const QStringList& keys) {
    @autoreleasepool {
        for (const QString& key : keys) {
            [[NSUserDefaults standardUserDefaults] removeObjectForKey:string(key)];
        }
    }
}

// UserNotifications

@implementation UNNotificationSound
+ (UNNotificationSound*)defaultSound {
    static UNNotificationSound* one = [[self alloc] init];
    return one;
}
- (id)copyWithZone:(NSZone*)zone {
    return [self retain];
}
@end

@implementation UNNotificationContent
@synthesize title = m_title, subtitle = m_subtitle, body = m_body, badge = m_badge, sound = m_sound;
@end

@implementation UNMutableNotificationContent
@dynamic title, subtitle, body, badge, sound;
- (void)setTitle:(NSString*)value {
    m_title = [value copy];
}
- (void)setSubtitle:(NSString*)value {
    m_subtitle = [value copy];
}
- (void)setBody:(NSString*)value {
    m_body = [value copy];
}
- (void)setBadge:(NSNumber*)value {
    m_badge = [value retain];
}
- (void)setSound:(UNNotificationSound*)value {
    m_sound = [value retain];
}
@end

@implementation UNNotificationRequest
@synthesize identifier = m_identifier, content = m_content, trigger = m_trigger;
+ (instancetype)requestWithIdentifier:(NSString*)identifier
                              content:(UNNotificationContent*)content
                              trigger:(UNNotificationTrigger*)trigger {
    UNNotificationRequest* request = [[self alloc] init];
    request->m_identifier = [identifier copy];
    request->m_content = [content retain];
    request->m_trigger = [trigger retain];
    return request;
}
@end

@implementation UNNotificationTrigger
- (id)copyWithZone:(NSZone*)zone {
    return [self retain];
}
@end

@implementation UNNotification
@end

@implementation UNNotificationSettings
@synthesize authorizationStatus = m_authorizationStatus;
@end

@implementation UNUserNotificationCenter
@synthesize delegate = m_delegate;

+ (UNUserNotificationCenter*)currentNotificationCenter {
    ++now().centersAskedFor;
    if (!now().bundleIdentifier) {
        [NSException raise:NSInternalInconsistencyException format:@"there is no bundle"];
    }
    static UNUserNotificationCenter* one = [[self alloc] init];
    return one;
}

- (void)requestAuthorizationWithOptions:(UNAuthorizationOptions)options
                      completionHandler:(void (^)(BOOL, NSError*))handler {
    now().authorizationOptions = options;
    handler = kept(handler);
    answer([handler] {
        handler(now().grants, failure());
        drop(handler);
    });
}

- (void)getNotificationSettingsWithCompletionHandler:(void (^)(UNNotificationSettings*))handler {
    handler = kept(handler);
    answer([handler] {
        UNNotificationSettings* settings = [[UNNotificationSettings alloc] init];
        settings->m_authorizationStatus = static_cast<UNAuthorizationStatus>(now().authorizationStatus);
        handler(settings);
        drop(handler);
    });
}

- (void)addNotificationRequest:(UNNotificationRequest*)request withCompletionHandler:(void (^)(NSError*))handler {
    now().requests.append({.identifier = text(request.identifier),
                           .title = text(request.content.title),
                           .subtitle = text(request.content.subtitle),
                           .body = text(request.content.body),
                           .hasDefaultSound = request.content.sound == [UNNotificationSound defaultSound],
                           .hasTrigger = request.trigger != nil,
                           .hasBadge = request.content.badge != nil});
    if (handler == nil) {
        return;
    }
    handler = kept(handler);
    answer([handler] {
        handler(failure());
        drop(handler);
    });
}
@end

std::optional<quint64> Doubles::presentation() {
    UNUserNotificationCenter* center = [UNUserNotificationCenter currentNotificationCenter];
    id<UNUserNotificationCenterDelegate> delegate = center.delegate;
    SEL question = @selector(userNotificationCenter:willPresentNotification:withCompletionHandler:);
    if (![delegate respondsToSelector:question]) {
        return std::nullopt;
    }
    __block std::optional<quint64> wanted;
    [delegate userNotificationCenter:center
             willPresentNotification:[[UNNotification alloc] init]
               withCompletionHandler:^(UNNotificationPresentationOptions options) {
                   wanted = options;
               }];
    return wanted;
}

// AppKit: the application, its workspace, screens and events

static NSRunningApplication* otherProgram() {
    static NSRunningApplication* one = [[NSRunningApplication alloc] init];
    return one;
}

static Doubles::Program programOf(NSRunningApplication* application) {
    using enum Doubles::Program;
    return application == nil ? none : application == otherProgram() ? other : own;
}

@implementation NSResponder
@end

@implementation NSApplication
+ (NSApplication*)sharedApplication {
    static NSApplication* one = [[self alloc] init];
    return one;
}
- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)policy {
    now().activationPolicy = policy;
    return YES;
}
- (void)activateIgnoringOtherApps:(BOOL)flag {
    now().activations += flag ? 1 : 0;
    now().isActive = true;
    now().inFront = Doubles::Program::own;
}
- (BOOL)isActive {
    return now().isActive;
}
- (void)yieldActivationToApplication:(NSRunningApplication*)application {
    now().yieldedTo = programOf(application);
}
- (NSEvent*)currentEvent {
    return now().currentEvent ? [[NSEvent alloc] init] : nil;
}
@end

@implementation NSRunningApplication
+ (NSRunningApplication*)currentApplication {
    static NSRunningApplication* one = [[self alloc] init];
    return one;
}
- (BOOL)isFinishedLaunching {
    return now().hasFinishedLaunching;
}
- (BOOL)activateWithOptions:(NSApplicationActivationOptions)options {
    using enum Doubles::Program;
    if (programOf(self) != other || now().yieldedTo != other) {
        return NO;
    }
    now().otherActivations.append(static_cast<quint64>(options));
    now().isActive = false;
    return YES;
}
@end

@implementation NSWorkspace
+ (NSWorkspace*)sharedWorkspace {
    static NSWorkspace* one = [[self alloc] init];
    return one;
}
- (NSRunningApplication*)frontmostApplication {
    using enum Doubles::Program;
    const auto program = now().inFront;
    return program == none ? nil : program == other ? otherProgram() : [NSRunningApplication currentApplication];
}
- (BOOL)openURL:(NSURL*)url {
    now().openedUrls.append(text([url absoluteString]));
    return NO;
}
@end

@implementation NSScreen
+ (NSArray*)screens {
    NSMutableArray* all = [NSMutableArray array];
    for (const QRectF& frame : now().screens) {
        NSScreen* screen = [[NSScreen alloc] init];
        machinery().screens[screen] = NSMakeRect(frame.x(), frame.y(), frame.width(), frame.height());
        [all addObject:screen];
    }
    return all;
}
+ (NSScreen*)mainScreen {
    return [[self screens] lastObject];
}
- (NSRect)frame {
    return machinery().screens[self];
}
@end

@implementation NSWindow
- (NSRect)convertRectToScreen:(NSRect)rect {
    return NSOffsetRect(rect, now().windowOnScreen.x(), now().windowOnScreen.y());
}
- (void)setCollectionBehavior:(NSWindowCollectionBehavior)behavior {
    now().windowBehavior = behavior;
}
@end

NSWindow* NativeWindow::of(const QWindow& window) {
    now().windowWithBehavior = &window;
    static NSWindow* one = [[NSWindow alloc] init];
    return one;
}

@implementation NSEvent
- (NSEventType)type {
    return now().currentEvent.value_or(0);
}
- (NSEventModifierFlags)modifierFlags {
    return now().currentModifiers;
}
+ (NSPoint)mouseLocation {
    return NSMakePoint(now().pointer.x(), now().pointer.y());
}
+ (id)addGlobalMonitorForEventsMatchingMask:(NSEventMask)mask handler:(void (^)(NSEvent*))block {
    ++now().monitors;
    now().monitoredEvents = mask;
    machinery().monitor = kept(block);
    return (id)machinery().monitor;
}
+ (void)removeMonitor:(id)monitor {
    if (monitor == (id)machinery().monitor) {
        --now().monitors;
        machinery().monitor = nil;
    }
}
@end

void Doubles::pressElsewhere() {
    if (machinery().monitor != nil) {
        machinery().monitor([[NSEvent alloc] init]);
    }
}

// AppKit: the status item

@implementation NSStatusBar
+ (NSStatusBar*)systemStatusBar {
    static NSStatusBar* one = [[self alloc] init];
    return one;
}
- (NSStatusItem*)statusItemWithLength:(CGFloat)length {
    ++now().items;
    now().itemLength = length;
    machinery().item = [[NSStatusItem alloc] init];
    return machinery().item;
}
- (void)removeStatusItem:(NSStatusItem*)item {
    now().items -= item == machinery().item ? 1 : 0;
}
@end

@implementation NSStatusItem
- (NSStatusBarButton*)button {
    static NSStatusBarButton* one = [[NSStatusBarButton alloc] init];
    return one;
}
- (void)setMenu:(NSMenu*)menu {
    machinery().menu = menu;
    machinery().lastMenu = menu == nil ? machinery().lastMenu : menu;
}
- (NSMenu*)menu {
    return machinery().menu;
}
@end

@implementation NSView
- (NSWindow*)window {
    static NSWindow* one = [[NSWindow alloc] init];
    return now().hasWindow ? one : nil;
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
- (void)setAccessibilityTitle:(NSString*)value {
    now().button.accessibilityTitle = text(value);
}
- (void)setAccessibilityValue:(id)value {
    now().button.accessibilityValue = text(value);
}
@end

@implementation NSControl
- (void)setTarget:(id)target {
    machinery().target = target;
    now().button.hasTarget = target != nil;
}
- (void)setAction:(SEL)action {
    machinery().action = action;
}
- (NSInteger)sendActionOn:(NSInteger)mask {
    now().button.actionMask = static_cast<quint64>(mask);
    return 0;
}
@end

@implementation NSButton
- (void)setTitle:(NSString*)value {
    now().button.title = text(value);
}
- (void)setImagePosition:(NSCellImagePosition)position {
    now().button.showsImage = position == NSImageOnly;
    now().button.showsTitle = position == NSNoImage;
}
- (void)setImage:(NSImage*)image {
    now().button.imageName = machinery().images[image];
    now().button.imageDescription = machinery().descriptions[image];
    now().button.imageIsTemplate = machinery().templates[image];
}
- (void)performClick:(id)sender {
    now().button.menuWhenPressed = titlesOf(machinery().menu);
    if (machinery().menu == nil) {
        Doubles::pressButton();
    }
}
@end

@implementation NSStatusBarButton
@end

void Doubles::pressButton() {
    if (machinery().menu != nil) {
        return; // a button with a menu opens it and never acts
    }
    [machinery().target performSelector:machinery().action withObject:nil];
}

@implementation NSMenu
- (id)initWithTitle:(NSString*)title {
    return [self init];
}
- (void)addItem:(NSMenuItem*)item {
    machinery().menus[self].push_back(item);
}
@end

@implementation NSMenuItem
- (id)initWithTitle:(NSString*)title action:(SEL)action keyEquivalent:(NSString*)key {
    machinery().entries[self] = {.title = [title copy], .action = action};
    return self;
}
+ (NSMenuItem*)separatorItem {
    return [[NSMenuItem alloc] initWithTitle:@"---" action:nullptr keyEquivalent:@""];
}
- (void)setTarget:(id)target {
    machinery().entries[self].target = target;
}
@end

void Doubles::choose(const QString& title) {
    for (NSMenuItem* item : machinery().menus[machinery().lastMenu]) {
        const MenuEntry& entry = machinery().entries[item];
        if (text(entry.title) == title) {
            [entry.target performSelector:entry.action withObject:item];
        }
    }
}

// AppKit: symbols. Only two names are known; a drawing fills its whole place in black.

const CGFloat NSFontWeightRegular = 0;
const CGFloat NSFontWeightSemibold = 0.3;
NSString* NSDeviceRGBColorSpace = @"NSDeviceRGBColorSpace";

@implementation NSImageSymbolConfiguration
+ (instancetype)configurationWithPointSize:(CGFloat)size weight:(NSFontWeight)weight {
    now().symbolPointSize = size;
    now().symbolWeight = weight;
    return [[self alloc] init];
}
- (id)copyWithZone:(NSZone*)zone {
    return [self retain];
}
@end

@implementation NSImage
+ (instancetype)imageWithSystemSymbolName:(NSString*)name accessibilityDescription:(NSString*)description {
    if (![name isEqualToString:@"bell"] && ![name isEqualToString:@"power"]) {
        return nil;
    }
    ++now().imagesMade;
    NSImage* image = [[self alloc] init];
    machinery().images[image] = text(name);
    machinery().descriptions[image] = text(description);
    return image;
}
- (NSImage*)imageWithSymbolConfiguration:(NSImageSymbolConfiguration*)configuration {
    NSImage* image = [[NSImage alloc] init];
    machinery().images[image] = machinery().images[self] + QStringLiteral(" configured");
    return image;
}
- (void)setTemplate:(BOOL)flag {
    machinery().templates[self] = flag;
}
- (NSSize)size {
    return NSMakeSize(now().symbolSize.width(), now().symbolSize.height());
}
- (void)drawInRect:(NSRect)place
          fromRect:(NSRect)from
         operation:(NSCompositingOperation)operation
          fraction:(CGFloat)fraction {
    NSBitmapImageRep* into = machinery().drawingInto;
    if (into == nil || operation != NSCompositeSourceOver || fraction != 1 || !NSIsEmptyRect(from) ||
        !machinery().images[self].endsWith(QStringLiteral(" configured"))) {
        return;
    }
    const Bitmap& bitmap = machinery().bitmaps[into];
    for (NSInteger y = 0; y < bitmap.height; ++y) {
        for (NSInteger x = 0; x < bitmap.width; ++x) {
            if (NSPointInRect(NSMakePoint(x + 0.5, y + 0.5), place)) {
                bitmap.pixels[y * bitmap.bytesPerRow + x * 4 + 3] = 255;
            }
        }
    }
}
@end

@implementation NSImageRep
@end

@implementation NSBitmapImageRep
- (id)initWithBitmapDataPlanes:(unsigned char**)planes
                    pixelsWide:(NSInteger)width
                    pixelsHigh:(NSInteger)height
                 bitsPerSample:(NSInteger)bitsPerSample
               samplesPerPixel:(NSInteger)samplesPerPixel
                      hasAlpha:(BOOL)alpha
                      isPlanar:(BOOL)isPlanar
                colorSpaceName:(NSString*)colorSpaceName
                   bytesPerRow:(NSInteger)rowBytes
                  bitsPerPixel:(NSInteger)pixelBits {
    if (bitsPerSample != 8 || samplesPerPixel != 4 || !alpha || isPlanar || pixelBits != 32 || rowBytes < 4 * width ||
        ![colorSpaceName isEqualToString:NSDeviceRGBColorSpace]) {
        return nil;
    }
    machinery().bitmaps[self] = {.pixels = planes[0], .width = width, .height = height, .bytesPerRow = rowBytes};
    return self;
}
@end

@implementation NSGraphicsContext
+ (NSGraphicsContext*)graphicsContextWithBitmapImageRep:(NSBitmapImageRep*)bitmap {
    NSGraphicsContext* context = [[self alloc] init];
    machinery().contexts[context] = bitmap;
    return context;
}
+ (void)saveGraphicsState {
    ++now().openGraphicsStates;
    machinery().graphicsStates.push_back(machinery().drawingInto);
}
+ (void)restoreGraphicsState {
    --now().openGraphicsStates;
    machinery().drawingInto = machinery().graphicsStates.back();
    machinery().graphicsStates.pop_back();
}
+ (void)setCurrentContext:(NSGraphicsContext*)context {
    machinery().drawingInto = machinery().contexts[context];
}
- (void)flushGraphics {
    ++now().flushes;
}
@end
