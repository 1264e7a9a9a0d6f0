#include "platform/UserDefaults.h"

#include "platform/macos/NativeString.h"

namespace {

class StandardUserDefaults final : public UserDefaults {
public:
    bool boolean(const QString& key) const override { return [m_store boolForKey:NativeString::from(key)]; }

    std::optional<QString> string(const QString& key) const override {
        NSString* value = [m_store stringForKey:NativeString::from(key)];
        return value == nil ? std::nullopt : std::optional{NativeString::toQt(value)};
    }

    void setBoolean(const QString& key, bool value) override { [m_store setBool:value forKey:NativeString::from(key)]; }

    void setString(const QString& key, const QString& value) override {
        [m_store setObject:NativeString::from(value) forKey:NativeString::from(key)];
    }

    void remove(const QString& key) override { [m_store removeObjectForKey:NativeString::from(key)]; }

private:
    NSUserDefaults* const m_store = [NSUserDefaults standardUserDefaults];
};

}

std::unique_ptr<UserDefaults> UserDefaults::standard() {
    return std::make_unique<StandardUserDefaults>();
}
