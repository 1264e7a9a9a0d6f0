// Threads, the bundle, the user's defaults, the launch.
#include "Machinery.h"

#include <QCoreApplication>

#include <thread>

#import <ApplicationServices/ApplicationServices.h>
#import <CoreServices/CoreServices.h>
#include <dispatch/dispatch.h>
#include <malloc/malloc.h>
#include <spawn.h>

using namespace Machinery;

namespace {

struct System {
    std::vector<Work> heldAnswers;
    id reopenHandler = nil;
    SEL reopenSelector = nullptr;
};

System& machinery() {
    static System one;
    return one;
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

}

QString Machinery::text(NSString* string) {
    @autoreleasepool {
        return string == nil ? QString{} : QString::fromUtf8([string UTF8String]);
    }
}

NSString* Machinery::string(const QString& text) {
    return [NSString stringWithUTF8String:text.toUtf8().constData()];
}

void Machinery::answer(Work work) {
    if (now().holdsAnswers) {
        machinery().heldAnswers.push_back(std::move(work));
    } else {
        onAnotherThread(work);
    }
}

void Machinery::forgetSystem() {
    machinery() = {};
}

Doubles::State& Doubles::state() {
    static State one;
    return one;
}

void Doubles::reset() {
    state() = {};
    forgetItem();
    forgetPictures();
    forgetPrograms();
    forgetSystem();
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

// Processes

int posix_spawn_file_actions_addinherit_np(posix_spawn_file_actions_t* /*actions*/, int descriptor) {
    now().inheritedDescriptors.append(descriptor);
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
ONE_OF(NSAppleEventManager, sharedAppleEventManager)
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
NSString* NSApplicationDidFinishLaunchingNotification = @"NSApplicationDidFinishLaunchingNotification";

void Doubles::finishLaunching() {
    for (NSString* step in
         @[ NSApplicationWillFinishLaunchingNotification, NSApplicationDidFinishLaunchingNotification ]) {
        [[NSNotificationCenter defaultCenter] postNotificationName:step object:nil];
    }
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
