// Declared after the public documentation of UserNotifications; only what the companion uses. Each declaration says
// which one it stands for. The instance variables hold what the stand-ins of the tests keep.
#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

@class UNNotification, UNNotificationRequest, UNNotificationSettings, UNUserNotificationCenter;

// UNAuthorizationOptions: badge, sound, alert
typedef NS_OPTIONS(NSUInteger, UNAuthorizationOptions) {
    UNAuthorizationOptionBadge = (1 << 0),
    UNAuthorizationOptionSound = (1 << 1),
    UNAuthorizationOptionAlert = (1 << 2),
};

// UNAuthorizationStatus; its case "ephemeral" (4) is not available on macOS
typedef NS_ENUM(NSInteger, UNAuthorizationStatus) {
    UNAuthorizationStatusNotDetermined = 0,
    UNAuthorizationStatusDenied = 1,
    UNAuthorizationStatusAuthorized = 2,
    UNAuthorizationStatusProvisional = 3,
};

// UNNotificationPresentationOptions: badge, sound, list, banner
typedef NS_OPTIONS(NSUInteger, UNNotificationPresentationOptions) {
    UNNotificationPresentationOptionBadge = (1 << 0),
    UNNotificationPresentationOptionSound = (1 << 1),
    UNNotificationPresentationOptionList = (1 << 3),
    UNNotificationPresentationOptionBanner = (1 << 4),
};

// UNNotificationSound
@interface UNNotificationSound : NSObject <NSCopying>
@property(class, readonly, copy) UNNotificationSound* defaultSound; // UNNotificationSound.default
@end

// UNNotificationTrigger
@interface UNNotificationTrigger : NSObject <NSCopying>
@end

// UNNotificationContent
@interface UNNotificationContent : NSObject <NSCopying, NSMutableCopying> {
@public
    NSString* m_title;
    NSString* m_subtitle;
    NSString* m_body;
    NSNumber* m_badge;
    UNNotificationSound* m_sound;
}
@property(readonly, copy) NSString* title;                      // UNNotificationContent.title
@property(readonly, copy) NSString* subtitle;                   // UNNotificationContent.subtitle
@property(readonly, copy) NSString* body;                       // UNNotificationContent.body
@property(nullable, readonly, copy) NSNumber* badge;            // UNNotificationContent.badge
@property(nullable, readonly, copy) UNNotificationSound* sound; // UNNotificationContent.sound
@end

// UNMutableNotificationContent
@interface UNMutableNotificationContent : UNNotificationContent
@property(readwrite, copy) NSString* title;                      // UNMutableNotificationContent.title
@property(readwrite, copy) NSString* subtitle;                   // UNMutableNotificationContent.subtitle
@property(readwrite, copy) NSString* body;                       // UNMutableNotificationContent.body
@property(nullable, readwrite, copy) NSNumber* badge;            // UNMutableNotificationContent.badge
@property(nullable, readwrite, copy) UNNotificationSound* sound; // UNMutableNotificationContent.sound
@end

// UNNotificationRequest
@interface UNNotificationRequest : NSObject <NSCopying> {
@public
    NSString* m_identifier;
    UNNotificationContent* m_content;
    UNNotificationTrigger* m_trigger;
}
@property(readonly, copy) NSString* identifier;                     // UNNotificationRequest.identifier
@property(readonly, copy) UNNotificationContent* content;           // UNNotificationRequest.content
@property(nullable, readonly, copy) UNNotificationTrigger* trigger; // UNNotificationRequest.trigger
// UNNotificationRequest.init(identifier:content:trigger:)
+ (instancetype)requestWithIdentifier:(NSString*)identifier
                              content:(UNNotificationContent*)content
                              trigger:(nullable UNNotificationTrigger*)trigger;
@end

// UNNotification
@interface UNNotification : NSObject
@end

// UNNotificationSettings
@interface UNNotificationSettings : NSObject {
@public
    UNAuthorizationStatus m_authorizationStatus;
}
@property(readonly) UNAuthorizationStatus authorizationStatus; // UNNotificationSettings.authorizationStatus
@end

// UNUserNotificationCenterDelegate
@protocol UNUserNotificationCenterDelegate <NSObject>
@optional
// userNotificationCenter(_:willPresent:withCompletionHandler:)
- (void)userNotificationCenter:(UNUserNotificationCenter*)center
       willPresentNotification:(UNNotification*)notification
         withCompletionHandler:(void (^)(UNNotificationPresentationOptions options))completionHandler;
@end

// UNUserNotificationCenter
@interface UNUserNotificationCenter : NSObject {
@public
    __unsafe_unretained id m_delegate;
}
@property(nullable, assign) id<UNUserNotificationCenterDelegate> delegate; // delegate (weak)
+ (UNUserNotificationCenter*)currentNotificationCenter;                    // current()
- (instancetype)init NS_UNAVAILABLE;
// requestAuthorization(options:completionHandler:)
- (void)requestAuthorizationWithOptions:(UNAuthorizationOptions)options
                      completionHandler:(void (^)(BOOL granted, NSError* _Nullable error))completionHandler;
// getNotificationSettings(completionHandler:)
- (void)getNotificationSettingsWithCompletionHandler:(void (^)(UNNotificationSettings* settings))completionHandler;
// add(_:withCompletionHandler:)
- (void)addNotificationRequest:(UNNotificationRequest*)request
         withCompletionHandler:(nullable void (^)(NSError* _Nullable error))completionHandler;
@end

NS_ASSUME_NONNULL_END
