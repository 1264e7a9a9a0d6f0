// The record, threads, the bundle, the user's defaults, notifications.
#include "Machinery.h"

#include <QCoreApplication>
#include <QThread>

#include <thread>

#import <ApplicationServices/ApplicationServices.h>
#import <UserNotifications/UserNotifications.h>
#include <dispatch/dispatch.h>
#include <malloc/malloc.h>
#include <spawn.h>

using namespace Machinery;

namespace {

QStringList written;
std::vector<std::function<void()>> heldAnswers;
id centerDelegate = nil;

void onAnotherThread(const std::function<void()>& work) {
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
    return string == nil ? QStringLiteral("nothing") : QString::fromUtf8([string UTF8String]);
}

NSString* Machinery::string(const QString& text) {
    return [NSString stringWithUTF8String:text.toUtf8().constData()];
}

void Machinery::answer(std::function<void()> work) {
    world().answersLater ? heldAnswers.push_back(work) : onAnotherThread(work);
}

Doubles::World& Doubles::world() {
    static World one;
    return one;
}

void Doubles::tell(const QString& what) {
    written.append(QThread::currentThread() == qApp->thread() ? what : what + QStringLiteral(" on another thread"));
}

QString Doubles::told() {
    return std::exchange(written, {}).join(QStringLiteral("; "));
}

void Doubles::reset() {
    [[maybe_unused]] static NSAutoreleasePool* pool = [[NSAutoreleasePool alloc] init];
    world() = {};
    (void)told();
    heldAnswers.clear();
    forgetPrograms();
}

void Doubles::answerAll() {
    for (const auto& work : std::exchange(heldAnswers, {})) {
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
    QMetaObject::invokeMethod(qApp, [block = kept(block)] { block(); }, Qt::QueuedConnection);
}

size_t malloc_zone_pressure_relief(malloc_zone_t* zone, size_t goal) {
    record(zone == nullptr ? "all zones relieved by" : "one zone relieved by", goal);
    return 0;
}

int posix_spawn_file_actions_addinherit_np(posix_spawn_file_actions_t* /*actions*/, int descriptor) {
    record("inherits", descriptor);
    return 0;
}

unsigned char AXIsProcessTrusted() {
    return world().isTrusted;
}

@implementation NSBundle (Doubles)
GIVES(-(NSString*)bundleIdentifier, world().bundle ? string(*world().bundle) : nil)
- (id)objectForInfoDictionaryKey:(NSString*)key {
    const QVariant value = world().information.value(text(key));
    return !value.isValid() ? nil : value.typeId() == QMetaType::Int ? (id) @7 : (id)string(value.toString());
}
@end

QString Doubles::stored(const QString& key) {
    id value = [[NSUserDefaults standardUserDefaults] objectForKey:string(key)];
    return [value isKindOfClass:[NSNumber class]] ? QStringLiteral("number %1").arg([value intValue]) : text(value);
}

void Doubles::clearStored(const QStringList& keys) {
    for (const QString& key : keys) {
        [[NSUserDefaults standardUserDefaults] removeObjectForKey:string(key)];
    }
}

@implementation UNNotificationSound
ONE_OF(UNNotificationSound, defaultSound)
@end

@implementation UNMutableNotificationContent
DOES(-(void)setTitle : (NSString*)value, record("title", value))
DOES(-(void)setBody : (NSString*)value, record("body", value))
- (void)setSound:(UNNotificationSound*)sound {
    tell(sound == [UNNotificationSound defaultSound] ? "default sound" : "a sound");
}
@end

@implementation UNNotificationContent
@end

@implementation UNNotificationRequest
+ (instancetype)requestWithIdentifier:(NSString*)identifier
                              content:(UNNotificationContent*)content
                              trigger:(UNNotificationTrigger*)trigger {
    record(trigger == nil ? "at once" : "later", identifier);
    return [[self alloc] init];
}
@end

@implementation UNNotificationSettings
GIVES(-(UNAuthorizationStatus)authorizationStatus, static_cast<UNAuthorizationStatus>(world().authorizationStatus))
@end

@implementation UNUserNotificationCenter
+ (UNUserNotificationCenter*)currentNotificationCenter {
    if (!world().bundle || !world().bundleIsKnown) {
        tell("raised");
        [NSException raise:NSInternalInconsistencyException format:@"there is no bundle"];
    }
    static UNUserNotificationCenter* one = [[self alloc] init];
    return one;
}
DOES(-(void)setDelegate : (id)delegate, centerDelegate = delegate)
- (void)requestAuthorizationWithOptions:(UNAuthorizationOptions)options
                      completionHandler:(void (^)(BOOL, NSError*))handler {
    record("asks for", options);
    answer([handler = kept(handler)] { handler(world().grantsNotifications, nil); });
}
- (void)getNotificationSettingsWithCompletionHandler:(void (^)(UNNotificationSettings*))handler {
    answer([handler = kept(handler)] { handler([[UNNotificationSettings alloc] init]); });
}
- (void)addNotificationRequest:(UNNotificationRequest*)request withCompletionHandler:(void (^)(NSError*))handler {
    answer([handler = kept(handler)] { handler(nil); });
}
@end

void Doubles::presentNotification() {
    if (![centerDelegate respondsToSelector:@selector(userNotificationCenter:
                                                     willPresentNotification:withCompletionHandler:)]) {
        tell("not presented");
        return;
    }
    [centerDelegate userNotificationCenter:nil
                   willPresentNotification:nil
                     withCompletionHandler:^(UNNotificationPresentationOptions options) {
                         record("presented as", options);
                     }];
}
