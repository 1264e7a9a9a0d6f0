#include "platform/NotificationService.h"

#include "platform/macos/NativeString.h"
#include "support/Deferred.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

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

using Authorization = NotificationService::Authorization;

/// The system has this state, but on this kind of machine no name for it.
constexpr long ephemeralStatus = 4;

constexpr std::array authorizations{
    std::pair{long{UNAuthorizationStatusNotDetermined}, Authorization::notDetermined},
    std::pair{long{UNAuthorizationStatusDenied}, Authorization::denied},
    std::pair{long{UNAuthorizationStatusAuthorized}, Authorization::authorized},
    std::pair{long{UNAuthorizationStatusProvisional}, Authorization::provisional},
    std::pair{ephemeralStatus, Authorization::ephemeral},
};

// Coroutines without blocks of the system's, for functions with such blocks that are no coroutines.
QCoro::Task<bool> granted(Deferred<long> answer) {
    co_return co_await answer != 0;
}

QCoro::Task<Authorization> authorizationIn(Deferred<long> answer) {
    const long status = co_await answer;
    const auto* const found = std::ranges::find(authorizations, status, &std::pair<long, Authorization>::first);
    co_return found == authorizations.end() ? Authorization::unrecognized : found->second;
}

QCoro::Task<> finished(Deferred<long> answer) {
    (void)co_await answer;
}

/// Called on a thread of the system's; who waits goes on on the main thread.
void deliver(const Deferred<long>& answer, long value) {
    dispatch_async(dispatch_get_main_queue(), ^{
        answer.deliver(value);
    });
}

UNNotificationRequest* nativeRequest(const QString& title, const QString& body, const QString& identifier) {
    UNMutableNotificationContent* content = [[UNMutableNotificationContent alloc] init];
    content.title = NativeString::from(title);
    content.body = NativeString::from(body);
    content.sound = [UNNotificationSound defaultSound];
    return [UNNotificationRequest requestWithIdentifier:NativeString::from(identifier) content:content trigger:nil];
}

/// Without a center of the system's every answer is 0, at once.
class UserNotificationService final : public NotificationService {
public:
    explicit UserNotificationService(UNUserNotificationCenter* center)
        : m_center{center} {
        m_center.delegate = m_delegate;
    }

    ~UserNotificationService() override {
        m_center.delegate = nil;
        for (const auto& answer : std::exchange(m_open, {})) {
            answer.deliver(0);
        }
    }

    QCoro::Task<bool> requestAuthorization() override {
        const auto answer = ask();
        [m_center requestAuthorizationWithOptions:UNAuthorizationOptionBadge | UNAuthorizationOptionSound |
                                                  UNAuthorizationOptionAlert
                                completionHandler:^(BOOL isGranted, NSError*) {
                                    deliver(answer, isGranted ? 1 : 0);
                                }];
        return granted(answer);
    }

    QCoro::Task<Authorization> authorizationStatus() override {
        const auto answer = ask();
        [m_center getNotificationSettingsWithCompletionHandler:^(UNNotificationSettings* settings) {
            deliver(answer, settings.authorizationStatus);
        }];
        return authorizationIn(answer);
    }

    QCoro::Task<> notify(QString title, QString body, QString identifier) override {
        @autoreleasepool {
            const auto answer = ask();
            [m_center addNotificationRequest:nativeRequest(title, body, identifier)
                       withCompletionHandler:^(NSError*) {
                           deliver(answer, 0);
                       }];
            return finished(answer);
        }
    }

private:
    Deferred<long> ask() {
        std::erase_if(m_open, [](const auto& answer) { return answer.await_ready(); });
        const auto& answer = m_open.emplace_back();
        if (m_center == nil) {
            answer.deliver(0);
        }
        return answer;
    }

    UNUserNotificationCenter* m_center = nil;
    VornaNotificationDelegate* m_delegate = [[VornaNotificationDelegate alloc] init];
    std::vector<Deferred<long>> m_open; ///< what nobody has answered yet
};

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

std::unique_ptr<NotificationService> NotificationService::standard() {
    return std::make_unique<UserNotificationService>(currentCenter());
}
