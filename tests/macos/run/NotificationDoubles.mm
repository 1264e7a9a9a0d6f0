#include "Machinery.h"

#import <UserNotifications/UserNotifications.h>

using namespace Machinery;

static NSError* failure() {
    return now().fails ? [NSError errorWithDomain:@"test" code:1 userInfo:nil] : nil;
}

@implementation UNNotificationSound
ONE_OF(UNNotificationSound, defaultSound)
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
    if (!now().bundleIdentifier || now().bundleIsUnknown) {
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
