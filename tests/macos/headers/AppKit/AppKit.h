// GNUstep's AppKit, and what it lacks of what the companion uses, with the types that a compiler needs. That names and
// values are the system's own is compared with the whole SDK by test_sdk.
#pragma once

#include_next <AppKit/AppKit.h>

#include <CoreServices/CoreServices.h>
#include <GNUstepGUI/GSVersion.h>

#undef NSVariableStatusItemLength
static constexpr CGFloat NSVariableStatusItemLength = -1.0;
static constexpr NSCompositingOperation NSCompositingOperationSourceOver = NSCompositeSourceOver;
#if GNUSTEP_GUI_MINOR_VERSION < 32 // which has them itself
static constexpr NSEventType NSEventTypeRightMouseDown = NSRightMouseDown;
static constexpr NSEventModifierFlags NSEventModifierFlagControl = 1UL << 18;
#endif

typedef unsigned long long NSEventMask;
static constexpr NSEventMask NSEventMaskLeftMouseDown = 1ULL << 1;
static constexpr NSEventMask NSEventMaskRightMouseDown = 1ULL << 3;
static constexpr NSEventMask NSEventMaskRightMouseUp = 1ULL << 4;
static constexpr NSEventMask NSEventMaskOtherMouseDown = 1ULL << 25;

typedef NSString* NSFontDescriptorSystemDesign;
extern NSFontDescriptorSystemDesign const NSFontDescriptorSystemDesignRounded;
extern NSFontDescriptorSystemDesign const NSFontDescriptorSystemDesignMonospaced;

@interface NSEvent (Declared)
+ (id)addGlobalMonitorForEventsMatchingMask:(NSEventMask)mask handler:(void (^)(NSEvent* event))block;
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
           completionHandler:(void (^)(NSRunningApplication* app, NSError* error))handler;
@end

@interface NSStatusItem (Declared)
@property(readonly, strong) NSStatusBarButton* button;
@end

@interface NSView (Declared)
- (void)setAccessibilityLabel:(NSString*)accessibilityLabel;
- (void)setAccessibilityValue:(id)accessibilityValue;
@end

@interface NSImageSymbolConfiguration : NSObject
+ (instancetype)configurationWithPointSize:(CGFloat)pointSize weight:(NSFontWeight)weight;
@end

@interface NSImage (Declared)
+ (instancetype)imageWithSystemSymbolName:(NSString*)name accessibilityDescription:(NSString*)description;
- (NSImage*)imageWithSymbolConfiguration:(NSImageSymbolConfiguration*)configuration;
- (void)setTemplate:(BOOL)flag;
@end

@interface NSFontDescriptor (Declared)
- (NSFontDescriptor*)fontDescriptorWithDesign:(NSFontDescriptorSystemDesign)design;
@end

@interface NSAppleEventManager (Declared)
+ (NSAppleEventManager*)sharedAppleEventManager;
- (void)setEventHandler:(id)handler
            andSelector:(SEL)handleEventSelector
          forEventClass:(AEEventClass)eventClass
             andEventID:(AEEventID)eventID;
- (void)removeEventHandlerForEventClass:(AEEventClass)eventClass andEventID:(AEEventID)eventID;
@end
