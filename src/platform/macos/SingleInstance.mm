#include "platform/SingleInstance.h"

#include "platform/macos/Action.h"

#include <chrono>
#include <semaphore>

#import <AppKit/AppKit.h>
#import <CoreServices/CoreServices.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto openTimeout = 1s;

/// Hears that the companion was opened again while it runs: from the Finder, from Spotlight, by `open -a`.
class OpenedOnce final : public SingleInstance {
public:
    OpenedOnce() {
        if ([[NSRunningApplication currentApplication] isFinishedLaunching]) {
            listen();
        } else {
            // Not earlier: the application installs its own handlers first.
            [m_launching performOn:NSApplicationWillFinishLaunchingNotification of:nil];
        }
    }

    ~OpenedOnce() override {
        [[NSNotificationCenter defaultCenter] removeObserver:m_launching];
        [[NSAppleEventManager sharedAppleEventManager] removeEventHandlerForEventClass:kCoreEventClass
                                                                            andEventID:kAEReopenApplication];
    }

private:
    void listen() {
        [[NSAppleEventManager sharedAppleEventManager] setEventHandler:m_reopened
                                                           andSelector:@selector(perform:with:)
                                                         forEventClass:kCoreEventClass
                                                            andEventID:kAEReopenApplication];
    }

    VornaAction* m_reopened = [[VornaAction alloc] initWithFunction:[this] { emit messageReceived(u"panel"_s); }];
    VornaAction* m_launching = [[VornaAction alloc] initWithFunction:[this] { listen(); }];
};

/// The system opens a bundle once, but not what is started in a terminal.
NSRunningApplication* otherInstance() {
    NSString* identifier = [[NSBundle mainBundle] bundleIdentifier];
    if (identifier != nil) {
        for (NSRunningApplication* each in [NSRunningApplication runningApplicationsWithBundleIdentifier:identifier]) {
            if (![each isEqual:[NSRunningApplication currentApplication]] && [each isFinishedLaunching]) {
                return each;
            }
        }
    }
    return nil;
}

void openAgain(NSRunningApplication* instance) {
    const auto opened = std::make_shared<std::binary_semaphore>(0);
    [[NSWorkspace sharedWorkspace] openApplicationAtURL:instance.bundleURL
                                          configuration:[NSWorkspaceOpenConfiguration configuration]
                                      completionHandler:^(NSRunningApplication*, NSError*) {
                                          opened->release();
                                      }];
    (void)opened->try_acquire_for(openTimeout);
}

}

std::unique_ptr<SingleInstance> SingleInstance::claim(const QString& /*message*/) {
    @autoreleasepool {
        if (NSRunningApplication* other = otherInstance(); other != nil) {
            openAgain(other);
            return nullptr;
        }
        return std::make_unique<OpenedOnce>();
    }
}
