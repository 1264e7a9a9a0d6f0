#include "platform/UserDefaults.h"

#include "platform/macos/NativeString.h"

namespace {

class StandardUserDefaults final : public UserDefaults {
public:
    bool boolean(const QString& key) const override {
        @autoreleasepool {
            return [[NSUserDefaults standardUserDefaults] boolForKey:NativeString::from(key)];
        }
    }

    std::optional<QString> string(const QString& key) const override {
        @autoreleasepool {
            NSString* value = [[NSUserDefaults standardUserDefaults] stringForKey:NativeString::from(key)];
            return value == nil ? std::nullopt : std::optional{NativeString::toQt(value)};
        }
    }

    void setBoolean(const QString& key, bool value) override {
        @autoreleasepool {
            [[NSUserDefaults standardUserDefaults] setBool:value forKey:NativeString::from(key)];
        }
    }

    void setString(const QString& key, const QString& value) override {
        @autoreleasepool {
            [[NSUserDefaults standardUserDefaults] setObject:NativeString::from(value) forKey:NativeString::from(key)];
        }
    }

    void remove(const QString& key) override {
        @autoreleasepool {
            [[NSUserDefaults standardUserDefaults] removeObjectForKey:NativeString::from(key)];
        }
    }
};

}

std::unique_ptr<UserDefaults> UserDefaults::standard() {
    return std::make_unique<StandardUserDefaults>();
}
