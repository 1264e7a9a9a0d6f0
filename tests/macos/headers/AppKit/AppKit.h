// GNUstep's AppKit, and what it lacks of what the companion uses, declared after the public documentation of AppKit.
// Each declaration says which one it stands for.
#pragma once

#include_next <AppKit/AppKit.h>

#include <CoreServices/CoreServices.h>

NS_ASSUME_NONNULL_BEGIN

// NSEvent.EventType, under the names without a class in front
static constexpr NSEventType NSEventTypeLeftMouseDown = NSLeftMouseDown;   // .leftMouseDown
static constexpr NSEventType NSEventTypeRightMouseDown = NSRightMouseDown; // .rightMouseDown

// NSEvent.EventTypeMask, unsigned long long
typedef unsigned long long NSEventMask;
static constexpr NSEventMask NSEventMaskLeftMouseDown = 1ULL << 1;   // .leftMouseDown
static constexpr NSEventMask NSEventMaskRightMouseDown = 1ULL << 3;  // .rightMouseDown
static constexpr NSEventMask NSEventMaskOtherMouseDown = 1ULL << 25; // .otherMouseDown

// NSEvent.ModifierFlags
static constexpr NSEventModifierFlags NSEventModifierFlagControl = 1UL << 18; // .control

@interface NSEvent (Declared)
// addGlobalMonitorForEvents(matching:handler:)
+ (nullable id)addGlobalMonitorForEventsMatchingMask:(NSEventMask)mask handler:(void (^)(NSEvent* event))block;
+ (void)removeMonitor:(id)eventMonitor; // removeMonitor(_:)
@end

@interface NSApplication (Declared)
- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)activationPolicy; // setActivationPolicy(_:)
- (void)yieldActivationToApplication:(NSRunningApplication*)application;     // yieldActivation(to:)
@end

// NSStatusItem.variableLength
#undef NSVariableStatusItemLength
static constexpr CGFloat NSVariableStatusItemLength = -1.0;

@interface NSStatusItem (Declared)
@property(nullable, readonly, strong) NSStatusBarButton* button; // NSStatusItem.button
@end

@interface NSView (Declared)
- (void)setAccessibilityTitle:
    (nullable NSString*)accessibilityTitle;                    // NSAccessibilityProtocol.setAccessibilityTitle(_:)
- (void)setAccessibilityValue:(nullable id)accessibilityValue; // NSAccessibilityProtocol.setAccessibilityValue(_:)
@end

// NSCompositingOperation.sourceOver
static constexpr NSCompositingOperation NSCompositingOperationSourceOver = NSCompositeSourceOver;

// NSImage.SymbolConfiguration
@interface NSImageSymbolConfiguration : NSObject <NSCopying>
// init(pointSize:weight:)
+ (instancetype)configurationWithPointSize:(CGFloat)pointSize weight:(NSFontWeight)weight;
@end

@interface NSImage (Declared)
// init(systemSymbolName:accessibilityDescription:)
+ (nullable instancetype)imageWithSystemSymbolName:(NSString*)name
                          accessibilityDescription:(nullable NSString*)description;
// withSymbolConfiguration(_:)
- (nullable NSImage*)imageWithSymbolConfiguration:(NSImageSymbolConfiguration*)configuration;
- (BOOL)isTemplate;             // NSImage.isTemplate
- (void)setTemplate:(BOOL)flag; // the same, written
@end

@class NSAppleEventDescriptor; // NSAppleEventDescriptor

@interface NSAppleEventManager (Declared)
+ (NSAppleEventManager*)sharedAppleEventManager; // NSAppleEventManager.shared()
// setEventHandler(_:andSelector:forEventClass:andEventID:)
- (void)setEventHandler:(id)handler
            andSelector:(SEL)handleEventSelector
          forEventClass:(AEEventClass)eventClass
             andEventID:(AEEventID)eventID;
// removeEventHandler(forEventClass:andEventID:)
- (void)removeEventHandlerForEventClass:(AEEventClass)eventClass andEventID:(AEEventID)eventID;
@end

NS_ASSUME_NONNULL_END
