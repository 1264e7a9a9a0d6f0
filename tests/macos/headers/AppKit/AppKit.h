// GNUstep's AppKit, and what it lacks of what the companion uses: with the types that a compiler needs. That names and
// values are the system's own is compared with the whole SDK by test_sdk.
#pragma once

#include_next <AppKit/AppKit.h>

#include <CoreServices/CoreServices.h>

NS_ASSUME_NONNULL_BEGIN

static constexpr NSEventType NSEventTypeLeftMouseDown = NSLeftMouseDown;
static constexpr NSEventType NSEventTypeRightMouseDown = NSRightMouseDown;

typedef unsigned long long NSEventMask;
static constexpr NSEventMask NSEventMaskLeftMouseDown = 1ULL << 1;
static constexpr NSEventMask NSEventMaskRightMouseDown = 1ULL << 3;
static constexpr NSEventMask NSEventMaskRightMouseUp = 1ULL << 4;
static constexpr NSEventMask NSEventMaskOtherMouseDown = 1ULL << 25;

static constexpr NSEventModifierFlags NSEventModifierFlagControl = 1UL << 18;

@interface NSEvent (Declared)
+ (nullable id)addGlobalMonitorForEventsMatchingMask:(NSEventMask)mask handler:(void (^)(NSEvent* event))block;
+ (void)removeMonitor:(id)eventMonitor;
@end

@interface NSApplication (Declared)
- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)activationPolicy;
- (void)activate;
- (void)yieldActivationToApplication:(NSRunningApplication*)application;
@end

@interface NSWorkspaceOpenConfiguration : NSObject
+ (instancetype)configuration;
@end

@interface NSWorkspace (Declared)
- (void)openApplicationAtURL:(NSURL*)applicationURL
               configuration:(NSWorkspaceOpenConfiguration*)configuration
           completionHandler:(nullable void (^)(NSRunningApplication* _Nullable app, NSError* _Nullable error))handler;
@end

#undef NSVariableStatusItemLength
static constexpr CGFloat NSVariableStatusItemLength = -1.0;

@interface NSStatusItem (Declared)
@property(nullable, readonly, strong) NSStatusBarButton* button;
@end

@interface NSView (Declared)
- (void)setAccessibilityLabel:(nullable NSString*)accessibilityLabel;
- (void)setAccessibilityValue:(nullable id)accessibilityValue;
@end

static constexpr NSCompositingOperation NSCompositingOperationSourceOver = NSCompositeSourceOver;

@interface NSImageSymbolConfiguration : NSObject <NSCopying>
+ (instancetype)configurationWithPointSize:(CGFloat)pointSize weight:(NSFontWeight)weight;
@end

@interface NSImage (Declared)
+ (nullable instancetype)imageWithSystemSymbolName:(NSString*)name
                          accessibilityDescription:(nullable NSString*)description;
- (nullable NSImage*)imageWithSymbolConfiguration:(NSImageSymbolConfiguration*)configuration;
- (void)setTemplate:(BOOL)flag;
@end

typedef NSString* NSFontDescriptorSystemDesign;
extern NSFontDescriptorSystemDesign const NSFontDescriptorSystemDesignRounded;
extern NSFontDescriptorSystemDesign const NSFontDescriptorSystemDesignMonospaced;

@interface NSFontDescriptor (Declared)
- (nullable NSFontDescriptor*)fontDescriptorWithDesign:(NSFontDescriptorSystemDesign)design;
@end

@class NSAppleEventDescriptor;

@interface NSAppleEventManager (Declared)
+ (NSAppleEventManager*)sharedAppleEventManager;
- (void)setEventHandler:(id)handler
            andSelector:(SEL)handleEventSelector
          forEventClass:(AEEventClass)eventClass
             andEventID:(AEEventID)eventID;
- (void)removeEventHandlerForEventClass:(AEEventClass)eventClass andEventID:(AEEventID)eventID;
@end

NS_ASSUME_NONNULL_END
