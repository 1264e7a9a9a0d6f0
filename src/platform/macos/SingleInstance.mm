#include "platform/SingleInstance.h"

#include <functional>
#include <utility>

#import <AppKit/AppKit.h>
#import <CoreServices/CoreServices.h>

using namespace Qt::StringLiterals;

/// Hears that the companion was opened again while it runs: from the Finder, from Spotlight, by `open -a`.
@interface VornaReopenListener : NSObject {
    std::function<void()> m_reopened;
}
- (instancetype)initWithFunction:(std::function<void()>)reopened;
- (void)applicationWillFinishLaunching:(NSNotification*)notification;
- (void)listen;
- (void)handleReopen:(NSAppleEventDescriptor*)event withReply:(NSAppleEventDescriptor*)reply;
- (void)stop;
@end

@implementation VornaReopenListener

- (instancetype)initWithFunction:(std::function<void()>)reopened {
    self = [super init];
    if (self != nil) {
        m_reopened = std::move(reopened);
        if ([[NSRunningApplication currentApplication] isFinishedLaunching]) {
            [self listen];
        } else {
            [[NSNotificationCenter defaultCenter] addObserver:self
                                                     selector:@selector(applicationWillFinishLaunching:)
                                                         name:NSApplicationWillFinishLaunchingNotification
                                                       object:nil];
        }
    }
    return self;
}

// Not earlier: the application installs its own handlers first.
- (void)applicationWillFinishLaunching:(NSNotification*)notification {
    (void)notification;
    [self listen];
}

- (void)listen {
    [[NSAppleEventManager sharedAppleEventManager] setEventHandler:self
                                                       andSelector:@selector(handleReopen:withReply:)
                                                     forEventClass:kCoreEventClass
                                                        andEventID:kAEReopenApplication];
}

- (void)handleReopen:(NSAppleEventDescriptor*)event withReply:(NSAppleEventDescriptor*)reply {
    (void)event;
    (void)reply;
    m_reopened();
}

- (void)stop {
    [[NSNotificationCenter defaultCenter] removeObserver:self];
    [[NSAppleEventManager sharedAppleEventManager] removeEventHandlerForEventClass:kCoreEventClass
                                                                        andEventID:kAEReopenApplication];
}

@end

namespace {

/// The system opens a bundle once per session; a second opening reaches the one that runs.
class OpenedOnce final : public SingleInstance {
public:
    OpenedOnce()
        : m_listener{[[VornaReopenListener alloc] initWithFunction:[this] { emit messageReceived(u"panel"_s); }]} {}
    ~OpenedOnce() override { [m_listener stop]; }

private:
    VornaReopenListener* m_listener = nil;
};

}

std::unique_ptr<SingleInstance> SingleInstance::claim(const QString& /*message*/) {
    @autoreleasepool {
        return std::make_unique<OpenedOnce>();
    }
}
