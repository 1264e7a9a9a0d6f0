#include "platform/NotificationCenter.h"

#include "platform/macos/NativeString.h"
#include "platform/macos/PendingAnswers.h"

#include <algorithm>
#include <array>
#include <utility>

#import <UserNotifications/UserNotifications.h>
#include <dispatch/dispatch.h>

/// Lets notifications show while the companion itself is in front, as it is when its panel is open.
@interface VornaNotificationDelegate : NSObject <UNUserNotificationCenterDelegate>
@end

@implementation VornaNotificationDelegate

- (void)userNotificationCenter:(UNUserNotificationCenter*)center
       willPresentNotification:(UNNotification*)notification
         withCompletionHandler:(void (^)(UNNotificationPresentationOptions))completionHandler {
    (void)center;
    (void)notification;
    completionHandler(UNNotificationPresentationOptionBanner | UNNotificationPresentationOptionList |
                      UNNotificationPresentationOptionSound);
}

@end

namespace {

using Authorization = NotificationCenter::Authorization;

/// The system has this state, but on this kind of machine no name for it.
constexpr long ephemeralStatus = 4;

constexpr std::array authorizations{
    std::pair{long{UNAuthorizationStatusNotDetermined}, Authorization::notDetermined},
    std::pair{long{UNAuthorizationStatusDenied}, Authorization::denied},
    std::pair{long{UNAuthorizationStatusAuthorized}, Authorization::authorized},
    std::pair{long{UNAuthorizationStatusProvisional}, Authorization::provisional},
    std::pair{ephemeralStatus, Authorization::ephemeral},
};

Authorization authorizationOf(long status) {
    const auto* const found = std::ranges::find(authorizations, status, &std::pair<long, Authorization>::first);
    return found == authorizations.end() ? Authorization::unrecognized : found->second;
}

/// For a process that the system has no center for.
class NoCenter final : public NotificationCenter {
public:
    QCoro::Task<bool> requestAuthorization() override { co_return false; }
    QCoro::Task<Authorization> authorization() override { co_return Authorization::notDetermined; }
    QCoro::Task<> post(Request) override { co_return; }
};

class UserNotificationCenter final : public NotificationCenter {
public:
    explicit UserNotificationCenter(UNUserNotificationCenter* center);
    ~UserNotificationCenter() override;

    QCoro::Task<bool> requestAuthorization() override;
    QCoro::Task<Authorization> authorization() override;
    QCoro::Task<> post(Request request) override;

private:
    UNUserNotificationCenter* m_center = nil;
    VornaNotificationDelegate* m_delegate = nil;
    std::shared_ptr<PendingAnswers> m_pending = std::make_shared<PendingAnswers>();
};

/// Called on a thread of the system's.
void deliver(std::weak_ptr<PendingAnswers> pending, PendingAnswers::Ticket ticket, long value) {
    dispatch_async(dispatch_get_main_queue(), ^{
        if (const auto answers = pending.lock()) {
            answers->deliver(ticket, value);
        }
    });
}

UNNotificationRequest* nativeRequest(const NotificationCenter::Request& request) {
    UNMutableNotificationContent* content = [[UNMutableNotificationContent alloc] init];
    content.title = NativeString::from(request.title);
    content.body = NativeString::from(request.body);
    content.sound = [UNNotificationSound defaultSound];
    return [UNNotificationRequest requestWithIdentifier:NativeString::from(request.identifier)
                                                content:content
                                                trigger:nil];
}

// Coroutines without blocks of the system's, for functions with such blocks that are no coroutines.
QCoro::Task<bool> granted(Deferred<long> answer) {
    co_return co_await answer != 0;
}

QCoro::Task<Authorization> authorizationIn(Deferred<long> status) {
    co_return authorizationOf(co_await status);
}

QCoro::Task<> finished(Deferred<long> answer) {
    (void)co_await answer;
}

UserNotificationCenter::UserNotificationCenter(UNUserNotificationCenter* center)
    : m_center{center}
    , m_delegate{[[VornaNotificationDelegate alloc] init]} {
    m_center.delegate = m_delegate;
}

UserNotificationCenter::~UserNotificationCenter() {
    m_center.delegate = nil;
}

QCoro::Task<bool> UserNotificationCenter::requestAuthorization() {
    @autoreleasepool {
        const std::weak_ptr<PendingAnswers> pending = m_pending;
        const auto question = m_pending->ask();
        const auto ticket = question.ticket;
        [m_center requestAuthorizationWithOptions:UNAuthorizationOptionBadge | UNAuthorizationOptionSound |
                                                  UNAuthorizationOptionAlert
                                completionHandler:^(BOOL granted, NSError*) {
                                    deliver(pending, ticket, granted ? 1 : 0);
                                }];
        return granted(question.answer);
    }
}

QCoro::Task<Authorization> UserNotificationCenter::authorization() {
    @autoreleasepool {
        const std::weak_ptr<PendingAnswers> pending = m_pending;
        const auto question = m_pending->ask();
        const auto ticket = question.ticket;
        [m_center getNotificationSettingsWithCompletionHandler:^(UNNotificationSettings* settings) {
            deliver(pending, ticket, settings.authorizationStatus);
        }];
        return authorizationIn(question.answer);
    }
}

QCoro::Task<> UserNotificationCenter::post(Request request) {
    @autoreleasepool {
        const std::weak_ptr<PendingAnswers> pending = m_pending;
        const auto question = m_pending->ask();
        const auto ticket = question.ticket;
        [m_center addNotificationRequest:nativeRequest(request)
                   withCompletionHandler:^(NSError*) {
                       deliver(pending, ticket, 0);
                   }];
        return finished(question.answer);
    }
}

/// Nil for a process without a bundle, and for a bundle that the system does not know: for either it raises.
UNUserNotificationCenter* currentCenter() {
    @try {
        NSString* identifier = [[NSBundle mainBundle] bundleIdentifier];
        return identifier == nil ? nil : [UNUserNotificationCenter currentNotificationCenter];
    } @catch (NSException*) {
        return nil;
    }
}

}

std::unique_ptr<NotificationCenter> NotificationCenter::standard() {
    @autoreleasepool {
        UNUserNotificationCenter* center = currentCenter();
        if (center == nil) {
            return std::make_unique<NoCenter>();
        }
        return std::make_unique<UserNotificationCenter>(center);
    }
}
