#include "platform/UserDefaults.h"

#include "platform/macos/Strings.h"

namespace {

class StandardUserDefaults final : public UserDefaults {
public:
    bool boolean(const QString& key) const override {
        @autoreleasepool {
            return [[NSUserDefaults standardUserDefaults] boolForKey:Strings::toNative(key)];
        }
    }

    std::optional<QString> string(const QString& key) const override {
        @autoreleasepool {
            NSString* value = [[NSUserDefaults standardUserDefaults] stringForKey:Strings::toNative(key)];
            return value == nil ? std::nullopt : std::optional{Strings::fromNative(value)};
        }
    }

    void setBoolean(const QString& key, bool value) override {
        @autoreleasepool {
            [[NSUserDefaults standardUserDefaults] setBool:value forKey:Strings::toNative(key)];
        }
    }

    void setString(const QString& key, const QString& value) override {
        @autoreleasepool {
            [[NSUserDefaults standardUserDefaults] setObject:Strings::toNative(value) forKey:Strings::toNative(key)];
        }
    }

    void remove(const QString& key) override {
        @autoreleasepool {
            [[NSUserDefaults standardUserDefaults] removeObjectForKey:Strings::toNative(key)];
        }
    }
};

}

std::unique_ptr<UserDefaults> UserDefaults::standard() {
    return std::make_unique<StandardUserDefaults>();
}
